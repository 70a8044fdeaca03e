// SPDX-License-Identifier: MIT
#include "platform/detail/MessageTexts.h"

#include "platform/detail/FileReader.h"

#include <utility>

namespace dyadctx {

namespace {

// Far above any real catalog, yet small enough to read whatever a file holds.
constexpr std::size_t LargestFile = std::size_t{1} << 20U;

// The content of a file; empty if it cannot be read or is too large.
std::string ReadSmallFile(const VELUnicodeString& path) {
    FileReader file;
    std::string bytes;
    if (!file.Open(path) || !ReadWhole(file, LargestFile, bytes) || bytes.size() > LargestFile)
        return {};
    return bytes;
}

std::string_view CatalogOf(const EmbeddedFile& embedded) {
    return embedded.name.substr(0, embedded.name.rfind('.'));
}

std::string_view LanguageOf(const EmbeddedFile& embedded) {
    return embedded.name.substr(embedded.name.rfind('.') + 1);
}

std::span<const unsigned char> ImageOf(std::string_view bytes) {
    return {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()};
}

} // namespace

MessageTexts::MessageTexts(const std::vector<std::string>& languages,
                           const VELUnicodeString& folder) {
    for (const std::string& language : languages) {
        if (!folder.IsEmpty())
            AddOverrides(folder, language);
        AddEmbedded(language);
    }
}

void MessageTexts::AddOverrides(const VELUnicodeString& folder, const std::string& language) {
    std::string_view catalog;
    for (const EmbeddedFile& embedded : EmbeddedCatalogs()) {
        if (CatalogOf(embedded) == catalog)
            continue;
        catalog = CatalogOf(embedded);
        VELUnicodeString path(folder);
        path.Append("/").Append(catalog);
        path.Append(".").Append(std::string_view(language)).Append(".mo");
        std::string image = ReadSmallFile(path);
        if (image.empty())
            continue;
        images_.push_back(std::move(image));
        catalogs_.push_back({catalog, MoCatalog(ImageOf(images_.back()))});
    }
}

void MessageTexts::AddEmbedded(const std::string& language) {
    for (const EmbeddedFile& embedded : EmbeddedCatalogs()) {
        if (LanguageOf(embedded) == language)
            catalogs_.push_back({CatalogOf(embedded), MoCatalog(ImageOf(embedded.bytes))});
    }
}

std::optional<std::string_view> MessageTexts::Find(std::string_view catalog,
                                                   std::string_view key) const {
    for (const Texts& one : catalogs_) {
        if (one.catalog != catalog)
            continue;
        if (const auto text = one.texts.Find(key))
            return text;
    }
    return std::nullopt;
}

} // namespace dyadctx
