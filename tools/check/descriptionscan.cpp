// Looks over the XML of a terrain's description.
#include "descriptionscan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include <QString>

#include <libxml/xmlreader.h>
#include <unistd.h>

#include "inputfile.h"
#include "terrainxmlparser.h"
#include "wordconversion.h"

namespace sorvane {
namespace {
constexpr const char* kForm = "faults of form";
constexpr const char* kNumbers = "malformed numbers";

void reportFault(void* findings, xmlErrorPtr fault) {
    const std::string text = fault->message == nullptr ? "" : fault->message;
    static_cast<FindingList*>(findings)->error(
        {std::max(fault->line, 1), std::max(fault->int2, 1)}, kForm, "this is no well-formed XML: " + text);
}

class Document {
public:
    Document(const std::string& path, FindingList& findings) : descriptor_(openRegularFile(path)) {
        if (descriptor_ >= 0)
            reader_ = xmlReaderForFd(descriptor_, path.c_str(), nullptr, XML_PARSE_NONET);
        if (reader_ != nullptr)
            xmlTextReaderSetStructuredErrorHandler(reader_, reportFault, &findings);
    }
    ~Document() {
        if (reader_ != nullptr)
            xmlFreeTextReader(reader_);
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    bool isOpen() const { return reader_ != nullptr; }
    int read() { return xmlTextReaderRead(reader_); }
    bool isStart() const { return xmlTextReaderNodeType(reader_) == XML_READER_TYPE_ELEMENT; }
    bool isText() const { return xmlTextReaderNodeType(reader_) == XML_READER_TYPE_TEXT; }
    std::string name() const { return text(xmlTextReaderConstName(reader_)); }
    std::string value() const { return text(xmlTextReaderConstValue(reader_)); }
    std::string attribute(const char* name) const {
        xmlChar* const value = xmlTextReaderGetAttribute(reader_, reinterpret_cast<const xmlChar*>(name));
        std::string found = text(value);
        xmlFree(value);
        return found;
    }
    // Of the node; the parser itself is ahead of it.
    FindingPlace place() const { return {std::max(xmlGetLineNo(xmlTextReaderCurrentNode(reader_)), 1L)}; }

private:
    static std::string text(const xmlChar* chars) {
        return chars == nullptr ? std::string() : reinterpret_cast<const char*>(chars);
    }

    int descriptor_;
    xmlTextReaderPtr reader_ = nullptr;
};

void checkNumber(const std::string& text, ElementKind kind, FindingPlace place, FindingList& findings) {
    const QString word = QString::fromStdString(text).trimmed();
    const bool isInteger = kind == ElementKind::Integer;
    if (isInteger ? !toInt(word) : !toReal(word))
        findings.error(place, kNumbers, "\"" + text + "\" is not " + (isInteger ? "an integer" : "a finite number"));
}
} // namespace

DescriptionScan scanDescription(const std::string& path, FindingList& findings) {
    DescriptionScan scan;
    Document document(path, findings);
    if (!document.isOpen()) {
        findings.error({}, kForm, "the file can't be opened");
        return scan;
    }
    std::string element;
    FindingPlace place;
    int result = document.read();
    for (; result == 1; result = document.read()) {
        if (document.isStart()) {
            element = document.name();
            place = document.place();
            if (element == sorvane::kTileElement) {
                scan.tileLines.push_back(place.line);
                checkNumber(document.attribute(sorvane::kTileNumber), ElementKind::Integer, place, findings);
            }
        } else if (document.isText()) {
            const ElementKind kind = sorvane::kindOfElement(element);
            if (kind != ElementKind::Other)
                checkNumber(document.value(), kind, place, findings);
            element.clear();
        }
    }
    scan.isWellFormed = result == 0;
    return scan;
}
} // namespace sorvane
