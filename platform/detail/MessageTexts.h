// The message texts of one language choice: for each language, best first, overriding files before
// the embedded catalogs.
#pragma once

#include "platform/VELUnicodeString.h"
#include "platform/detail/MoCatalog.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx {

class MessageTexts {
public:
    // Reads <catalog>.<language>.mo from the folder for each catalog and language; an empty folder
    // means none. Ignores files that are missing, too large, damaged or not regular.
    MessageTexts(const std::vector<std::string>& languages, const VELUnicodeString& folder);
    MessageTexts(const MessageTexts&) = delete;
    MessageTexts& operator=(const MessageTexts&) = delete;

    // Whether no language has texts.
    bool IsEmpty() const noexcept { return catalogs_.empty(); }
    // Valid as long as this object.
    std::optional<std::string_view> Find(std::string_view catalog, std::string_view key) const;

private:
    struct Texts {
        std::string_view catalog;
        MoCatalog texts;
    };

    void AddOverrides(const VELUnicodeString& folder, const std::string& language);
    void AddEmbedded(const std::string& language);

    // The storage of the catalogs from files.
    std::vector<std::vector<unsigned char>> images_;
    std::vector<Texts> catalogs_;
};

} // namespace dyadctx
