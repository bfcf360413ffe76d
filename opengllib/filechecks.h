// Free functions that answer whether a file exists, can be written or has an extension, with or without a message on
// standard output.
#pragma once

#include <string>

// Whether `name` can be opened for writing. Destructive by design: it creates a missing file and empties an existing
// one, and is asked only about output that is about to be written.
bool FileWritable(std::string name);

// FileWritable; when false prints "File %s can not be written to.\n".
bool CheckFileWritable(std::string name);

bool FileExists(std::string name);

// FileExists; when false prints "File %s was not found: %s\n", or "File %s was not found.\n" for an empty message.
// A missing name that contains "::" (a placeholder such as "aster::alpha") prints nothing.
bool CheckFileExistance(std::string name, std::string message);

bool CheckFileExistence(std::string name);

// Whether `name` ends in "." followed by `extension`, exactly, with at least one more character than the extension.
bool checkExtension(std::string name, std::string extension);
