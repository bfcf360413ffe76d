// The edges of the sensor's band, from a band file; one shared instance remembers those of every file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// One entry of the cache; -1 in both edges marks a file that did not exist.
struct bandParams {
    std::string path;
    float lambda1;
    float lambda2;
};

// Text: a line that is ignored, then two numbers, the lower and the upper edge in the unit of the samples' wavelengths.
class BandFile {
public:
    static constexpr const char* kExtension = "band";

    // Publishes the shared instance; always true.
    static bool Create();
    static BandFile* instance_;

    // The lower and upper edge: seenBefore, else readFile.
    bool GetLambda(const std::string& path, float& lambda1, float& lambda2);

    // Answers from the cache. An entry whose edges are not both above 0 is reported as a file that does not exist.
    bool seenBefore(const std::string& path, float& lambda1, float& lambda2) const;

    // Reads the file and remembers it, a missing one too, which is reported and gives -1. A cache of more than 256
    // entries is emptied first.
    bool readFile(const std::string& path, float& lambda1, float& lambda2);

    // Takes the file `path` out of the cache.
    void forget(const std::string& path);

    // Reads a line, which is ignored, and two numbers. An edge that is missing becomes 0.
    static void parse(std::string_view text, float& lambda1, float& lambda2);

private:
    std::vector<bandParams> seen_;
};
