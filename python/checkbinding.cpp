// sorvane.check: what is wrong with files.
#include "bindings.h"

#include <sstream>
#include <utility>
#include <vector>

#include "checkrun.h"
#include "fileerror.h"
#include "filesearch.h"

namespace py = pybind11;

namespace sorvane {
namespace {
std::vector<Finding> findingsOf(const std::string& path, bool keepsAll) {
    std::ostringstream refusals;
    const FoundFiles found = findFiles({path}, "check", refusals);
    if (!found.isComplete) {
        const std::string line = refusals.str();
        const std::size_t begin = line.find(path);
        throw FileError(line.substr(begin, line.find('\n', begin) - begin), path);
    }
    std::vector<Finding> findings;
    CheckRun run(keepsAll, [&](std::vector<Finding> ofFile) {
        findings.insert(findings.end(), std::make_move_iterator(ofFile.begin()), std::make_move_iterator(ofFile.end()));
    });
    for (const FoundFile& file : found.files)
        run.checkFile(file.path, file.kind);
    return findings;
}

py::list check(const py::object& path, bool keepsAll) {
    const std::string name = pathOf(path);
    std::vector<Finding> findings;
    {
        const py::gil_scoped_release unlocked;
        const std::lock_guard alone(loadersMutex());
        findings = findingsOf(name, keepsAll);
    }
    const py::object record = recordClass("Finding");
    py::list records;
    for (const Finding& finding : findings)
        records.append(record(
            fileName(finding.file), finding.place.line, finding.place.column, nameOf(finding.severity),
            shownText(finding.text)));
    return records;
}
} // namespace

void bindCheck(py::module_& module) {
    module.def(
        "check", check, py::arg("path"), py::kw_only(), py::arg("all") = false,
        "What is wrong with a file and those that it names, or with the files below a folder, as sorvane check tells "
        "it: a list of Finding, empty when all is well.\n\n"
        "Of a kind in a file the first 20 are told and how many more there are; all of them with all=True. Raises "
        "Error when the path can't be read.");
}
} // namespace sorvane
