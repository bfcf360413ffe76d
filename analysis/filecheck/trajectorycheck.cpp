// Checks a trajectory file: what its lines hold, and whether the files that it names are there.
#include "trajectorycheck.h"

#include <algorithm>

#include <QFile>

#include "engagementfiles.h"
#include "flarecheck.h"
#include "linereading.h"
#include "openingproblem.h"
#include "samplecheck.h"
#include "trajectoryinput.h"
#include "watchedreader.h"

namespace sorvane {
namespace {
constexpr const char* kMissingWords = "lines with missing words";
constexpr const char* kRecords = "faults of records";

// Words of the lines, by which one can be taken for another.
constexpr qsizetype kHeadWords = 8;
constexpr qsizetype kFlareWords = 13;
constexpr int kFirstFlareLine = 3; // in a record

// Lines of the header that say where its files are, from 0.
enum HeaderLine : std::size_t {
    kTopography = 0,
    kTerrainRadiance,
    kSignature,
    kGeometry = 5,
    kBrdf = 6,
    kThreat = 10,
    kView = 11
};

std::string countText(std::int64_t count, const char* thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

class TrajectoryCheck final : public TrajectoryWatcher {
public:
    explicit TrajectoryCheck(FindingList& findings) : findings_(findings) {}

    void header(const WatchedHeader& told) override;
    void record(const WatchedRecord& told) override;
    void blankLine(std::int64_t line, std::int64_t linesAfter) override;
    void cutLine(std::int64_t line) override;

    // After the last line.
    void finish();

    const TrajectoryFileHeader& readHeader() const { return header_; }

private:
    void reportWords(const LineFaults& faults, const char* replacement);
    bool isMisread(const WatchedRecord& told);
    void reportMisread(std::int64_t line, std::string text);
    void checkTerrainFiles(const EngagementFiles& named, const EngagementFiles& chosen);
    void checkTargetFiles(const EngagementFiles& named, const EngagementFiles& chosen);
    void checkStock(std::size_t line, const char* what, std::initializer_list<QString> paths);
    bool reportMissing(
        std::size_t line, const QString& path, const char* what, const char* replacement,
        const char* kind = kMissingFiles);

    FindingList& findings_;
    TrajectoryFileHeader header_;
    std::array<std::int64_t, 12> headerLines_{};
    SampleCheck samples_;
    BrightestFlares flares_;
    bool isHeaderWhole_ = false;
    bool wasOutOfStep_ = false;
    bool isOutOfStep_ = false; // records have been taken for others since a wrong flare count
};

void TrajectoryCheck::reportWords(const LineFaults& faults, const char* replacement) {
    for (const MalformedWord& word : faults.malformed)
        findings_.error(
            {faults.line, word.column}, kMalformedNumbers,
            std::string("\"") + word.word.toStdString() + "\" is not " +
                (word.kind == NumberKind::Integer ? "an integer of 32 bits" : "a finite number") + " and reads as " +
                replacement);
    if (faults.missingWords > 0)
        findings_.error(
            {faults.line, faults.endColumn}, kMissingWords,
            countText(faults.missingWords, "word") + (faults.missingWords == 1 ? " is" : " are") + " missing and read" +
                (faults.missingWords == 1 ? "s" : "") + " as " + replacement);
}

void TrajectoryCheck::header(const WatchedHeader& told) {
    header_ = told.header;
    headerLines_ = told.lines;
    const auto headerLineCount = static_cast<int>(told.lines.size());
    isHeaderWhole_ = told.linesRead == headerLineCount;
    if (!isHeaderWhole_) {
        const std::int64_t last = std::max<std::int64_t>(told.lines.back(), 1);
        findings_.error(
            {last}, kRecords,
            std::string("the header ends after ") + std::to_string(told.linesRead) + " of its " +
                std::to_string(headerLineCount) + " lines");
    }
    for (const LineFaults& faults : told.faults)
        if (faults.lineInRecord < told.linesRead)
            reportWords(faults, faults.lineInRecord == kView ? "1.5" : "0");
    if (!isHeaderWhole_)
        return; // the names that it lacks would be reported as missing files
    const EngagementFiles named = namedFiles(header_);
    const EngagementFiles chosen = chooseFiles(header_);
    checkTerrainFiles(named, chosen);
    checkTargetFiles(named, chosen);
    checkStock(
        kThreat, "threat's", {chosen.threatBrdfPath(), chosen.threatGeometryPath(), chosen.threatRadiancePath()});
}

bool TrajectoryCheck::reportMissing(
    std::size_t line, const QString& path, const char* what, const char* replacement, const char* kind) {
    if (QFile::exists(path))
        return false;
    findings_.warning(
        {std::max<std::int64_t>(headerLines_.at(line), 1)}, kind,
        std::string("the ") + what + " file \"" + path.toStdString() + "\" does not exist: the stock " + replacement +
            " takes its place");
    return true;
}

void TrajectoryCheck::checkStock(std::size_t line, const char* what, std::initializer_list<QString> paths) {
    for (const QString& path : paths)
        if (!QFile::exists(path))
            findings_.error(
                {std::max<std::int64_t>(headerLines_.at(line), 1)}, kMissingFiles,
                std::string("the ") + what + " file \"" + path.toStdString() + "\" does not exist");
}

void TrajectoryCheck::checkTerrainFiles(const EngagementFiles& named, const EngagementFiles& chosen) {
    if (!chosen.isStockTerrain)
        return;
    reportMissing(kTopography, named.terrainTopoPath, "topography", "terrain");
    reportMissing(kTerrainRadiance, named.terrainRadPath, "terrain's radiance", "terrain");
    checkStock(kTopography, "stock terrain's", {chosen.terrainTopoPath, chosen.terrainRadPath});
}

void TrajectoryCheck::checkTargetFiles(const EngagementFiles& named, const EngagementFiles& chosen) {
    if (!chosen.isStockTarget)
        return;
    reportMissing(kSignature, named.targetRadiancePath(), "target's radiance", "target", kReplacedTargetFiles);
    reportMissing(kSignature, named.atmospherePath(), "atmosphere", "target", kReplacedTargetFiles);
    reportMissing(kGeometry, named.targetGeometryPath(), "target's geometry", "target", kReplacedTargetFiles);
    reportMissing(kBrdf, named.targetBrdfPath, "target's reflectance", "target", kReplacedTargetFiles);
    checkStock(
        kSignature, "stock target's",
        {chosen.targetBrdfPath, chosen.targetGeometryPath(), chosen.targetRadiancePath(), chosen.atmospherePath()});
}

// A flare line has more words than a record's first one, so that a wrong flare count can be told by them.
bool TrajectoryCheck::isMisread(const WatchedRecord& told) {
    if (told.headWords == kFlareWords) {
        reportMisread(
            told.line, "this looks like a flare but is read as the first line of a record: the flare count of the "
                       "record before may be too low");
        return true;
    }
    for (const LineFaults& faults : told.faults)
        if (faults.lineInRecord >= kFirstFlareLine && faults.words == kHeadWords) {
            reportMisread(
                faults.line, std::string("this looks like the first line of a record but is read as flare ") +
                                 std::to_string(faults.lineInRecord - kFirstFlareLine + 1) + " of " +
                                 std::to_string(told.sample.flareCount) + ": the flare count in line " +
                                 std::to_string(told.line) + " may be too high");
            return true;
        }
    return false;
}

// What is read out of step is not worth a finding of its own.
void TrajectoryCheck::reportMisread(std::int64_t line, std::string text) {
    if (!isOutOfStep_)
        findings_.error({line}, "wrong flare counts", std::move(text));
}

void TrajectoryCheck::record(const WatchedRecord& told) {
    const bool lacksWords =
        std::ranges::any_of(told.faults, [](const LineFaults& faults) { return faults.missingWords > 0; });
    isOutOfStep_ = isMisread(told) || (isOutOfStep_ && lacksWords);
    if (told.isTruncated)
        findings_.error(
            {told.line}, kRecords,
            "the data end within the record that begins here: what is missing of it reads as 0" +
                (told.sample.flareCount > 0 ? std::string(", and there are ") + std::to_string(told.flares.size()) +
                                                  " of its " + countText(told.sample.flareCount, "flare")
                                            : std::string()));
    wasOutOfStep_ = wasOutOfStep_ || isOutOfStep_;
    if (isOutOfStep_)
        return;
    for (const LineFaults& faults : told.faults)
        reportWords(faults, "0");
    if (told.sample.flareCount < 0)
        findings_.error(
            {told.line}, "wrong flare counts",
            std::string("the flare count is ") + std::to_string(told.sample.flareCount) + " and counts as 0");
    samples_.add(told.sample, told.flares, told.line);
    flares_.include(told.flares);
}

void TrajectoryCheck::blankLine(std::int64_t line, std::int64_t linesAfter) {
    if (linesAfter > 0)
        findings_.error(
            {line}, kRecords,
            std::string("a blank line ends the data here: ") + countText(linesAfter, "line") +
                (linesAfter == 1 ? " that follows is" : " that follow are") + " not read");
}

void TrajectoryCheck::cutLine(std::int64_t line) {
    findings_.error(
        {line}, "overlong lines",
        std::string("the line is too long: only its first ") + std::to_string(kMaximumLineBytes) + " bytes are read");
}

void TrajectoryCheck::finish() {
    if (samples_.isEmpty() && isHeaderWhole_ && !wasOutOfStep_)
        findings_.error({}, kRecords, "there are no samples: the viewer refuses the file");
    samples_.report(findings_, !wasOutOfStep_);
    reportBlackFlares(flares_, findings_);
}
} // namespace

std::optional<TrajectoryFileHeader>
checkTrajectory(const TrajectoryInput& input, const std::string& path, FindingList& findings) {
    if (input.device == nullptr) {
        findings.error({}, kMissingFiles, "the file can't be opened, or uncompress can't be started");
        return std::nullopt;
    }
    if (const std::optional<Problem> problem = problemOfInput(input, path)) {
        findings.error({}, kMissingFiles, "the file " + problem->text);
        return std::nullopt;
    }
    TrajectoryCheck check(findings);
    readWatched(input.device.get(), input.isProcess, check);
    if (!input.cameWhole())
        findings.error({}, kMissingFiles, "its compressed data are damaged or cut short");
    check.finish();
    return check.readHeader();
}

std::vector<Finding> lossesIn(const std::string& path) {
    FindingList findings(path, false);
    checkTrajectory(openTrajectory(QFile::decodeName(path.c_str())), path, findings);
    std::vector<Finding> losses = findings.take();
    std::erase_if(losses, [](const Finding& finding) { return !isLoss(finding); });
    return losses;
}
} // namespace sorvane
