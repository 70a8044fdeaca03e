// SPDX-License-Identifier: MIT
// Builds the document of a collector's current view and writes it.
//
// Friends and associated contexts are written by name. Every site of a context beyond its own
// provider becomes one more Context element of the same name. Nothing is written unless every
// context of the view is in the document.
#include "collector/detail/CollectorAccess.h"
#include "context/detail/ContextAccess.h"
#include "context/detail/ParameterTypes.h"
#include "platform/VELIXMLDOM.h"
#include "platform/detail/InMemoryDbProvider.h"
#include "trace/detail/TraceLine.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/VELDyadCtxXml.h"

using namespace dyadctx;

namespace {

class ContextWriter {
public:
    explicit ContextWriter(VELDyadCtxCollector& collector) : collector_(collector) {}

    // Returns the builder's code, or E_FAIL.
    VELResult Stream(const VELUnicodeString& target);
    // The same bytes as a text; `text` is unchanged on failure.
    VELResult StreamText(VELUnicodeString& text);

private:
    VELResult MakeDocument();
    bool TakeView();
    int WriteContexts(int count);
    VELResult WriteContextAt(int position);
    VELResult MakeContextElement(const VELDyadContext& context, VELIDOMElement& element) const;
    VELResult SetProvider(const VELIDyadDbProvider_var& provider,
                          const VELIDOMElement& element) const;
    VELResult SetServerDetails(const VELIDyadDbProvider_var& provider,
                               const VELIDOMElement& element) const;
    VELResult StreamFriendsAndAssociated(VELDyadContext& context,
                                         const VELIDOMElement& element) const;
    VELResult AddContainer(const VELIDOMElement& element, const VELUnicodeString& tag,
                           VELIDOMElement& container) const;
    VELResult AddContextByName(const VELIDOMElement& container,
                               const VELDyadContext* context) const;
    // Takes the name by value: a host's code may assign to its context meanwhile.
    VELResult StreamMultisites(const VELIDOMElement& parent, const VELUnicodeString& name);
    VELResult WriteSite(VELDyadContext& context, const VELUnicodeString& site,
                        const VELIDOMElement& parent) const;
    VELResult SetSiteProvider(VELDyadContext& context, const VELUnicodeString& site,
                              const VELIDOMElement& element, bool& isDropped) const;
    // Calls `write` with builder options and document.
    template<class Write>
    VELResult WriteWith(const Write& write) const;

