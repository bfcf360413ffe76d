// The reflectance file (".brdf"): the reflectance classes of a body and which facets belong to which class.
#include "brdffile.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <list>
#include <new>

#include "cnumericlocale.h"
#include "fail.h"
#include "inputfile.h"
#include "plainfields.h"
#include "sandfordrobertson.h"
#include "texthead.h"
#include "textlines.h"

using namespace sorvane;

namespace {
std::list<BrdfFile> cache;

constexpr std::size_t kLineLength = 256;
constexpr int kMaximumFacets = std::numeric_limits<int>::max() / 3; // so that the corners can be counted
constexpr char kBadRange[] = "Bad format on line %d (expected 3 ints).";

bool readClass(const char* line, BrdfClass& brdfClass) {
    PlainFields fields(line);
    if (fields.readFloat(brdfClass.rho_d) && fields.readFloat(brdfClass.epsilon) && fields.readFloat(brdfClass.b) &&
        fields.readFloat(brdfClass.e) && fields.readInt(brdfClass.mode))
        return true;
    return std::sscanf(
               line, "%f %f %f %f %d %*s", &brdfClass.rho_d, &brdfClass.epsilon, &brdfClass.b, &brdfClass.e,
               &brdfClass.mode) >= 5;
}

bool readRange(const char* line, int& first, int& last, int& brdfClass) {
    PlainFields fields(line);
    if (fields.readInt(first) && fields.readInt(last) && fields.readInt(brdfClass))
        return true;
    return std::sscanf(line, "%d %d %d %*s", &first, &last, &brdfClass) >= 3;
}
} // namespace

// Reads a text into an empty file, line by line.
class BrdfFile::Parser {
public:
    Parser(std::string_view text, BrdfFile& file) : lines_(text), file_(file) {}

    bool parse() { return readSignature() && readClasses() && readRanges(); }

private:
    bool nextLine() { return lines_.getLine(line_, sizeof line_); }
    bool readSignature();
    bool readClasses();
    bool readRanges();
    bool addRange(int lineNumber);

    const CNumericLocale decimalPoint_;
    TextLines lines_;
    BrdfFile& file_;
    char line_[kLineLength] = {};
    std::int64_t facets_ = 0;
};

bool BrdfFile::Parser::readSignature() {
    if (!nextLine())
        return fail("Load", "Unable to read the BRDF file header on line 1 (unexpected EOF).");
    char word[kLineLength];
    if (std::sscanf(line_, "%255s", word) < 1)
        return fail("Load", "Corrupt BRDF file header on line 1.");
    if (std::strcmp(word, "BRDF") != 0)
        return fail("Load", "Missing BRDF file signature on line 1.");
    return true;
}

bool BrdfFile::Parser::readClasses() {
    if (!nextLine())
        return fail("Load", "Unable to read the number of BRDF classes on line 2 (unexpected EOF).");
    int count = 0;
    if (std::sscanf(line_, "%d", &count) < 1)
        return fail("Load", "Bad format for the number of BRDF classes on line 2 (expected an int).");
    if (count < 1)
        return fail("Load", "Invalid number of BRDF classes on line 2. Should be positive but is %d.", count);
    for (int i = 0; i < count; ++i) {
        const int lineNumber = i + 3;
        if (!nextLine())
            return fail("Load", "Unable to read the BRDF class on line %d (unexpected EOF).", lineNumber);
        BrdfClass brdfClass{};
        if (!readClass(line_, brdfClass))
            return fail("Load", "Bad format for the BRDF class on line %d.", lineNumber);
        if (brdfClass.b < 0.0F)
            return fail(
                "Load",
                "Invalid brdf_fresnel (b) parameter on line %d (parameter #3). b should be nonnegative but is %f.",
                lineNumber, static_cast<double>(brdfClass.b));
        brdfClass.G = sr_normalisation(brdfClass.b);
        file_.classes_.push_back(brdfClass);
    }
    file_.blocks_.resize(file_.classes_.size());
    return true;
}

bool BrdfFile::Parser::readRanges() {
    for (int lineNumber = file_.numBrdfClasses() + 3; nextLine(); ++lineNumber)
        if (!addRange(lineNumber))
            return false;
    file_.placeBlocks();
    return true;
}

