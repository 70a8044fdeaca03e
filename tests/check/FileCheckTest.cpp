// SPDX-License-Identifier: MIT
// Every fault of a file in one run, each at its place.
#include "check/FileCheckSupport.h"
#include "support/ContextFile.h"
#include "support/FaultyProviders.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;
using enum VELDyadCtxSeverity;

Lines ErrorsOf(std::string_view contexts) {
    return PlacesOf(*CheckLines(contexts), Error);
}

} // namespace

TEST(FileCheck, FindsNothingInAFileThatIsRight) {
    const auto check = CheckLines(R"(<Context Name="A" Parameter="/a" ParameterType="Path">
<CtxFriends><Context Name="DYADIC"/></CtxFriends></Context>
<Context Name="DYADIC" Parameter="" ParameterType="Default"/>)");
    EXPECT_EQ(PlacesOf(*check), Lines());
    EXPECT_EQ(ViewOf(*check->GetCollector()), Lines({"A", "DYADIC"}));
}

TEST(FileCheck, RunReturnsWhetherAFactoryTakesTheFile) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file.xml", DocumentWith(R"(<Context Name="A"/>)"));
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.GetCollector(), nullptr);
    EXPECT_EQ(check.Run(file.c_str()), S_FALSE);
    EXPECT_EQ(check.GetNbFindings(Error), 2);
    folder.Write("file.xml",
                 DocumentWith(R"(<Context Name="A" Parameter="a" ParameterType="Path"/>)"));
    EXPECT_EQ(check.Run(file.c_str()), S_OK);
    EXPECT_EQ(check.GetNbFindings(Error), 0);
}

TEST(FileCheck, ATextIsCheckedUnderAnyNameAndNoFileIsOpened) {
    const TemporaryFolder folder;
    const std::string file =
        folder.Write("file.xml", DocumentWith(R"(<Context Name="A" Parameter="a"/>)"));
    for (const std::string& name : {file, std::string("<stdin>"), std::string()}) {
        VELDyadCtxFileCheck check;
        EXPECT_EQ(check.Run(name.c_str(), "<DyAdDescription>\n <CtxDate/></DyAdDescription>"),
                  S_FALSE);
        EXPECT_EQ(PlacesOf(check, Error), Lines({"1:1 Ctx.Parse.TagNotFound"}));
        unsigned char isDefault = 1;
        EXPECT_EQ(Text(check.GetCollector()->GetXMLFile(isDefault)), name);
        EXPECT_EQ(isDefault, 0);
    }
}

TEST(FileCheck, ATextMayHoldTheBytesOfAnyEncoding) {
    const std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>\n"
                              "<DyAdDescription><CtxData><Context Name='\xE4' Parameter='a' "
                              "ParameterType='Path'/></CtxData></DyAdDescription>";
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.Run("latin", VELUnicodeString(latin)), S_OK);
    EXPECT_EQ(ViewOf(*check.GetCollector()), Lines({"\xC3\xA4"}));
    const std::string wide = "\xFE\xFF" + std::string("\0<\0/\0>", 6);
    EXPECT_EQ(check.Run("wide", VELUnicodeString(wide)), S_FALSE);
    EXPECT_EQ(PlacesOf(check), Lines({"1:2 Ctx.Parse.XMLSyntaxError"}));
    EXPECT_EQ(check.Run("empty", ""), S_FALSE);
    EXPECT_EQ(PlacesOf(check), Lines({"1:1 Ctx.Parse.XMLSyntaxError"}));
}

TEST(FileCheck, TheMessageIsThatOfAFactory) {
    VELDyadCtxFileCheck check;
    VELUnicodeString message("before");
    EXPECT_EQ(check.GetFactoryMessage(message), E_FAIL);
    EXPECT_EQ(Text(message), "before");
    EXPECT_EQ(check.Run("text", "<DyAdDescription><CtxData/></DyAdDescription>"), S_FALSE);
    EXPECT_EQ(check.GetFactoryMessage(message), S_OK);
    EXPECT_EQ(
        Text(message),
        "The context file cannot be read : The element <CtxData> is missing, empty or present "
        "more than once. Write exactly one <CtxData> element and put the contexts inside "
        "it.\n");
    EXPECT_EQ(check.Run("/nowhere/file.xml"), S_FALSE);
    EXPECT_EQ(check.GetFactoryMessage(message), S_OK);
    EXPECT_EQ(Text(message), CreateFromFile("/nowhere/file.xml").message);
}

