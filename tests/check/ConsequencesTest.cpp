// SPDX-License-Identifier: MIT
// What one fault entails is a note after it, not a fault of its own.
#include "check/FileCheckSupport.h"
#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;
using enum VELDyadCtxSeverity;

const char* NameOf(VELDyadCtxSeverity severity) {
    return severity == Error ? "error" : (severity == Warning ? "warning" : "note");
}

// "1:2 error KEY", and the position of the fault for a consequence: "1:2 note KEY of 1".
Lines Findings(const VELDyadCtxFileCheck& check) {
    Lines lines = PlacesOf(check);
    for (int pos = 1; pos <= check.GetNbFindings(); ++pos) {
        const VELDyadCtxFinding& finding = check.GetFindingAt(pos);
        std::string& line = lines[static_cast<std::size_t>(pos) - 1];
        line.insert(line.find(' '), std::string(" ") + NameOf(finding.severity));
        if (finding.cause != 0)
            line += " of " + std::to_string(finding.cause);
    }
    return lines;
}

Lines Findings(std::string_view contexts) {
    return Findings(*CheckLines(contexts));
}

constexpr const char* Default = "<Context Name='DYADIC' Parameter='' ParameterType='Default'/>";

} // namespace

TEST(Consequences, AMisnamedDefaultContextNeedsNoParameter) {
    EXPECT_EQ(Findings("<Context Parameter='' Name='Dyadic' ParameterType='Default'/>"),
              Lines({"3:23 error Ctx.Check.CtxDefaultInvalidName",
                     "3:10 note Ctx.Check.CtxEmptyParam of 1"}));
}

TEST(Consequences, AContextOfDefaultTypeWithoutNameHasOneFault) {
    EXPECT_EQ(
        Findings("<Context Name='' Parameter='' ParameterType='Default'/>"),
        Lines({"3:10 error Ctx.Check.CtxDefaultInvalidName",
               "3:10 note Ctx.Check.CtxEmptyName of 1", "3:18 note Ctx.Check.CtxEmptyParam of 1"}));
}

TEST(Consequences, WhoeverNamesAMisnamedDefaultContextRightlyIsNotAtFault) {
    EXPECT_EQ(Findings("<Context Name='A' Parameter='a' ParameterType='Path'>\n"
                       "<CtxFriends><Context Name='DYADIC'/></CtxFriends></Context>\n"
                       "<Context Name='Standard' Parameter='' ParameterType='Default'/>"),
              Lines({"5:10 error Ctx.Check.CtxDefaultInvalidName",
                     "4:22 note Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx of 1",
                     "5:26 note Ctx.Check.CtxEmptyParam of 1"}));
}

TEST(Consequences, ADefaultContextOfUnknownTypeHasAWrongType) {
    EXPECT_EQ(Findings("<Context Name='DYADIC' Parameter='' ParameterType='Standard'/>"),
              Lines({"3:37 error Ctx.Check.CtxDefaultInvalidParamType",
                     "3:37 note Ctx.Check.CtxUnknownParamType of 1"}));
}

TEST(Consequences, AContextWithoutConnectorHasNoDatabase) {
    const DbEnvironment db(true);
    const std::string v = "<Context Name='V' Parameter='v' ParameterType='Database'/>\n";
    const std::string w = "<Context Name='W' Parameter='w' ParameterType='Database'/>\n";
    EXPECT_EQ(
        Findings(Default + ("\n" + v + w)),
        Lines({"4:1 error Ctx.Parse.CtxNoConnector", "4:1 note Ctx.Parse.CtxNoDatabase of 1",
               "5:1 error Ctx.Parse.CtxNoConnector", "5:1 note Ctx.Parse.CtxNoDatabase of 3"}));
}

TEST(Consequences, AContextThatNamesItselfMakesNoRing) {
    EXPECT_EQ(Findings("<Context Name='A' Parameter='a' ParameterType='Path'><CtxFriends>\n"
                       "<Context Name='A'/></CtxFriends></Context>\n" +
                       std::string(Default)),
              Lines({"4:10 error Ctx.Check.CtxAndFriendWithSameName",
                     "4:10 note Ctx.Check.CtxAndFriendWithCyclicity of 1"}));
    const DbEnvironment db(true);
    EXPECT_EQ(Findings("<Context Name='A' Parameter='a' ParameterType='Path'><CtxAssociated>\n"
                       "<Context Name='A'/></CtxAssociated></Context>\n" +
                       std::string(Default)),
              Lines({"4:10 error Ctx.Check.CtxAndAssocWithSameName",
                     "4:10 note Ctx.Check.CtxAndAssocWithCyclicity of 1"}));
}

TEST(Consequences, FriendsOfEachOtherAreBothAtFault) {
    const auto check = CheckLines("<Context Name='A' Parameter='a' ParameterType='Path'>"
                                  "<CtxFriends><Context Name='B'/></CtxFriends></Context>\n"
                                  "<Context Name='B' Parameter='b' ParameterType='Path'>"
                                  "<CtxFriends><Context Name='A'/></CtxFriends></Context>");
    EXPECT_EQ(check->GetNbFindings(Error), 2);
}

