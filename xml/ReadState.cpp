#include "xml/detail/ReadState.h"

#include "platform/detail/DomAccess.h"
#include "trace/detail/TraceLine.h"
#include "trace/detail/UserMessage.h"

#include <algorithm>
#include <string_view>

namespace dyadctx {

namespace {

void Log(const char* method, const char* key, VELUnicodeString& message,
         const VELUnicodeString* parameters, int count) {
    AppendCatalogText(message, key, parameters, count, 1);
    TRACE_WARNING("VELDyadCtxXml:LogError Method <%s> Error <%s>", method, message.ConvertToChar());
}

Fault MakeFault(const char* method, const char* key, const VELUnicodeString* parameters,
                int count) {
    Fault fault;
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
        state.observer->OnFault(MakeFault(method, key, parameters, count), where);
    } else if (text == LogText::Alone) {
        VELUnicodeString alone;
        Log(method, key, alone, parameters, count);
        state.message.Append(alone);
    } else {
        Log(method, key, state.message, parameters, count);
    }
}

bool ReadAttribute(const VELIDOMElement& element, std::uint32_t name, VELUnicodeString& value) {
    const DomAttribute* attribute = DomAccess::FindAttribute(element, name);
    if (attribute == nullptr)
        return false;
    value = VELUnicodeString(attribute->Value());
    return true;
}

bool ReadAttribute(const VELIDOMElement& element, const VELUnicodeString& name,
                   VELUnicodeString& value) {
    return ReadAttribute(element, DomAccess::NameId(element, name.AsView()), value);
}

VELUnicodeString AttributeOrEmpty(const VELIDOMElement& element, std::uint32_t name) {
    const DomAttribute* attribute = DomAccess::FindAttribute(element, name);
    return VELUnicodeString(attribute != nullptr ? attribute->Value() : std::string_view());
}

bool ReadTag(const VELIDOMNode& node, std::uint32_t& tag) {
    return DomAccess::GetTagId(node, tag);
}

} // namespace dyadctx
