// SPDX-License-Identifier: MIT
// Context files of any length and shape for measurements and for tests of large inputs.
//
// A file is fixed by its plan: the same plan produces the same bytes on every system. It is
// streamed, so its length costs no memory. Unless its shape says otherwise, a file is valid while
// the DB context environment is on: unique names, declared friends, no context among the friends of
// its own friends, each database once, and a default context.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace dyadctx::bench {

enum class Shape {
    // Path, File and Database contexts with server details, friends, associated contexts,
    // scenarios.
    Mixed,
    // Half of the contexts have one hub as friend; the hub has the other half as friends.
    Star,
    // Every context has the first as friend.
    FanIn,
    // The first context has all others as friends.
    FanOut,
    // Every context has the next as friend.
    Chain,
    // Every context has the one before as associated context.
    Associated,
    // Contexts with eight scenario rows each, every row with an identifier and a profile of its
    // own;
    // the count is that of the rows.
    Scenarios,
    // One context with all scenario rows, each with an identifier and a profile of its own.
    Profiles,
    // One database context with as many server sites. Needs multisite support.
    Sites,
    // Database contexts with four server sites each; the count is that of the sites. Needs
    // multisite
    // support.
    GroupedSites,
    // Database contexts on distinct servers, a few connectors.
    Databases,
    // Database contexts, each with a connector of its own.
    Connectors,
    // All names alike: not valid.
    Namesakes,
    // Unique names but for the last two contexts: not valid, found at the end of the check.
    LateNamesake,
    // Every context has a friend that is not declared: not valid, one message for each.
    UnknownFriends,
    // The first context has all others as friends, and each has it as friend: not valid, one
    // message
    // for each.
    Cycles
};

std::span<const Shape> AllShapes() noexcept;
std::string_view NameOf(Shape shape) noexcept;
std::optional<Shape> ShapeNamed(std::string_view name) noexcept;
bool IsValid(Shape shape) noexcept;
// Whether its sites are kept only while the process has multisite support.
bool NeedsMultisites(Shape shape) noexcept;

struct ContextFilePlan {
    Shape shape = Shape::Mixed;
    // Of contexts, where the shape does not say otherwise, the default context not counted.
    std::uint64_t count = 0;
    std::uint64_t seed = 1;
};

void WriteContextFile(const ContextFilePlan& plan, std::ostream& out);
// False when the file could not be written completely.
bool WriteContextFile(const ContextFilePlan& plan, const std::string& path);

} // namespace dyadctx::bench
