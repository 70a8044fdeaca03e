// What the parts of the reader share while they read one file.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/ReadObserver.h"

namespace dyadctx {

struct ReadState {
    VELDyadCtxCollector& collector;
    // The caller's text, to which every message is added.
    VELUnicodeString& message;
    // Null unless somebody wants to know every fault.
    ReadObserver* observer = nullptr;
    // The bytes of the collector's file; null where the file itself is to be read.
    const VELUnicodeString* text = nullptr;
    // Set once there is a document.
    const FormatIds* ids = nullptr;

    // Whether reading continues after a fault.
    bool ContinuesAfterFault() const noexcept { return observer != nullptr; }
};

// Whether the texts so far stand in the trace line of a message.
enum class LogText { Whole, Alone };

// Adds a message and a line feed to the caller's text and traces that in the name of `method`; an
// observer is told instead. `where` is the element at fault and may be null.
void LogReaderError(const ReadState& state, const char* method, const char* key,
                    const VELIDOMNode& where, const VELUnicodeString* parameters = nullptr,
                    int count = 0, LogText text = LogText::Whole);

// The value of an attribute, by its number in FormatIds or its name. A missing attribute gives
// false, and `value` stays as it was. Throws std::bad_alloc.
bool ReadAttribute(const VELIDOMElement& element, std::uint32_t name, VELUnicodeString& value);
bool ReadAttribute(const VELIDOMElement& element, const VELUnicodeString& name,
                   VELUnicodeString& value);
// The same with an empty value for a missing attribute.
VELUnicodeString AttributeOrEmpty(const VELIDOMElement& element, std::uint32_t name);
// The tag of an element as its number in FormatIds. False, and `tag` as before, for what is not an
// element.
bool ReadTag(const VELIDOMNode& node, std::uint32_t& tag);

} // namespace dyadctx
