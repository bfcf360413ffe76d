// The edges of the sensor's band.
#include "bandfile.h"

#include <cstdio>

#include "cnumericlocale.h"
#include "fail.h"
#include "file.h"
#include "filechecks.h"
#include "inputfile.h"
#include "textlines.h"

using namespace sorvane;

namespace {
constexpr std::size_t kMaximumCached = 256;
constexpr std::size_t kLineLength = 256;
constexpr std::size_t kMaximumBytes = 65536; // blanks between the numbers included

void reportMissing(const char* function, const std::string& path) {
    fail(function, "File \"%s\" does not exist.", path.c_str());
}
} // namespace

BandFile* BandFile::instance_ = nullptr;

bool BandFile::Create() {
    static BandFile instance;
    instance_ = &instance;
    return true;
}

bool BandFile::GetLambda(const std::string& path, float& lambda1, float& lambda2) {
    return seenBefore(path, lambda1, lambda2) || readFile(path, lambda1, lambda2);
}

bool BandFile::seenBefore(const std::string& path, float& lambda1, float& lambda2) const {
    for (const bandParams& entry : seen_) {
        if (entry.path != path)
            continue;
        if (entry.lambda1 > 0.0F && entry.lambda2 > 0.0F) {
            lambda1 = entry.lambda1;
            lambda2 = entry.lambda2;
            return true;
        }
        reportMissing("seenBefore", path);
        return false;
    }
    return false;
}

bool BandFile::readFile(const std::string& path, float& lambda1, float& lambda2) {
    const auto text = CheckFileExistence(path) ? readInputFile(path, kMaximumBytes) : std::nullopt;
    if (text) {
        parse(*text, lambda1, lambda2);
    } else {
        reportMissing("readFile", path);
        lambda1 = lambda2 = -1.0F;
    }
    if (seen_.size() > kMaximumCached)
        seen_.clear();
    seen_.push_back({path, lambda1, lambda2});
    return text.has_value();
}

void BandFile::forget(const std::string& path) {
    std::erase_if(seen_, [&](const bandParams& entry) { return isSamePath(entry.path, path); });
}

void BandFile::parse(std::string_view text, float& lambda1, float& lambda2) {
    const CNumericLocale decimalPoint;
    TextLines lines(text);
    char line[kLineLength];
    std::string numbers;
    if (lines.getLine(line, sizeof line))
        while (lines.getLine(line, sizeof line))
            numbers += line;
    lambda1 = lambda2 = 0.0F;
    [[maybe_unused]] const int count = std::sscanf(numbers.c_str(), "%f %f", &lambda1, &lambda2);
}
