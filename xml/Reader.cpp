// SPDX-License-Identifier: MIT
#include "xml/detail/VELDyadCtxXml.h"

#include "platform/detail/DomAccess.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/TraceLine.h"
#include "xml/detail/ContextReader.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/ReadState.h"

using namespace dyadctx;

namespace {

constexpr const char* Method = "VELDyadCtxXml::Unstream";

// Far above what real files need.
std::uint64_t ContextLimitOf(const VELIDOMDocument& document) {
    constexpr std::uint64_t OfAnyFile = 10'000;
    constexpr std::uint64_t PerElement = 4;
    return OfAnyFile + PerElement * DomAccess::ElementCount(document);
}

class SyntaxErrors : public VELISAXErrorHandler {
public:
    explicit SyntaxErrors(ReadObserver& observer) : observer_(observer) {}
    void FatalError(int line, int column, const char* reason) override {
        observer_.OnSyntaxError({line, column}, reason);
    }

private:
    ReadObserver& observer_;
};

VELResult ParseFile(const VELIXMLDOMDocumentBuilder& builder, VELISAXErrorHandler* errors,
                    const ReadState& state, VELIDOMDocument& document) {
    if (state.text != nullptr)
        return builder.ParseText(*state.text, errors, document);
    VELListValVELUnicodeString optionNames;
    VELListValVELUnicodeString optionValues;
    optionNames.Append(VELUnicodeString(format::ValidationOption));
    optionValues.Append(VELUnicodeString(format::ValidationOff));
    unsigned char isDefault = 0;
    const VELResult result = builder.Parse(state.collector.GetXMLFile(isDefault), errors, nullptr,
                                           optionNames, optionValues, document);
    return document.IsNull() ? E_FAIL : result;
}

VELResult ParseFile(const VELIXMLDOMDocumentBuilder& builder, const ReadState& state,
                    VELIDOMDocument& document) {
    if (state.observer == nullptr)
        return ParseFile(builder, nullptr, state, document);
    SyntaxErrors errors(*state.observer);
    return ParseFile(builder, &errors, state, document);
}

VELResult ReadDocument(const VELIDOMDocument& document, ReadState state) {
    VELIDOMElement root;
    if (document.GetDocumentElement(root) < 0 || root.IsNull())
        return E_FAIL;
    VELUnicodeString tag;
    const bool isReadable = root.GetTagName(tag) >= 0;
    if (!isReadable || tag != Names().root) {
        LogReaderError(state, Method, key::NotAValidTag, root, &tag, 1);
        return E_FAIL;
    }
    if (state.observer != nullptr)
        state.observer->OnDocument(root);
    const FormatIds ids(document);
    state.ids = &ids;
    state.contextLimit = ContextLimitOf(document);
    const VELResult result = ContextReader(state).ParseXMLNodes(root);
    TRACE_LEAVE("VELDyadCtxXml:Unstream");
    return result;
}

VELResult ReadFile(const ReadState& state) {
    TRACE_ENTER("VELDyadCtxXml:Unstream");
    VELIXMLDOMDocumentBuilder builder;
    if (CreateVELIXMLDOMDocumentBuilder(builder, CLSID_XML4C_DOM) < 0 || builder.IsNull())
        return E_FAIL;
    VELIDOMDocument document;
    if (ParseFile(builder, state, document) < 0) {
        LogReaderError(state, Method, key::XMLSyntaxError, VELIDOMNode());
        return E_FAIL;
    }
    return ReadDocument(document, state);
}

} // namespace

VELDyadCtxXml::VELDyadCtxXml(VELDyadCtxCollector* collector, ReadObserver* observer) noexcept
    : collector_(collector), observer_(observer) {}

VELDyadCtxXml::~VELDyadCtxXml() {
    collector_ = nullptr;
}

VELResult VELDyadCtxXml::Unstream(VELUnicodeString& message) {
    return Read(nullptr, message);
}

VELResult VELDyadCtxXml::Unstream(const VELUnicodeString& text, VELUnicodeString& message) {
    return Read(&text, message);
}

VELResult VELDyadCtxXml::Read(const VELUnicodeString* text, VELUnicodeString& message) {
    if (collector_ == nullptr)
        return E_FAIL;
    try {
        return ReadFile({*collector_, message, observer_, text});
    } catch (...) {
        return E_FAIL;
    }
}
