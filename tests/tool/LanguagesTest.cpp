// SPDX-License-Identifier: MIT
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

constexpr const char* Site = R"(<?xml version="1.0" encoding="UTF-8"?>
<DyAdDescription>
<!-- a comment -->
<CtxData>
<Context Name="DYADIC" Parameter="" ParameterType="Default"/>
<Context Name="Parts" Parameter="/p" ParameterType="Path"/>
<Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"/>
</CtxData>
</DyAdDescription>
)";

// What a command says in full, on both streams.
struct Golden {
    const char* language;
    std::vector<std::string> arguments;
    std::string_view said;
};

const std::vector<Golden> Goldens{
    // clang-format off
    {"en", {"check", "bad.xml", "site.xml", "missing.xml"},
     R"(bad.xml:6:35: error: The file is not well-formed XML. Check that every element is closed, that every attribute value stands in quotes, that "&" and "<" are written as "&amp;" and "&lt;", and that the file is saved in the encoding it declares. [Ctx.Parse.XMLSyntaxError]
bad.xml:6:35: note: "&" begins a reference such as "&amp;"; the character itself is written "&amp;"
site.xml:7:37: note: Contexts of type Database are left out while the DB context environment is off: 1 in this file, the first is "Vault". [database-left-out]
missing.xml: error: The context file "./missing.xml" cannot be used. Check that its path includes the folder, that folder and file exist and can be read, and that the file name ends in ".xml" in lower case. [Ctx.Collector.XMLFileNotValid]
missing.xml: note: there is no such file
site.xml: valid, 2 contexts
3 files checked, 2 not valid, 2 errors, 1 note
1 of these vanish with --db-context
)"},
    {"de", {"check", "bad.xml", "site.xml", "missing.xml"},
     R"(bad.xml:6:35: error: Die Datei ist kein wohlgeformtes XML. Prüfen Sie, ob jedes Element geschlossen ist, ob jeder Attributwert in Anführungszeichen steht, ob „&“ und „<“ als „&amp;“ und „&lt;“ geschrieben sind und ob die Datei in der angegebenen Kodierung gespeichert ist. [Ctx.Parse.XMLSyntaxError]
bad.xml:6:35: note: „&“ beginnt einen Verweis wie „&amp;“; das Zeichen selbst wird „&amp;“ geschrieben
site.xml:7:37: note: Kontexte vom Typ Database bleiben außer Acht, solange die DB-Kontextumgebung nicht aktiv ist: 1 in dieser Datei, der erste ist „Vault“. [database-left-out]
missing.xml: error: Die Kontextdatei „./missing.xml“ kann nicht verwendet werden. Prüfen Sie, ob der Pfad den Ordner enthält, ob Ordner und Datei vorhanden und lesbar sind und ob der Dateiname auf „.xml“ in Kleinbuchstaben endet. [Ctx.Collector.XMLFileNotValid]
missing.xml: note: diese Datei gibt es nicht
site.xml: gültig, 2 Kontexte
3 Dateien geprüft, 2 nicht gültig, 2 Fehler, 1 Hinweis
1 davon entfällt mit --db-context
)"},
    {"fr", {"check", "bad.xml", "site.xml", "missing.xml"},
     R"(bad.xml:6:35: error: Le fichier n’est pas un document XML bien formé. Vérifiez que chaque élément est fermé, que chaque valeur d’attribut est entre guillemets, que « & » et « < » sont écrits « &amp; » et « &lt; », et que le fichier est enregistré dans l’encodage qu’il déclare. [Ctx.Parse.XMLSyntaxError]
bad.xml:6:35: note: « & » commence une référence telle que « &amp; » ; le caractère lui-même s’écrit « &amp; »
site.xml:7:37: note: Les contextes de type Database sont laissés de côté tant que l’environnement de contextes de base de données est inactif : 1 dans ce fichier, le premier est « Vault ». [database-left-out]
missing.xml: error: Le fichier de contextes « ./missing.xml » est inutilisable. Vérifiez que son chemin comprend le dossier, que le dossier et le fichier existent et sont lisibles, et que le nom du fichier se termine par « .xml » en minuscules. [Ctx.Collector.XMLFileNotValid]
missing.xml: note: ce fichier n’existe pas
site.xml: valide, 2 contextes
3 fichiers vérifiés, 2 non valides, 2 erreurs, 1 remarque
1 de ces constats disparaît avec --db-context
)"},
    {"ja", {"check", "bad.xml", "site.xml", "missing.xml"},
     R"(bad.xml:6:35: error: このファイルは整形式の XML ではありません。すべての要素が閉じられていること、すべての属性値が引用符で囲まれていること、「&」と「<」が「&amp;」と「&lt;」で書かれていること、宣言どおりの文字コードで保存されていることを確認してください。 [Ctx.Parse.XMLSyntaxError]
bad.xml:6:35: note: 「&」は「&amp;」のような参照の始まりです。文字そのものは「&amp;」と書きます
site.xml:7:37: note: DB コンテキスト環境が無効な間、種類が Database のコンテキストは除外されます。このファイルには 1 個あり、最初のものは「Vault」です。 [database-left-out]
missing.xml: error: コンテキストファイル「./missing.xml」は使用できません。パスにフォルダーが含まれていること、フォルダーとファイルが存在して読み取れること、ファイル名が小文字の「.xml」で終わることを確認してください。 [Ctx.Collector.XMLFileNotValid]
missing.xml: note: そのファイルは存在しません
site.xml: 有効, コンテキスト 2 個
3 個のファイルを検査, 無効 2 個, エラー 2 件, 注記 1 件
このうち 1 件は --db-context を付けると出なくなります
)"},
    {"en", {"list", "site.xml"},
     R"(#  NAME    TYPE     PARAMETER
1  DYADIC  Default
2  Parts   Path     /p
note: 1 database context is left out, because the DB context environment is off; add --db-context
)"},
    {"de", {"list", "site.xml"},
     R"(#  NAME    TYP       PARAMETER
1  DYADIC  Standard
2  Parts   Pfad      /p
note: 1 Datenbankkontext bleibt außer Acht, weil die DB-Kontextumgebung nicht aktiv ist; geben Sie --db-context an
)"},
    {"fr", {"list", "site.xml"},
     R"(#  NOM     TYPE    PARAMÈTRE
1  DYADIC  Défaut
2  Parts   Chemin  /p
note: 1 contexte de base de données est laissé de côté, car l’environnement de contextes de base de données est inactif ; ajoutez --db-context
)"},
    {"ja", {"list", "site.xml"},
     R"(#  名前    種類  パラメーター
1  DYADIC  既定
2  Parts   パス  /p
note: DB コンテキスト環境が無効なため、データベースコンテキスト 1 個が除外されています。--db-context を付けてください
)"},
    {"en", {"show", "Parts", "site.xml"},
     R"(Name            Parts
Position        2
Type            Path
Parameter       /p
)"},
    {"de", {"show", "Parts", "site.xml"},
     R"(Name            Parts
Position        2
Typ             Pfad
Parameter       /p
)"},
    {"fr", {"show", "Parts", "site.xml"},
     R"(Nom             Parts
Position        2
Type            Chemin
Paramètre       /p
)"},
    {"ja", {"show", "Parts", "site.xml"},
     R"(名前            Parts
位置            2
種類            パス
パラメーター    /p
)"},
    {"en", {"which"},
     R"(#  ORIGIN            VERDICT  PATH                                          REASON
1  VELDyadCtxInit    absent                                                 the variable is not set
2  settings          not set                                                there is no file settings/DyadSettingsRep.toml
3  VELInstallPath 1  absent   /none\resources\xml\DYAD\CONTEXT\Default.xml  there is no folder /none
dyadctx: error: no source names a context file
)"},
    {"de", {"which"},
     R"(#  HERKUNFT          URTEIL         PFAD                                          GRUND
1  VELDyadCtxInit    fehlt                                                        die Variable ist nicht gesetzt
2  Einstellungen     nicht gesetzt                                                es gibt keine Datei settings/DyadSettingsRep.toml
3  VELInstallPath 1  fehlt          /none\resources\xml\DYAD\CONTEXT\Default.xml  es gibt keinen Ordner /none
dyadctx: error: keine Quelle nennt eine Kontextdatei
)"},
    {"fr", {"which"},
     R"(#  ORIGINE           VERDICT     CHEMIN                                        RAISON
1  VELDyadCtxInit    absent                                                    la variable n’est pas définie
2  paramètres        non défini                                                il n’y a pas de fichier settings/DyadSettingsRep.toml
3  VELInstallPath 1  absent      /none\resources\xml\DYAD\CONTEXT\Default.xml  il n’y a pas de dossier /none
dyadctx: error: aucune source ne nomme de fichier de contextes
)"},
    {"ja", {"which"},
     R"(#  出所              判定    パス                                          理由
1  VELDyadCtxInit    なし                                                  変数が設定されていません
2  設定              未設定                                                ファイル settings/DyadSettingsRep.toml はありません
3  VELInstallPath 1  なし    /none\resources\xml\DYAD\CONTEXT\Default.xml  フォルダー /none はありません
dyadctx: error: コンテキストファイルを指定している取得元がありません
)"},
    {"en", {"write", "site.xml", "-o", "out.xml"},
     R"(note: not written: 1 database context (the DB context environment is off; --db-context keeps them)
note: not written: 1 comment (the library writes none)
note: 2 contexts written to out.xml
)"},
    {"de", {"write", "site.xml", "-o", "out.xml"},
     R"(note: nicht geschrieben: 1 Datenbankkontext (die DB-Kontextumgebung ist nicht aktiv; mit --db-context bleiben sie erhalten)
note: nicht geschrieben: 1 Kommentar (die Bibliothek schreibt keine)
note: 2 Kontexte nach out.xml geschrieben
)"},
    {"fr", {"write", "site.xml", "-o", "out.xml"},
     R"(note: non écrit : 1 contexte de base de données (l’environnement de contextes de base de données est inactif ; --db-context les garde)
note: non écrit : 1 commentaire (la bibliothèque n’en écrit pas)
note: 2 contextes écrits dans out.xml
)"},
    {"ja", {"write", "site.xml", "-o", "out.xml"},
     R"(note: 書き出されないもの: データベースコンテキスト 1 個 (DB コンテキスト環境が無効です。--db-context を付けると残ります)
note: 書き出されないもの: コメント 1 個 (ライブラリはこれを書き出しません)
note: コンテキスト 2 個を out.xml に書き込みました
)"},
    // clang-format on
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

TEST_F(Languages, OfAllThatACommandSays) {
    const Environment environment{{"VELInstallPath", "/none"}, {"VELSettingPath", "settings"}};
    folder_.Write("site.xml", Site);
    std::string bad = Site;
    folder_.Write("bad.xml", bad.replace(bad.find("/p"), 2, "a&b"));
    for (const Golden& golden : Goldens) {
        std::vector<std::string> arguments = golden.arguments;
        arguments.insert(arguments.end(), {"--lang", golden.language});
        const ChildResult result = Run(arguments, environment);
        EXPECT_EQ(result.standardOutput + result.standardError, golden.said)
            << golden.language << " " << golden.arguments.front();
    }
}

TEST_F(Languages, OfWhatIsAskedTheWrongWay) {
    for (const auto& [language, said] : std::vector<std::pair<const char*, const char*>>{
             {"en", "unexpected option '--frob'"},
             {"de", "unerwartete Option „--frob“"},
             {"fr", "option inattendue « --frob »"},
             {"ja", "ここでは使えないオプション「--frob」"}}) {
        const ChildResult result = Run({"list", "--lang", language, "--frob"});
        EXPECT_NE(result.standardError.find(said), std::string::npos) << result.standardError;
    }
}

TEST_F(Languages, OfAPicture) {
    WriteContexts("a.xml", Ring);
    ExpectEachIn({"graph", "a.xml", "--format", "mermaid"},
                 {{"en", " - 1 context, 1 friend"},
                  {"fr", " - 1 contexte, 1 ami"},
                  {"de", " - 1 Kontext, 1 befreundet"},
                  {"ja", " - コンテキスト 1 個, フレンド 1"}});
    ExpectEachIn(
        {"graph", "a.xml", "--format", "mermaid"},
        {{"en", "[\"Legend\"]"}, {"fr", "[\"Légende\"]"}, {"de", "[\"Pfad\"]"}, {"ja", "凡例"}});
}

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
