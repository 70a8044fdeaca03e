// SPDX-License-Identifier: MIT
// The element and attribute names of a document, each stored once and numbered.
#pragma once

#include "platform/detail/DomArena.h"

#include <array>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace dyadctx {

class DomNames {
public:
    // No name has this number.
    static constexpr std::uint32_t None = 0;

    DomNames();

    // The number of a name, added if new.
    std::uint32_t Intern(std::string_view name);
    // The number of a known name, or None.
    std::uint32_t Find(std::string_view name) const noexcept;
    std::string_view Text(std::uint32_t id) const noexcept { return names_[id].text; }

    // The number of elements of that name, attached or not.
    std::uint64_t Elements(std::uint32_t id) const noexcept { return names_[id].elements; }
    // The same of all names.
    std::uint64_t AllElements() const noexcept;
    void CountElement(std::uint32_t id) noexcept { ++names_[id].elements; }

private:
    struct Name {
        std::string_view text;
        std::uint64_t elements = 0;
    };

    static constexpr std::size_t RecentCount = 256;
    static std::size_t RecentSlot(std::string_view name) noexcept;

    DomArena bytes_;
    std::vector<Name> names_;
    std::map<std::string_view, std::uint32_t> index_;
    // Names repeat a lot: the last one seen in a slot is tried first.
    mutable std::array<std::uint32_t, RecentCount> recent_{};
};

} // namespace dyadctx
