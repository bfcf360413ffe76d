// What someone who has loaded a trajectory should be told of it, in the words of `sorvane check`.
#include "loadingproblems.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include <QBuffer>
#include <QFile>

#include "etxyz.h"
#include "inputfile.h"
#include "openingproblem.h"
#include "texthead.h"
#include "trajectorycheck.h"
#include "trajectoryidentity.h"
#include "trajectoryinput.h"

namespace sorvane {
namespace {
constexpr qint64 kHeadBytes = qint64{1} << 16;

std::string nameOfFile(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

bool looksForeign(const std::string& path, const QByteArray& head) {
    return !isNamedLikeTrajectory(nameOfFile(path)) &&
           !looksLikeTrajectory(TextHead(std::string_view(head.data(), static_cast<std::size_t>(head.size()))));
}

// The first bytes alone, where the header is.
TrajectoryInput onlyHead(const QByteArray& head) {
    auto device = std::make_unique<QBuffer>();
    device->setData(head);
    device->open(QIODevice::ReadOnly);
    return {std::move(device), false};
}

struct KindOfFindings {
    Finding first;
    std::int64_t count = 0;
};

std::string textOf(const KindOfFindings& kind) {
    const std::string& reason = kind.first.text;
    const std::string inLine = "line " + std::to_string(kind.first.place.line) + ": ";
    if (kind.first.kind == kMalformedNumbers)
        return (kind.count == 1 ? std::string("a number") : std::to_string(kind.count) + " numbers") +
               " could not be read: " + inLine + reason;
    if (kind.count == 1)
        return reason;
    return inLine + reason + ", and " + std::to_string(kind.count - 1) + " more " + std::string(kind.first.kind);
}

bool isAny(const Finding& /*finding*/) {
    return true;
}

bool isReplacement(const Finding& finding) {
    return finding.kind == kReplacedTargetFiles;
}

bool isLossOrReplacement(const Finding& finding) {
    return isReplacement(finding) || isLoss(finding);
}

// One text for each kind of those that `counts`.
std::vector<std::string> textsOf(const std::vector<Finding>& findings, bool (*counts)(const Finding&)) {
    std::vector<KindOfFindings> kinds;
    for (const Finding& finding : findings) {
        if (!counts(finding))
            continue;
        const auto same =
            std::ranges::find(kinds, finding.kind, [](const KindOfFindings& each) { return each.first.kind; });
        if (same == kinds.end())
            kinds.push_back({finding, finding.count});
        else
            same->count += finding.count;
    }
    std::vector<std::string> texts;
    texts.reserve(kinds.size());
    for (const KindOfFindings& kind : kinds)
        texts.push_back(textOf(kind));
    return texts;
}
} // namespace

std::vector<std::string> problemsOfLoading(const std::string& path, const etxyz* loaded) {
    if (openInputFile(path) == nullptr)
        return {problemOfOpening(path).text};
    const bool isWhollyRead = loaded != nullptr && loaded->isWhollyRead;
    const bool isAsItSays = isWhollyRead && !loaded->isStockTarget;
    if (isAsItSays && isNamedLikeTrajectory(nameOfFile(path)))
        return {};
    const TrajectoryInput input = openTrajectory(QFile::decodeName(path.c_str()));
    FindingList findings(path, false);
    if (input.device == nullptr || problemOfInput(input, path)) {
        checkTrajectory(input, path, findings);
        return textsOf(findings.take(), isAny);
    }
    const QByteArray head = input.device->peek(kHeadBytes);
    if (looksForeign(path, head))
        return {"does not look like a trajectory"};
    if (isAsItSays)
        return {};
    if (isWhollyRead)
        checkTrajectory(onlyHead(head), path, findings);
    else
        checkTrajectory(input, path, findings);
    return textsOf(findings.take(), isWhollyRead ? isReplacement : isLossOrReplacement);
}
} // namespace sorvane