TEST(FileCheck, AFileThatCannotBeReadIsTheOnlyFinding) {
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.Run("/nowhere/file.xml"), S_FALSE);
    EXPECT_EQ(PlacesOf(check), Lines({"0:0 Ctx.Collector.XMLFileNotValid"}));
    EXPECT_EQ(Text(check.GetFindingAt(1).parameters[1]), "/nowhere/file.xml");
    ASSERT_NE(check.GetCollector(), nullptr);
    EXPECT_EQ(check.GetCollector()->GetNbCtxs(), 0);
}

TEST(FileCheck, ASyntaxErrorHasThePlaceAndTheReasonOfTheParser) {
    const auto check = CheckText("<DyAdDescription>\n  <CtxData>\n  </Ctxdata>\n");
    EXPECT_EQ(PlacesOf(*check), Lines({"3:5 Ctx.Parse.XMLSyntaxError"}));
    EXPECT_EQ(RelatedOf(*check, "Ctx.Parse.XMLSyntaxError"),
              Lines({"3:5 the end tag \"Ctxdata\" does not belong to the open element \"CtxData\", "
                     "which begins at line 2, column 3"}));
}

TEST(FileCheck, AWrongRootEndsTheCheck) {
    const auto check = CheckText("<!-- -->\n<dyaddescription/>");
    EXPECT_EQ(PlacesOf(*check), Lines({"2:1 Ctx.Parse.NotAValidTag"}));
    EXPECT_FALSE(check->GetFindingAt(1).hasContext);
}

TEST(FileCheck, TheDataElementMustBeThereOnceAndHoldSomething) {
    const auto none = CheckText("<DyAdDescription>\n <Other/></DyAdDescription>");
    EXPECT_EQ(PlacesOf(*none, Error), Lines({"1:1 Ctx.Parse.TagNotFound"}));
    const auto two = CheckText("<DyAdDescription>\n <CtxData> </CtxData>\n <CtxData> </CtxData>"
                               "</DyAdDescription>");
    EXPECT_EQ(PlacesOf(*two), Lines({"3:2 Ctx.Parse.TagNotFound"}));
    EXPECT_EQ(RelatedOf(*two, "Ctx.Parse.TagNotFound"), Lines({"2:2 the first one is here"}));
    const auto empty = CheckText("<DyAdDescription>\n <CtxData/></DyAdDescription>");
    EXPECT_EQ(PlacesOf(*empty), Lines({"2:2 Ctx.Parse.TagNotFound"}));
    EXPECT_EQ(RelatedOf(*empty, "Ctx.Parse.TagNotFound"), Lines({"2:2 there is nothing in it"}));
    EXPECT_EQ(ErrorsOf(" "), Lines({"2:1 Ctx.Check.NoCtxDefined"}));
}

TEST(FileCheck, AMissingAttributeHidesNoOtherFault) {
    EXPECT_EQ(ErrorsOf(R"(<Context Parameter="a" ParameterType="Path"/>
<Context Name="A"/>
<Context Name="B!" Parameter="b" ParameterType="Pfad"/>)"),
              Lines({"3:1 Ctx.Parse.CtxNoName", "4:1 Ctx.Parse.CtxNoParam",
                     "4:1 Ctx.Parse.CtxNoParamType", "5:10 Ctx.Check.CtxNameWithInvalidChar",
                     "5:34 Ctx.Check.CtxUnknownParamType"}));
}

TEST(FileCheck, AContextThatLacksAnAttributeIsKnownToItsFriends) {
    EXPECT_EQ(ErrorsOf(R"(<Context Name="A"><CtxFriends><Context Name="B"/></CtxFriends></Context>
<Context Name="B" Parameter="b"/>)"),
              Lines({"3:1 Ctx.Parse.CtxNoParam", "3:1 Ctx.Parse.CtxNoParamType",
                     "4:1 Ctx.Parse.CtxNoParamType"}));
}

