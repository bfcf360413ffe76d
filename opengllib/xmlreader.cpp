// Walks through an XML file node by node.
#include "xmlreader.h"

#include <algorithm>
#include <unistd.h>
#include <utility>

#include <libxml/xmlreader.h>

#include "inputfile.h"

namespace sorvane {
namespace {
std::string_view viewOf(const xmlChar* chars) {
    return chars == nullptr ? std::string_view() : reinterpret_cast<const char*>(chars);
}

void tellFault(void* handler, xmlErrorPtr fault) {
    const std::string text = fault->message == nullptr ? "" : fault->message;
    (*static_cast<XmlReader::FaultHandler*>(handler))(std::max(fault->line, 1), std::max(fault->int2, 1), text);
}
} // namespace

XmlReader::XmlReader(const std::string& path) : descriptor_(openRegularFile(path)) {
    if (descriptor_ >= 0)
        reader_ = xmlReaderForFd(descriptor_, path.c_str(), nullptr, XML_PARSE_NONET);
}

XmlReader::~XmlReader() {
    if (reader_ != nullptr)
        xmlFreeTextReader(reader_);
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

void XmlReader::onFault(FaultHandler handler) {
    onFault_ = std::move(handler);
    if (reader_ != nullptr)
        xmlTextReaderSetStructuredErrorHandler(reader_, tellFault, &onFault_);
}

bool XmlReader::read() {
    const int result = xmlTextReaderRead(reader_);
    isWellFormed_ = result == 0;
    return result == 1;
}

bool XmlReader::isStart() const {
    return xmlTextReaderNodeType(reader_) == XML_READER_TYPE_ELEMENT;
}

bool XmlReader::isEmptyElement() const {
    return xmlTextReaderIsEmptyElement(reader_) == 1;
}

bool XmlReader::isEnd() const {
    return xmlTextReaderNodeType(reader_) == XML_READER_TYPE_END_ELEMENT;
}

bool XmlReader::isText() const {
    const int type = xmlTextReaderNodeType(reader_);
    return type == XML_READER_TYPE_TEXT || type == XML_READER_TYPE_CDATA;
}

std::string_view XmlReader::name() const {
    return viewOf(xmlTextReaderConstName(reader_));
}

std::string XmlReader::text() const {
    return std::string(viewOf(xmlTextReaderConstValue(reader_)));
}

std::string XmlReader::attribute(const char* name) const {
    xmlChar* const value = xmlTextReaderGetAttribute(reader_, reinterpret_cast<const xmlChar*>(name));
    std::string text(viewOf(value));
    xmlFree(value);
    return text;
}

int XmlReader::line() const {
    return static_cast<int>(std::max(xmlGetLineNo(xmlTextReaderCurrentNode(reader_)), 1L));
}
} // namespace sorvane
