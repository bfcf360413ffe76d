// One sample of a spectral library in ASTER format.
#include "aster.h"

#include <cstdio>
#include <vector>

#include "cnumericlocale.h"
#include "fail.h"
#include "file.h"
#include "filechecks.h"
#include "inputfile.h"
#include "texthead.h"
#include "textlines.h"

using namespace sorvane;

namespace {
std::vector<Aster::asterdata> cache;

constexpr std::size_t kLineLength = 512;
constexpr std::size_t kMaximumBytes = std::size_t{64} << 20; // far above any sample

struct Point {
    float wavelength = 0.0F;
    float percent = 0.0F;
};

// The points behind the header. A line that holds no numbers leaves the point as it was.
class Points {
public:
    explicit Points(std::string_view text) : lines_(text) {
        char line[kLineLength];
        for (int i = 0; i < Aster::kHeaderLines; ++i)
            lines_.getLine(line, sizeof line);
    }

    bool read(Point& point) {
        char line[kLineLength];
        if (!lines_.getLine(line, sizeof line))
            return false;
        [[maybe_unused]] const int numbers = std::sscanf(line, "%f %f", &point.wavelength, &point.percent);
        return true;
    }

private:
    TextLines lines_;
};
} // namespace

bool Aster::looksLike(const sorvane::TextHead& head) {
    return head.numbers(kHeaderLines) == 2 && head.numbers(0) == 0;
}

Aster::Aster(const std::string& path, float lambda1, float lambda2) {
    if (!CheckFileExistance(path, ""))
        return;
    name_ = path;
    reflectance_ = 0.0F;
    readFile(lambda1, lambda2);
}

bool Aster::hasBeenLoaded(const std::string& name, float lambda1, float lambda2, asterdata& out) {
    out = {name, -1.0F, lambda1, lambda2};
    for (const asterdata& entry : cache)
        if (entry.name == name && entry.lambda1 == lambda1 && entry.lambda2 == lambda2) {
            out.reflectance = entry.reflectance;
            return true;
        }
    return false;
}

void Aster::forget(const std::string& name) {
    std::erase_if(cache, [&](const asterdata& entry) { return isSamePath(entry.name, name); });
}

bool Aster::readFile(float lambda1, float lambda2) {
    asterdata entry;
    if (hasBeenLoaded(name_, lambda1, lambda2, entry)) {
        reflectance_ = entry.reflectance;
        return true;
    }
    const auto text = readInputFile(name_, kMaximumBytes);
    if (!text)
        return fail("readFile", "Could not open file \"%s\" for reading.", name_.c_str());
    entry.reflectance = reflectance_ = bandMean(*text, lambda1, lambda2);
    cache.push_back(entry);
    return true;
}

float Aster::bandMean(std::string_view text, float lambda1, float lambda2) {
    const CNumericLocale decimalPoint;
    Points points(text);
    Point previous;
    points.read(previous);
    Point current = previous;
    bool isAtEnd = false;
    while (!isAtEnd && current.wavelength == previous.wavelength)
        isAtEnd = !points.read(current);
    const bool isAscending = current.wavelength > previous.wavelength;

    const auto isBeforeBand = [&] {
        return isAscending ? lambda1 > previous.wavelength : previous.wavelength > lambda2;
    };
    while (!isAtEnd && isBeforeBand()) {
        previous = current;
        isAtEnd = !points.read(current);
    }
    float sum = 0.0F;
    float width = 0.0F;
    const auto isInBand = [&] {
        return isAscending ? current.wavelength <= lambda2 : current.wavelength >= lambda1;
    };
    while (isInBand()) {
        const float step = current.wavelength - previous.wavelength;
        if (step != 0.0F) {
            width += step;
            sum = static_cast<float>(sum + (previous.percent + current.percent) * step * 0.5);
        }
        previous = current;
        if (isAtEnd || !points.read(current))
            break;
    }
    return static_cast<float>(sum / (width * 100.0));
}

void Aster::print() const {
    const CNumericLocale decimalPoint;
    std::printf("refl: %f:\t%s\n", double{reflectance_}, name_.c_str());
}
