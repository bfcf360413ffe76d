// One run of `sorvane check`: every file once, with those that it names.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "filekind.h"
#include "finding.h"

namespace sorvane {
class CheckRun {
public:
    using Deliver = std::function<void(std::vector<Finding>)>;

    // `deliver` gets the findings of one file after the other.
    CheckRun(bool keepsAll, Deliver deliver) : keepsAll_(keepsAll), deliver_(std::move(deliver)) {}

    // Checks the file by what it is, then the files that it names. One that has been checked is not checked again.
    void checkFile(const std::string& path) { checkFile(path, fileKindOf(path)); }
    void checkFile(const std::string& path, FileKind kind);

    // Checks a trajectory from standard input.
    void checkStandardInput();

    // So far.
    std::size_t checkedFiles() const { return checked_.size() + standardInputs_; }

private:
    void checkContents(const std::string& path, FileKind kind, FindingList& findings);
    std::optional<int> checkFacets(const std::string& path, FileKind kind, FindingList& findings);
    void checkTrajectoryAnd(const std::string& path, FindingList& findings);
    void checkBody(const std::string& brdf, const std::string& geometry, const std::string& radiance);
    void compareWithGeometryBeside(const std::string& path, FindingList& findings);
    void compareFacets(const std::string& path, const std::string& geometry, FindingList& findings);
    void deliver(FindingList& findings);

    bool keepsAll_;
    Deliver deliver_;
    std::set<std::filesystem::path> checked_;
    std::size_t standardInputs_ = 0;
    std::map<std::filesystem::path, int> facets_; // of the files of bodies
    std::set<std::pair<std::filesystem::path, std::filesystem::path>> compared_;
    std::set<std::pair<std::string, std::string>> terrains_; // topography and radiance
    std::vector<std::function<void()>> pending_;             // what follows from the file that is being checked
};
} // namespace sorvane
