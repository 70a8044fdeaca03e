// SPDX-License-Identifier: MIT
// The texts of a gettext MO image, looked up by message context.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>

namespace dyadctx {

// The image is untrusted. Entries that are out of bounds, have no context, or have one longer than
// any key are ignored; so is an image that is not an MO file.
class MoCatalog {
public:
    // Refers to the image, which the caller owns; it must outlive this object.
    explicit MoCatalog(std::span<const unsigned char> image);

    // The text of a key; nothing if there is none, or if it is not valid UTF-8 of reasonable
    // length. Valid as long as the image.
    std::optional<std::string_view> Find(std::string_view key) const;

private:
    std::unordered_map<std::string_view, std::string_view> texts_;
};

} // namespace dyadctx
