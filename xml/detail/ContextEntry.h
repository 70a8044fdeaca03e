// Makes a context from an element and enters it into the collector.
#pragma once

#include "context/VELDyadContext.h"
#include "context/detail/ContextAccess.h"
#include "platform/VELIDyadDbProvider.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELResult.h"
#include "xml/detail/ContextValues.h"
#include "xml/detail/ReadState.h"

#include <memory>

namespace dyadctx {

class ContextEntry {
public:
    explicit ContextEntry(const ReadState& state) : state_(state) {}

    // A database context is read and dropped while the DB context environment is off; one that is
    // declared again only adds its server to the sites of the first. `associated` says that the
    // element stands for the associated context of its owner.
    VELResult AddContext(const VELIDOMElement& element, ContextLevels levels, bool associated);

private:
    VELResult FindOwner(const VELIDOMElement& element, ContextLevels levels,
                        VELDyadContext*& owner);
    bool MayStandIn(const VELDyadContext* owner) const noexcept;
    VELResult AddDatabaseContext(const VELIDOMElement& element, ContextPtr context,
                                 VELDyadContext* owner, bool associated);
    VELResult SetProvider(VELDyadContext& context, VELIDyadDbProvider_var& provider) const;
    VELResult EnterDatabaseContext(const VELIDOMElement& element, ContextPtr context,
                                   VELDyadContext* owner);
    VELResult Enter(const VELIDOMElement& element, ContextPtr context, VELDyadContext* owner,
                    int associated);
    void FileSite(const VELUnicodeString& name, const VELIDyadDbProvider_var& provider);

    ReadState state_;
    // Those of the element being added. Kept here so that its list is not made anew each time.
    ContextValues values_;
};

} // namespace dyadctx
