// Reads the bytes of an XML file into a document.
//
// A DOCTYPE is accepted; its internal declarations apply, nothing outside the file is ever loaded.
// Not every well-formed file is read: elements may be nested at most 5,000 deep, and entities may
// not grow the text out of proportion.
#pragma once

#include "platform/detail/DomDocument.h"

#include <cstddef>
#include <cstdint>
#include <expat.h>
#include <memory>
#include <string>

namespace dyadctx {

// Where the bytes come from.
class XmlSource {
public:
    XmlSource() = default;
    XmlSource(const XmlSource&) = delete;
    XmlSource& operator=(const XmlSource&) = delete;
    virtual ~XmlSource();
    // Up to `size` bytes: their number, 0 at the end, -1 when they cannot be read.
    virtual std::int64_t Read(void* buffer, std::size_t size) = 0;
    // Goes back to the start. False, here always, for what can be read only once.
    virtual bool Rewind();
};

// What is known where the parser has refused a document. Offsets count bytes.
struct XmlFault {
    // None when it was not the parser.
    XML_Error error = XML_ERROR_NONE;
    std::uint64_t offset = 0;
    // A place before the fault that is in no tag, comment or the like, as near as is known.
    std::uint64_t textBefore = 0;
    // The innermost element that is open.
    std::string openName;
    std::uint64_t openOffset = 0;
    bool hasDoctype = false;
    bool isInDoctype = false;
    bool isUtf8 = true;
};

// Why and where reading stopped; line and column from 1, 0 when it has no place in the file.
struct XmlFailure {
    DomPosition position;
    const char* reason = "";
    // The reason about this very text, once DiagnoseXml has found one.
    std::string words;
    XmlFault fault;

    const char* Words() const noexcept { return words.empty() ? reason : words.c_str(); }
};

// Null, and the failure, when the source holds no document. Plain documents are read by a scanner
// (see PlainXmlScanner.h), all others by the parser, and it alone refuses.
std::unique_ptr<DomDocument> ParseXml(XmlSource& source, XmlFailure& failure) noexcept;

} // namespace dyadctx
