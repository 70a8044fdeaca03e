// Builds the document of a collector's current view and writes it.
//
// Friends and associated contexts are written by name. Every site of a context beyond its own
// provider becomes one more Context element of the same name. Nothing is written unless every
// context of the view is in the document.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "context/VELDyadContext.h"
#include "platform/VELIDyadDbProvider.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

namespace dyadctx {

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

} // namespace dyadctx
