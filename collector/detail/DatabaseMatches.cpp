#include "collector/detail/DatabaseMatches.h"

#include "context/detail/ContextAccess.h"
#include "context/detail/GuardedCall.h"
#include "context/detail/ParameterTypes.h"
#include "platform/detail/InMemoryDbProvider.h"
#include "trace/detail/TraceLine.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <functional>
#include <new>
#include <string>
#include <utility>

namespace dyadctx {

namespace {

// A provider that cannot say its type is compared like any other.
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

VELDyadContext* FindOnSameDatabase(const VELListPtrVELDyadContext& declared,
                                   VELIDyadDbProvider& provider, int after) {
    for (int pos = after; pos < declared.Size();) {
        VELDyadContext* candidate = declared[++pos];
        if (candidate != nullptr && IsOnSameDatabase(provider, *candidate))
            return candidate;
    }
    return nullptr;
}

const InMemoryDbProvider* ProviderOf(const VELDyadContext* context) {
    return context == nullptr ? nullptr
                              : InMemoryDbProvider::From(ContextAccess::KeptProvider(*context));
}

void ReadIdentity(const InMemoryDbProvider& provider, std::string& identity) {
    identity.clear();
    if (!provider.AppendIdentity(identity))
        throw std::bad_alloc();
}

// Remembers the lowest position seen so far of each database, by the text that identifies it.
class NearestPositions {
public:
    explicit NearestPositions(const VELListPtrVELDyadContext& declared)
        : declared_(declared), slots_(SlotCountFor(declared)),
          hashes_(static_cast<std::size_t>(declared.Size()) + 1) {}

    // Puts `pos` in the place of the position remembered for its database and gives that one; 0 for
    // the first.
    int Replace(int pos, const InMemoryDbProvider& provider) {
        ReadIdentity(provider, identity_);
        const std::size_t hash = std::hash<std::string>()(identity_);
        hashes_[static_cast<std::size_t>(pos)] = hash;
        int& slot = SlotOf(hash);
        return std::exchange(slot, pos);
    }

private:
    // At least twice as many slots as databases, a power of two.
    static std::size_t SlotCountFor(const VELListPtrVELDyadContext& declared) {
        std::size_t providers = 0;
        for (int pos = 1; pos <= declared.Size(); ++pos) {
            if (ProviderOf(declared[pos]) != nullptr)
                ++providers;
        }
        return std::bit_ceil(2 * providers + 1);
    }

    // The slot of the database whose identity is at hand, or an empty one.
    int& SlotOf(std::size_t hash) {
        std::size_t place = hash & (slots_.size() - 1);
        while (slots_[place] != 0 && !HoldsIdentity(slots_[place], hash))
            place = (place + 1) & (slots_.size() - 1);
        return slots_[place];
    }

    bool HoldsIdentity(int pos, std::size_t hash) {
        if (hashes_[static_cast<std::size_t>(pos)] != hash)
            return false;
        ReadIdentity(*ProviderOf(declared_[pos]), other_);
        return other_ == identity_;
    }

    const VELListPtrVELDyadContext& declared_;
    std::vector<int> slots_;
    std::vector<std::size_t> hashes_;
    std::string identity_;
    std::string other_;
};

} // namespace

VELDyadContext* FindLaterOnSameDatabase(const VELListPtrVELDyadContext& declared,
                                        VELDyadContext* context, int index) {
    if (context == nullptr || index == declared.Size() ||
        context->GetParameterType().AsView() != DatabaseType)
        return nullptr;
    const char* name = context->GetName().ConvertToChar();
    TRACE_ENTER("VELDyadCtxCollector:FindMatchingDatabase <%s>", name);
    VELIDyadDbProvider_var provider;
    if (context->GetDyadDbProvider(provider) < 0 || provider.IsNull())
        return nullptr;
    VELUnicodeString type;
    if (!IsCompared(*provider.Get(), type)) {
        TRACE_LEAVE("VELDyadCtxCollector:FindMatchingDatabase NO test on provider <%s> ",
                    type.ConvertToChar());
        return nullptr;
    }
    VELDyadContext* match = FindOnSameDatabase(declared, *provider.Get(), std::max(index, 0));
    if (match != nullptr)
        TRACE_WARNING("VELDyadCtxCollector:FindMatchingDatabase : 2 Contexts similar %s & %s", name,
                      match->GetName().ConvertToChar());
    TRACE_LEAVE("VELDyadCtxCollector:FindMatchingDatabase <%s>", name);
    return match;
}

bool DatabaseMatches::MayReplaceSearch(const VELListPtrVELDyadContext& declared) {
    if (VELIsTraceActive() || !IsBuiltInFactoryActive())
        return false;
    for (int pos = 1; pos <= declared.Size(); ++pos) {
        const VELDyadContext* context = declared[pos];
        if (context != nullptr && !ContextAccess::KeptProvider(*context).IsNull() &&
            ProviderOf(context) == nullptr)
            return false;
    }
    return true;
}

DatabaseMatches::DatabaseMatches(const VELListPtrVELDyadContext& declared)
    : declared_(declared), next_(static_cast<std::size_t>(declared.Size()) + 1) {
    NearestPositions nearest(declared);
    VELUnicodeString type;
    for (int pos = declared.Size(); pos >= 1; --pos) {
        const InMemoryDbProvider* provider = ProviderOf(declared[pos]);
        if (provider != nullptr &&
            IsCompared(*ContextAccess::KeptProvider(*declared[pos]).Get(), type))
            next_[static_cast<std::size_t>(pos)] = nearest.Replace(pos, *provider);
    }
}

VELDyadContext* DatabaseMatches::LaterOnSameDatabase(int index) const {
    const VELDyadContext* context = declared_[index];
    if (context == nullptr || context->GetParameterType().AsView() != DatabaseType)
        return nullptr;
    const int next = next_[static_cast<std::size_t>(index)];
    return next == 0 ? nullptr : declared_[next];
}

} // namespace dyadctx
