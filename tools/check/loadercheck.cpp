// Runs one of the viewer's loaders and makes findings of what it says.
#include "loadercheck.h"

#include <algorithm>
#include <charconv>

#include "loaderguard.h"

namespace sorvane {
namespace {
constexpr const char* kLoading = "faults of loading";

// "Malformed line 7. …" names line 7; a message that names none is about the whole file.
FindingPlace placeNamedIn(const std::string& message) {
    constexpr std::string_view kMark = "line ";
    for (std::size_t at = message.find(kMark); at != std::string::npos; at = message.find(kMark, at + 1)) {
        const char* const digits = message.data() + at + kMark.size();
        FindingPlace place;
        if (std::from_chars(digits, message.data() + message.size(), place.line).ec == std::errc())
            return {std::max<std::int64_t>(place.line, 1)};
    }
    return {};
}
} // namespace

bool checkLoader(const std::function<bool()>& load, FindingList& findings, const std::string& failureText) {
    bool isLoaded = false;
    LoaderOutcome outcome = runLoader([&] { isLoaded = load(); });
    if (!outcome.exceptionText.empty())
        outcome.messages.push_back({true, outcome.exceptionText});
    isLoaded = isLoaded && outcome.hasReturned();
    const bool hasErrors = std::ranges::any_of(outcome.messages, &Message::isError);
    for (const Message& message : outcome.messages)
        if (message.isError || (!isLoaded && !hasErrors))
            findings.addOnce(Severity::Error, placeNamedIn(message.text), kLoading, message.text);
    if (!isLoaded && outcome.messages.empty())
        findings.addOnce(Severity::Error, {}, kLoading, failureText);
    return isLoaded && !hasErrors;
}
} // namespace sorvane
