// Where the rows of a set go.
#include "runsink.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <unordered_map>

#include "atomicfile.h"
#include "rundatabase.h"
#include "runtext.h"

namespace sorvane {
namespace {
class DatabaseSink final : public RunSink {
public:
    DatabaseSink(RunDatabase database, std::unordered_map<std::string, RunStamp> known)
        : database_(std::move(database)), known_(std::move(known)) {}

    bool has(const std::string& path) const override {
        const auto known = known_.find(path);
        return known != known_.end() && known->second == runStamp(path);
    }
    std::optional<Problem> put(std::span<const RunRow> rows) override { return database_.put(rows); }
    std::optional<Problem> finish() override { return std::nullopt; }

private:
    RunDatabase database_;
    std::unordered_map<std::string, RunStamp> known_;
};

class TextSink final : public RunSink {
public:
    TextSink(const std::string& path, RunFormat format, std::vector<std::string> columns)
        : path_(path), format_(format), columns_(std::move(columns)), file_(path),
          stream_(file_.temporaryPath(), std::ios::binary) {
        stream_ << runHeading(format_, columns_);
    }

    const std::optional<Problem>& problem() const { return file_.problem(); }
    bool has(const std::string& /*path*/) const override { return false; }
    std::optional<Problem> put(std::span<const RunRow> rows) override {
        for (const RunRow& row : rows)
            stream_ << runLine(format_, columns_, row);
        return writingProblem();
    }
    std::optional<Problem> finish() override {
        stream_.close();
        if (auto problem = writingProblem())
            return problem;
        return file_.commit() ? std::nullopt : file_.problem();
    }

private:
    std::optional<Problem> writingProblem() const {
        return stream_ ? std::nullopt : std::optional(Problem(path_ + ": could not be written"));
    }

    std::string path_;
    RunFormat format_;
    std::vector<std::string> columns_;
    AtomicFile file_;
    std::ofstream stream_;
};

// A part with its next row.
struct Part {
    RunRows rows;
    std::optional<RunRow> next;
};

// The part with the least path; of one path, that with the newest row.
Part* firstOf(std::vector<Part>& parts) {
    Part* first = nullptr;
    const auto isBefore = [](const RunRow& a, const RunRow& b) {
        return a.path != b.path ? a.path < b.path : a.stamp.modifiedNanoseconds > b.stamp.modifiedNanoseconds;
    };
    for (Part& part : parts)
        if (part.next && (first == nullptr || isBefore(*part.next, *first->next)))
            first = &part;
    return first;
}

std::optional<Problem> mergeInto(RunSink& sink, std::vector<Part>& parts) {
    constexpr std::size_t kBatch = 1000;
    std::vector<RunRow> batch;
    while (const Part* const first = firstOf(parts)) {
        const RunRow& row = batch.emplace_back(*first->next);
        const std::string path = row.path;
        for (Part& part : parts)
            while (part.next && part.next->path == path)
                part.next = part.rows.next();
        if (batch.size() < kBatch)
            continue;
        if (auto problem = sink.put(batch))
            return problem;
        batch.clear();
    }
    for (const Part& part : parts)
        if (part.rows.problem())
            return part.rows.problem();
    if (auto problem = sink.put(batch))
        return problem;
    return sink.finish();
}
} // namespace

Outcome<std::unique_ptr<RunSink>>
openRunSink(const std::string& path, const std::vector<std::string>& columns, const std::vector<std::string>& calls) {
    const std::string extension = std::filesystem::path(path).extension().string();
    if (extension == ".sqlite") {
        Outcome<RunDatabase> database = RunDatabase::open(path, columns);
        if (!database)
            return database.problem();
        if (auto problem = database->addCalls(calls))
            return *problem;
        auto known = database->stamps();
        if (!known)
            return known.problem();
        return std::unique_ptr<RunSink>(std::make_unique<DatabaseSink>(*std::move(database), *std::move(known)));
    }
    if (extension != ".csv" && extension != ".jsonl")
        return Problem(path + ": its name ends in none of .sqlite, .csv and .jsonl");
    auto sink = std::make_unique<TextSink>(path, extension == ".csv" ? RunFormat::Csv : RunFormat::JsonLines, columns);
    if (sink->problem())
        return *sink->problem();
    return std::unique_ptr<RunSink>(std::move(sink));
}

std::optional<Problem>
mergeRuns(const std::vector<std::string>& parts, const std::string& output, const std::string& call) {
    std::vector<RunDatabase> databases;
    std::vector<std::string> calls;
    for (const std::string& path : parts) {
        Outcome<RunDatabase> database = RunDatabase::openExisting(path);
        if (!database)
            return database.problem();
        if (!databases.empty() && databases.front().columns() != database->columns())
            return Problem(path + ": has other columns than " + parts.front());
        std::ranges::copy(database->calls(), std::back_inserter(calls));
        databases.push_back(*std::move(database));
    }
    std::vector<Part> opened;
    for (const RunDatabase& database : databases) {
        Part& part = opened.emplace_back(Part{database.rows(), std::nullopt});
        part.next = part.rows.next();
    }
    calls.push_back(call);
    const auto sink = openRunSink(output, databases.front().columns(), calls);
    if (!sink)
        return sink.problem();
    return mergeInto(**sink, opened);
}
} // namespace sorvane
