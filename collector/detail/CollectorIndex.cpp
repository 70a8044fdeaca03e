#include "collector/detail/CollectorIndex.h"

#include "context/detail/ContextAccess.h"
#include "context/detail/TextHash.h"

#include <algorithm>
#include <bit>
#include <string_view>

namespace dyadctx {

namespace {

// Tells of a position whether its context has a name. The chains ask only about positions that
// have a context.
template<class ContextAt>
auto HasName(ContextAt contextAt, std::string_view name) {
    return [contextAt, name](int pos) { return contextAt(pos)->GetName().AsView() == name; };
}

auto ContextsOf(const VELListPtrVELDyadContext& declared) {
    return [&declared](int pos) -> const VELDyadContext* { return declared[pos]; };
}

auto ContextsOf(const VELListPtrVELDyadContext& declared, const VELRawCollint& positions) {
    return [&](int place) -> const VELDyadContext* { return declared[positions[place]]; };
}

std::uint64_t HashOfPair(const VELUnicodeString& first, const VELUnicodeString& second) noexcept {
    return std::rotl(HashOfText(first.AsView()), 1) ^ HashOfText(second.AsView());
}

} // namespace

template<class ContextAt>
void CollectorIndex::Extend(Names& names, int size, int expectedSize, int declaredSize,
                            ContextAt contextAt) {
    const std::uint64_t assignments = ContextAccess::AssignmentCount();
    const bool isOutdated = names.assignments != assignments || names.chains.Size() > size ||
                            (names.hasGaps && names.declaredSize != declaredSize);
    if (isOutdated)
        names = Names();
    names.assignments = assignments;
    names.declaredSize = declaredSize;
    if (names.chains.Size() == 0)
        names.chains.Reserve(std::max(size, expectedSize), std::max(size, expectedSize));
    while (names.chains.Size() < size) {
        const VELDyadContext* context = contextAt(names.chains.Size() + 1);
        if (context == nullptr) {
            names.chains.AppendWithoutKey();
            names.hasGaps = true;
            continue;
        }
        const std::string_view name = context->GetName().AsView();
        names.chains.Append(HashOfText(name), HasName(contextAt, name));
    }
}

const PositionChains& CollectorIndex::Declared(const VELListPtrVELDyadContext& declared) {
    Extend(declared_, declared.Size(), expectedSize_, declared.Size(), ContextsOf(declared));
    return declared_.chains;
}

void CollectorIndex::Announce(const VELUnicodeString& name) const noexcept {
    declared_.chains.Announce(HashOfText(name.AsView()));
}

void CollectorIndex::AnnounceContext(const VELListPtrVELDyadContext& declared,
                                     const VELUnicodeString& name) const noexcept {
    Prefetch(declared[declared_.chains.Guess(HashOfText(name.AsView()))]);
}

int CollectorIndex::PositionOfName(const VELListPtrVELDyadContext& declared,
                                   const VELUnicodeString& name, int after) {
    const PositionChains& chains = Declared(declared);
    const PositionChains::Ends ends =
        chains.Find(HashOfText(name.AsView()), HasName(ContextsOf(declared), name.AsView()));
    if (ends.last <= after)
        return 0;
    if (ends.first > after)
        return ends.first;
    // Whoever asks for what follows mostly stands on a context of that name.
    const VELDyadContext* standing = declared[after];
    if (standing != nullptr && standing->GetName() == name)
        return chains.Next(after);
    int pos = ends.first;
    while (pos <= after)
        pos = chains.Next(pos);
    return pos;
}

int CollectorIndex::NextNamesake(const VELListPtrVELDyadContext& declared, int pos) {
    return Declared(declared).Next(pos);
}

int CollectorIndex::PlaceOfName(const VELListPtrVELDyadContext& declared,
                                const VELRawCollint& positions, ViewType view,
                                const VELUnicodeString& name) {
    Names& names = views_[static_cast<std::size_t>(view - PathContexts)];
    const auto contextAt = ContextsOf(declared, positions);
    Extend(names, positions.Size(), 0, declared.Size(), contextAt);
    return names.chains.Find(HashOfText(name.AsView()), HasName(contextAt, name.AsView())).first;
}

bool CollectorIndex::Owns(const VELListPtrVELDyadContext& owned, const VELDyadContext* context) {
    if (ownedSize_ > owned.Size()) {
        owned_.clear();
        ownedSize_ = 0;
    }
    for (; ownedSize_ < owned.Size(); ++ownedSize_)
        owned_.insert(owned[ownedSize_ + 1]);
    return owned_.contains(context);
}

int CollectorIndex::RowOfChannel(const VELListValVELUnicodeString& channels,
                                 const VELUnicodeString& channel) {
    for (int row = channelRows_.Size() + 1; row <= channels.Size(); ++row) {
        channelRows_.Append(HashOfText(channels[row].AsView()),
                            [&](int earlier) { return channels[earlier] == channels[row]; });
    }
    return channelRows_
        .Find(HashOfText(channel.AsView()), [&](int row) { return channels[row] == channel; })
        .first;
}

int CollectorIndex::RowOfProfile(const VELListValVELUnicodeString& channels,
                                 const VELListValVELUnicodeString& profiles,
                                 const VELUnicodeString& channel, const VELUnicodeString& profile) {
    for (int row = profileRows_.Size() + 1; row <= profiles.Size(); ++row) {
        profileRows_.Append(HashOfPair(channels[row], profiles[row]), [&](int earlier) {
            return channels[earlier] == channels[row] && profiles[earlier] == profiles[row];
        });
    }
    const auto isOfProfile = [&](int row) {
        return channels[row] == channel && profiles[row] == profile;
    };
    return profileRows_.Find(HashOfPair(channel, profile), isOfProfile).first;
}

void CollectorIndex::Forget() noexcept {
    declared_ = Names();
    views_ = {};
    owned_ = {};
    ownedSize_ = 0;
    channelRows_.Clear();
    profileRows_.Clear();
    expectedSize_ = 0;
}

} // namespace dyadctx
