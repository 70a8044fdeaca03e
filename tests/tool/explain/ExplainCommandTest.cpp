// SPDX-License-Identifier: MIT
// `explain` on the command line.
#include "tool/ToolTest.h"

namespace dyadctx::test {

namespace {

class Explain : public ToolTest {};

constexpr const char* NoDefault = R"(no-default-context (note)

  The file declares no default context, which is named "DYADIC".

Meaning
  The file is valid, but declares no default context, the one named "DYADIC".
  The library does not ask for one. Programs that fall back on the default
  context find none. The note is given only for a file without errors.

What to do
  Declare it, as in the right example, unless your programs do without it.
  `--off no-default-context` silences the note.

Wrong (context file)
  <?xml version="1.0" encoding="UTF-8"?>
  <DyAdDescription>
    <CtxData>
      <Context Name="Design" Parameter="/data/design" ParameterType="Path"/>
    </CtxData>
  </DyAdDescription>

Right (context file)
  <?xml version="1.0" encoding="UTF-8"?>
  <DyAdDescription>
    <CtxData>
      <Context Name="DYADIC" Parameter="" ParameterType="Default"/>
      <Context Name="Design" Parameter="/data/design" ParameterType="Path"/>
    </CtxData>
  </DyAdDescription>
)";

} // namespace

TEST_F(Explain, AKeyIsExplainedWithExamples) {
    Expect({"text", {"explain", "no-default-context"}, 0, NoDefault, {}, {}});
}

TEST_F(Explain, AKeyMayStandInBracketsAndInAnyLetterCase) {
    for (const char* key : {"[no-default-context]", "No-Default-CONTEXT", "[NO-default-context]"})
        Expect({key, {"explain", key}, 0, NoDefault, {}, {}});
    const Json wanted = RunForJson({"explain", "Ctx.Check.CtxEmptyName"});
    EXPECT_EQ(RunForJson({"explain", "[ctx.check.ctxemptyname]"}), wanted);
}

TEST_F(Explain, TheMessageIsInTheLanguageOfTheUser) {
    const auto text = [this](const char* language) {
        return RunForJson(
            {"explain", "Ctx.Check.CtxAlreadyDefined", "--lang", language})["explanation"]["text"];
    };
    EXPECT_EQ(text("en"), "The context \"{0}\" is declared more than once. Rename or remove all "
                          "but one of these declarations.");
    EXPECT_NE(text("de").get<std::string>().find("Der Kontext „{0}“"), std::string::npos);
    EXPECT_NE(text("ja").get<std::string>().find("「{0}」"), std::string::npos);
}

TEST_F(Explain, PlacesOfTheTextAreNamed) {
    const ChildResult result = Run({"explain", "Ctx.Check.CtxDefaultInvalidParam"});
    EXPECT_TRUE(result.standardOutput.starts_with(
        "Ctx.Check.CtxDefaultInvalidParam (error)\n\n"
        "  The default context \"{0}\" has the Parameter \"{1}\", but it takes none. Leave it\n"
        "  empty (Parameter=\"\").\n\n"
        "  {0}  the name of the context, \"DYADIC\"\n"
        "  {1}  its Parameter\n\n"
        "Meaning\n"))
        << result.standardOutput;
}

TEST_F(Explain, CaptionsSayWhatAnExampleIs) {
    const auto holds = [this](const char* key, const char* caption) {
        return Run({"explain", key}).standardOutput.find(std::string("\n") + caption + "\n") !=
               std::string::npos;
    };
    EXPECT_TRUE(holds("missing-file", "Wrong (context file, with --db-context --deep)"));
    EXPECT_TRUE(holds("provider-failed", "Program (client program)"));
    EXPECT_TRUE(holds("provider-failed", "Right (context file, checked by the program)"));
    EXPECT_TRUE(holds("Ctx.Collector.XMLFileNotSet", "Right (commands)"));
    EXPECT_TRUE(holds("Ctx.ParameterType.Path", "Example (commands)"));
}