TEST(FileCheck, TwoContextsWithoutNameAreNoNamesakes) {
    EXPECT_EQ(ErrorsOf(R"(<Context Name="" Parameter="a" ParameterType="Path"/>
<Context Parameter="a" ParameterType="Path"/>
<Context Parameter="b" ParameterType="Path"/>)"),
              Lines({"3:10 Ctx.Check.CtxEmptyName", "4:1 Ctx.Parse.CtxNoName",
                     "5:1 Ctx.Parse.CtxNoName"}));
}

TEST(FileCheck, UnknownFriendsHideNoBrokenName) {
    EXPECT_EQ(ErrorsOf(R"(<Context Name="A!" Parameter="a" ParameterType="Path"><CtxFriends>
<Context Name="X"/>
<Context Name="Y"/>
</CtxFriends></Context>
<Context Name="B!" Parameter="b" ParameterType="Path"/>)"),
              Lines({"3:10 Ctx.Check.CtxNameWithInvalidChar",
                     "4:10 Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx",
                     "5:10 Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx",
                     "7:10 Ctx.Check.CtxNameWithInvalidChar"}));
}

TEST(FileCheck, AnUnknownFriendStaysAPlaceholderWithAPlace) {
    const TemporaryFolder folder;
    const std::string file =
        folder.Write("file.xml", "<DyAdDescription><CtxData>\n"
                                 "<Context Name='\xC3\x84' Parameter='a' ParameterType='Path'>"
                                 "<CtxFriends>\xC3\x84 <Context Name='X'/></CtxFriends></Context>\n"
                                 "</CtxData></DyAdDescription>");
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.Run(file.c_str()), S_FALSE);
    VELDyadContext* context = nullptr;
    ASSERT_EQ(check.GetCollector()->GetCtxAtIndex(1, context), S_OK);
    VELListPtrVELDyadContext friends;
    ASSERT_EQ(context->GetFriends(friends), 1);
    EXPECT_EQ(Text(friends[1]->GetName()), "X");
    VELPlace place;
    ASSERT_EQ(check.GetPlace(context, place), S_OK);
    EXPECT_EQ(place, (VELPlace{2, 1}));
    ASSERT_EQ(check.GetPlace(friends[1], place), S_OK);
    EXPECT_EQ(place, (VELPlace{2, 68}));
    VELDyadContext stranger("S", "s", "Path");
    EXPECT_EQ(check.GetPlace(&stranger, place), E_FAIL);
    EXPECT_EQ(place, (VELPlace{2, 68}));
    VELListValVELUnicodeString names;
    VELListVal<VELPlace> places;
    EXPECT_EQ(check.GetAttributePlaces(&stranger, names, places), E_FAIL);
}

TEST(FileCheck, ReportsWhereEachAttributeIsWritten) {
    VELDyadCtxFileCheck check;
    const VELUnicodeString text(
        "<DyAdDescription><CtxData>\n"
        "<Context Name='B' Parameter='\xC3\x84\xC3\x96' ParameterType='Path'\r\n"
        "  Colour='red'><CtxFriends><Context Name='A'/></CtxFriends></Context>"
        "<Context ParameterType='Path' Parameter='>' Name='A'/>\n"
        "</CtxData></DyAdDescription>");
    ASSERT_EQ(check.Run("text.xml", text), S_OK);
    const auto attributesOf = [&](const VELDyadContext* context) {
        VELListValVELUnicodeString names;
        VELListVal<VELPlace> places;
        EXPECT_EQ(check.GetAttributePlaces(context, names, places), S_OK);
        EXPECT_EQ(names.Size(), places.Size());
        Lines lines;
        for (int i = 1; i <= names.Size(); ++i)
            lines.push_back(Text(names[i]) + " " + std::to_string(places[i].line) + ":" +
                            std::to_string(places[i].column));
        return lines;
    };
    VELDyadContext* first = nullptr;
    VELDyadContext* second = nullptr;
    ASSERT_EQ(check.GetCollector()->GetCtxAtIndex(1, first), S_OK);
    ASSERT_EQ(check.GetCollector()->GetCtxAtIndex(2, second), S_OK);
    EXPECT_EQ(attributesOf(second), Lines({"ParameterType 3:79", "Parameter 3:100", "Name 3:114"}));
    EXPECT_EQ(attributesOf(first),
              Lines({"Name 2:10", "Parameter 2:19", "ParameterType 2:34", "Colour 3:3"}));
}

