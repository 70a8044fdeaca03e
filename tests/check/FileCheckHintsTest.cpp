// SPDX-License-Identifier: MIT
// Help beyond the rules, which never makes a file invalid.
#include "check/FileCheckSupport.h"
#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <set>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;
using enum VELDyadCtxSeverity;

constexpr const char* Default = R"(<Context Name="DYADIC" Parameter="" ParameterType="Default"/>)";

struct HintCase {
    std::string id;
    std::string contexts;
    std::string place;
    std::string text;
    Lines related;
    bool db = false;
};

void PrintTo(const HintCase& example, std::ostream* out) {
    *out << example.id;
}

class FileCheckHint : public testing::TestWithParam<HintCase> {};

const std::string PathA = R"(<Context Name="A" Parameter="a" ParameterType="Path">)";
const std::string PathB = R"(<Context Name="B" Parameter="b" ParameterType="Path">)";
const std::string PathC = R"(<Context Name="C" Parameter="c" ParameterType="Path">)";

std::string FriendLine(const std::string& name) {
    return "<CtxFriends>\n<Context Name=\"" + name + "\"/></CtxFriends></Context>\n";
}

} // namespace

TEST_P(FileCheckHint, IsGivenAtItsPlaceAndLeavesTheFileValid) {
    const HintCase& example = GetParam();
    const DbEnvironment db(example.db);
    const auto check = CheckLines(example.contexts);
    EXPECT_EQ(PlacesOf(*check), Lines({example.place + " " + example.id}));
    EXPECT_EQ(TextOf(*check, example.id), example.text);
    EXPECT_EQ(RelatedOf(*check, example.id), example.related);
    EXPECT_EQ(check->GetNbFindings(Error), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Hints, FileCheckHint,
    testing::Values(
        HintCase{"unknown-attribute",
                 std::string(Default) + "\n" + PathA + "<ScenarioID Name=\"p\"/></Context>",
                 "4:66",
                 "The attribute \"Name\" of ScenarioID means nothing and is not read. Did you mean "
                 "\"name\"?",
                 {}},
        HintCase{"unknown-attribute",
                 std::string(Default) + "<Context Name=\"A\" Parameter=\"a\" "
                                        "ParameterType=\"Path\"\nxml:space='x' colour=\"b\"/>",
                 "4:15",
                 "The attribute \"colour\" of Context means nothing and is not read.",
                 {}},
        HintCase{"unused-attribute",
                 std::string(Default) + "<Context Name=\"A\" Parameter=\"a\" "
                                        "ParameterType=\"Path\"\nServerName=\"s\"/>",
                 "4:1",
                 "The attribute \"ServerName\" is read for contexts of type \"Database\" only; the "
                 "type of this one is \"Path\".",
                 {}},
        HintCase{"unknown-element",
                 std::string(Default) + "\n<Contxt/>",
                 "4:1",
                 "The element Contxt means nothing; it is skipped with all that is in it. Did you "
                 "mean \"Context\"?",
                 {}},
        HintCase{"misplaced-element",
                 std::string(Default) + "\n<Scenario/>",
                 "4:1",
                 "The element Scenario has no effect inside CtxData.",
                 {}},
        HintCase{"misplaced-element",
                 std::string(Default) + PathA + "\n<Option name=\"x\"/></Context>",
                 "4:1",
                 "The element Option has no effect inside Context.",
                 {}},
        HintCase{"misplaced-element",
                 std::string(Default) + PathA +
                     "<CtxFriends>\n<CtxAssociated><Context/></CtxAssociated></CtxFriends>"
                     "</Context>",
                 "4:1",
                 "The element CtxAssociated has no effect inside CtxFriends.",
                 {},
                 true},
        HintCase{"repeated-friend",
                 std::string(Default) + PathA +
                     "<CtxFriends><Context Name=\"DYADIC\"/></CtxFriends><CtxFriends>\n"
                     "<Context Name=\"DYADIC\"/></CtxFriends></Context>",
                 "4:10",
                 "The context \"A\" names the friend \"DYADIC\" more than once.",
                 {"3:136 it is named first here"}},
        HintCase{"several-associated",
                 std::string(Default) + PathA +
                     "<CtxAssociated>\n<Context Name=\"B\"/></CtxAssociated>\n<CtxAssociated>"
                     "<Context Name=\"DYADIC\"/></CtxAssociated></Context>" +
                     PathB + "</Context>",
                 "4:10",
                 "The context \"A\" has several associated contexts; only the last one counts, and "
                 "\"B\" does not.",
                 {"5:25 this one counts"},
                 true},
        HintCase{
            "repeated-scenario",
            std::string(Default) + PathA +
                "<Scenario><ScenarioID Ident=\"1\" name=\"p\"/>"
                "<ScenarioID Ident=\"1\" name=\"q\"/></Scenario>\n"
                "<ScenarioID name=\"p\" Ident=\"1\"/></Context>",
            "4:1",
            "The context \"A\" has the scenario \"1\" of the profile \"p\" more than once; the "
            "options of all count.",
            {"3:125 it is first here"}},
        HintCase{
            "repeated-option",
            std::string(Default) + PathA +
                "<ScenarioID><Option name=\"x\"/><Option name=\"y\"/></ScenarioID>"
                "<ScenarioID Ident=\"1\"><Option name=\"x\"/>\n"
                "<Option value=\"v\" name=\"x\"/></ScenarioID></Context>",
            "4:19",
            "The option \"x\" is given more than once in one scenario; all of its values count.",
            {"3:206 it is given first here"}},
        HintCase{"friend-ring",
                 std::string(Default) + PathA + FriendLine("B") + PathB + FriendLine("C") + PathC +
                     FriendLine("A"),
                 "4:10",
                 "Friends lead back to where they began: A -> B -> C -> A.",
                 {"6:10 \"B\" names \"C\" here", "8:10 \"C\" names \"A\" here"}},
        HintCase{"no-default-context",
                 PathA + "</Context>",
                 "2:1",
                 "The file declares no default context, which is named \"DYADIC\".",
                 {}},
        HintCase{
            "database-left-out",
            std::string(Default) + "<Context Name=\"V\" Parameter=\"v\" "
                                   "ParameterType=\"Database\"/>\n<Context Name=\"W\" "
                                   "Parameter=\"v\" ParameterType=\"Database\"/>",
            "3:94",
            "Contexts of type Database are left out while the DB context environment is off: 2 "
            "in this file, the first is \"V\".",
            {}},
        HintCase{"associated-left-out",
                 std::string(Default) + PathA +
                     "\n<CtxAssociated><Context Name=\"X\"/></CtxAssociated></Context>",
                 "4:1",
                 "CtxAssociated is not read while the DB context environment is off: 1 in this "
                 "file, this is the first.",
                 {}}));

TEST(FileCheckHints, EverythingBelowTheRootIsLookedAt) {
    const auto check = CheckText("<DyAdDescription xmlns:x=\"urn:x\" version=\"1\" x:note=\"\">\n"
                                 "<Context Name=\"A\"/><x:Note><Unknown/></x:Note>\n"
                                 "<CtxData lang=\"en\">" +
                                 std::string(Default) +
                                 "</CtxData>\n<ctxdata/><CtxDatas/><Option/></DyAdDescription>");
    EXPECT_EQ(PlacesOf(*check),
              Lines({"1:34 unknown-attribute", "2:1 misplaced-element", "3:10 unknown-attribute",
                     "4:1 unknown-element", "4:11 unknown-element", "4:22 misplaced-element"}));
    EXPECT_EQ(TextOf(*check, "unknown-attribute"),
              "The attribute \"version\" of DyAdDescription means nothing and is not read.");
    EXPECT_EQ(TextOf(*check, "misplaced-element"),
              "The element Context has no effect inside DyAdDescription.");
    EXPECT_EQ(TextOf(*check, "unknown-element"),
              "The element ctxdata means nothing; it is skipped with all that is in it. Did you "
              "mean \"CtxData\"?");
}

TEST(FileCheckHints, DataBelowAnotherElementIsReadAndSaidToBe) {
    const auto check = CheckText("<DyAdDescription>\n<Site><Note/>\n<Part><Other/><CtxData>" +
                                 std::string(Default) +
                                 "\n<Contxt/></CtxData>\n<Context/></Part></Site><Last/>"
                                 "</DyAdDescription>");
    EXPECT_EQ(PlacesOf(*check),
              Lines({"2:7 unknown-element", "3:7 unknown-element", "3:15 nested-data",
                     "4:1 unknown-element", "5:1 misplaced-element", "5:25 unknown-element"}));
    EXPECT_EQ(TextOf(*check, "nested-data"),
              "CtxData is found here, but belongs directly into DyAdDescription; the element Part "
              "around it means nothing.");
    EXPECT_EQ(TextOf(*check, "misplaced-element"),
              "The element Context has no effect inside Part.");
    EXPECT_EQ(ViewOf(*check->GetCollector()), Lines({"DYADIC"}));
}

TEST(FileCheckHints, AMisspeltDataElementIsToldBesideTheError) {
    const auto check = CheckText("<DyAdDescription>\n<CtxDate>" + std::string(Default) +
                                 "</CtxDate></DyAdDescription>");
    EXPECT_EQ(PlacesOf(*check), Lines({"1:1 Ctx.Parse.TagNotFound", "2:1 unknown-element"}));
    EXPECT_EQ(TextOf(*check, "unknown-element"),
              "The element CtxDate means nothing; it is skipped with all that is in it. Did you "
              "mean \"CtxData\"?");
}

TEST(FileCheckHints, WhatIsSaidInAnotherContextIsNoRepetition) {
    const DbEnvironment db(true);
    const std::string friends =
        "<CtxFriends><Context Name=\"DYADIC\"/><Context Name=\"C\"/>"
        "</CtxFriends><CtxAssociated/><CtxAssociated><Context "
        "Name=\"DYADIC\"/></CtxAssociated>"
        "<ScenarioID Ident=\"1\" name=\"p\"><Option name=\"x\"/></ScenarioID>"
        "<ScenarioID Ident=\"2\" name=\"p\"><Option name=\"x\"/></ScenarioID>"
        "</Context>";
    EXPECT_EQ(
        PlacesOf(*CheckLines(Default + PathA + friends + PathB + friends + PathC + "</Context>")),
        Lines());
}

TEST(FileCheckHints, AssociatedContextsThatAreNotReadAreNotCounted) {
    const auto check = CheckLines(std::string(Default) + PathA +
                                  "<CtxAssociated><Context Name=\"B\"/></CtxAssociated>"
                                  "<CtxAssociated><Context Name=\"B\"/></CtxAssociated></Context>");
    EXPECT_EQ(PlacesOf(*check), Lines({"3:115 associated-left-out"}));
}

TEST(FileCheckHints, TheFirstLeftOutAssociatedContextIsPointedAt) {
    const std::string associated =
        "<CtxAssociated><Context Name=\"B\"/></CtxAssociated></Context>\n";
    const auto check =
        CheckLines(Default + PathA + associated + PathB + associated + PathC + associated);
    EXPECT_EQ(PlacesOf(*check), Lines({"3:115 associated-left-out"}));
}

TEST(FileCheckHints, AnUnknownTypeGetsTheNearestOne) {
    const auto type = [](const std::string& text) {
        const auto check = CheckLines(
            Default + ("<Context Name=\"A\" Parameter=\"a\"\nParameterType=\"" + text + "\"/>"));
        const Lines notes = PlacesOf(*check, Note);
        EXPECT_TRUE(notes.empty() || notes == Lines({"4:1 nearest-name"})) << text;
        EXPECT_EQ(PlacesOf(*check, Error), Lines({"4:1 Ctx.Check.CtxUnknownParamType"})) << text;
        return TextOf(*check, "nearest-name");
    };
    EXPECT_EQ(type("path"), "Did you mean \"Path\" instead of \"path\"?");
    EXPECT_EQ(type("Paths"), "Did you mean \"Path\" instead of \"Paths\"?");
    EXPECT_EQ(type(" Path "), "Did you mean \"Path\" instead of \" Path \"?");
    EXPECT_EQ(type("database"), "Did you mean \"Database\" instead of \"database\"?");
    EXPECT_EQ(type("Folder"), "");
    EXPECT_EQ(type("File"), "");
    EXPECT_EQ(type("xyz"), "");
}

TEST(FileCheckHints, WhatIsLeftOutIsToldAtTheFirstOfItsKind) {
    const std::string associated =
        "<CtxAssociated><Context Name=\"X\"/></CtxAssociated></Context>\n";
    const std::string database =
        "<Context Name=\"V\" Parameter=\"v\" ParameterType=\"Database\"/>\n";
    const auto check = CheckLines(Default + ("\n" + PathA) + associated + PathB + associated +
                                  database + PathC + associated + database);
    EXPECT_EQ(PlacesOf(*check), Lines({"4:54 associated-left-out", "6:33 database-left-out"}));
    EXPECT_EQ(TextOf(*check, "associated-left-out"),
              "CtxAssociated is not read while the DB context environment is off: 3 in this "
              "file, this is the first.");
}

TEST(FileCheckHints, FriendsOfALeftOutContextGoToTheOneBeforeIt) {
    const auto check = CheckLines(
        PathA + "</Context>\n" + Default +
        "\n<Context Name=\"V\" Parameter=\"v\" ParameterType=\"Database\">" + FriendLine("A"));
    EXPECT_EQ(PlacesOf(*check), Lines({"5:1 friends-of-left-out", "5:33 database-left-out"}));
    EXPECT_EQ(TextOf(*check, "friends-of-left-out"),
              "The context \"V\" is left out while the DB context environment is off; what is "
              "written as its friends becomes friends of \"DYADIC\", the context before it.");
    EXPECT_EQ(RelatedOf(*check, "friends-of-left-out"),
              Lines({"4:10 the context they go to is here"}));
}

TEST(FileCheckHints, FriendsOfARepeatedDatabaseGoToTheContextBeforeIt) {
    const DbEnvironment db(true);
    const std::string vault =
        R"(<Context Name="V" Parameter="v" ParameterType="Database" ConnectorName="KRL">)";
    const auto check = CheckLines(vault + "</Context>\n" + Default + "\n" + PathA + "</Context>\n" +
                                  vault + FriendLine("V"));
    EXPECT_EQ(PlacesOf(*check), Lines({"6:1 friends-of-repeated"}));
    EXPECT_EQ(TextOf(*check, "friends-of-repeated"),
              "This adds a server to the context \"V\"; what is written as its friends becomes "
              "friends of \"A\", the context before it.");
}

TEST(FileCheckHints, AnUnknownFriendGetsTheNearestName) {
    const auto check = CheckLines(std::string(Default) +
                                  "<Context Name=\"Library\" Parameter=\"l\" "
                                  "ParameterType=\"Path\"/>\n" +
                                  PathA + FriendLine("Libary") + PathB + FriendLine("Nothing") +
                                  PathC + FriendLine("library"));
    EXPECT_EQ(PlacesOf(*check, Note), Lines({"5:10 nearest-name", "9:10 nearest-name"}));
    EXPECT_EQ(TextOf(*check, "nearest-name"), "Did you mean \"Library\" instead of \"Libary\"?");
    EXPECT_EQ(RelatedOf(*check, "nearest-name"), Lines({"3:71 \"Library\" is declared here"}));
}

TEST(FileCheckHints, AnUnknownFriendMayBeALeftOutContext) {
    const auto check =
        CheckLines(PathA + FriendLine("V") +
                   "<Context Name=\"V\" Parameter=\"v\" ParameterType=\"Database\"/>");
    EXPECT_EQ(RelatedOf(*check, "Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx"),
              Lines({"5:10 \"V\" stands here, but is left out while the DB context environment is "
                     "off"}));
}

TEST(FileCheckHints, EachGroupOfRingsIsToldOnce) {
    const auto friends = [](const std::string& name, const Lines& names) {
        std::string text = "<Context Name=\"" + name + "\" Parameter=\"p\" ParameterType=\"Path\">";
        for (const std::string& one : names)
            text += "<CtxFriends><Context Name=\"" + one + "\"/></CtxFriends>";
        return text + "</Context>\n";
    };
    const auto check =
        CheckLines(Default + friends("A", {"B"}) + friends("B", {"C", "D"}) + friends("C", {"A"}) +
                   friends("D", {"A"}) + friends("E", {"F"}) + friends("F", {"G"}) +
                   friends("G", {"E"}) + friends("H", {"A", "G"}));
    EXPECT_EQ(PlacesOf(*check).size(), 2U);
    EXPECT_EQ(TextOf(*check, "friend-ring"),
              "Friends lead back to where they began: A -> B -> C -> A.");
}

TEST(FileCheckHints, TwoFriendsOfEachOtherAreNoRing) {
    const auto check = CheckLines(Default + PathA + FriendLine("B") + PathB + FriendLine("A") +
                                  PathC + FriendLine("B"));
    EXPECT_EQ(PlacesOf(*check, Warning), Lines());
}

TEST(FileCheckHints, MissingPathsAndFilesAreLookedForOnlyWhenAsked) {
    const DbEnvironment db(true);
    const TemporaryFolder folder;
    const std::string here = folder.Path().string();
    const std::string file = folder.Write(
        "file.xml",
        DocumentWith(std::string(Default) +
                     "\n<Context Name=\"A\" ParameterType=\"Path\" Parameter=\"" + here +
                     "\"/>\n<Context Name=\"B\" ParameterType=\"Path\" Parameter=\"" + here +
                     "/none\"/>\n<Context Name=\"C\" ParameterType=\"File\" Parameter=\"" + here +
                     "/none.txt\"/>"));
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.Run(file.c_str()), S_OK);
    EXPECT_EQ(PlacesOf(check), Lines());
    check.SetDeep(true);
    EXPECT_EQ(check.Run(file.c_str()), S_OK);
    ASSERT_EQ(PlacesOf(check).size(), 2U);
    EXPECT_EQ(TextOf(check, "missing-path"),
              "The path \"" + here + "/none\" of the context \"B\" does not exist.");
    EXPECT_EQ(TextOf(check, "missing-file"),
              "The file \"" + here + "/none.txt\" of the context \"C\" does not exist.");
}

