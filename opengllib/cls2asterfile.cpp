// The text table that gives each material class a sample of the spectral library.
#include "cls2asterfile.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "fail.h"
#include "file.h"
#include "filechecks.h"
#include "inputfile.h"
#include "messages.h"
#include "textlines.h"

using namespace sorvane;

namespace {
std::vector<Cls2AsterFile::c2aData> cache;

constexpr std::size_t kLineLength = 512;
constexpr std::size_t kMaximumBytes = std::size_t{4} << 20; // far above a line for each class there can be
const std::string kAlpha = "aster::alpha";

bool isComment(const char* line) {
    return line[0] == '#' || line[0] == '\r' || line[0] == '\n';
}
} // namespace

std::vector<Cls2AsterFile::Line> Cls2AsterFile::parse(std::string_view text) {
    std::vector<Line> entries;
    TextLines lines(text);
    char line[kLineLength];
    while (lines.getLine(line, sizeof line)) {
        if (isComment(line))
            continue;
        int cls = 0;
        char sample[kLineLength] = "";
        [[maybe_unused]] const int fields = std::sscanf(line, "%d %511s", &cls, sample);
        entries.push_back({cls, sample});
    }
    return entries;
}

bool Cls2AsterFile::load(const std::string& path, std::string asterDir, float lambda1, float lambda2) {
    if (InCache(path, lambda1, lambda2))
        return true;
    clear();
    if (!CheckFileExistance(path, ""))
        return false;
    if (asterDir.empty()) {
        printMessage("%s:%d: no aster directory", __FILE__, __LINE__);
        return false;
    }
    path_ = path;
    if (!asterDir.ends_with('/'))
        asterDir += '/';
    const auto text = readInputFile(path, kMaximumBytes);
    if (!text)
        return false;
    c2aData resolved{path, lambda1, lambda2, {}};
    for (const Line& line : parse(*text)) {
        if (line.sample == kAlpha) {
            add(line.cls, Aster());
            resolved.entries.push_back({line.cls, kAlpha});
            continue;
        }
        std::string samplePath = asterDir;
        samplePath.append(line.sample).append(".").append(ASTER_EXT);
        if (!CheckFileExistence(samplePath)) {
            clear();
            return false;
        }
        add(line.cls, Aster(samplePath, lambda1, lambda2));
        resolved.entries.push_back({line.cls, std::move(samplePath)});
    }
    cache.push_back(std::move(resolved));
    return true;
}

bool Cls2AsterFile::InCache(const std::string& path, float lambda1, float lambda2) {
    const auto found = std::ranges::find_if(cache, [&](const c2aData& entry) {
        return entry.path == path && entry.lambda1 == lambda1 && entry.lambda2 == lambda2;
    });
    if (found == cache.end())
        return false;
    clear();
    path_ = path;
    for (const auto& [cls, samplePath] : found->entries)
        add(cls, samplePath == kAlpha ? Aster() : Aster(samplePath, lambda1, lambda2));
    return true;
}

void Cls2AsterFile::forget(const std::string& path) {
    std::erase_if(cache, [&](const c2aData& entry) { return isSamePath(entry.path, path); });
}

bool Cls2AsterFile::countClasses() {
    const auto text = readInputFile(path_, kMaximumBytes);
    if (!text)
        return false;
    count_ = static_cast<int>(parse(*text).size());
    return true;
}

int Cls2AsterFile::getIndexByClass(int cls) const {
    const auto found = std::ranges::find(classes_, cls);
    if (found == classes_.end()) {
        fail("getIndexByClass", "Could not find class %d.", cls);
        return -1;
    }
    return static_cast<int>(found - classes_.begin());
}

Aster Cls2AsterFile::getAsterByClass(int cls) const {
    const int index = getIndexByClass(cls);
    if (index < 0) {
        fail("getAsterByClass", "Received negative index %d.", index);
        return {};
    }
    return asters_[static_cast<std::size_t>(index)];
}

void Cls2AsterFile::print() const {
    for (std::size_t i = 0; i < asters_.size(); ++i) {
        std::printf("%d: ", classes_[i]);
        asters_[i].print();
    }
}

void Cls2AsterFile::clear() {
    path_.clear();
    asters_.clear();
    classes_.clear();
    count_ = 0;
}

void Cls2AsterFile::add(int cls, const Aster& aster) {
    asters_.push_back(aster);
    classes_.push_back(cls);
    count_ = static_cast<int>(classes_.size());
}
