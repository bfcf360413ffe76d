// What is wrong with a file, and where.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sorvane {
enum class Severity { Warning, Error };

// Lines and columns count from 1, comments included; a fault of a whole file, or of a binary one, is at 1:1.
struct FindingPlace {
    std::int64_t line = 1;
    std::int64_t column = 1;

    bool operator==(const FindingPlace&) const = default;
};

struct Finding {
    std::string file;
    FindingPlace place;
    Severity severity = Severity::Error;
    std::string text;
    std::int64_t count = 1; // of those for which it stands
    std::string_view kind;  // names those that are counted together, in the plural

    bool operator==(const Finding&) const = default;
};

const char* nameOf(Severity severity);

// "file:line:column: error: text", with control characters taken out of the text.
std::string findingLine(const Finding& finding);

// The findings of one file. Of each kind only the first ones are kept, unless all are asked for.
class FindingList {
public:
    FindingList(std::string file, bool keepsAll) : file_(std::move(file)), keepsAll_(keepsAll) {}

    // `kind` names the findings that are counted together, in the plural; it must outlive the list.
    void add(Severity severity, FindingPlace place, std::string_view kind, std::string text);
    // Not again when it is there already.
    void addOnce(Severity severity, FindingPlace place, std::string_view kind, std::string text);
    void error(FindingPlace place, std::string_view kind, std::string text) {
        add(Severity::Error, place, kind, std::move(text));
    }
    void warning(FindingPlace place, std::string_view kind, std::string text) {
        add(Severity::Warning, place, kind, std::move(text));
    }

    bool isEmpty() const { return findings_.empty(); }

    // In the order of their places, with a line for the kinds of which there were more.
    std::vector<Finding> take();

private:
    struct Kind {
        std::string_view name;
        std::int64_t count = 0;
        Severity severity = Severity::Warning; // the gravest
        FindingPlace firstDropped;
    };

    bool wants(Severity severity, FindingPlace place, std::string_view kind);

    std::string file_;
    bool keepsAll_;
    std::vector<Kind> kinds_;
    std::vector<Finding> findings_;
};
} // namespace sorvane