TEST(FileCheckHints, ASilencedKindIsLeftOut) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file.xml", DocumentWith(PathA + "</Context>"));
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.Silence("no-default-context"), S_OK);
    EXPECT_EQ(check.Run(file.c_str()), S_OK);
    EXPECT_EQ(PlacesOf(check), Lines());
}

TEST(FileCheckHints, ErrorsCannotBeSilenced) {
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.Silence("option-without-name"), E_FAIL);
    EXPECT_EQ(check.Silence("Ctx.Check.CtxEmptyName"), E_FAIL);
    EXPECT_EQ(check.Silence("nothing"), E_FAIL);
}

TEST(FileCheckHints, TheNearestNameIsNearButNotTheWordItself) {
    const auto nearest = [](const char* word) {
        const auto names = ListOf({"Library", "Design", "Archive", "A", ""});
        return Text(VELDyadCtxFileCheck::GetNearestName(word, names));
    };
    EXPECT_EQ(nearest("Libary"), "Library");
    EXPECT_EQ(nearest("DESIGN"), "Design");
    EXPECT_EQ(nearest("Library"), "");
    EXPECT_EQ(nearest("Unrelated"), "");
    EXPECT_EQ(nearest("B"), "");
    EXPECT_EQ(nearest(""), "");
    EXPECT_EQ(nearest(" a "), "A");
    EXPECT_EQ(nearest("Lib rary"), "Library");
    EXPECT_EQ(nearest("\xC2\xA0\tDesign"), "Design");
    EXPECT_EQ(nearest(" \n"), "");
    EXPECT_EQ(nearest(std::string(201, 'x').c_str()), "");
}

