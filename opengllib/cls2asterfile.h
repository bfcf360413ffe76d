// The text table that gives each material class a sample of the spectral library.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "aster.h"

inline constexpr const char* CLS2ASTER_EXT = "cls2aster";

// Text, lines of at most 511 characters, "class sample"; those that begin with "#" and empty ones are skipped.
class Cls2AsterFile {
public:
    // One entry of the process-wide cache, which only grows: the samples that a table resolves to for a band.
    struct c2aData {
        struct Entry {
            int cls;
            std::string samplePath; // or "aster::alpha"
        };
        std::string path;
        float lambda1;
        float lambda2;
        std::vector<Entry> entries;
    };

    // One line of a table.
    struct Line {
        int cls = 0;
        std::string sample; // without folder and extension, or "aster::alpha"
    };

    // Reads the table and the samples it names from the folder `asterDir`, or rebuilds itself from the cache. False,
    // with no entries, when the table, the folder's name or a sample is missing; lines on standard output say so.
    bool load(const std::string& path, std::string asterDir, float lambda1, float lambda2);

    // Rebuilds itself from the cache; false when it does not hold this table for exactly this band.
    bool InCache(const std::string& path, float lambda1, float lambda2);
    // Takes the table `path` out of the cache, for every band.
    static void forget(const std::string& path);

    // Counts the entries of the file path(); false when it can't be opened.
    bool countClasses();

    // The first entry of a class; -1 after a message when there is none.
    int getIndexByClass(int cls) const;
    // A class without an entry gives one without a material, after messages.
    Aster getAsterByClass(int cls) const;

    void print() const;

    // Every line that is no comment.
    static std::vector<Line> parse(std::string_view text);

    const std::string& path() const { return path_; }
    int count() const { return count_; }

private:
    void clear();
    void add(int cls, const Aster& aster);

    std::string path_;
    std::vector<Aster> asters_;
    std::vector<int> classes_;
    int count_ = 0;
};
