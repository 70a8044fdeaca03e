// The catalog of the words that the check of a file and the tool say beyond the library's messages.
#include "check/VELDyadCtxFileCheck.h"
#include "platform/PoFile.h"
#include "platform/VELMsgCatalog.h"
#include "trace/detail/UserMessage.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

const std::filesystem::path SourceFolder = DYADCTX_SOURCE_DIR;

std::vector<PoEntry> EntriesOf(const std::string& language) {
    return ReadPoFile(
        (SourceFolder / "resources/messages" / ("dyadctx." + language + ".po")).string());
}

std::map<std::string, std::string> EnglishTexts() {
    std::map<std::string, std::string> texts;
    for (const PoEntry& entry : EntriesOf("en"))
        texts.emplace(entry.context, entry.original);
    return texts;
}

std::multiset<std::string> PlaceholdersOf(const std::string& text) {
    static const std::regex Placeholder(R"(\{\d\})");
    return {std::sregex_token_iterator(text.begin(), text.end(), Placeholder),
            std::sregex_token_iterator()};
}

std::set<std::string> KeysIn(const std::filesystem::path& source) {
    static const std::regex Call(R"re((Words|OwnText)\(\s*"([^"]+)"\s*[,)])re");
    std::ifstream in(source, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    return {std::sregex_token_iterator(text.begin(), text.end(), Call, 2),
            std::sregex_token_iterator()};
}

std::string Built(const char* key, const VELUnicodeString& parameter = {}) {
    return std::string(OwnText(key, &parameter, 1).AsView());
}

// Knows no text.
class SilentSource final : public VELMsgCatalogSource {
    VELResult Build(const VELString&, const VELString&, const VELUnicodeString*, int,
                    VELUnicodeString&) override {
        return E_FAIL;
    }
};

class OwnWords : public testing::Test {
protected:
    void SetUp() override { VELMsgCatalog::SetLanguage("en"); }
    void TearDown() override {
        VELMsgCatalog::SetSource(nullptr);
        VELMsgCatalog::SetLanguage(nullptr);
    }
};

} // namespace

TEST_F(OwnWords, HaveEachKeyOnceInEachLanguageWithTheSameParameters) {
    const std::map<std::string, std::string> english = EnglishTexts();
    ASSERT_GT(english.size(), 100U);
    for (const char* language : {"fr", "de", "ja"}) {
        std::set<std::string> keys;
        for (const PoEntry& entry : EntriesOf(language)) {
            EXPECT_TRUE(keys.insert(entry.context).second) << language << " " << entry.context;
            ASSERT_TRUE(english.contains(entry.context)) << language << " " << entry.context;
            EXPECT_EQ(entry.original, english.at(entry.context)) << language;
            EXPECT_NE(entry.translation, "") << language << " " << entry.context;
            EXPECT_EQ(PlaceholdersOf(entry.translation), PlaceholdersOf(entry.original))
                << language << " " << entry.context;
        }
        EXPECT_EQ(keys.size(), english.size()) << language;
    }
}

TEST_F(OwnWords, HaveATextForEachKeyThatTheSourcesName) {
    const std::map<std::string, std::string> english = EnglishTexts();
    std::size_t found = 0;
    for (const char* folder : {"check", "tools/dyadctx"}) {
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(SourceFolder / folder)) {
            if (entry.path().extension() != ".cpp")
                continue;
            for (const std::string& key : KeysIn(entry.path())) {
                EXPECT_TRUE(english.contains(key)) << entry.path() << " " << key;
                ++found;
            }
        }
    }
    EXPECT_GT(found, 50U);
}

TEST_F(OwnWords, HaveATextForEachKindOfFinding) {
    const std::map<std::string, std::string> english = EnglishTexts();
    const VELListVal<VELDyadCtxFindingKind> kinds = VELDyadCtxFileCheck::GetFindingKinds();
    EXPECT_GE(kinds.Size(), 15);
    for (int i = 1; i <= kinds.Size(); ++i) {
        const std::string id(kinds[i].id.AsView());
        ASSERT_TRUE(english.contains(id)) << id;
        EXPECT_EQ(std::string(kinds[i].text.AsView()), english.at(id));
    }
}

TEST_F(OwnWords, AreBuiltInTheLanguageOfTheMessages) {
    const VELUnicodeString place("/ctx");
    EXPECT_EQ(Built("path.folder-missing", place), "there is no folder /ctx");
    VELMsgCatalog::SetLanguage("de");
    EXPECT_EQ(Built("path.folder-missing", place), "es gibt keinen Ordner /ctx");
    VELMsgCatalog::SetLanguage("fr-CA");
    EXPECT_EQ(Built("path.folder-missing", place), "il n’y a pas de dossier /ctx");
    VELMsgCatalog::SetLanguage("ja");
    EXPECT_EQ(Built("path.folder-missing", place), "フォルダー /ctx はありません");
}

TEST_F(OwnWords, AreTheBuiltInOnesWhereAHostHasNone) {
    SilentSource silent;
    VELMsgCatalog::SetSource(&silent);
    EXPECT_EQ(Built("path.is-folder"), "it is a folder");
}

} // namespace dyadctx::test
