// SPDX-License-Identifier: MIT
#include "platform/detail/MessageLanguage.h"

#include "support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace dyadctx::test {

TEST(MessageLanguage, FallsBackFromRegionToLanguageToEnglish) {
    struct Case {
        std::string tag;
        std::vector<std::string> languages;
    };
    for (const Case& expected : std::vector<Case>{
             {"fr_FR.UTF-8", {"fr-FR", "fr_FR", "fr", "en"}},
             {"de-AT", {"de-AT", "de_AT", "de", "en"}},
             {"DE-at", {"de-AT", "de_AT", "de", "en"}},
             {"ja", {"ja", "en"}},
             {"ja_JP.eucJP@special", {"ja-JP", "ja_JP", "ja", "en"}},
             {"fr@euro", {"fr", "en"}},
             {"zh-Hant-TW", {"zh-TW", "zh_TW", "zh", "en"}},
             {"es-419", {"es-419", "es_419", "es", "en"}},
             {"gsw", {"gsw", "en"}},
             {"en_GB.UTF-8", {"en-GB", "en_GB", "en"}},
             {"en", {"en"}},
             {"xx", {"xx", "en"}},
             {"fr_", {"fr", "en"}},
             {"fr-FRANCE", {"fr", "en"}},
         }) {
        EXPECT_EQ(LanguagesFor(expected.tag), expected.languages) << expected.tag;
    }
}

TEST(MessageLanguage, IsEnglishForWhatIsNoLanguageTag) {
    for (const char* tag : {"", "C", "POSIX", "C.UTF-8", ".UTF-8", "@euro", "_FR", "german", "f",
                            "../de", "de/../fr", "/etc", "f\xC3\xA9", "12"}) {
        EXPECT_EQ(LanguagesFor(tag), std::vector<std::string>{"en"}) << tag;
    }
}

TEST(MessageLanguage, OfTheEnvironmentIsTheFirstVariableThatIsNotEmpty) {
    using Value = std::optional<std::string>;
    struct Case {
        Value messageLanguage, lcAll, lcMessages, lang;
        std::string tag;
    };
    const Value unset;
    for (const Case& expected : std::vector<Case>{
             {"de", "fr", "ja", "it", "de"},
             {unset, "fr", "ja", "it", "fr"},
             {"", "fr", "ja", "it", "fr"},
             {unset, unset, "ja", "it", "ja"},
             {unset, "", "ja", "it", "ja"},
             {unset, unset, unset, "it_IT.UTF-8", "it_IT.UTF-8"},
             {unset, "", "", "it", "it"},
             {unset, "C", unset, "it", "C"},
             {unset, unset, unset, unset, ""},
             {"", "", "", "", ""},
         }) {
        const EnvironmentVariable first("VELMessageLanguage", expected.messageLanguage);
        const EnvironmentVariable second("LC_ALL", expected.lcAll);
        const EnvironmentVariable third("LC_MESSAGES", expected.lcMessages);
        const EnvironmentVariable fourth("LANG", expected.lang);
        EXPECT_EQ(RequestedLanguage(), expected.tag);
    }
}

} // namespace dyadctx::test