TEST(FileCheck, ADuplicateNamesTheOtherDeclaration) {
    const auto check = CheckLines(R"(<Context Name="A" Parameter="a" ParameterType="Path"/>
<Context Name="B" Parameter="b" ParameterType="Path"/>
<Context Parameter="a" Name="A" ParameterType="Path"/>)");
    EXPECT_EQ(PlacesOf(*check, Error), Lines({"3:10 Ctx.Check.CtxAlreadyDefined"}));
    EXPECT_EQ(RelatedOf(*check, "Ctx.Check.CtxAlreadyDefined"),
              Lines({"5:24 \"A\" is declared again here"}));
}

TEST(FileCheck, TwoContextsOnOneDatabaseNameEachOther) {
    const DbEnvironment db(true);
    const auto check = CheckLines(
        R"(<Context Name="V" Parameter="v" ParameterType="Database" ConnectorName="KRL"/>
<Context Name="W" Parameter="v" ParameterType="Database" ConnectorName="KRL"/>)");
    EXPECT_EQ(PlacesOf(*check, Error), Lines({"3:58 Ctx.Check.CtxDatabaseAlreadyDefined"}));
    EXPECT_EQ(RelatedOf(*check, "Ctx.Check.CtxDatabaseAlreadyDefined"),
              Lines({"4:58 \"W\" stands for the same database here"}));
}

TEST(FileCheck, FriendsOfEachOtherShowBothLines) {
    const auto check = CheckLines(
        R"(<Context Name="A" Parameter="a" ParameterType="Path"><CtxFriends>
<Context Name="B"/></CtxFriends></Context>
<Context Name="B" Parameter="b" ParameterType="Path"><CtxFriends>
<Context Name="A"/>
<Context Name="B"/></CtxFriends></Context>)");
    EXPECT_EQ(PlacesOf(*check, Error), Lines({"4:10 Ctx.Check.CtxAndFriendWithCyclicity",
                                              "6:10 Ctx.Check.CtxAndFriendWithCyclicity",
                                              "7:10 Ctx.Check.CtxAndFriendWithSameName"}));
    EXPECT_EQ(RelatedOf(*check, "Ctx.Check.CtxAndFriendWithCyclicity"),
              Lines({"6:10 \"B\" names it as a friend here"}));
}

TEST(FileCheck, FaultsOfAssociatedContexts) {
    const DbEnvironment db(true);
    const auto check = CheckLines(
        R"(<Context Name="A" Parameter="a" ParameterType="Path"><CtxAssociated>
<Context Name="B"/></CtxAssociated></Context>
<Context Name="B" Parameter="b" ParameterType="Path"><CtxAssociated>
<Context Name="A"/></CtxAssociated></Context>
<Context Name="C" Parameter="c" ParameterType="Path"><CtxAssociated>
<Context Name="X"/></CtxAssociated></Context>
<Context Name="D" Parameter="d" ParameterType="Path"><CtxAssociated>
<Context/></CtxAssociated></Context>
<Context Name="E" Parameter="e" ParameterType="Path"><CtxAssociated>
<Context Name=""/></CtxAssociated></Context>
<Context Name="F" Parameter="f" ParameterType="Path"><CtxAssociated>
<Context Name="F"><CtxAssociated> </CtxAssociated></Context></CtxAssociated></Context>
<CtxAssociated/>)");
    EXPECT_EQ(
        PlacesOf(*check, Error),
        Lines({"4:10 Ctx.Check.CtxAndAssocWithCyclicity", "6:10 Ctx.Check.CtxAndAssocWithCyclicity",
               "8:10 Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx",
               "10:1 Ctx.Parse.CtxAssocNoName", "12:10 Ctx.Parse.CtxAssocNoName",
               "14:10 Ctx.Check.CtxAndAssocWithSameName",
               "14:19 Ctx.Parse.CtxAssociatedWithAssociated",
               "15:1 Ctx.Parse.NoCtxDefinedForAssociated"}));
    EXPECT_EQ(RelatedOf(*check, "Ctx.Check.CtxAndAssocWithCyclicity"),
              Lines({"6:10 \"B\" names it as its associated context here"}));
}

