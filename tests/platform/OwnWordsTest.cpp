// SPDX-License-Identifier: MIT
// The catalog of the words that the check of a file and the tool say beyond the library's messages.
#include "check/VELDyadCtxFileCheck.h"
#include "platform/PoFile.h"
#include "platform/VELMsgCatalog.h"
#include "trace/detail/UserMessage.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
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

// The lines of a source without comments.
std::vector<std::string> LinesOf(const std::filesystem::path& source) {
    std::ifstream in(source, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (line.find_first_not_of(' ') != line.find("//"))
            lines.push_back(line);
    }
    return lines;
}

std::vector<std::filesystem::path> SourcesIn(const std::vector<std::string>& folders) {
    std::vector<std::filesystem::path> sources;
    for (const std::string& folder : folders) {
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(SourceFolder / folder)) {
            const std::string ending = entry.path().extension().string();
            if (ending == ".cpp" || ending == ".h")
                sources.push_back(entry.path());
        }
    }
    return sources;
}

std::vector<std::string> TextsIn(const std::string& line) {
    static const std::regex Quoted(R"re("((?:[^"\\]|\\.)*)")re");
    return {std::sregex_token_iterator(line.begin(), line.end(), Quoted, 1),
            std::sregex_token_iterator()};
}

// Every text between quotes that a source of the library or of the tool holds.
std::set<std::string> TextsOfTheSources() {
    std::set<std::string> texts;
    for (const auto& source : SourcesIn({"platform", "trace", "check", "tools/dyadctx"})) {
        for (const std::string& line : LinesOf(source)) {
            for (const std::string& text : TextsIn(line))
                texts.insert(text);
        }
    }
    return texts;
}

// Those that are words for people by their look, and no command.
bool IsSentence(const std::string& text) {
    static const std::regex Words("[A-Za-z]{2,} [A-Za-z]{2,}");
    return std::regex_search(text, Words) && !text.starts_with('`');
}

// Whether it is the key, its stem before ".one" or ".many", or a start to which code adds the rest.
bool IsNamedIn(const std::set<std::string>& texts, const std::string& key) {
    const std::string stem = key.substr(0, key.rfind('.'));
    if (texts.contains(key) || texts.contains(stem))
        return true;
    for (std::size_t end = key.find_first_of(".-"); end != std::string::npos;
         end = key.find_first_of(".-", end + 1)) {
        if (texts.contains(key.substr(0, end + 1)))
            return true;
    }
    return false;
}

// Sources whose texts stay English: help and manual pages, explanations, scripts, internal errors,
// and markup of pictures.
bool MayHoldSentences(const std::filesystem::path& source) {
    static const std::set<std::string> Files{
        "CommandLine.cpp",       "Main.cpp",       "Explanation.cpp",
        "ExplanationParser.cpp", "ManualPage.cpp", "CompletionScript.cpp",
        "CompletionTable.cpp",   "DotWriter.cpp",  "MermaidWriter.cpp",
        "SvgLegend.cpp",         "SvgShapes.cpp",  "SvgStyle.cpp",
        "SvgWriter.cpp"};
    return source.parent_path().filename() == "help" || Files.contains(source.filename().string());
}

// The lines outside of what describes the command line: Declare, Examples, Summary, Synopsis.
std::vector<std::string> LinesForPeople(const std::filesystem::path& source) {
    static const std::regex Start(R"(^\S.*\b(Declare\w*|Examples)\(.*[^;]$)");
    static const std::regex Short(R"((Summary|Synopsis)\(\) const override \{)");
    std::vector<std::string> lines;
    std::string end;
    for (const std::string& line : LinesOf(source)) {
        if (end.empty() && std::regex_search(line, Start))
            end = "}";
        else if (end.empty() && std::regex_search(line, Short))
            end = line.ends_with('}') ? line : "    }";
        else if (end.empty())
            lines.push_back(line);
        if (line == end)
            end.clear();
    }
    return lines;
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
    static const std::regex Key(R"(([a-z]+)(\.[a-z0-9-]*[a-z0-9])+)");
    const std::map<std::string, std::string> english = EnglishTexts();
    std::set<std::string> groups;
    for (const auto& [key, text] : english)
        groups.insert(key.substr(0, key.find('.')));
    std::size_t found = 0;
    for (const std::string& text : TextsOfTheSources()) {
        std::smatch match;
        if (!std::regex_match(text, match, Key) || !groups.contains(match[1]))
            continue;
        EXPECT_TRUE(english.contains(text) ||
                    (english.contains(text + ".one") && english.contains(text + ".many")))
            << text;
        ++found;
    }
    EXPECT_GT(found, 250U);
}

TEST_F(OwnWords, HaveNoTextThatNoSourceNames) {
    const std::set<std::string> texts = TextsOfTheSources();
    for (const auto& [key, text] : EnglishTexts())
        EXPECT_TRUE(IsNamedIn(texts, key)) << key;
}

TEST_F(OwnWords, AreAllThatTheToolSaysToPeople) {
    std::size_t files = 0;
    for (const auto& source : SourcesIn({"tools/dyadctx"})) {
        if (MayHoldSentences(source))
            continue;
        ++files;
        std::string before;
        for (const std::string& line : LinesForPeople(source)) {
            const bool isInternal =
                (before + line).find("ExitStatus::Internal") != std::string::npos;
            for (const std::string& text : TextsIn(line))
                EXPECT_TRUE(!IsSentence(text) || isInternal || line.starts_with("#include"))
                    << source << "\n"
                    << line;
            before = line;
        }
    }
    EXPECT_GT(files, 50U);
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
