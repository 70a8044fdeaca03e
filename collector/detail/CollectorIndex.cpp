// SPDX-License-Identifier: MIT
#include "collector/detail/CollectorIndex.h"

#include "context/detail/ContextAccess.h"
#include "context/detail/TextHash.h"

#include <algorithm>
#include <bit>
#include <string_view>

namespace dyadctx {

namespace {

// Says whether the context at a place has a name. The chains ask only about places with a context.
template<class PositionAt>
auto HasName(const VELListPtrVELDyadContext& declared, PositionAt positionAt,
             std::string_view name) {
    return [&declared, positionAt, name](int place) {
        return declared[positionAt(place)]->GetName().AsView() == name;
    };
}

constexpr auto SamePosition = [](int pos) { return pos; };

auto PositionsOf(const VELRawCollint& positions) {
    return [&positions](int place) { return positions[place]; };
}

std::uint64_t HashOfPair(const VELUnicodeString& first, const VELUnicodeString& second) noexcept {
    return std::rotl(HashOfText(first.AsView()), 1) ^ HashOfText(second.AsView());
}

} // namespace

template<class PositionAt>
void CollectorIndex::Extend(Names& names, const VELListPtrVELDyadContext& declared, int size,
                            int expectedSize, PositionAt positionAt) {
    const std::uint64_t assignments = ContextAccess::AssignmentCount();
    if (names.assignments != assignments || names.chains.Size() > size ||
        declared.Size() >= names.firstOutside)
        names = Names();
    names.assignments = assignments;
    if (names.chains.Size() == 0)
        names.chains.Reserve(std::max(size, expectedSize), std::max(size, expectedSize));
    while (names.chains.Size() < size) {
        const int pos = positionAt(names.chains.Size() + 1);
        if (pos > declared.Size())
            names.firstOutside = std::min(names.firstOutside, pos);
        const VELDyadContext* context = declared[pos];
        if (context == nullptr) {
            names.chains.AppendWithoutKey();
            continue;
        }
        const std::string_view name = context->GetName().AsView();
        names.chains.Append(HashOfText(name), HasName(declared, positionAt, name));
    }
}

const PositionChains& CollectorIndex::Declared(const VELListPtrVELDyadContext& declared) {
    Extend(declared_, declared, declared.Size(), expectedSize_, SamePosition);
    return declared_.chains;
}

void CollectorIndex::Prefetch(const VELUnicodeString& name) const noexcept {
    declared_.chains.Prefetch(HashOfText(name.AsView()));
}

void CollectorIndex::PrefetchContext(const VELListPtrVELDyadContext& declared,
                                     const VELUnicodeString& name) const noexcept {
    dyadctx::Prefetch(declared[declared_.chains.Guess(HashOfText(name.AsView()))]);
}

int CollectorIndex::PositionOfName(const VELListPtrVELDyadContext& declared,
                                   const VELUnicodeString& name, int after) {
    const PositionChains& chains = Declared(declared);
    const PositionChains::Ends ends =
        chains.Find(HashOfText(name.AsView()), HasName(declared, SamePosition, name.AsView()));
    if (ends.last <= after)
        return 0;
    if (ends.first > after)
        return ends.first;
    // Callers that search on are mostly at a context of that name.
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
    const auto positionAt = PositionsOf(positions);
    Extend(names, declared, positions.Size(), 0, positionAt);
    return names.chains
        .Find(HashOfText(name.AsView()), HasName(declared, positionAt, name.AsView()))
        .first;
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