    VELDyadCtxCollector& collector_;
    VELIXMLDOMDocumentBuilder builder_;
    VELIDOMDocument document_;
    VELIDOMElement data_;
};

bool IsDatabase(const VELDyadContext& context) {
    return context.GetParameterType() == Names().databaseType;
}

// The context's provider, for queries: the kept one itself, instead of one made from it, where
// nobody could see the difference.
VELResult GetProvider(const VELDyadContext& context, VELIDyadDbProvider_var& provider) {
    const VELIDyadDbProvider_var& kept = ContextAccess::KeptProvider(context);
    if (VELIsTraceActive() || !IsBuiltInFactoryActive() ||
        InMemoryDbProvider::From(kept) == nullptr)
        return context.GetDyadDbProvider(provider);
    provider = kept;
    return S_OK;
}

VELResult ContextWriter::Stream(const VELUnicodeString& target) {
    TRACE_ENTER("VELDyadCtxXml:Stream target=%s", target.ConvertToChar());
    if (MakeDocument() < 0)
        return E_FAIL;
    const auto toFile = [&](const auto& names, const auto& values) {
        return builder_.Write(document_, target, names, values);
    };
    const VELResult result = TakeView() ? WriteWith(toFile) : E_FAIL;
    TRACE_LEAVE("VELDyadCtxXml:Stream");
    return result;
}

VELResult ContextWriter::StreamText(VELUnicodeString& text) {
    if (MakeDocument() < 0 || !TakeView())
        return E_FAIL;
    return WriteWith([&](const auto& names, const auto& values) {
        return builder_.WriteText(document_, text, names, values);
    });
}

// False when a context of the view is not completely in the document.
bool ContextWriter::TakeView() {
    const int count = collector_.GetNbCtxs();
    return count < 1 || WriteContexts(count) == count;
}

VELResult ContextWriter::MakeDocument() {
    if (CreateVELIXMLDOMDocumentBuilder(builder_, CLSID_MSXML6_DOM) < 0 || builder_.IsNull())
        return E_FAIL;
    if (builder_.CreateDocument(document_) < 0 || document_.IsNull())
        return E_FAIL;
    VELIDOMElement root;
    if (document_.CreateElement(Names().root, root) < 0 || root.IsNull())
        return E_FAIL;
    if (document_.AppendChild(root) < 0)
        return E_FAIL;
    return AddContainer(root, Names().data, data_);
}

// How many of them are completely in the document. A failing one does not keep the others out.
int ContextWriter::WriteContexts(int count) {
    int written = 0;
    for (int position = 1; position <= count; ++position) {
        if (WriteContextAt(position) >= 0)
            ++written;
    }
    return written;
}

VELResult ContextWriter::WriteContextAt(int position) {
    VELDyadContext* context = nullptr;
    if (collector_.GetCtxAtIndex(position, context) < 0 || context == nullptr)
        return E_FAIL;
    VELIDOMElement element;
    VELResult result = MakeContextElement(*context, element);
    if (result < 0)
        return result;
    if (IsDatabase(*context) && IsDbEnvironmentOn()) {
        VELIDyadDbProvider_var provider;
        result = GetProvider(*context, provider);
        if (result >= 0 && !provider.IsNull())
            result = SetProvider(provider, element);
        if (result < 0)
            return result;
    }
    result = data_.AppendChild(element);
    if (result < 0)
        return result;
    result = StreamFriendsAndAssociated(*context, element);
    if (result < 0 || context->isContainsMultisites() == 0)
        return result;
    // A copy: a host's code that runs meanwhile may rename the context.
    const VELUnicodeString name(context->GetName());
    return StreamMultisites(data_, name);
}

VELResult ContextWriter::MakeContextElement(const VELDyadContext& context,
                                            VELIDOMElement& element) const {
    const FormatNames& names = Names();
    if (document_.CreateElement(names.context, element) < 0 || element.IsNull())
        return E_FAIL;
    if (element.SetAttribute(names.name, context.GetName()) < 0 ||
        element.SetAttribute(names.parameter, context.GetParameter()) < 0 ||
        element.SetAttribute(names.parameterType, context.GetParameterType()) < 0)
        return E_FAIL;
    return S_OK;
}

VELResult ContextWriter::SetProvider(const VELIDyadDbProvider_var& provider,
                                     const VELIDOMElement& element) const {
    VELUnicodeString connector;
    VELResult result = provider->GetName(connector);
    if (result < 0)
        return result;
    result = element.SetAttribute(Names().connector, connector);
    if (result < 0)
        return result;
    return SetServerDetails(provider, element);
}

VELResult ContextWriter::SetServerDetails(const VELIDyadDbProvider_var& provider,
                                          const VELIDOMElement& element) const {
    VELListValVELUnicodeString keys;
    VELListValVELUnicodeString values;
    VELResult result = provider->GetServerDetails(keys, values);
    if (result < 0 || keys.Size() != values.Size())
        return result;
    for (int pos = 1; pos <= keys.Size(); ++pos) {
        if (keys[pos].IsEmpty())
            continue;
        result = element.SetAttribute(keys[pos], values[pos]);
        if (result < 0)
            return result;
    }
    return S_OK;
}

VELResult ContextWriter::StreamFriendsAndAssociated(VELDyadContext& context,
                                                    const VELIDOMElement& element) const {
    TRACE_ENTER("VELDyadCtxXml:StreamFriendsAndAssociated");
    ContextAccess::TraceFriends(context);
    const FriendWalk friends(CollectorAccess::Watches(collector_), ContextAccess::Friends(context));
    VELDyadContext* associated = nullptr;
    if (IsDbEnvironmentOn())
        context.GetAssociatedContext(associated);
    VELIDOMElement container;
    if (associated != nullptr) {
        if (AddContainer(element, Names().associated, container) < 0 ||
            AddContextByName(container, associated) < 0)
            return E_FAIL;
    }
    if (friends.Size() > 0 && AddContainer(element, Names().friends, container) < 0)
        return E_FAIL;
    for (int pos = 1; pos <= friends.Size(); ++pos) {
        const bool isGone = friends[pos] == nullptr && !friends.IsNull(pos);
        if (!isGone && AddContextByName(container, friends[pos]) < 0)
            return E_FAIL;
    }
    TRACE_LEAVE("VELDyadCtxXml:StreamFriendsAndAssociated");
    return S_OK;
}

VELResult ContextWriter::AddContainer(const VELIDOMElement& element, const VELUnicodeString& tag,
                                      VELIDOMElement& container) const {
    if (document_.CreateElement(tag, container) < 0 || container.IsNull())
        return E_FAIL;
    return element.AppendChild(container);
}

VELResult ContextWriter::AddContextByName(const VELIDOMElement& container,
                                          const VELDyadContext* context) const {
    if (context == nullptr)
        return E_FAIL;
    VELIDOMElement element;
    if (AddContainer(container, Names().context, element) < 0)
        return E_FAIL;
    return element.SetAttribute(Names().name, context->GetName());
}

// The context is looked up by name, so of two namesakes the first one's sites are written.
VELResult ContextWriter::StreamMultisites(const VELIDOMElement& parent,
                                          const VELUnicodeString& name) {
    TRACE_LOG("VELDyadCtxXml:StreamMultisites");
    VELDyadContext* context = nullptr;
    if (parent.IsNull() || document_.IsNull() || collector_.GetCtxFromName(name, context) < 0 ||
        context == nullptr)
        return E_FAIL;
    if (!IsDatabase(*context))
        return S_OK;
    VELListValVELUnicodeString sites;
    context->GetListOfSites(sites);
    // Without memory the list is empty.
    if (sites.Size() != ContextAccess::SiteCount(*context))
        return E_FAIL;
    for (int pos = 1; pos <= sites.Size(); ++pos) {
        if (WriteSite(*context, sites[pos], parent) < 0)
            return E_FAIL;
    }
    return S_OK;
}

VELResult ContextWriter::WriteSite(VELDyadContext& context, const VELUnicodeString& site,
                                   const VELIDOMElement& parent) const {
    VELIDOMElement element;
    VELResult result = MakeContextElement(context, element);
    if (result < 0)
        return result;
    if (IsDbEnvironmentOn()) {
        bool isDropped = false;
        result = SetSiteProvider(context, site, element, isDropped);
        if (result < 0 || isDropped)
            return result;
    }
    return parent.AppendChild(element);
}

// The context's own provider is in the file already, and a site without provider would look the
// same.
VELResult ContextWriter::SetSiteProvider(VELDyadContext& context, const VELUnicodeString& site,
                                         const VELIDOMElement& element, bool& isDropped) const {
    VELIDyadDbProvider_var siteProvider;
    VELIDyadDbProvider_var ownProvider;
    context.LocateInMultisiteHash(site, siteProvider);
    // Without memory a site is not found.
    if (siteProvider.IsNull() && ContextAccess::HasSiteProvider(context, site))
        return E_FAIL;
    VELResult result = GetProvider(context, ownProvider);
    if (result < 0)
        return result;
    isDropped = siteProvider.IsNull() || ownProvider.IsNull();
    if (isDropped)
        return S_OK;
    result = siteProvider->IsSame(ownProvider, isDropped);
    if (result < 0 || isDropped)
        return result;
    return SetProvider(siteProvider, element);
}

template<class Write>
VELResult ContextWriter::WriteWith(const Write& write) const {
    VELListValVELUnicodeString optionNames;
    VELListValVELUnicodeString optionValues;
    optionNames.Append(VELUnicodeString(format::EncodingOption));
    optionValues.Append(VELUnicodeString(format::EncodingUtf8));
    optionNames.Append(VELUnicodeString(format::IndentationOption));
    optionValues.Append(VELUnicodeString(format::IndentationOn));
    return write(optionNames, optionValues);
}

} // namespace

VELResult VELDyadCtxXml::Stream(const VELUnicodeString& target, VELUnicodeString& /*message*/) {
    if (collector_ == nullptr)
        return E_FAIL;
    try {
        return ContextWriter(*collector_).Stream(target);
    } catch (...) {
        return E_FAIL;
    }
}

VELResult VELDyadCtxXml::StreamText(VELUnicodeString& text) {
    if (collector_ == nullptr)
        return E_FAIL;
    try {
        return ContextWriter(*collector_).StreamText(text);
    } catch (...) {
        return E_FAIL;
    }
}
