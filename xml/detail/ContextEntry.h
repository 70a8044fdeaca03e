// SPDX-License-Identifier: MIT
// Makes a context from an element and enters it into the collector.
#pragma once

#include "context/VELDyadContext.h"
#include "context/detail/ContextAccess.h"
#include "platform/VELIDyadDbProvider.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/ReadState.h"

#include <cstdint>
#include <memory>

namespace dyadctx {

// The attribute values of one Context element.
struct ContextValues {
    ContextTexts texts;
    // The rest is only for database contexts.
    VELUnicodeString connector;
    // Parallel to the server details of the format; empty unless they were read.
    VELListValVELUnicodeString detailValues;

    // A sum of MissingValue.
    unsigned int missing = 0;

    // The keys of the values: none without values.
    const VELListValVELUnicodeString& DetailKeys() const noexcept;
    // Prepares for the next element; the list keeps its storage.
    void Clear();
};

class ContextEntry {
public:
    explicit ContextEntry(const ReadState& state) : state_(state) {}

    // While the DB context environment is off, a database context is read and dropped; one declared
    // again only adds its server to the sites of the first. `associated`: the element is the
    // associated context of its owner.
    VELResult AddContext(const VELIDOMElement& element, ContextLevels levels, bool associated);
    // Whether a context was refused because the file has too many; reading must end then.
    bool IsOverLimit() const noexcept { return made_ > state_.contextLimit; }

private:
    VELResult FindOwner(const VELIDOMElement& element, ContextLevels levels,
                        VELDyadContext*& owner);
    VELResult RefuseMore(const VELIDOMElement& element);
    bool MayStandIn(const VELDyadContext* owner) const noexcept;
    VELResult AddDatabaseContext(const VELIDOMElement& element, ContextPtr context,
                                 VELDyadContext* owner, bool associated);
    VELResult SetProvider(VELDyadContext& context, VELIDyadDbProvider_var& provider) const;
    VELResult EnterDatabaseContext(const VELIDOMElement& element, ContextPtr context,
                                   VELDyadContext* owner);
    VELResult Enter(const VELIDOMElement& element, ContextPtr context, VELDyadContext* owner,
                    int associated);
    void RegisterSite(const VELUnicodeString& name, const VELIDyadDbProvider_var& provider);

    ReadState state_;
    // Of the element being added. A member, so that its list is reused.
    ContextValues values_;
    std::uint64_t made_ = 0;
};

} // namespace dyadctx