TEST_F(Explain, WithoutKeyEachKeyGetsALine) {
    const ChildResult result = Run({"explain"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError, "");
    const std::string& list = result.standardOutput;
    EXPECT_TRUE(list.starts_with("Messages of the library\nKEY "));
    const std::size_t own = list.find("\n\nFindings of check alone\nKEY ");
    const std::size_t message = list.find("\nCtx.Check.CtxEmptyName                              "
                                          "error    A context has an empty name.\n");
    const std::size_t finding = list.find("\nnearest-name             note     Did you mean");
    ASSERT_NE(own, std::string::npos) << list;
    EXPECT_LT(message, own);
    EXPECT_GT(finding, own);
    EXPECT_NE(finding, std::string::npos);
}

TEST_F(Explain, DocumentsHoldTheSame) {
    const Json keys = RunForJson({"explain"})["keys"];
    EXPECT_EQ(keys.size(), 63U);
    EXPECT_EQ(keys[0], (Json{{"key", "Ctx.Check.CtxAlreadyDefined"},
                             {"group", "catalog"},
                             {"kind", "error"},
                             {"text", "The context \"{0}\" is declared more than once. Rename or "
                                      "remove all but one of these declarations."}}));
    const Json one = RunForJson({"explain", "missing-path"})["explanation"];
    EXPECT_EQ(one["group"], "own");
    EXPECT_EQ(one["kind"], "warning");
    EXPECT_EQ(one["parameters"], (Json{"the name of the context", "the path"}));
    EXPECT_EQ(one["examples"][0]["role"], "Wrong");
    EXPECT_EQ(one["examples"][0]["options"], Json::array({"--deep"}));
    EXPECT_EQ(RunForJson({"explain", "Ctx.Collector.CheckError"})["explanation"]["kind"],
              "heading");
}

TEST_F(Explain, AnUnknownKeyDoesNotExist) {
    ExpectEach({
        {"slip",
         {"explain", "friend-rng"},
         5,
         "",
         {"'friend-rng'; did you mean 'friend-ring'?"},
         {}},
        {"slip in brackets", {"explain", "[freind-ring]"}, 5, "", {"mean 'friend-ring'?"}, {}},
        {"last part only",
         {"explain", "ctxemptyname", "--format", "json"},
         5,
         "",
         {"did you mean 'Ctx.Check.CtxEmptyName'?"},
         {}},
        {"one dot too few",
         {"explain", "Ctx.SetFriendsAndAssociated.CtxAssocNoMatchingCtx"},
         5,
         "",
         {"did you mean 'Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx'?"},
         {}},
        {"nothing like it",
         {"explain", "\x1b[31m"},
         5,
         "",
         {"no message with the key '\\x1b[31m'; `dyadctx explain` lists all keys"},
         {}},
        {"empty", {"explain", ""}, 5, "", {"no message with the key ''; `dyadctx explain`"}, {}},
        {"empty brackets", {"explain", "[]"}, 5, "", {"lists all keys"}, {}},
    });
}

TEST_F(Explain, WrongUsageIsTold) {
    ExpectEach({
        {"page of one key",
         {"explain", "friend-ring", "--format", "man"},
         2,
         "",
         {"writes the page of all keys", "usage: dyadctx explain [KEY]"},
         {}},
        {"unknown format", {"explain", "--format", "html"}, 2, "", {"html", "usage:"}, {}},
        {"two keys", {"explain", "a", "b"}, 2, "", {"unexpected argument 'b'"}, {}},
    });
}

TEST_F(Explain, AnAnswerThatCannotBeWrittenIsReported) {
    for (const char* arguments : {"explain", "explain friend-ring", "explain --format man"}) {
        const ChildResult result =
            RunInShell(std::string("\"$DYADCTX\" ") + arguments + " > /dev/full");
        EXPECT_EQ(result.status, 6) << arguments;
        EXPECT_NE(result.standardError.find("could not be written"), std::string::npos);
    }
}

TEST_F(Explain, ColoursAreUsedOnlyOnRequest) {
    EXPECT_EQ(Run({"explain", "friend-ring"}).standardOutput.find('\x1b'), std::string::npos);
    const std::string colored = Run({"explain", "friend-ring", "--color", "always"}).standardOutput;
    EXPECT_NE(colored.find("(\x1b[33mwarning\x1b[0m)"), std::string::npos) << colored;
    for (const char* format : {"json", "man"}) {
        const ChildResult result = Run({"explain", "--format", format, "--color", "always"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardOutput.find('\x1b'), std::string::npos) << format;
    }
}

TEST_F(Explain, TheRulesOfSarifReportsHoldTheExplanations) {
    WriteContexts("a.xml", "<Context Name='' Parameter='a' ParameterType='Path'/>");
    const Json document = Json::parse(Run({"check", "a.xml", "--format", "sarif"}).standardOutput);
    const Json& rule = document["runs"][0]["tool"]["driver"]["rules"].at(0);
    EXPECT_EQ(rule["id"], "Ctx.Check.CtxEmptyName");
    EXPECT_EQ(rule["shortDescription"]["text"],
              "A context has an empty name. Give every <Context> inside <CtxData> a Name.");
    EXPECT_TRUE(rule["fullDescription"]["text"].get<std::string>().starts_with(
        "A declared context has the attribute Name, but nothing in it."));
    const std::string text = rule["help"]["text"];
    EXPECT_TRUE(text.starts_with("Give the context a name of its own."));
    EXPECT_NE(text.find("\n\nRight (context file)\n\n<?xml "), std::string::npos) << text;
    const std::string markdown = rule["help"]["markdown"];
    EXPECT_NE(markdown.find("the message is `Ctx.Parse.CtxNoName`."), std::string::npos);
    EXPECT_NE(markdown.find("\n\n**Right (context file)**\n\n```xml\n<?xml "), std::string::npos);
    EXPECT_TRUE(markdown.ends_with("</DyAdDescription>\n```\n"));
}

TEST_F(Explain, TheHelpLeadsToIt) {
    EXPECT_NE(Run({"--help"}).standardOutput.find("Tell what a finding of check means"),
              std::string::npos);
    EXPECT_NE(Run({"explain", "--help"}).standardOutput.find("dyadctx explain"), std::string::npos);
}

} // namespace dyadctx::test
