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

// libxml2's reader over the file, null where it can't be opened.
struct XmlReader::Parser {
    explicit Parser(const std::string& path) : descriptor(openRegularFile(path)) {
        if (descriptor >= 0)
            reader = xmlReaderForFd(descriptor, path.c_str(), nullptr, XML_PARSE_NONET);
    }
    ~Parser() {
        if (reader != nullptr)
            xmlFreeTextReader(reader);
        if (descriptor >= 0)
            ::close(descriptor);
    }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    int descriptor;
    xmlTextReaderPtr reader = nullptr;
};

XmlReader::XmlReader(const std::string& path) : parser_(std::make_unique<Parser>(path)) {}

XmlReader::~XmlReader() = default;

bool XmlReader::isOpen() const {
    return parser_->reader != nullptr;
}

void XmlReader::onFault(FaultHandler handler) {
    onFault_ = std::move(handler);
    if (parser_->reader != nullptr)
        xmlTextReaderSetStructuredErrorHandler(parser_->reader, tellFault, &onFault_);
}

bool XmlReader::read() {
    const int result = xmlTextReaderRead(parser_->reader);
    isWellFormed_ = result == 0;
    return result == 1;
}

bool XmlReader::isStart() const {
    return xmlTextReaderNodeType(parser_->reader) == XML_READER_TYPE_ELEMENT;
}

bool XmlReader::isEmptyElement() const {
    return xmlTextReaderIsEmptyElement(parser_->reader) == 1;
}

bool XmlReader::isEnd() const {
    return xmlTextReaderNodeType(parser_->reader) == XML_READER_TYPE_END_ELEMENT;
}

bool XmlReader::isText() const {
    const int type = xmlTextReaderNodeType(parser_->reader);
    return type == XML_READER_TYPE_TEXT || type == XML_READER_TYPE_CDATA;
}

std::string_view XmlReader::name() const {
    return viewOf(xmlTextReaderConstName(parser_->reader));
}

std::string XmlReader::text() const {
    return std::string(viewOf(xmlTextReaderConstValue(parser_->reader)));
}

std::string XmlReader::attribute(const char* name) const {
    xmlChar* const value = xmlTextReaderGetAttribute(parser_->reader, reinterpret_cast<const xmlChar*>(name));
    std::string text(viewOf(value));
    xmlFree(value);
    return text;
}

int XmlReader::line() const {
    return static_cast<int>(std::max(xmlGetLineNo(xmlTextReaderCurrentNode(parser_->reader)), 1L));
}
} // namespace sorvane
