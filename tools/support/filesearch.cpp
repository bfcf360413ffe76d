// Finds the files that a command line names.
#include "filesearch.h"

#include <algorithm>
#include <filesystem>

#include "inputfile.h"
#include "openingproblem.h"

namespace sorvane {
namespace {
class FileSearch {
public:
    FileSearch(const char* command, std::ostream& err) : command_(command), err_(err) {}

    void add(const std::string& path) {
        std::error_code ignored;
        if (path == "-")
            found.files.push_back({path, FileKind::Trajectory});
        else if (std::filesystem::is_directory(path, ignored))
            addDirectory(path);
        else
            addFile(path, true);
    }

    FoundFiles found;

private:
    void addFile(const std::string& path, bool isNamed) {
        if (openInputFile(path) == nullptr) {
            refuse(path);
            return;
        }
        const FileKind kind = fileKindOf(path);
        if (isNamed || kind != FileKind::Unknown)
            found.files.push_back({path, kind});
    }

    void addDirectory(const std::string& directory) {
        std::error_code fault;
        std::vector<std::filesystem::directory_entry> entries;
        std::filesystem::directory_iterator at(directory, fault);
        for (; !fault && at != std::filesystem::directory_iterator(); at.increment(fault))
            entries.push_back(*at);
        if (fault)
            refuse(directory);
        std::ranges::sort(entries);
        for (const std::filesystem::directory_entry& entry : entries) {
            std::error_code ignored;
            if (entry.is_directory(ignored) && !entry.is_symlink(ignored))
                addDirectory(entry.path().string());
            else if (entry.is_regular_file(ignored))
                addFile(entry.path().string(), false);
        }
    }

    void refuse(const std::string& path) {
        err_ << command_ << ": " << path << ": " << problemOfOpening(path).text << std::endl;
        found.isComplete = false;
    }

    const char* command_;
    std::ostream& err_;
};
} // namespace

FoundFiles findFiles(const std::vector<std::string>& paths, const char* command, std::ostream& err) {
    FileSearch search(command, err);
    for (const std::string& path : paths)
        search.add(path);
    return std::move(search.found);
}
} // namespace sorvane