TEST(FileCheckHints, NoNameIsFartherThanAThirdOfItsLength) {
    const auto nearest = [](const char* word, const char* name) {
        return Text(VELDyadCtxFileCheck::GetNearestName(word, ListOf({name})));
    };
    EXPECT_EQ(nearest("ab", "ac"), "");
    EXPECT_EQ(nearest("abc", "abd"), "abd");
    EXPECT_EQ(nearest("abcde", "abxye"), "");
    EXPECT_EQ(nearest("abcdef", "abxyef"), "abxyef");
    EXPECT_EQ(nearest("abcd", "abcdef"), "abcdef");
    EXPECT_EQ(nearest("abcdef", "abcd"), "");
    EXPECT_EQ(nearest("abc", "abcde"), "");
}

TEST(FileCheckHints, IdsAreWordsAndNoKeys) {
    const auto kinds = VELDyadCtxFileCheck::GetFindingKinds();
    std::set<std::string> ids;
    for (int pos = 1; pos <= kinds.Size(); ++pos) {
        const std::string id = Text(kinds[pos].id);
        EXPECT_EQ(id.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string::npos) << id;
        EXPECT_TRUE(ids.insert(id).second) << id;
        EXPECT_FALSE(kinds[pos].text.IsEmpty()) << id;
    }
    EXPECT_EQ(ids.size(), 20U);
}

} // namespace dyadctx::test
