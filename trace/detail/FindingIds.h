// What a check of a file tells beyond the messages of the catalog: its own ids. The texts are in
// the catalog of the check, under the ids.
//
// A key of the catalog begins with "Ctx."; an id is words of small letters joined by "-".
#pragma once

#include "trace/VELDyadCtxFinding.h"

#include <span>
#include <string_view>

namespace dyadctx {

namespace id {

// Errors: the library gives up the file and has no message for it.
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

// A row of their table.
struct FindingKind {
    const char* id;
    VELDyadCtxSeverity severity;
};

std::span<const FindingKind> OwnFindingKinds() noexcept;
// Null for a key of the catalog.
const FindingKind* FindOwnKind(std::string_view id) noexcept;

} // namespace dyadctx
