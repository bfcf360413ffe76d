// What is wrong with a file, and where.
#include "finding.h"

#include <algorithm>

namespace sorvane {
namespace {
constexpr std::int64_t kKeptOfAKind = 20;
}

const char* nameOf(Severity severity) {
    return severity == Severity::Error ? "error" : "warning";
}

std::string findingLine(const Finding& finding) {
    std::string line = finding.file;
    line.append(":").append(std::to_string(finding.place.line));
    line.append(":").append(std::to_string(finding.place.column));
    line.append(": ").append(nameOf(finding.severity)).append(": ").append(finding.text);
    std::erase_if(line, [](unsigned char c) { return c < 0x20 || c == 0x7F; });
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

bool FindingList::wants(Severity severity, FindingPlace place, std::string_view kind) {
    auto found = std::ranges::find(kinds_, kind, &Kind::name);
    if (found == kinds_.end())
        found = kinds_.insert(kinds_.end(), {kind, 0, severity, {}});
    found->severity = std::max(found->severity, severity);
    if (++found->count == kKeptOfAKind + 1)
        found->firstDropped = place;
    return keepsAll_ || found->count <= kKeptOfAKind;
}

void FindingList::add(Severity severity, FindingPlace place, std::string_view kind, std::string text) {
    if (wants(severity, place, kind))
        findings_.push_back({file_, place, severity, std::move(text), 1, kind});
}

void FindingList::addOnce(Severity severity, FindingPlace place, std::string_view kind, std::string text) {
    const Finding finding{file_, place, severity, text, 1, kind};
    if (std::ranges::find(findings_, finding) == findings_.end())
        add(severity, place, kind, std::move(text));
}

std::vector<Finding> FindingList::take() {
    for (const Kind& kind : kinds_)
        if (!keepsAll_ && kind.count > kKeptOfAKind)
            findings_.push_back(
                {file_, kind.firstDropped, kind.severity,
                 std::string("and ") + std::to_string(kind.count - kKeptOfAKind) + " more " + std::string(kind.name) +
                     " (--all prints them)",
                 kind.count - kKeptOfAKind, kind.name});
    std::ranges::stable_sort(
        findings_, {}, [](const Finding& finding) { return std::pair(finding.place.line, finding.place.column); });
    kinds_.clear();
    return std::exchange(findings_, {});
}
} // namespace sorvane
