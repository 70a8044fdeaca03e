// What the parts of the reader share while they read one file.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/ContextPlaces.h"

namespace dyadctx {

struct ReadState {
    VELDyadCtxCollector& collector;
    // The caller's text, to which every message is added.
    VELUnicodeString& message;
    // Null unless somebody asked for places.
    ContextPlaces* places;
};

// Adds a message and a line feed to `message`, and traces the whole text in the name of `method`.
void LogReaderError(const char* method, const char* key, VELUnicodeString& message,
                    const VELUnicodeString* parameters = nullptr, int count = 0);

// The attribute's value. A missing attribute gives false, and `value` stays as it was. Throws
// std::bad_alloc.
bool ReadAttribute(const VELIDOMElement& element, const VELUnicodeString& name,
                   VELUnicodeString& value);
// The same with an empty value for a missing attribute.
VELUnicodeString AttributeOrEmpty(const VELIDOMElement& element, const VELUnicodeString& name);

} // namespace dyadctx
