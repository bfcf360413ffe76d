// Free functions that answer whether a file exists, can be written or has an extension.
// The established signatures take their strings by value.
// NOLINTBEGIN(performance-unnecessary-value-param)
#include "filechecks.h"

#include <cstdio>

#include "file.h"
#include "inputfile.h"
#include "messages.h"

using namespace sorvane;

bool FileWritable(std::string name) {
    return FileHandle(std::fopen(name.c_str(), "w")) != nullptr;
}

bool CheckFileWritable(std::string name) {
    const bool isWritable = FileWritable(name);
    if (!isWritable)
        printMessage("File %s can not be written to.", name.c_str());
    return isWritable;
}

bool FileExists(std::string name) {
    return File::Exists(name);
}

bool CheckFileExistance(std::string name, std::string message) {
    if (FileExists(name))
        return true;
    if (name.find("::") == std::string::npos) {
        if (!message.empty())
            printMessage("File %s was not found: %s", name.c_str(), message.c_str());
        else
            printMessage("File %s was not found.", name.c_str());
        return false;
    }
    if (!name.empty())
        return false;
    // Not reached, since an empty name holds no "::"; kept so that the list of messages stays whole.
    if (!message.empty())
        printMessage("File name not provided: %s", message.c_str());
    else
        printMessage("File name and message was not provided.");
    return false;
}

bool CheckFileExistence(std::string name) {
    return CheckFileExistance(name, "");
}

bool checkExtension(std::string name, std::string extension) {
    if (extension.length() >= name.length())
        return false;
    return name.ends_with("." + extension);
}
// NOLINTEND(performance-unnecessary-value-param)
