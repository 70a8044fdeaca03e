#include "xml/detail/ReadState.h"

#include "trace/detail/TraceLine.h"
#include "trace/detail/UserMessage.h"

#include <algorithm>
#include <new>

namespace dyadctx {

namespace {

void Log(const char* method, const char* key, VELUnicodeString& message,
         const VELUnicodeString* parameters, int count) {
    AppendCatalogText(message, key, parameters, count, 1);
    TRACE_WARNING("VELDyadCtxXml:LogError Method <%s> Error <%s>", method, message.ConvertToChar());
}

Finding MakeFault(const char* method, const char* key, const VELUnicodeString* parameters,
                  int count) {
    Finding fault;
    fault.method = method;
    fault.key = key;
    fault.parameterCount = count;
    std::copy_n(parameters, count, fault.parameters.begin());
    return fault;
}

} // namespace

void LogReaderError(const ReadState& state, const char* method, const char* key,
                    const VELIDOMNode& where, const VELUnicodeString* parameters, int count,
                    LogText text) {
    if (state.observer != nullptr) {
        state.observer->MeetFault(MakeFault(method, key, parameters, count), where);
    } else if (text == LogText::Alone) {
        VELUnicodeString alone;
        Log(method, key, alone, parameters, count);
        state.message.Append(alone);
    } else {
        Log(method, key, state.message, parameters, count);
    }
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
