// The texts of one gettext MO image, looked up by their message context.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>

namespace dyadctx {

// The image may come from anybody's file. Entries that do not lie within it, have no context, or
// have one longer than any key are left out; so is all of an image that is no MO file.
class MoCatalog {
public:
    // Refers to the image, which stays with the caller and must outlive this object.
    explicit MoCatalog(std::span<const unsigned char> image);

    // The text of a key; nothing when there is none, or when it is not sound UTF-8 of a sensible
    // length. Valid as long as the image.
    std::optional<std::string_view> Find(std::string_view key) const;

private:
    std::unordered_map<std::string_view, std::string_view> texts_;
};

} // namespace dyadctx