bool BrdfFile::Parser::addRange(int lineNumber) {
    int first = 0;
    int last = 0;
    int brdfClass = 0;
    const bool isRead = readRange(line_, first, last, brdfClass);
    if (!isRead)
        return fail("Load", kBadRange, lineNumber);
    if (first > last)
        return fail(
            "Load", "Error on line %d. Starting index (parameter 1) %d is larger than ending index (parameter 2) %d.",
            lineNumber, first, last);
    if (brdfClass < 1 || brdfClass > file_.numBrdfClasses())
        return fail(
            "Load", "Error on line %d. Bad brdfClass (parameter 3). brdfClass is %d but should be a positive integer.",
            lineNumber, brdfClass);
    const std::int64_t count = std::int64_t{last} - first + 1;
    if (first == std::numeric_limits<int>::min() || facets_ + count > kMaximumFacets)
        return fail("Load", kBadRange, lineNumber);
    if (!file_.elements_.empty() && file_.elements_.back().end >= first - 1)
        file_.isAscending_ = false;
    file_.elements_.push_back({first - 1, last - 1, brdfClass - 1});
    file_.blocks_[static_cast<std::size_t>(brdfClass - 1)].facetCount_ += static_cast<int>(count);
    facets_ += count;
    return true;
}

void BrdfFile::placeBlocks() {
    int start = 0;
    for (FacetBlock& block : blocks_) {
        block.startIndex_ = block.next = start;
        start += block.facetCount_;
    }
    numFacets_ = start;
    numVertices_ = 3 * start;
}

bool BrdfFile::looksLike(const sorvane::TextHead& head) {
    return head.word(0, 0) == "BRDF";
}

void BrdfFile::makeUniform(int facets) {
    clear();
    constexpr float kNoDirection = 0.0F; // b
    classes_.push_back({0.0F, 1.0F, kNoDirection, 1.0F, sr_normalisation(kNoDirection), 2});
    blocks_.resize(1);
    if (facets > 0) {
        elements_.push_back({0, facets - 1, 0});
        blocks_.front().facetCount_ = facets;
    }
    placeBlocks();
}

bool BrdfFile::Load(const std::string& name) {
    if (InCache(name))
        return true;
    clear();
    setName(name);
    fileName_ = name;
    try {
        const auto text = readInputFile(name, std::numeric_limits<std::size_t>::max());
        if (text) {
            if (!parse(*text))
                return false;
            cache.push_back(*this);
            return true;
        }
    } catch (const std::bad_alloc&) {
        clear();
    }
    return fail("Load", "Could not open file \"%s\" for reading.", name.c_str());
}

bool BrdfFile::parse(std::string_view text) {
    clear();
    if (Parser(text, *this).parse())
        return true;
    clear();
    return false;
}

void BrdfFile::clear() {
    numFacets_ = numVertices_ = 0;
    classes_.clear();
    elements_.clear();
    blocks_.clear();
    isAscending_ = true;
    lastRange_ = -1;
}

bool BrdfFile::InCache(const std::string& name) {
    for (const BrdfFile& file : cache)
        if (file.fileName_ == name) {
            *this = file;
            return true;
        }
    return false;
}

void BrdfFile::forget(const std::string& name) {
    std::erase_if(cache, [&](const BrdfFile& file) { return isSamePath(file.fileName_, name); });
}

int BrdfFile::findRange(int facet) const {
    if (elements_.size() == 1)
        return 0;
    int low = 0;
    int high = static_cast<int>(elements_.size()) - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        const BrdfElement& range = elements_[static_cast<std::size_t>(middle)];
        if (range.start > facet)
            high = middle - 1;
        else if (range.end >= facet)
            return middle;
        else
            low = middle + 1;
    }
    return -1;
}

int BrdfFile::FacetIndxToBrdfClass(int facet) const {
    const int range = findRange(facet);
    return range < 0 ? -1 : elements_[static_cast<std::size_t>(range)].brdfClass;
}

int BrdfFile::SortedFacetIndex(int facet) {
    // Facets are asked for in file order: most are in the range of the one before.
    const auto contains = [this, facet](int range) {
        const BrdfElement& element = elements_[static_cast<std::size_t>(range)];
        return element.start <= facet && facet <= element.end;
    };
    if (lastRange_ < 0 || !isAscending_ || !contains(lastRange_))
        lastRange_ = findRange(facet);
    const int brdfClass = lastRange_ < 0 ? -1 : elements_[static_cast<std::size_t>(lastRange_)].brdfClass;
    if (brdfClass < 0 || brdfClass >= numBrdfClasses()) {
        fail(
            "SortedFacetIndex",
            "Invalid BRDF class index %d for facet %d. Class index should be between nonnegative and smaller than "
            "numBrdfClasses_ = %d.",
            brdfClass, facet, numBrdfClasses());
        return -1;
    }
    FacetBlock& block = blocks_[static_cast<std::size_t>(brdfClass)];
    const int slot = block.next++;
    const int end = block.startIndex_ + block.facetCount_;
    if (block.next > end) {
        fail(
            "SortedFacetIndex",
            "Invalid blockVector index. Value is %d be should be no greater than startIndex_ + facetCount_ = %d + %d = "
            "%d.",
            block.next, block.startIndex_, block.facetCount_, end);
        return -1;
    }
    return slot;
}
