// Tells what a file is, from its name and its first bytes.
#include "filekind.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <sys/stat.h>

#include <QStringList>

#include "bkgheader.h"
#include "ghead.h"
#include "inputfile.h"
#include "wordconversion.h"

namespace {
constexpr std::size_t kHeadBytes = std::size_t{1} << 16; // long enough for comments before a trajectory's header

constexpr std::pair<std::string_view, FileKind> kEndings[] = {
    {".vnl", FileKind::Geometry},
    {".brdf", FileKind::Reflectance},
    {".sff-txt", FileKind::FormFactors},
    {".atm", FileKind::Atmosphere},
    {".top", FileKind::Raster},
    {".le-ftop", FileKind::Raster},
    {".norm", FileKind::Raster},
    {".cls", FileKind::Raster},
    {".xml", FileKind::TerrainDescription},
    {".cls2aster", FileKind::ClassToAster},
    {".cls2mat", FileKind::ClassToMaterial},
    {".temp", FileKind::Temperature},
    {".band", FileKind::Band},
};

struct FileHead {
    std::string bytes; // the first ones
    std::int64_t size = 0;
};

std::optional<FileHead> readHead(const std::string& path) {
    const FileHandle stream = openInputFile(path);
    struct stat status {};
    if (stream == nullptr || ::fstat(::fileno(stream.get()), &status) != 0)
        return std::nullopt;
    FileHead head{std::string(kHeadBytes, '\0'), status.st_size};
    head.bytes.resize(std::fread(head.bytes.data(), 1, head.bytes.size(), stream.get()));
    return head;
}

bool isMorlan(const FileHead& head) {
    return head.bytes.starts_with(BKG_HEADER_SIGNATURE);
}

// Whether these can be the sizes of a raster: a body's file has other things there.
bool hasTorvaleHeader(const FileHead& head) {
    GHead header{};
    if (head.bytes.size() < sizeof header)
        return false;
    std::memcpy(&header, head.bytes.data(), sizeof header);
    return header.nrows > 0 && header.ncols > 0 && sampleSizeOf(header) > 0;
}

// Whether the file is exactly as long as its count of facets asks for.
bool isWholeBodyRadiance(const FileHead& head) {
    constexpr std::size_t kCountOffset = 40;
    constexpr std::int64_t kFixedBytes = 84;
    std::int32_t facets = 0;
    if (head.bytes.size() < kCountOffset + sizeof facets)
        return false;
    std::memcpy(&facets, head.bytes.data() + kCountOffset, sizeof facets);
    return facets >= 0 && head.size == kFixedBytes + 8 * std::int64_t{facets};
}

FileKind radianceKindOf(const FileHead& head) {
    if (isMorlan(head) || (!isWholeBodyRadiance(head) && hasTorvaleHeader(head)))
        return FileKind::Raster;
    return FileKind::BodyRadiance;
}

// The first words of a text's lines. Lines that begin with "#" are left out where they are comments.
class HeadLines {
public:
    HeadLines(std::string_view bytes, bool hasComments) {
        while (!bytes.empty() && lines_.size() < kMaximumLines) {
            const std::string_view line = bytes.substr(0, bytes.find('\n'));
            bytes.remove_prefix(std::min(bytes.size(), line.size() + 1));
            if (!hasComments || !line.starts_with('#'))
                lines_.push_back(QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()))
                                     .simplified()
                                     .split(u' ', Qt::SkipEmptyParts));
        }
    }

    std::size_t count() const { return lines_.size(); }
    bool isBlank(std::size_t line) const { return line < count() && lines_[line].isEmpty(); }

    // How many numbers the line, counted from 0, begins with.
    qsizetype numbers(std::size_t line) const {
        return leading(line, [](QStringView word) { return toDouble(word); });
    }
    qsizetype integers(std::size_t line) const {
        return leading(line, [](QStringView word) { return toInt(word); });
    }
    qsizetype words(std::size_t line) const { return line < count() ? lines_[line].size() : 0; }
    QString word(std::size_t line, qsizetype place) const { return line < count() ? lines_[line].value(place) : ""; }

