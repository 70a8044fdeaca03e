// The library's own message catalog, compiled into it: one gettext MO image per language.
#pragma once

#include <span>
#include <string_view>

namespace dyadctx {

struct EmbeddedCatalog {
    std::string_view language;
    std::span<const unsigned char> image;
};

// Both are written by the build from the files in resources/messages.
std::string_view EmbeddedCatalogName() noexcept;
std::span<const EmbeddedCatalog> EmbeddedCatalogs() noexcept;

} // namespace dyadctx
