// SPDX-License-Identifier: MIT
#include "platform/VELMsgCatalog.h"

#include "platform/MoImage.h"
#include "support/EnvironmentVariable.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace dyadctx::test {

namespace {

const VELString Catalog("VELDyadCtxDlgSelection");
const VELUnicodeString Default("(default)");

std::string Message(const char* key, const std::vector<VELUnicodeString>& parameters = {}) {
    return std::string(VELMsgCatalog::BuildMessage(Catalog, key, parameters.data(),
                                                   static_cast<int>(parameters.size()), Default)
                           .AsView());
}

// The language of the test, then again that of the environment.
class InLanguage {
public:
    explicit InLanguage(const char* tag) { VELMsgCatalog::SetLanguage(tag); }
    ~InLanguage() { VELMsgCatalog::SetLanguage(nullptr); }
    InLanguage(const InLanguage&) = delete;
    InLanguage& operator=(const InLanguage&) = delete;
};

class HostSource : public VELMsgCatalogSource {
public:
    HostSource() : former_(VELMsgCatalog::SetSource(this)) {}
    ~HostSource() override { VELMsgCatalog::SetSource(former_); }
    HostSource(const HostSource&) = delete;
    HostSource& operator=(const HostSource&) = delete;

private:
    VELMsgCatalogSource* former_;
};

// Knows one key and asks the built-in catalog for the others.
class AddingSource : public HostSource {
    VELResult Build(const VELString& catalog, const VELString& key,
                    const VELUnicodeString* parameters, int count,
                    VELUnicodeString& text) override {
        if (key != VELString("Host.Own"))
            return VELMsgCatalog::BuiltInSource().Build(catalog, key, parameters, count, text);
        text = VELUnicodeString("the host's own");
        return S_OK;
    }
};

class ThrowingSource : public HostSource {
    VELResult Build(const VELString&, const VELString&, const VELUnicodeString*, int,
                    VELUnicodeString& text) override {
        text = VELUnicodeString("half");
        throw std::runtime_error("the host's fault");
    }
};

class RefusingSource : public HostSource {
    VELResult Build(const VELString&, const VELString&, const VELUnicodeString*, int,
                    VELUnicodeString& text) override {
        text = VELUnicodeString("not to be looked at");
        return E_FAIL;
    }
};

class CountingSource : public HostSource {
public:
    int count = -1;
    const VELUnicodeString* parameters = nullptr;

private:
    VELResult Build(const VELString&, const VELString&, const VELUnicodeString* givenParameters,
                    int givenCount, VELUnicodeString&) override {
        parameters = givenParameters;
        count = givenCount;
        return S_OK;
    }
};

} // namespace

TEST(VELMsgCatalog, SpeaksFourLanguages) {
    struct Case {
        const char* tag;
        const char* text;
    };
    for (const Case& expected : std::vector<Case>{
             {"en", "The context name \"Vault\" is too long. Shorten it to 125 characters or "
                    "fewer."},
             {"fr", "Le nom de contexte «\u00A0Vault\u00A0» est trop long. Raccourcissez-le à 125 "
                    "caractères au plus."},
             {"de", "Der Kontextname „Vault“ ist zu lang. Kürzen Sie ihn auf höchstens 125 "
                    "Zeichen."},
             {"ja", "コンテキスト名「Vault」は長すぎます。125 文字以内に短縮してください。"},
         }) {
        const InLanguage language(expected.tag);
        EXPECT_EQ(Message("Ctx.Check.CtxNameTooLong", {"Vault"}), expected.text);
    }
}

TEST(VELMsgCatalog, FallsBackToEnglish) {
    struct Case {
        const char* tag;
        const char* text;
    };
    for (const Case& expected : std::vector<Case>{{"de-AT", "Datei"},
                                                  {"fr_CA.UTF-8", "Fichier"},
                                                  {"JA", "ファイル"},
                                                  {"it", "File"},
                                                  {"C", "File"},
                                                  {"POSIX", "File"},
                                                  {"", "File"},
                                                  {"../fr", "File"}}) {
        const InLanguage language(expected.tag);
        EXPECT_EQ(Message("Ctx.ParameterType.File"), expected.text) << expected.tag;
    }
}

