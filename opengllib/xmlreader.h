// Walks through an XML file node by node.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace sorvane {
// A reader over a regular file. Entities stay as they are and nothing is fetched. What stands at the current node is
// asked after a read() that was true.
class XmlReader {
public:
    explicit XmlReader(const std::string& path);
    ~XmlReader();
    XmlReader(const XmlReader&) = delete;
    XmlReader& operator=(const XmlReader&) = delete;

    // Called with line, column (both from 1) and text of each fault of form, which is else printed on standard error.
    using FaultHandler = std::function<void(int line, int column, const std::string& text)>;
    void onFault(FaultHandler handler);

    bool isOpen() const;

    // Goes on to the next node; false past the last one and at a fault.
    bool read();
    // Whether the document was read to its end without a fault.
    bool isWellFormed() const { return isWellFormed_; }

    bool isStart() const;
    bool isEmptyElement() const;
    bool isEnd() const;
    bool isText() const; // CDATA, too
    std::string_view name() const;
    std::string text() const;
    std::string attribute(const char* name) const; // empty where there is none
    int line() const;                              // of the node, from 1; the parser itself is ahead of it

private:
    struct Parser;

    std::unique_ptr<Parser> parser_;
    FaultHandler onFault_;
    bool isWellFormed_ = false;
};
} // namespace sorvane
