// SPDX-License-Identifier: MIT
// What the translators' files in resources/messages hold.
#include "platform/PoFile.h"
#include "platform/VELMsgCatalog.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace dyadctx::test {

namespace {

const std::vector<std::string> Languages{"en", "fr", "de", "ja"};

// Every key with its number of parameters.
const std::map<std::string, int> Keys{
    {"Ctx.Check.NoCtxDefined", 0},
    {"Ctx.Check.CtxEmptyName", 0},
    {"Ctx.Check.CtxNameTooLong", 1},
    {"Ctx.Check.CtxNameWithInvalidChar", 0},
    {"Ctx.Check.CtxEmptyParam", 1},
    {"Ctx.Check.CtxUnknownParamType", 2},
    {"Ctx.Check.CtxAlreadyDefined", 1},
    {"Ctx.Check.CtxDatabaseAlreadyDefined", 2},
    {"Ctx.Check.CtxAndFriendWithSameName", 2},
    {"Ctx.Check.CtxAndFriendWithCyclicity", 2},
    {"Ctx.Check.CtxAndAssocWithSameName", 2},
    {"Ctx.Check.CtxAndAssocWithCyclicity", 2},
    {"Ctx.Check.CtxDefaultInvalidParamType", 3},
    {"Ctx.Check.CtxDefaultInvalidName", 3},
    {"Ctx.Check.CtxDefaultInvalidParam", 2},
    {"Ctx.Collector.InternalError", 0},
    {"Ctx.Collector.XMLFileNotSet", 0},
    {"Ctx.Collector.XMLFileNotValid", 1},
    {"Ctx.Collector.ParseError", 0},
    {"Ctx.Collector.SetFriendsAndAssociatedError", 0},
    {"Ctx.Collector.CheckError", 0},
    {"Ctx.Collector.StreamError", 0},
    {"Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx", 2},
    {"Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx", 2},
    {"Ctx.Parse.CtxNoName", 0},
    {"Ctx.Parse.CtxNoParam", 1},
    {"Ctx.Parse.CtxNoParamType", 1},
    {"Ctx.Parse.CtxNoDatabase", 1},
    {"Ctx.Parse.CtxFriendNoName", 1},
    {"Ctx.Parse.CtxAssocNoName", 1},
    {"Ctx.Parse.CtxNoConnector", 0},
    {"Ctx.Parse.CtxFriendWithFriend", 0},
    {"Ctx.Parse.CtxAssociatedWithAssociated", 0},
    {"Ctx.Parse.NoCtxDefinedForFriend", 0},
    {"Ctx.Parse.NoCtxDefinedForAssociated", 0},
    {"Ctx.Parse.TagNotFound", 1},
    {"Ctx.Parse.NotAValidTag", 1},
    {"Ctx.Parse.XMLSyntaxError", 0},
    {"Ctx.ParameterType.Default", 0},
    {"Ctx.ParameterType.Path", 0},
    {"Ctx.ParameterType.File", 0},
    {"Ctx.ParameterType.Database", 0},
};

std::vector<PoEntry> EntriesOf(const std::string& language) {
    return ReadPoFile(std::string(DYADCTX_SOURCE_DIR) +
                      "/resources/messages/VELDyadCtxDlgSelection." + language + ".po");
}

// The English file has its texts as originals only.
std::string TextOf(const PoEntry& entry, const std::string& language) {
    return language == "en" ? entry.original : entry.translation;
}

bool EndsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool IsHeadingOrLabel(const std::string& key) {
    return key.starts_with("Ctx.ParameterType.") ||
           (key.starts_with("Ctx.Collector.") && EndsWith(key, "Error") &&
            key != "Ctx.Collector.InternalError");
}

std::set<int> PlaceholdersOf(const std::string& text) {
    std::set<int> numbers;
    for (std::size_t at = text.find('{'); at != text.npos; at = text.find('{', at + 1)) {
        const bool isPlaceholder = at + 2 < text.size() && text[at + 2] == '}';
        numbers.insert(isPlaceholder ? text[at + 1] - '0' : -1);
    }
    return numbers;
}

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
    return text;
}

std::string Built(const std::string& key, const std::vector<VELUnicodeString>& parameters) {
    return std::string(VELMsgCatalog::BuildMessage("VELDyadCtxDlgSelection", key.c_str(),
                                                   parameters.data(),
                                                   static_cast<int>(parameters.size()), "(unknown)")
                           .AsView());
}

} // namespace

TEST(MessageFiles, HoldEveryKeyOnceAndNoOther) {
    for (const std::string& language : Languages) {
        std::map<std::string, int> found;
        for (const PoEntry& entry : EntriesOf(language))
            ++found[entry.context];
        for (const auto& [key, count] : Keys)
            EXPECT_EQ(found[key], 1) << language << " " << key;
        EXPECT_EQ(found.size(), Keys.size()) << language;
    }
}

TEST(MessageFiles, UseEveryParameterAndNoOther) {
    for (const std::string& language : Languages) {
        for (const PoEntry& entry : EntriesOf(language)) {
            std::set<int> expected;
            for (int number = 0; number < Keys.at(entry.context); ++number)
                expected.insert(number);
            EXPECT_EQ(PlaceholdersOf(TextOf(entry, language)), expected)
                << language << " " << entry.context;
            EXPECT_EQ(entry.isCheckedFormat, !expected.empty()) << language << " " << entry.context;
        }
    }
}

TEST(MessageFiles, HaveTheSameEnglishOriginalsWhichStandInOnePlace) {
    std::map<std::string, std::string> originals;
    for (const PoEntry& entry : EntriesOf("en")) {
        originals[entry.context] = entry.original;
        EXPECT_EQ(entry.translation, "") << entry.context;
    }
    for (const char* language : {"fr", "de", "ja"}) {
        for (const PoEntry& entry : EntriesOf(language))
            EXPECT_EQ(entry.original, originals[entry.context]) << language;
    }
}

TEST(MessageFiles, HoldSentencesAndPlainHeadingsAndLabels) {
    for (const std::string& language : Languages) {
        const std::string end = language == "ja" ? "。" : ".";
        for (const PoEntry& entry : EntriesOf(language)) {
            const std::string text = TextOf(entry, language);
            EXPECT_NE(text, "") << language << " " << entry.context;
            EXPECT_EQ(text.find('\n'), text.npos) << language << " " << entry.context;
            EXPECT_EQ(EndsWith(text, end), !IsHeadingOrLabel(entry.context))
                << language << " " << entry.context;
        }
    }
}

TEST(MessageFiles, HaveADifferentTextForEachKey) {
    for (const std::string& language : Languages) {
        std::set<std::string> texts;
        for (const PoEntry& entry : EntriesOf(language))
            EXPECT_TRUE(texts.insert(TextOf(entry, language)).second)
                << language << " " << entry.context;
    }
}

TEST(MessageFiles, AreWhatTheLibraryReturnsInEachLanguage) {
    for (const std::string& language : Languages) {
        VELMsgCatalog::SetLanguage(language.c_str());
        for (const PoEntry& entry : EntriesOf(language)) {
            std::string expected = TextOf(entry, language);
            expected = Replaced(expected, "{0}", "<first>");
            expected = Replaced(expected, "{1}", "<second>");
            expected = Replaced(expected, "{2}", "<third>");
            EXPECT_EQ(Built(entry.context, {"<first>", "<second>", "<third>"}), expected)
                << language;
        }
    }
    VELMsgCatalog::SetLanguage(nullptr);
}

} // namespace dyadctx::test