TEST(FileCheck, EveryOptionWithoutNameIsFound) {
    EXPECT_EQ(
        ErrorsOf(R"(<Context Name="A" Parameter="a" ParameterType="Path">
<Scenario><ScenarioID Ident="1" name="p"><Option value="x"/>
<Option value="y"/></ScenarioID></Scenario>
<Option/></Context>)"),
        Lines({"4:42 option-without-name", "5:1 option-without-name", "6:1 option-without-name"}));
}

TEST(FileCheck, AttributesAreFoundOnLinesOfTheirOwnAndInAnyQuotes) {
    EXPECT_EQ(ErrorsOf("<Context\r\n\tParameter='Name=\"A!\"'\r  Name =\n \"A!\"\n"
                       "ParameterType\n=\"Path\"/>"),
              Lines({"5:3 Ctx.Check.CtxNameWithInvalidChar"}));
}

TEST(FileCheck, ColumnsCountCharacters) {
    EXPECT_EQ(ErrorsOf("<!-- \xE5\x9B\xB3 --><Context Parameter=\"\xC3\xA4\" Name=\"!\" "
                       "ParameterType=\"Path\"/>"),
              Lines({"3:34 Ctx.Check.CtxNameWithInvalidChar"}));
}

TEST(FileCheck, AnAttributeThatIsNotWrittenInTheTagLeavesTheElement) {
    const auto check =
        CheckText("<!DOCTYPE DyAdDescription [<!ATTLIST Context ParameterType CDATA "
                  "\"Pfad\">\n<!ENTITY c '<Context Name=\"!\" Parameter=\"p\"/>'>]>\n"
                  "<DyAdDescription><CtxData>&c;\n<Context Name=\"A\" "
                  "Parameter=\"a\"/></CtxData></DyAdDescription>");
    EXPECT_EQ(PlacesOf(*check, Error),
              Lines({"3:27 Ctx.Check.CtxNameWithInvalidChar", "3:27 Ctx.Check.CtxUnknownParamType",
                     "4:1 Ctx.Check.CtxUnknownParamType"}));
}

TEST(FileCheck, InUtf16AttributesAreFoundAsInUtf8) {
    const std::string text = "<?xml version='1.0' encoding='UTF-16'?>\n<DyAdDescription><CtxData>\n"
                             " <Context Parameter='p\xE4' Name='!' ParameterType='Path'/>"
                             "</CtxData></DyAdDescription>";
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char letter : text) {
        little += {letter, '\0'};
        big += {'\0', letter};
    }
    for (const std::string& wide : {little, big}) {
        const auto check = CheckText(wide);
        EXPECT_EQ(PlacesOf(*check, Error), Lines({"3:26 Ctx.Check.CtxNameWithInvalidChar"}));
        VELDyadContext* context = nullptr;
        ASSERT_EQ(check->GetCollector()->GetCtxAtIndex(1, context), S_OK);
        VELPlace place;
        EXPECT_EQ(check->GetPlace(context, place), S_OK);
        EXPECT_EQ(place, (VELPlace{3, 2}));
    }
}

TEST(FileCheck, InLatin1EveryByteIsACharacter) {
    EXPECT_EQ(PlacesOf(*CheckText("<?xml version='1.0' encoding='ISO-8859-1'?>\n"
                                  "<DyAdDescription><CtxData>\n<!-- \xA0\xE4 --><Context "
                                  "Parameter='\xBF' Name='!' ParameterType='Path'/>"
                                  "</CtxData></DyAdDescription>"),
                       Error),
              Lines({"3:35 Ctx.Check.CtxNameWithInvalidChar"}));
}

TEST(FileCheck, ALargeFileIsRefusedAtItsFirstFault) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file.xml", "<DyAdDescription>");
    std::filesystem::resize_file(file, std::uintmax_t{5} << 30U);
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.Run(file.c_str()), S_FALSE);
    EXPECT_EQ(PlacesOf(check), Lines({"1:18 Ctx.Parse.XMLSyntaxError"}));
}

