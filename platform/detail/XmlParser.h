// Reads the bytes of an XML file into a document.
//
// A DOCTYPE is accepted; its internal declarations apply, nothing outside the file is ever loaded.
// Not every well-formed file is read: elements may be nested at most 5,000 deep, and entities may
// not grow the text out of proportion.
#pragma once

#include "platform/detail/DomDocument.h"

#include <cstddef>
#include <cstdint>
#include <memory>

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

// Why and where reading stopped; line and column from 1, 0 when it has no place in the file.
struct XmlFailure {
    DomPosition position;
    const char* reason = "";
};

// Null, and the failure, when the source holds no document. Plain documents are read by a scanner
// (see PlainXmlScanner.h), all others by the parser, and it alone refuses.
std::unique_ptr<DomDocument> ParseXml(XmlSource& source, XmlFailure& failure) noexcept;

} // namespace dyadctx
