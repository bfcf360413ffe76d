// The form-factor file (".sff-txt"): how much earth and sky each facet of a body sees, and which other facets.
#include "subfacetfile.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <new>

#include "cnumericlocale.h"
#include "fail.h"
#include "plainfields.h"
#include "trackedline.h"

using namespace sorvane;

namespace {
bool isFormFactor(float value) {
    return std::isfinite(value) && value >= 0.0F;
}

bool hasArea(const Vector<float>& normal) {
    return std::isfinite(normal.ElementAt(0)) && std::isfinite(normal.ElementAt(1)) &&
           std::isfinite(normal.ElementAt(2));
}
} // namespace

// Reads lines into an empty file.
class SubfacetFile::Parser {
public:
    Parser(FileTracker& lines, SubfacetFile& file) : lines_(lines), file_(file) {}
    bool parse();

private:
    bool readCount();
    bool readFacet(int facet);
    bool readVisible(int facet);
    bool nextLine(int facet);
    bool reportLine(int facet);

    const CNumericLocale decimalPoint_;
    FileTracker& lines_;
    SubfacetFile& file_;
    TrackedLine line_;
    int lineNumber_ = 1;
    int count_ = 0;
};

bool SubfacetFile::Parser::parse() {
    if (!readCount())
        return false;
    for (int facet = 1; facet <= count_; ++facet)
        if (!readFacet(facet))
            return false;
    return true;
}

bool SubfacetFile::Parser::readCount() {
    if (!line_.next(lines_))
        return fail("Load", "Unexpected EOF when trying to read number of facets.");
    if (std::sscanf(line_.text(), "%d", &count_) < 1 || count_ < 0)
        return fail("Load", "Malformed line 1. Expected a number of facets, but received \"%s\".", line_.text());
    // Every facet has a line: more facets than lines can't be read, whatever line 1 says.
    const std::size_t readable = std::min<std::size_t>(static_cast<std::size_t>(count_), lines_.remaining());
    file_.earth_.reserve(readable);
    file_.sky_.reserve(readable);
    file_.starts_.reserve(readable + 1);
    file_.starts_.push_back(0);
    return true;
}

bool SubfacetFile::Parser::readFacet(int facet) {
    if (!nextLine(facet))
        return false;
    int number = 0;
    float earth = 0.0F;
    float sky = 0.0F;
    int visible = 0;
    PlainFields fields(line_.view());
    const bool isRead =
        (fields.readInt(number) && fields.readFloat(earth) && fields.readFloat(sky) && fields.readInt(visible)) ||
        std::sscanf(line_.text(), "%d %f %f %d", &number, &earth, &sky, &visible) == 4;
    if (!isRead || number != facet || !isFormFactor(earth) || !isFormFactor(sky) || visible < 0)
        return reportLine(facet);
    file_.earth_.push_back(earth);
    file_.sky_.push_back(sky);
    for (int i = 0; i < visible; ++i)
        if (!readVisible(facet))
            return false;
    file_.starts_.push_back(file_.visible_.size());
    return true;
}

bool SubfacetFile::Parser::readVisible(int facet) {
    if (!nextLine(facet))
        return false;
    int other = 0;
    float formFactor = 0.0F;
    PlainFields fields(line_.view());
    const bool isRead = (fields.readInt(other) && fields.readFloat(formFactor)) ||
                        std::sscanf(line_.text(), "%d %f", &other, &formFactor) == 2;
    if (!isRead || other < 1 || other > count_ || other == facet || !isFormFactor(formFactor))
        return reportLine(facet);
    file_.visible_.push_back({other - 1, formFactor});
    return true;
}

bool SubfacetFile::Parser::nextLine(int facet) {
    ++lineNumber_;
    if (line_.next(lines_))
        return true;
    return fail("Load", "Unexpected EOF when trying to read facet %d.", facet);
}

bool SubfacetFile::Parser::reportLine(int facet) {
    return fail("Load", "Malformed line %d when reading facet %d. Received \"%s\".", lineNumber_, facet, line_.text());
}

std::string SubfacetFile::pathBeside(const std::string& geometryPath) {
    return geometryPath.substr(0, geometryPath.size() - std::min<std::size_t>(geometryPath.size(), 3)) + kExtension;
}

bool SubfacetFile::Load(const std::string& name, std::span<float> earthFormFactors, std::span<float> skyFormFactors) {
    clear();
    setName(name);
    const FileTrackerHandle lines(fTrackerOpen(name.c_str(), "r", TrackedLine::kLineLength));
    if (lines == nullptr)
        return false;
    try {
        if (!parse(*lines))
            return false;
    } catch (const std::bad_alloc&) {
        clear();
        return false;
    }
    if (earthFormFactors.size() == earth_.size() && skyFormFactors.size() == sky_.size()) {
        std::copy(earth_.begin(), earth_.end(), earthFormFactors.begin());
        std::copy(sky_.begin(), sky_.end(), skyFormFactors.begin());
    }
    return true;
}

bool SubfacetFile::parse(FileTracker& lines) {
    clear();
    if (Parser(lines, *this).parse())
        return true;
    clear();
    return false;
}

bool SubfacetFile::Init(std::span<const Vector<float>> facetNormals) {
    if (facetNormals.size() != facetCount())
        return false;
    std::size_t kept = 0;
    std::size_t first = 0;
    for (std::size_t facet = 0; facet < facetCount(); ++facet) {
        const std::size_t last = starts_[facet + 1];
        for (std::size_t i = first; i < last && hasArea(facetNormals[facet]); ++i)
            if (hasArea(facetNormals[static_cast<std::size_t>(visible_[i].facet)]))
                visible_[kept++] = visible_[i];
        starts_[facet + 1] = kept;
        first = last;
    }
    visible_.resize(kept);
    return true;
}

void SubfacetFile::clear() {
    earth_.clear();
    sky_.clear();
    visible_.clear();
    starts_.clear();
}
