// SPDX-License-Identifier: MIT
#include "collector/detail/DatabaseMatches.h"

#include "context/detail/ContextAccess.h"
#include "context/detail/GuardedCall.h"
#include "context/detail/ParameterTypes.h"
#include "context/detail/TextHash.h"
#include "platform/detail/InMemoryDbProvider.h"
#include "trace/detail/TraceLine.h"

#include <algorithm>

namespace dyadctx {

namespace {

// A provider that cannot return its type is compared like any other.
bool IsCompared(VELIDyadDbProvider& provider, VELUnicodeString& type) {
    return CodeOf([&] { return provider.GetName(type); }) < 0 ||
           type.AsView() != UncomparedProviderType;
}

bool IsOnSameDatabase(VELIDyadDbProvider& provider, const VELDyadContext& context) {
    VELIDyadDbProvider_var other;
    if (context.GetDyadDbProvider(other) < 0 || other.IsNull())
        return false;
    bool same = false;
    return CodeOf([&] { return provider.IsSame(other, same); }) >= 0 && same;
}

// A candidate deleted by its own comparison does not count.
VELDyadContext* FindOnSameDatabase(const VELListPtrVELDyadContext& declared,
                                   ContextWatches& watches, VELIDyadDbProvider& provider,
                                   int after) {
    for (int pos = after; pos < declared.Size();) {
        VELDyadContext* candidate = declared[++pos];
        const ContextWatch watch(watches, candidate);
        if (candidate != nullptr && IsOnSameDatabase(provider, *candidate) && candidate != nullptr)
            return candidate;
    }
    return nullptr;
}

const InMemoryDbProvider* ProviderOf(const VELDyadContext* context) {
    return context == nullptr ? nullptr
                              : InMemoryDbProvider::From(ContextAccess::KeptProvider(*context));
}

} // namespace

void FindLaterOnSameDatabase(const VELListPtrVELDyadContext& declared, ContextWatches& watches,
                             VELDyadContext* context, int index, VELDyadContext*& found) {
    if (context == nullptr || index == declared.Size() ||
        context->GetParameterType().AsView() != DatabaseType)
        return;
    // A provider may assign to the context while it compares.
    const VELUnicodeString name = context->GetName();
    TRACE_ENTER("VELDyadCtxCollector:FindMatchingDatabase <%s>", name.ConvertToChar());
    VELIDyadDbProvider_var provider;
    if (context->GetDyadDbProvider(provider) < 0 || provider.IsNull())
        return;
    VELUnicodeString type;
    if (!IsCompared(*provider.Get(), type)) {
        TRACE_LEAVE("VELDyadCtxCollector:FindMatchingDatabase NO test on provider <%s> ",
                    type.ConvertToChar());
        return;
    }
    found = FindOnSameDatabase(declared, watches, *provider.Get(), std::max(index, 0));
    if (found != nullptr)
        TRACE_WARNING("VELDyadCtxCollector:FindMatchingDatabase : 2 Contexts similar %s & %s",
                      name.ConvertToChar(), found->GetName().ConvertToChar());
    TRACE_LEAVE("VELDyadCtxCollector:FindMatchingDatabase <%s>", name.ConvertToChar());
}

std::optional<DatabaseMatches>
DatabaseMatches::InPlaceOfSearch(const VELListPtrVELDyadContext& declared) {
    std::optional<DatabaseMatches> matches;
    if (!VELIsTraceActive() && IsBuiltInFactoryActive() &&
        !matches.emplace(DatabaseMatches(declared)).AppendAll())
        matches.reset();
    return matches;
}

bool DatabaseMatches::AppendAll() {
    chains_.Reserve(declared_.Size(), 0);
    for (int pos = 1; pos <= declared_.Size(); ++pos) {
        const VELDyadContext* context = declared_[pos];
        const InMemoryDbProvider* provider = ProviderOf(context);
        if (provider == nullptr && context != nullptr &&
            !ContextAccess::KeptProvider(*context).IsNull())
            return false;
        if (provider == nullptr || provider->Name() == UncomparedProviderType)
            chains_.AppendWithoutKey();
        else
            chains_.Append(provider->IdentityHash(&HashOfText), [&](int earlier) {
                return provider->IsSameAs(*ProviderOf(declared_[earlier]));
            });
    }
    return true;
}

VELDyadContext* DatabaseMatches::LaterOnSameDatabase(int index) const {
    const int next = chains_.Next(index);
    return next == 0 ? nullptr : declared_[next];
}

} // namespace dyadctx
