#include "xml/detail/ReadState.h"

#include "trace/detail/TraceLine.h"
#include "trace/detail/UserMessage.h"

#include <new>

namespace dyadctx {

void LogReaderError(const char* method, const char* key, VELUnicodeString& message,
                    const VELUnicodeString* parameters, int count) {
    AppendCatalogText(message, key, parameters, count, 1);
    TRACE_WARNING("VELDyadCtxXml:LogError Method <%s> Error <%s>", method, message.ConvertToChar());
}

bool ReadAttribute(const VELIDOMElement& element, const VELUnicodeString& name,
                   VELUnicodeString& value) {
    VELIDOMAttr attribute;
    if (element.GetAttributeNode(name, attribute) < 0 || attribute.IsNull())
        return false;
    // A value that stands there can be had unless memory runs out. It must not count as missing.
    if (attribute.GetValue(value) < 0)
        throw std::bad_alloc();
    return true;
}

VELUnicodeString AttributeOrEmpty(const VELIDOMElement& element, const VELUnicodeString& name) {
    VELUnicodeString value;
    ReadAttribute(element, name, value);
    return value;
}

} // namespace dyadctx
