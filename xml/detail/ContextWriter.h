// Builds the document of a collector's current view and writes it.
//
// Friends and associated contexts are written by name. Every site of a context beyond its own
// provider becomes one more Context element of the same name. Nothing reaches the target unless
// every context of the view was taken into the document.
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

    // The code of the builder's writing, or E_FAIL.
    VELResult Stream(const VELUnicodeString& target);
    // The same bytes as a text; `text` is as before when that fails.
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
    // Takes the name as a text of its own: a host's code that runs may assign to its context.
    VELResult StreamMultisites(const VELIDOMElement& parent, VELUnicodeString name);
    VELResult WriteSite(VELDyadContext& context, const VELUnicodeString& site,
                        const VELIDOMElement& parent) const;
    VELResult SetSiteProvider(VELDyadContext& context, const VELUnicodeString& site,
                              const VELIDOMElement& element, bool& isDropped) const;
    // Hands builder options and document to `write`.
    template<class Write>
    VELResult WriteWith(const Write& write) const;

    VELDyadCtxCollector& collector_;
    VELIXMLDOMDocumentBuilder builder_;
    VELIDOMDocument document_;
    VELIDOMElement data_;
};

} // namespace dyadctx
