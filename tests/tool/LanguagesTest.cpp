// The tool's own words in each of its languages.
#include "tool/ToolTest.h"

namespace dyadctx::test {

namespace {

constexpr const char* Ring = R"(
    <Context Name="A" Parameter="/a" ParameterType="Path" Parametr="x">
      <CtxFriends><Context Name="A"/></CtxFriends></Context>)";

struct LanguageCase {
    const char* language;
    std::string text;
};

class Languages : public ToolTest {
protected:
    std::string OutputOf(std::vector<std::string> arguments, const LanguageCase& example) const {
        arguments.insert(arguments.end(), {"--lang", example.language});
        return Run(arguments, {{"VELInstallPath", "/none"}}).standardOutput;
    }
    // Each text is somewhere in the answer.
    void ExpectEachIn(const std::vector<std::string>& arguments,
                      const std::vector<LanguageCase>& examples) const {
        for (const LanguageCase& example : examples) {
            const std::string output = OutputOf(arguments, example);
            EXPECT_NE(output.find(example.text), std::string::npos) << example.language << "\n"
                                                                    << output;
        }
    }
};

} // namespace

TEST_F(Languages, OfTheFindingsOfCheck) {
    WriteContexts("a.xml", Ring);
    ExpectEachIn(
        {"check", "a.xml"},
        {{"en", "warning: The attribute \"Parametr\" of Context means nothing and is not read. Did "
                "you mean \"Parameter\"? [unknown-attribute]\n"},
         {"fr", "warning: L’attribut « Parametr » de Context n’a pas de sens et n’est pas lu. "
                "Vouliez-vous dire « Parameter » ? [unknown-attribute]\n"},
         {"de", "warning: Das Attribut „Parametr“ von Context hat keine Bedeutung und wird nicht "
                "gelesen. Meinten Sie „Parameter“? [unknown-attribute]\n"},
         {"ja", "warning: Context の属性「Parametr」には意味がなく、読み取られません。 "
                "「Parameter」ではありませんか? [unknown-attribute]\n"}});
}

TEST_F(Languages, OfTheChoiceOfTheFile) {
    ExpectEachIn({"which"},
                 {{"en", "VERDICT"}, {"fr", "CHEMIN"}, {"de", "URTEIL"}, {"ja", "判定"}});
    ExpectEachIn({"which"}, {{"en", "the variable is not set\n"},
                             {"fr", "la variable n’est pas définie\n"},
                             {"de", "die Variable ist nicht gesetzt\n"},
                             {"ja", "変数が設定されていません\n"}});
    ExpectEachIn({"which"}, {{"en", "there is no folder /none\n"},
                             {"fr", "il n’y a pas de dossier /none\n"},
                             {"de", "es gibt keinen Ordner /none\n"},
                             {"ja", "フォルダー /none はありません\n"}});
    ExpectEachIn({"which", "--explain"}, {{"en", "   reason  the variable is not set\n"},
                                          {"fr", "   raison  la variable n’est pas définie\n"},
                                          {"de", "   Grund   die Variable ist nicht gesetzt\n"},
                                          {"ja", "   理由    変数が設定されていません\n"}});
}

TEST_F(Languages, OfTheHeadingsOfExplain) {
    ExpectEachIn({"explain", "Ctx.Parse.CtxNoName"},
                 {{"en", "(error)"}, {"fr", "(erreur)"}, {"de", "(Fehler)"}, {"ja", "(エラー)"}});
    ExpectEachIn({"explain", "Ctx.Parse.CtxNoName"}, {{"en", "\nWhat to do\n"},
                                                      {"fr", "\nQue faire\n"},
                                                      {"de", "\nWas zu tun ist\n"},
                                                      {"ja", "\n対処方法\n"}});
}

TEST_F(Languages, ChangeNoKeyOfADocumentAndNoStatus) {
    WriteContexts("a.xml", Ring);
    for (const char* language : {"en", "fr", "de", "ja"}) {
        const Json document = RunForJson({"check", "a.xml", "--lang", language}, 1);
        EXPECT_TRUE(document.contains("schema")) << language;
        EXPECT_NE(document.dump().find("\"unknown-attribute\""), std::string::npos) << language;
        const Json which = RunForJson({"which", "--lang", language}, 3);
        EXPECT_EQ(which["candidates"][0]["origin"], "VELDyadCtxInit") << language;
        EXPECT_EQ(which["candidates"][0]["verdict"], "absent") << language;
    }
}

} // namespace dyadctx::test
