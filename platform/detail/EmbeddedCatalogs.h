// The message catalogs compiled into the library: one gettext MO image per catalog and language.
#pragma once

#include <span>
#include <string_view>

namespace dyadctx {

struct EmbeddedCatalog {
    std::string_view catalog;
    std::string_view language;
    std::span<const unsigned char> image;
};

// Written by the build from the files in resources/messages. The languages of one catalog follow
// one another.
std::span<const EmbeddedCatalog> EmbeddedCatalogs() noexcept;

} // namespace dyadctx
