#include "platform/detail/MessageTexts.h"

#include "platform/detail/EmbeddedCatalogs.h"
#include "platform/detail/FileReader.h"

#include <utility>

namespace dyadctx {

namespace {

// Far above any real catalog, yet small enough to read whatever a file holds.
constexpr std::size_t LargestFile = std::size_t{1} << 20U;

// The content of a file; empty if it cannot be read or is too large.
std::vector<unsigned char> ReadSmallFile(const VELUnicodeString& path) {
    FileReader file;
    if (!file.Open(path) || file.Size() > LargestFile)
        return {};
    std::vector<unsigned char> bytes(static_cast<std::size_t>(file.Size()));
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const std::int64_t got = file.Read(bytes.data() + filled, bytes.size() - filled);
        if (got <= 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    bytes.resize(filled);
    return bytes;
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
    for (const EmbeddedCatalog& embedded : EmbeddedCatalogs()) {
        if (embedded.catalog == catalog)
            continue;
        catalog = embedded.catalog;
        VELUnicodeString path(folder);
        path.Append("/").Append(catalog);
        path.Append(".").Append(std::string_view(language)).Append(".mo");
        std::vector<unsigned char> image = ReadSmallFile(path);
        if (image.empty())
            continue;
        // The bytes do not move with the vector that owns them.
        images_.push_back(std::move(image));
        catalogs_.push_back({catalog, MoCatalog(images_.back())});
    }
}

void MessageTexts::AddEmbedded(const std::string& language) {
    for (const EmbeddedCatalog& embedded : EmbeddedCatalogs()) {
        if (embedded.language == language)
            catalogs_.push_back({embedded.catalog, MoCatalog(embedded.image)});
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
