// SPDX-License-Identifier: MIT
// A hash of texts that come from outside.
//
// Keyed with a secret of the process, so that nobody can craft texts that all collide. Equal texts
// have equal hashes within one process only.
#pragma once

#include "platform/VELListVal.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_set>

namespace dyadctx {

std::uint64_t HashOfText(std::string_view text) noexcept;

struct TextHash {
    std::size_t operator()(std::string_view text) const noexcept {
        return static_cast<std::size_t>(HashOfText(text));
    }
};

// Texts owned elsewhere, which must not change.
using TextSet = std::unordered_set<std::string_view, TextHash>;

// The texts of a list, which must outlive the set. Throws std::bad_alloc.
TextSet SetOf(const VELListValVELUnicodeString& texts);

} // namespace dyadctx