TEST(VELMsgCatalog, ReturnsTheDefaultForAnUnknownKeyOrCatalog) {
    EXPECT_EQ(Message("Ctx.Unknown"), "(default)");
    EXPECT_EQ(Message(""), "(default)");
    EXPECT_EQ(Message(nullptr), "(default)");
    // The key of the associated context has two dots.
    EXPECT_EQ(Message("Ctx.SetFriendsAndAssociated.CtxAssocNoMatchingCtx"), "(default)");
    EXPECT_NE(Message("Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx"), "(default)");
    EXPECT_EQ(VELMsgCatalog::BuildMessage("Other", "Ctx.ParameterType.File", nullptr, 0, Default),
              Default);
}

TEST(VELMsgCatalog, PutsParametersInAsTheyAre) {
    const InLanguage language("en");

    EXPECT_EQ(Message("Ctx.Check.CtxDatabaseAlreadyDefined", {"{1}", "%s{0}"}),
              "The contexts \"{1}\" and \"%s{0}\" stand for the same database. Remove one of them "
              "or correct its ConnectorName or server details.");
    EXPECT_EQ(Message("Ctx.Check.CtxAlreadyDefined"),
              "The context \"\" is declared more than once. Rename or remove all but one of these "
              "declarations.");
}

TEST(VELMsgCatalog, LeavesPlaceholdersWhenACountComesWithoutParameters) {
    const InLanguage language("en");

    EXPECT_EQ(
        VELMsgCatalog::BuildMessage(Catalog, "Ctx.Check.CtxAlreadyDefined", nullptr, 1, Default),
        VELUnicodeString("The context \"{0}\" is declared more than once. Rename or remove "
                         "all but one of these declarations."));
}

