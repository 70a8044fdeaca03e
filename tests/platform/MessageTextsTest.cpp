// SPDX-License-Identifier: MIT
#include "platform/detail/MessageTexts.h"

#include "platform/MoImage.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

const char* const Label = "Ctx.ParameterType.File";
const char* const OtherLabel = "Ctx.ParameterType.Path";

std::string OverrideName(const std::string& language) {
    return "VELDyadCtxDlgSelection." + language + ".mo";
}

std::string OverrideOf(const std::string& key, const std::string& text) {
    return MoImageOf({{WithContext(key), text}});
}

std::string Found(const MessageTexts& texts, const std::string& key) {
    const auto text = texts.Find("VELDyadCtxDlgSelection", key);
    return text ? std::string(*text) : "(nothing)";
}

MessageTexts TextsOf(const std::vector<std::string>& languages, const std::string& folder) {
    return MessageTexts(languages, VELUnicodeString(folder.c_str()));
}

} // namespace

TEST(MessageTexts, AreThoseOfTheFirstLanguageThatHasThem) {
    EXPECT_EQ(Found(TextsOf({"de", "en"}, ""), Label), "Datei");
    EXPECT_EQ(Found(TextsOf({"de-AT", "de_AT", "de", "en"}, ""), Label), "Datei");
    EXPECT_EQ(Found(TextsOf({"it", "en"}, ""), Label), "File");
    EXPECT_EQ(Found(TextsOf({"ja", "en"}, ""), "Ctx.Unknown"), "(nothing)");
    EXPECT_EQ(Found(TextsOf({}, ""), Label), "(nothing)");
}

TEST(MessageTexts, OfAFileOverrideTheEmbeddedOnesKeyByKey) {
    const TemporaryFolder folder;
    folder.Write(OverrideName("de"), OverrideOf(Label, "Akte"));
    const MessageTexts texts({"de", "en"}, VELUnicodeString(folder.Path().string()));

    EXPECT_EQ(Found(texts, Label), "Akte");
    EXPECT_EQ(Found(texts, OtherLabel), "Pfad");
}

TEST(MessageTexts, OfTheRegionComeBeforeThoseOfTheLanguage) {
    const TemporaryFolder folder;
    folder.Write(OverrideName("de-AT"), OverrideOf(Label, "Akt"));
    folder.Write(OverrideName("de_CH"), OverrideOf(Label, "Dossier"));
    folder.Write(OverrideName("de"), OverrideOf(OtherLabel, "Weg"));
    const MessageTexts austrian({"de-AT", "de_AT", "de", "en"},
                                VELUnicodeString(folder.Path().string()));
    const MessageTexts swiss({"de-CH", "de_CH", "de", "en"},
                             VELUnicodeString(folder.Path().string()));

    EXPECT_EQ(Found(austrian, Label), "Akt");
    EXPECT_EQ(Found(austrian, OtherLabel), "Weg");
    EXPECT_EQ(Found(swiss, Label), "Dossier");
}

TEST(MessageTexts, OfAnEnglishFileDoNotHideTheUsersLanguage) {
    const TemporaryFolder folder;
    folder.Write(OverrideName("en"), OverrideOf(Label, "Document"));

    EXPECT_EQ(Found(TextsOf({"fr", "en"}, folder.Path().string()), Label), "Fichier");
    EXPECT_EQ(Found(TextsOf({"it", "en"}, folder.Path().string()), Label), "Document");
}

TEST(MessageTexts, OfAFileCanAddALanguage) {
    const TemporaryFolder folder;
    folder.Write(OverrideName("it"), OverrideOf(Label, "Documento"));

    EXPECT_EQ(Found(TextsOf({"it", "en"}, folder.Path().string()), Label), "Documento");
    EXPECT_EQ(Found(TextsOf({"it", "en"}, folder.Path().string()), OtherLabel), "Path");
}

TEST(MessageTexts, AreFoundBelowAFolderWrittenWithBackslashes) {
    const TemporaryFolder folder;
    folder.Write("texts/" + OverrideName("de"), OverrideOf(Label, "Akte"));

    EXPECT_EQ(Found(TextsOf({"de"}, folder.Path().string() + "\\texts\\"), Label), "Akte");
}

TEST(MessageTexts, AreTheEmbeddedOnesWhenTheFileIsOfNoUse) {
    const TemporaryFolder folder;
    const std::string good = OverrideOf(Label, "Akte");
    for (const std::string& content : {std::string(), std::string("no catalog"), good.substr(0, 40),
                                       good + std::string(std::size_t{1} << 20U, ' ')}) {
        folder.Write(OverrideName("de"), content);
        EXPECT_EQ(Found(TextsOf({"de", "en"}, folder.Path().string()), Label), "Datei");
    }
    std::filesystem::remove(folder.Path() / OverrideName("de"));
    EXPECT_EQ(Found(TextsOf({"de", "en"}, folder.Path().string()), Label), "Datei");
    std::filesystem::create_directory(folder.Path() / OverrideName("de"));
    EXPECT_EQ(Found(TextsOf({"de", "en"}, folder.Path().string()), Label), "Datei");
    EXPECT_EQ(Found(TextsOf({"de", "en"}, folder.PathOf("missing")), Label), "Datei");
}

TEST(MessageTexts, SurviveAFileOfRandomBytes) {
    const TemporaryFolder folder;
    const std::string magic("\xDE\x12\x04\x95\0\0\0\0", 8);
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::string content = round % 2 == 0 ? magic : std::string();
        while (content.size() < 200)
            content += static_cast<char>(random());
        folder.Write(OverrideName("de"), content);
        EXPECT_EQ(Found(TextsOf({"de", "en"}, folder.Path().string()), Label), "Datei");
    }
}

} // namespace dyadctx::test
