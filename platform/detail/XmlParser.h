// SPDX-License-Identifier: MIT
// Parses the bytes of an XML file into a document.
//
// A DOCTYPE is accepted; its internal declarations apply, and nothing outside the file is ever
// loaded. Limits: elements nested at most 5,000 deep, and entities must not expand out of
// proportion.
#pragma once

#include "platform/VELUnicodeString.h"
#include "platform/detail/DomDocument.h"

#include <cstddef>
#include <cstdint>
#include <expat.h>
#include <memory>
#include <string>
#include <vector>

namespace dyadctx {

// The source of the bytes.
class XmlSource {
public:
    XmlSource() = default;
    XmlSource(const XmlSource&) = delete;
    XmlSource& operator=(const XmlSource&) = delete;
    virtual ~XmlSource();
    // Reads up to `size` bytes and returns how many; 0 at the end, -1 on an error.
    virtual std::int64_t Read(void* buffer, std::size_t size) = 0;
    // Returns to the start. False (always, here) if the source can be read only once.
    virtual bool Rewind();
};

// What is known about a document the parser refused. Offsets are in bytes.
struct XmlFault {
    // None if the parser reported no error.
    XML_Error error = XML_ERROR_NONE;
    std::uint64_t offset = 0;
    // The nearest known place before the fault outside tags, comments and the like.
    std::uint64_t textBefore = 0;
    // The innermost open element.
    std::string openName;
    std::uint64_t openOffset = 0;
    bool hasDoctype = false;
    bool isInDoctype = false;
    bool isUtf8 = true;
};

// Why and where reading stopped; line and column from 1, 0 if it has no place in the file.
struct XmlFailure {
    DomPosition position;
    // One of XmlReasons.h, with its parameters; empty while nothing failed.
    const char* reason = "";
    std::vector<VELUnicodeString> parameters;
    XmlFault fault;
};

// Null, with `failure` set, if the source is not a document. Plain documents are read by a scanner
// (see PlainXmlScanner.h), all others by the parser; only the parser refuses.
std::unique_ptr<DomDocument> ParseXml(XmlSource& source, XmlFailure& failure) noexcept;

} // namespace dyadctx