TEST(Consequences, OfAnUnknownTypeNothingIsSaidAboutOtherAttributes) {
    EXPECT_EQ(Findings("<Context Name='A' Parameter='a' ParameterType='Networks' "
                       "ConnectorName='KRL' Role='r'/>"),
              Lines({"3:33 error Ctx.Check.CtxUnknownParamType", "3:58 note unused-attribute of 1",
                     "3:78 note unused-attribute of 1"}));
    EXPECT_EQ(Findings("<Context Name='A' Parameter='a' ConnectorName='KRL'/>"),
              Lines({"3:1 error Ctx.Parse.CtxNoParamType", "3:33 note unused-attribute of 1"}));
}

TEST(Consequences, AMisspelledAttributeIsMissing) {
    EXPECT_EQ(Findings("<Context Name='A' Parameter='a' ParamterType='Path' Shade='b'/>"),
              Lines({"3:1 error Ctx.Parse.CtxNoParamType", "3:33 note unknown-attribute of 1",
                     "3:53 warning unknown-attribute"}));
}

TEST(Consequences, ContextsWithEmptyNamesAreNoNamesakes) {
    EXPECT_EQ(
        Findings("<Context Name='' Parameter='a' ParameterType='Path'/>\n"
                 "<Context Name='' Parameter='b' ParameterType='Path'/>"),
        Lines({"3:10 error Ctx.Check.CtxEmptyName", "3:10 note Ctx.Check.CtxAlreadyDefined of 1",
               "4:10 error Ctx.Check.CtxEmptyName"}));
}

TEST(Consequences, AContextAndAFriendWithoutNameAreNotTheSame) {
    EXPECT_EQ(Findings("<Context Name='' Parameter='a' ParameterType='Path'>\n"
                       "<CtxFriends><Context Name=''/></CtxFriends></Context>"),
              Lines({"3:10 error Ctx.Check.CtxEmptyName", "4:22 error Ctx.Parse.CtxFriendNoName",
                     "4:22 note Ctx.Check.CtxAndFriendWithSameName of 2"}));
}

TEST(Consequences, AParameterThatMustBeEmptyNeedsNotExist) {
    const TemporaryFolder folder;
    const std::string file = folder.Write(
        "file.xml",
        DocumentWith("<Context Name='DYADIC' Parameter='/no/where' ParameterType='Path'/>"));
    VELDyadCtxFileCheck check;
    check.SetDeep(true);
    EXPECT_EQ(check.Run(file.c_str()), S_FALSE);
    const Lines found = Findings(check);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_NE(found[0].find("error Ctx.Check.CtxDefaultInvalidParam"), std::string::npos);
    EXPECT_NE(found[1].find("note missing-path of 1"), std::string::npos);
    EXPECT_NE(found[2].find("error Ctx.Check.CtxDefaultInvalidParamType"), std::string::npos);
}

TEST(Consequences, DoNotCountAndCannotBeSilenced) {
    const TemporaryFolder folder;
    const std::string file = folder.Write(
        "file.xml",
        DocumentWith("<Context Name='A' Parameter='a' ParameterType='X' Role='r'/>\n"
                     "<Context Name='B' Parameter='b' ParameterType='Path' Role='r'/>"));
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.Silence("unused-attribute"), S_OK);
    EXPECT_EQ(check.Run(file.c_str()), S_FALSE);
    ASSERT_EQ(check.GetNbFindings(), 2);
    EXPECT_EQ(Text(check.GetFindingAt(2).id), "unused-attribute");
    EXPECT_EQ(check.GetFindingAt(2).cause, 1);
    EXPECT_EQ(check.GetNbFindings(Error), 1);
    EXPECT_EQ(check.GetNbFindings(Note), 0);
}

TEST(Consequences, KeepTheirTextAndContext) {
    const auto check = CheckLines("<Context Name='Std' Parameter='' ParameterType='Default'/>");
    ASSERT_EQ(check->GetNbFindings(), 2);
    const VELDyadCtxFinding& finding = check->GetFindingAt(2);
    EXPECT_EQ(Text(finding.id), "Ctx.Check.CtxEmptyParam");
    EXPECT_EQ(Text(finding.context), "Std");
    EXPECT_EQ(Text(finding.parameters[1]), "Std");
    EXPECT_NE(Text(finding.text).find("Std"), std::string::npos);
}

TEST(Consequences, ElementsOfAnEntityAreToldApartByTheirContexts) {
    const auto check = CheckText("<!DOCTYPE DyAdDescription [<!ENTITY c '"
                                 "<Context Name=\"S\" Parameter=\"s\" ParameterType=\"Default\"/>"
                                 "<Context Name=\"P\" Parameter=\"\" ParameterType=\"Path\"/>'>]>\n"
                                 "<DyAdDescription><CtxData>&c;</CtxData></DyAdDescription>");
    EXPECT_EQ(Findings(*check), Lines({"2:27 error Ctx.Check.CtxDefaultInvalidName",
                                       "2:27 error Ctx.Check.CtxEmptyParam"}));
}

// The library's message has a line for each pair of them.
TEST(Consequences, ManyFriendsOfTheOwnNameAreOneFaultEach) {
    std::string friends;
    for (int i = 0; i < 400; ++i)
        friends += "<Context Name='A'/>\n";
    const auto check =
        CheckLines("<Context Name='A' Parameter='a' ParameterType='Path'><CtxFriends>" + friends +
                   "</CtxFriends></Context>");
    EXPECT_EQ(check->GetNbFindings(Error), 400);
    EXPECT_EQ(check->GetNbFindings(Warning), 399);
    EXPECT_EQ(check->GetNbFindings(), 400 + 400 + 399);
}

} // namespace dyadctx::test