TEST(FileCheck, AnyNumberOfFindingsInOneTagAreEachAtTheirPlace) {
    std::string written;
    std::string declared;
    for (int number = 10000; number < 12000; ++number) {
        written += " a" + std::to_string(number) + "='v'";
        declared += " b" + std::to_string(number) + " CDATA 'v'";
    }
    const auto check = CheckText("<!DOCTYPE DyAdDescription [<!ATTLIST Context" + declared +
                                 ">]>\n<DyAdDescription><CtxData>\n<Context Name='DYADIC' "
                                 "Parameter='' ParameterType='Default'" +
                                 written + "/></CtxData></DyAdDescription>");
    const Lines places = PlacesOf(*check, Warning);
    ASSERT_EQ(places.size(), 4000U);
    EXPECT_EQ(places[0], "3:1 unknown-attribute");
    EXPECT_EQ(places[1999], "3:1 unknown-attribute");
    EXPECT_EQ(places[2000], "3:61 unknown-attribute");
    EXPECT_EQ(places[3999], "3:22050 unknown-attribute");
}

TEST(FileCheck, AFriendOfALeftOutFirstContextHasNoOwner) {
    const auto check = CheckLines(
        R"(<Context Name="V" Parameter="v" ParameterType="Database" ConnectorName="KRL"><CtxFriends>
<Context Name="A"/><Context Name="A"/></CtxFriends></Context>
<Context Name="A" Parameter="a" ParameterType="Path"/>)");
    EXPECT_EQ(PlacesOf(*check, Error), Lines({"4:1 Ctx.Collector.InternalError"}));
    EXPECT_EQ(
        RelatedOf(*check, "Ctx.Collector.InternalError"),
        Lines({"3:1 this belongs to \"V\", which is left out while the DB context environment "
               "is off, and no context stands before it"}));
}

TEST(FileCheck, ContextsReadTooOftenEndTheReadingAndTheirNestingIsNamed) {
    constexpr int Deep = 40;
    std::string contexts = "<Context Name=\"A!\" Parameter=\"a\" ParameterType=\"Path\">\n"
                           "<Context Name=\"B\"/></Context>\n"
                           "<Context Name=\"D\" Parameter=\"d\" ParameterType=\"Path\">";
    for (int level = 1; level < Deep; ++level)
        contexts += "\n<Context Name=\"B\">";
    for (int level = 0; level < Deep; ++level)
        contexts += "</Context>";
    contexts += "\n<Context Name=\"B\" Parameter=\"b\" ParameterType=\"Path\"/>";
    // Without the environment each is read once.
    EXPECT_EQ(ErrorsOf(contexts), Lines({"3:10 Ctx.Check.CtxNameWithInvalidChar"}));
    const DbEnvironment db(true);
    const auto check = CheckLines(contexts);
    // Nothing is said of names, of which not all are known.
    ASSERT_EQ(PlacesOf(*check).size(), 1U);
    EXPECT_EQ(PlacesOf(*check)[0].substr(PlacesOf(*check)[0].find(' ')),
              " Ctx.Collector.InternalError");
    EXPECT_EQ(RelatedOf(*check, "Ctx.Collector.InternalError"),
              Lines({"5:1 40 contexts are directly inside one another here; while the DB context "
                     "environment is on, each level doubles how often the inner ones are read"}));
}

TEST(FileCheck, ARefusedProviderHidesNoOtherFault) {
    const DbEnvironment db(true);
    FaultyProviders providers;
    providers.FailAt(ProviderCall::SetConnectorName, 1);
    const auto check = CheckLines(
        R"(<Context Name="V" Parameter="v" ParameterType="Database" ConnectorName="KRL"/>
<Context Name="A!" Parameter="a" ParameterType="Path"><CtxFriends><Context Name="V"/></CtxFriends>
</Context>)");
    EXPECT_EQ(PlacesOf(*check),
              Lines({"3:1 provider-failed", "4:10 Ctx.Check.CtxNameWithInvalidChar"}));
}

TEST(FileCheck, TheSameFindingIsToldOnce) {
    const DbEnvironment db(true);
    // Such a context is read twice, as associated context and as friend.
    EXPECT_EQ(ErrorsOf(R"(<Context Name="A" Parameter="a" ParameterType="Path">
<Context Name="B"><Option/></Context></Context>
<Context Name="B" Parameter="b" ParameterType="Path"/>)"),
              Lines({"4:19 option-without-name"}));
}

} // namespace dyadctx::test
