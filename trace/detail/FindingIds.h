// SPDX-License-Identifier: MIT
// The ids of findings that are not messages of the library. Their texts are in the catalog of the
// check, under the ids.
//
// A catalog key begins with "Ctx."; an id is lower-case words joined by "-".
#pragma once

#include "trace/VELDyadCtxFinding.h"

#include <span>
#include <string_view>

namespace dyadctx {

namespace id {

// Errors: the library rejects the file and has no message for it.
inline constexpr const char* OptionWithoutName = "option-without-name";
inline constexpr const char* ProviderFailed = "provider-failed";

// Warnings.
inline constexpr const char* UnknownAttribute = "unknown-attribute";
inline constexpr const char* UnusedAttribute = "unused-attribute";
inline constexpr const char* UnknownElement = "unknown-element";
inline constexpr const char* MisplacedElement = "misplaced-element";
inline constexpr const char* NestedData = "nested-data";
inline constexpr const char* RepeatedFriend = "repeated-friend";
inline constexpr const char* SeveralAssociated = "several-associated";
inline constexpr const char* RepeatedScenario = "repeated-scenario";
inline constexpr const char* RepeatedOption = "repeated-option";
inline constexpr const char* MissingPath = "missing-path";
inline constexpr const char* MissingFile = "missing-file";
inline constexpr const char* FriendRing = "friend-ring";
inline constexpr const char* FriendsOfLeftOut = "friends-of-left-out";
inline constexpr const char* FriendsOfRepeated = "friends-of-repeated";

// Notes.
inline constexpr const char* NearestName = "nearest-name";
inline constexpr const char* NoDefaultContext = "no-default-context";
inline constexpr const char* DatabaseLeftOut = "database-left-out";
inline constexpr const char* AssociatedLeftOut = "associated-left-out";

} // namespace id

// A row of the table.
struct FindingKind {
    const char* id;
    VELDyadCtxSeverity severity;
};

std::span<const FindingKind> OwnFindingKinds() noexcept;
// Null for a catalog key.
const FindingKind* FindOwnKind(std::string_view id) noexcept;

} // namespace dyadctx