private:
    static constexpr std::size_t kMaximumLines = 100;

    template <class Convert> qsizetype leading(std::size_t line, Convert convert) const {
        if (line >= count())
            return 0;
        const auto end =
            std::ranges::find_if_not(lines_[line], [&](const QString& w) { return convert(w).has_value(); });
        return end - lines_[line].begin();
    }

    std::vector<QStringList> lines_;
};

bool looksLikeTrajectory(const HeadLines& lines) {
    constexpr std::size_t kTriples[] = {3, 4};
    constexpr std::size_t kPaths[] = {0, 1, 2, 5, 6};
    constexpr std::size_t kFirstRecord = 12;
    return std::ranges::all_of(kTriples, [&](std::size_t line) { return lines.numbers(line) >= 3; }) &&
           std::ranges::none_of(kPaths, [&](std::size_t line) { return lines.numbers(line) > 0; }) &&
           (lines.count() <= kFirstRecord || lines.isBlank(kFirstRecord) || lines.numbers(kFirstRecord) >= 2);
}

bool looksLikeRotor(const HeadLines& lines) {
    constexpr qsizetype kFields = 9;
    return lines.count() > 0 && lines.integers(0) >= 2 && lines.numbers(0) >= kFields &&
           lines.words(0) == lines.numbers(0);
}

bool looksLikeSpectralSample(const HeadLines& lines) {
    constexpr std::size_t kSkippedLines = 26;
    return lines.numbers(kSkippedLines) == 2 && lines.numbers(0) == 0;
}

FileKind textKindOf(const FileHead& head, bool isNamedText) {
    const HeadLines lines(head.bytes, true);
    if (looksLikeTrajectory(lines))
        return FileKind::Trajectory;
    if (isNamedText && looksLikeSpectralSample(HeadLines(head.bytes, false)))
        return FileKind::SpectralSample;
    if (lines.word(0, 0) == "BRDF")
        return FileKind::Reflectance;
    if (lines.integers(0) == 2 && lines.words(0) == 2 && lines.numbers(1) == 6 && lines.words(2) == 7)
        return FileKind::Geometry;
    if (lines.numbers(0) == 3 && lines.numbers(1) == 10 && lines.numbers(2) == 4)
        return FileKind::Atmosphere;
    if (looksLikeRotor(lines))
        return FileKind::Rotor;
    if (head.bytes.find("<subterrain") != std::string::npos)
        return FileKind::TerrainDescription;
    return FileKind::Unknown;
}
} // namespace

FileKind fileKindOf(const std::string& path) {
    const std::optional<FileHead> head = readHead(path);
    if (!head)
        return FileKind::Unknown;
    const std::string name = std::filesystem::path(path).filename().string();
    for (const auto& [ending, kind] : kEndings)
        if (name.ends_with(ending))
            return kind;
    if (name.ends_with(".rad"))
        return radianceKindOf(*head);
    if (name.starts_with("ETXYZ.OUT") || name.ends_with(".Z"))
        return FileKind::Trajectory;
    if (isMorlan(*head))
        return FileKind::Raster;
    if (head->bytes.find('\0') != std::string::npos)
        return FileKind::Unknown;
    return textKindOf(*head, name.ends_with(".txt"));
}

const char* nameOf(FileKind kind) {
    switch (kind) {
    case FileKind::Trajectory:
        return "trajectory";
    case FileKind::Geometry:
        return "geometry";
    case FileKind::Reflectance:
        return "reflectance";
    case FileKind::BodyRadiance:
        return "body radiance";
    case FileKind::FormFactors:
        return "form factors";
    case FileKind::Atmosphere:
        return "atmosphere";
    case FileKind::Rotor:
        return "rotors";
    case FileKind::Raster:
        return "raster";
    case FileKind::TerrainDescription:
        return "terrain description";
    case FileKind::ClassToAster:
        return "class to spectrum";
    case FileKind::ClassToMaterial:
        return "class to material";
    case FileKind::Temperature:
        return "temperatures";
    case FileKind::Band:
        return "band";
    case FileKind::SpectralSample:
        return "spectral sample";
    case FileKind::Unknown:
        break;
    }
    return "unknown";
}
