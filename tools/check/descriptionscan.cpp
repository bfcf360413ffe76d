// Looks over the XML of a terrain's description.
#include "descriptionscan.h"

#include <QString>

#include "terrainxmlparser.h"
#include "wordconversion.h"
#include "xmlreader.h"

namespace sorvane {
namespace {
constexpr const char* kForm = "faults of form";
constexpr const char* kNumbers = "malformed numbers";

void checkNumber(const std::string& text, ElementKind kind, FindingPlace place, FindingList& findings) {
    const QString word = QString::fromStdString(text).trimmed();
    const bool isInteger = kind == ElementKind::Integer;
    if (isInteger ? !toInt(word) : !toReal(word))
        findings.error(place, kNumbers, "\"" + text + "\" is not " + (isInteger ? "an integer" : "a finite number"));
}
} // namespace

DescriptionScan scanDescription(const std::string& path, FindingList& findings) {
    DescriptionScan scan;
    XmlReader document(path);
    if (!document.isOpen()) {
        findings.error({}, kForm, "the file can't be opened");
        return scan;
    }
    document.onFault([&findings](int line, int column, const std::string& text) {
        findings.error({line, column}, kForm, "this is no well-formed XML: " + text);
    });
    std::string element;
    FindingPlace place;
    while (document.read()) {
        if (document.isStart()) {
            element = document.name();
            place = {document.line()};
            if (element == kTileElement) {
                scan.tileLines.push_back(place.line);
                checkNumber(document.attribute(kTileNumber), ElementKind::Integer, place, findings);
            }
        } else if (document.isText()) {
            const ElementKind kind = kindOfElement(element);
            if (kind != ElementKind::Other)
                checkNumber(document.text(), kind, place, findings);
            element.clear();
        }
    }
    scan.isWellFormed = document.isWellFormed();
    return scan;
}
} // namespace sorvane
