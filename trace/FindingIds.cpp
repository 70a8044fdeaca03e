// SPDX-License-Identifier: MIT
#include "trace/detail/FindingIds.h"

#include <algorithm>
#include <array>

namespace dyadctx {

namespace {

using enum VELDyadCtxSeverity;

constexpr std::array Kinds{
    FindingKind{id::OptionWithoutName, Error},   FindingKind{id::ProviderFailed, Error},
    FindingKind{id::UnknownAttribute, Warning},  FindingKind{id::UnusedAttribute, Warning},
    FindingKind{id::UnknownElement, Warning},    FindingKind{id::MisplacedElement, Warning},
    FindingKind{id::NestedData, Warning},        FindingKind{id::RepeatedFriend, Warning},
    FindingKind{id::SeveralAssociated, Warning}, FindingKind{id::RepeatedScenario, Warning},
    FindingKind{id::RepeatedOption, Warning},    FindingKind{id::MissingPath, Warning},
    FindingKind{id::MissingFile, Warning},       FindingKind{id::FriendRing, Warning},
    FindingKind{id::FriendsOfLeftOut, Warning},  FindingKind{id::FriendsOfRepeated, Warning},
    FindingKind{id::NearestName, Note},          FindingKind{id::NoDefaultContext, Note},
    FindingKind{id::DatabaseLeftOut, Note},      FindingKind{id::AssociatedLeftOut, Note},
};

} // namespace

std::span<const FindingKind> OwnFindingKinds() noexcept {
    return Kinds;
}

const FindingKind* FindOwnKind(std::string_view id) noexcept {
    const auto* found = std::find_if(Kinds.begin(), Kinds.end(),
                                     [id](const FindingKind& kind) { return kind.id == id; });
    return found != Kinds.end() ? found : nullptr;
}

} // namespace dyadctx