TEST(VELMsgCatalog, TakesTheLanguageOfTheEnvironment) {
    const EnvironmentVariable general("LC_ALL", "ja_JP.UTF-8");
    {
        const EnvironmentVariable own("VELMessageLanguage", "fr-BE");
        VELMsgCatalog::SetLanguage(nullptr);
        EXPECT_EQ(Message("Ctx.ParameterType.File"), "Fichier");
    }
    const EnvironmentVariable own("VELMessageLanguage", "");
    VELMsgCatalog::SetLanguage(nullptr);
    EXPECT_EQ(Message("Ctx.ParameterType.File"), "ファイル");
    // The process's locale is the program's own business.
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST(VELMsgCatalog, IsOverriddenByTheFolderOfTheEnvironment) {
    const TemporaryFolder folder;
    folder.Write("VELDyadCtxDlgSelection.de.mo",
                 MoImageOf({{WithContext("Ctx.ParameterType.File"), "Akte {0}{7}{x}{12}{{"},
                            {WithContext("Ctx.New"), "Neu: {0}"}}));
    {
        const EnvironmentVariable path("VELMessageCatalogPath", folder.Path().string());
        const InLanguage language("de");
        EXPECT_EQ(Message("Ctx.ParameterType.File", {"A"}), "Akte A{x}{12}{");
        EXPECT_EQ(Message("Ctx.ParameterType.Path"), "Pfad");
        EXPECT_EQ(Message("Ctx.New", {"A"}), "Neu: A");
    }
    const InLanguage language("de");
    EXPECT_EQ(Message("Ctx.ParameterType.File"), "Datei");
}

TEST(VELMsgCatalog, KnowsWhichLanguagesHaveTexts) {
    for (const char* tag : {"en", "fr", "de", "ja", "de_AT.UTF-8", "fr-CA", "EN-us"})
        EXPECT_TRUE(VELMsgCatalog::HasLanguage(tag)) << tag;
    for (const char* tag : {"es", "C", "POSIX", "", "german", "../de"})
        EXPECT_FALSE(VELMsgCatalog::HasLanguage(tag)) << tag;
    EXPECT_FALSE(VELMsgCatalog::HasLanguage(nullptr));
}

TEST(VELMsgCatalog, ALanguageOfTheFolderOfTheEnvironmentHasTexts) {
    const TemporaryFolder folder;
    folder.Write("VELDyadCtxDlgSelection.es.mo",
                 MoImageOf({{WithContext("Ctx.ParameterType.Path"), "Ruta"}}));
    const EnvironmentVariable path("VELMessageCatalogPath", folder.Path().string());
    EXPECT_TRUE(VELMsgCatalog::HasLanguage("es-MX"));
    EXPECT_FALSE(VELMsgCatalog::HasLanguage("it"));
}

TEST(VELMsgCatalog, LetsAHostAddTexts) {
    const InLanguage language("de");
    const AddingSource source;

    EXPECT_EQ(Message("Host.Own"), "the host's own");
    EXPECT_EQ(Message("Ctx.ParameterType.File"), "Datei");
    EXPECT_EQ(Message("Ctx.Unknown"), "(default)");
}

TEST(VELMsgCatalog, ReturnsTheDefaultWhenAHostRefusesOrThrows) {
    {
        const RefusingSource source;
        EXPECT_EQ(Message("Ctx.ParameterType.File"), "(default)");
    }
    const ThrowingSource source;
    EXPECT_EQ(Message("Ctx.ParameterType.File"), "(default)");
}

TEST(VELMsgCatalog, NeverPassesAHostACountWithoutParameters) {
    const CountingSource source;
    VELMsgCatalog::BuildMessage(Catalog, "K", nullptr, 3, Default);
    EXPECT_EQ(source.count, 0);

    const VELUnicodeString parameters[2];
    VELMsgCatalog::BuildMessage(Catalog, "K", parameters, 2, Default);
    EXPECT_EQ(source.count, 2);
    EXPECT_EQ(source.parameters, parameters);
    VELMsgCatalog::BuildMessage(Catalog, "K", parameters, -1, Default);
    EXPECT_EQ(source.count, 0);
}

TEST(VELMsgCatalog, ReturnsTheFormerSource) {
    EXPECT_EQ(VELMsgCatalog::SetSource(nullptr), nullptr);
    {
        RefusingSource source;
        EXPECT_EQ(VELMsgCatalog::SetSource(&source), &source);
    }
    EXPECT_EQ(VELMsgCatalog::SetSource(nullptr), nullptr);
}

TEST(VELMsgCatalog, ReturnsAnEmptyTextWithoutMemory) {
    const VELString key("Ctx.Check.CtxAlreadyDefined");
    const VELUnicodeString name("a name that is too long to be kept inside the text");
    const InLanguage language("en");
    int allowed = 0;
    for (bool hasFailed = true; hasFailed && allowed < 1000; ++allowed) {
        const FailingAllocation failure(allowed + 1, FailingAllocations::FromThatOneOn);
        const VELUnicodeString text = VELMsgCatalog::BuildMessage(Catalog, key, &name, 1, Default);
        hasFailed = failure.HasFailed();
        EXPECT_EQ(text.IsEmpty(), hasFailed) << allowed;
    }
    EXPECT_GT(allowed, 1);
    EXPECT_LT(allowed, 1000);
}

TEST(VELMsgCatalog, KeepsTheLanguageWhenThereIsNoMemoryForAnother) {
    const InLanguage language("de");
    int allowed = 0;
    for (bool hasFailed = true; hasFailed && allowed < 10000; ++allowed) {
        VELMsgCatalog::SetLanguage("de");
        {
            const FailingAllocation failure(allowed + 1, FailingAllocations::FromThatOneOn);
            VELMsgCatalog::SetLanguage("fr");
            hasFailed = failure.HasFailed();
        }
        EXPECT_EQ(Message("Ctx.ParameterType.File"), hasFailed ? "Datei" : "Fichier") << allowed;
    }
    EXPECT_GT(allowed, 1);
    EXPECT_LT(allowed, 10000);
}

TEST(VELMsgCatalog, MayBeUsedBySeveralThreads) {
    VELMsgCatalog::SetLanguage("en");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([i] {
            for (int round = 0; round < 100; ++round) {
                if (i == 0)
                    VELMsgCatalog::SetLanguage(round % 2 == 0 ? "de" : "en");
                const std::string text = Message("Ctx.ParameterType.File");
                EXPECT_TRUE(text == "Datei" || text == "File") << text;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    VELMsgCatalog::SetLanguage(nullptr);
}

} // namespace dyadctx::test
