// SPDX-License-Identifier: MIT
#include "collector/DeclaredContexts.h"
#include "collector/detail/CollectorAccess.h"
#include "collector/detail/CollectorInternals.h"
#include "support/ContextFile.h"
#include "support/EnvironmentVariable.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace dyadctx::test {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* ValidContexts = R"(<Context Name="A" Parameter="p" ParameterType="Path">
    <CtxFriends><Context Name="B"/></CtxFriends></Context>
    <Context Name="B" Parameter="q" ParameterType="Path"/>)";
constexpr const char* ContextsWithUnknownFriend =
    R"(<Context Name="A" Parameter="p" ParameterType="Path">
    <CtxFriends><Context Name="X"/></CtxFriends></Context>)";
constexpr const char* ContextsWithEmptyParameter =
    R"(<Context Name="A" Parameter="" ParameterType="Odd"/>)";

// The lines that the steps of a creation write themselves, without those of reading.
Lines LinesOfSteps(const RecordingTrace& trace) {
    Lines lines = trace.Lines();
    std::erase_if(lines, [](const std::string& line) {
        return line.find(" VELDyadCtxXml:") != std::string::npos ||
               line.find(" VELDyadContext:") != std::string::npos;
    });
    return lines;
}

// ---- The exchange channel ---------------------------------------------------------------------

class ExchangeChannel : public testing::Test {
protected:
    KeyCatalog catalog_;
};

TEST_F(ExchangeChannel, ReadsTheFileTheVariableNamesNow) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("contexts.xml", DocumentWith(ValidContexts));

    const Creation creation = CreateFromFile(path);

    ASSERT_NE(creation.collector, nullptr);
    EXPECT_EQ(creation.message, "");
    EXPECT_EQ(ViewOf(*creation.collector), (Lines{"A", "B"}));
    unsigned char isDefault = 1;
    EXPECT_EQ(Text(creation.collector->GetXMLFile(isDefault)), path);
    EXPECT_EQ(isDefault, 0);
    EXPECT_EQ(creation.collector->GetNbPathCtxs(), 2);
}

TEST_F(ExchangeChannel, IsNeverTheDefaultFile) {
    const TemporaryFolder folder;
    const std::string path =
        folder.Write("resources/xml/DYAD/CONTEXT/Default.xml", DocumentWith(ValidContexts));
    std::string written = path;
    std::replace(written.begin() + static_cast<std::ptrdiff_t>(folder.Path().string().size()),
                 written.end(), '/', '\\');

    const Creation creation = CreateFromFile(written);

    ASSERT_NE(creation.collector, nullptr) << creation.message;
    unsigned char isDefault = 1;
    EXPECT_EQ(Text(creation.collector->GetXMLFile(isDefault)), written);
    EXPECT_EQ(isDefault, 0);
}

TEST_F(ExchangeChannel, UnsetOrEmptyReturnsNullWithOnlyAWarning) {
    for (const std::optional<std::string>& value :
         {std::optional<std::string>(), std::optional<std::string>("")}) {
        const EnvironmentVariable variable("ExchangeChannel", value);
        const EnvironmentVariable tracer("VELDyadCtxTracer", "1");
        VELUnicodeString message("before");
        const RecordingTrace trace;

        EXPECT_EQ(VELDyadCtxCollector::CreateExchangeChannelCollector(message), nullptr);

        EXPECT_EQ(Text(message), "before");
        EXPECT_EQ(trace.Lines(),
                  (Lines{"WARNING VELDyadCtxCollector:CreateExchangeChannelCollector - No "
                         "envvar"}));
    }
}

TEST_F(ExchangeChannel, AFileThatIsNoneIsNamedWithoutAHeading) {
    const RecordingTrace trace;

    const Creation creation = CreateFromFile("contexts.xml", "before\n");

    EXPECT_EQ(creation.collector, nullptr);
    const std::string message = "before\nCtx.Collector.XMLFileNotValid(contexts.xml)\n";
    EXPECT_EQ(creation.message, message);
    EXPECT_EQ(trace.Lines(),
              (Lines{"LOG VELDyadCtxCollector:CreateExchangeChannelCollector XMLFile "
                     "(VELDyadCtxInit)=<contexts.xml>",
                     "WARNING VELDyadCtxCollector:CreateCollector KO",
                     "WARNING VELDyadCtxCollector::LogError Method "
                     "<VELDyadCtxCollector::CreateCollector> Error=<" +
                         message + ">"}));
}

TEST_F(ExchangeChannel, TracesTheStepsInTheirOrder) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("contexts.xml", DocumentWith(ValidContexts));
    const EnvironmentVariable tracer("VELDyadCtxTracer", "");
    const RecordingTrace trace;

    const Creation creation = CreateFromFile(path);

    EXPECT_NE(creation.collector, nullptr);
    EXPECT_EQ(
        LinesOfSteps(trace),
        (Lines{"LOG VELDyadCtxCollector:CreateExchangeChannelCollector XMLFile (VELDyadCtxInit)=<" +
                   path + ">",
               "LOG VELDyadCtxCollector:Constructor-isDefault=0 - File=<" + path + ">",
               "ENTER VELDyadCtxCollector:SetFriendsAndAssociated",
               "LEAVE VELDyadCtxCollector:SetFriendsAndAssociated",
               "ENTER VELDyadCtxCollector:Check", "ENTER VELDyadCtxCollector:CheckContext <A>",
               "LOG VELDyadCtxCollector:CheckContext <A> of Prov <p> of Type <Path>",
               "LEAVE VELDyadCtxCollector:CheckContext <A> OK",
               "ENTER VELDyadCtxCollector:CheckContext <B>",
               "LOG VELDyadCtxCollector:CheckContext <B> of Prov <q> of Type <Path>",
               "LEAVE VELDyadCtxCollector:CheckContext <B> OK", "LEAVE VELDyadCtxCollector:Check",
               "LOG BatchStack : console trace set"}));
}

TEST_F(ExchangeChannel, MarksTheBatchAfterAFailureToo) {
    const EnvironmentVariable tracer("VELDyadCtxTracer", "0");
    const RecordingTrace trace;

    const Creation creation = CreateFromFile("none");

    EXPECT_EQ(creation.collector, nullptr);
    EXPECT_EQ(trace.Lines().back(), "LOG BatchStack : console trace set");
}

// ---- What a failing step leaves ---------------------------------------------------------------

struct StepCase {
    const char* step;
    std::string contexts;
    std::string message;
};

std::ostream& operator<<(std::ostream& out, const StepCase& tested) {
    return out << tested.step;
}

class FailingStep : public testing::TestWithParam<StepCase> {};

TEST_P(FailingStep, ReturnsAHeadingAndTheMessages) {
    const KeyCatalog catalog;
    const StepCase& tested = GetParam();
    const std::string heading = "Ctx.Collector." + std::string(tested.step) + "Error()";
    const RecordingTrace trace;

    const Creation creation = CreateFromContexts(tested.contexts);

    EXPECT_EQ(creation.collector, nullptr);
    EXPECT_EQ(creation.message, heading + " : " + tested.message);
    Lines lines = LinesOfSteps(trace);
    ASSERT_GE(lines.size(), 3U);
    lines.erase(lines.begin(), lines.end() - 3);
    EXPECT_EQ(lines, (Lines{"WARNING VELDyadCtxCollector:DeleteCollectorAtCreate KO with Method <" +
                                std::string(tested.step) + "> and Msg=<" + tested.message + ">",
                            "WARNING VELDyadCtxCollector::LogError Method "
                            "<VELDyadCtxCollector::DeleteCollectorAtCreate> Error=<" +
                                heading + ">",
                            "LOG VELDyadCtxCollector:Destructor"}));
}

TEST_P(FailingStep, PutsTheHeadingBeforeWhatTheTextHeld) {
    const KeyCatalog catalog;
    const StepCase& tested = GetParam();

    const Creation creation = CreateFromContexts(tested.contexts, "before ");

    EXPECT_EQ(creation.message,
              "Ctx.Collector." + std::string(tested.step) + "Error() : before " + tested.message);
}

const StepCase StepCases[] = {
    {"Parse", "<Context Name=\"A\" Parameter=\"p\"/>", "Ctx.Parse.CtxNoParamType(A)\n"},
    {"SetFriendsAndAssociated", ContextsWithUnknownFriend,
     "Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx(A|X)\n"},
    {"Check", ContextsWithEmptyParameter,
     "Ctx.Check.CtxEmptyParam(A)\nCtx.Check.CtxUnknownParamType(A|Odd)\n"},
};

INSTANTIATE_TEST_SUITE_P(Steps, FailingStep, testing::ValuesIn(StepCases));

TEST(Creation, LinkingFailsBeforeAnythingIsChecked) {
    const KeyCatalog catalog;

    const Creation creation = CreateFromContexts(
        R"(<Context Name="A!" Parameter="p" ParameterType="Path">
           <CtxFriends><Context Name="X"/></CtxFriends></Context>)");

    EXPECT_EQ(creation.message, "Ctx.Collector.SetFriendsAndAssociatedError() : "
                                "Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx(A!|X)\n");
}

TEST(Creation, AFailureWithoutMessageGetsAHeadingOnlyInATextThatHoldsSomething) {
    const KeyCatalog catalog;
    const char* optionWithoutName = R"(<Context Name="A" Parameter="p" ParameterType="Path">
        <Scenario><ScenarioID Ident="I" name="n"><Option value="v"/></ScenarioID></Scenario>
        </Context>)";

    const Creation silent = CreateFromContexts(optionWithoutName);
    EXPECT_EQ(silent.collector, nullptr);
    EXPECT_EQ(silent.message, "");

    const Creation headed = CreateFromContexts(optionWithoutName, "before");
    EXPECT_EQ(headed.collector, nullptr);
    EXPECT_EQ(headed.message, "Ctx.Collector.ParseError() : before");
}

TEST(Creation, AHeadingWithoutTextStillPutsTheColon) {
    KeyCatalog catalog;
    catalog.Forget("Ctx.Collector.CheckError");

    const Creation creation = CreateFromContexts(ContextsWithEmptyParameter);

    EXPECT_EQ(creation.message,
              " : Ctx.Check.CtxEmptyParam(A)\nCtx.Check.CtxUnknownParamType(A|Odd)\n");
}

TEST(Creation, ADatabaseOnlyFileIsEmptyOutsideTheEnvironment) {
    const KeyCatalog catalog;

    const Creation creation = CreateFromContexts(
        R"(<Context Name="D" Parameter="p" ParameterType="Database" ConnectorName="ORB1"/>)");

    EXPECT_EQ(creation.message, "Ctx.Collector.CheckError() : Ctx.Check.NoCtxDefined()\n");
}

TEST(Creation, AFriendThatWasDroppedWithItsDatabaseIsUnknown) {
    const KeyCatalog catalog;

    const Creation creation = CreateFromContexts(
        R"(<Context Name="D" Parameter="p" ParameterType="Database" ConnectorName="ORB1"/>
           <Context Name="A" Parameter="p" ParameterType="Path">
           <CtxFriends><Context Name="D"/></CtxFriends></Context>)");

    EXPECT_EQ(creation.message, "Ctx.Collector.SetFriendsAndAssociatedError() : "
                                "Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx(A|D)\n");
}

TEST(Creation, FriendsAndAssociatedContextsAreTheDeclaredOnes) {
    const DbEnvironment environment(true);

    const Creation creation = CreateFromContexts(
        R"(<Context Name="A" Parameter="p" ParameterType="Path">
           <CtxAssociated><Context Name="C"/></CtxAssociated>
           <CtxFriends><Context Name="B"/></CtxFriends></Context>
           <Context Name="B" Parameter="q" ParameterType="Path"/>
           <Context Name="C" Parameter="r" ParameterType="Path"/>)");

    ASSERT_NE(creation.collector, nullptr) << creation.message;
    VELDyadContext* a = nullptr;
    VELDyadContext* b = nullptr;
    VELDyadContext* c = nullptr;
    creation.collector->GetCtxFromName("A", a);
    creation.collector->GetCtxFromName("B", b);
    creation.collector->GetCtxFromName("C", c);
    VELListPtrVELDyadContext friends;
    ASSERT_EQ(a->GetFriends(friends), 1);
    EXPECT_EQ(friends[1], b);
    VELDyadContext* associated = nullptr;
    a->GetAssociatedContext(associated);
    EXPECT_EQ(associated, c);
}

TEST(Creation, AContextOfAFileThatNoCollectorHoldsAnyMoreIsDeletedByItsHolder) {
    const Creation created = CreateFromContexts(
        R"(<Context Name="A" Parameter="/a" ParameterType="Path">
             <CtxFriends><Context Name="B"/></CtxFriends>
           </Context>
           <Context Name="B" Parameter="/b" ParameterType="Path"/>)");
    ASSERT_NE(created.collector, nullptr);
    std::vector<std::unique_ptr<VELDyadContext>> left;
    const VELListPtrVELDyadContext& held = CollectorInternals::Contexts(*created.collector);
    for (int pos = 1; pos <= held.Size(); ++pos)
        left.emplace_back(held[pos]);
    const std::unique_ptr<VELDyadCtxCollector> empty(
        VELDyadCtxCollector::CreateCollectorFromScratch());
    *created.collector = *empty;
    ASSERT_EQ(left.size(), 3U);
    left.erase(left.begin() + 1);
    EXPECT_EQ(Text(left[0]->GetName()), "A");
    EXPECT_EQ(Text(left[1]->GetParameter()), "/b");
}

TEST(Creation, FromADefaultFileIsMarkedAsDefault) {
    const KeyCatalog catalog;
    const TemporaryFolder folder;
    const std::string path = folder.Write("contexts.xml", DocumentWith(ValidContexts));
    VELUnicodeString message;

    const std::unique_ptr<VELDyadCtxCollector> collector(
        CollectorAccess::CreateCollectorFromXMLFile(path.c_str(), 1, message));

    ASSERT_NE(collector, nullptr);
    unsigned char isDefault = 0;
    collector->GetXMLFile(isDefault);
    EXPECT_EQ(isDefault, 1);
}

// ---- Messages and the end of a creation -------------------------------------------------------

TEST(CollectorLogError, AddsALineAndTracesTheWholeText) {
    const KeyCatalog catalog;
    const VELUnicodeString parameters[] = {"a", "%s"};
    VELUnicodeString message("before ");
    const RecordingTrace trace;

    EXPECT_EQ(CollectorInternals::LogError("Some::Method", "Key", message, parameters, 2, 1), 0);
    EXPECT_EQ(CollectorInternals::LogError("Some::Method", "Other", message, nullptr, 0, 0), 0);

    EXPECT_EQ(Text(message), "before Key(a|%s)\nOther()");
    EXPECT_EQ(trace.Lines(), (Lines{"WARNING VELDyadCtxCollector::LogError Method <Some::Method> "
                                    "Error=<before Key(a|%s)\n>",
                                    "WARNING VELDyadCtxCollector::LogError Method <Some::Method> "
                                    "Error=<before Key(a|%s)\nOther()>"}));
}

TEST(CollectorLogError, AddsTheLineFeedWhereTheCatalogHasNoText) {
    KeyCatalog catalog;
    catalog.Forget("Key");
    VELUnicodeString message("before");

    EXPECT_EQ(CollectorInternals::LogError("Some::Method", "Key", message, nullptr, 0, 1), 0);

    EXPECT_EQ(Text(message), "before\n");
}

TEST(CollectorLogError, TakesTheMessageItselfAsParameter) {
    const KeyCatalog catalog;
    VELUnicodeString message("a text too long to live inside the string object");

    EXPECT_EQ(CollectorInternals::LogError("Some::Method", "Key", message, &message, 1, 1), 0);

    EXPECT_EQ(Text(message), "a text too long to live inside the string object"
                             "Key(a text too long to live inside the string object)\n");
}

TEST(DeleteCollectorAtCreate, WithAnEmptyMessageAddsNothing) {
    const KeyCatalog catalog;
    VELDyadCtxCollector* collector = CollectorAccess::New("f", 0);
    VELUnicodeString message;
    const RecordingTrace trace;

    CollectorInternals::DeleteCollectorAtCreate(collector, "Stream", message);

    EXPECT_EQ(collector, nullptr);
    EXPECT_EQ(Text(message), "");
    EXPECT_EQ(trace.Lines(), (Lines{"WARNING VELDyadCtxCollector:DeleteCollectorAtCreate KO with "
                                    "Method <Stream> and Msg=<>",
                                    "LOG VELDyadCtxCollector:Destructor"}));
}

TEST(DeleteCollectorAtCreate, WithoutCollectorPutsTheHeadingAlone) {
    const KeyCatalog catalog;
    VELDyadCtxCollector* collector = nullptr;
    VELUnicodeString message("old");

    CollectorInternals::DeleteCollectorAtCreate(collector, "Stream", message);

    EXPECT_EQ(collector, nullptr);
    EXPECT_EQ(Text(message), "Ctx.Collector.StreamError() : old");
}

// ---- Writing and paths ------------------------------------------------------------------------

TEST(CollectorStream, WritesAFileThatCanBeReadAgain) {
    const Creation creation = CreateFromContexts(ValidContexts);
    ASSERT_NE(creation.collector, nullptr);
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("written.xml");
    VELUnicodeString message("before");

    EXPECT_EQ(creation.collector->Stream(path.c_str(), message), S_OK);

    EXPECT_EQ(Text(message), "before");
    const Creation again = CreateFromFile(path);
    ASSERT_NE(again.collector, nullptr) << again.message;
    EXPECT_EQ(ViewOf(*again.collector), (Lines{"A", "B"}));
}

TEST(CollectorStream, ToAMissingFolderIsRefused) {
    const Creation creation = CreateFromContexts(ValidContexts);
    ASSERT_NE(creation.collector, nullptr);
    const TemporaryFolder folder;
    VELUnicodeString message("before");

    EXPECT_LT(creation.collector->Stream(folder.PathOf("none/written.xml").c_str(), message), 0);
    EXPECT_EQ(Text(message), "before");
}

TEST(CollectorPaths, GiveTheDefaultFileBelowAnInstallationFolder) {
    VELUnicodeString path("something else");

    VELDyadCtxCollector::GetRelativeResourcesPath(path);

    EXPECT_EQ(Text(path), "\\resources\\xml\\DYAD\\CONTEXT\\Default.xml");
}

TEST(CollectorPaths, RecogniseADefaultFileByItsTextAlone) {
    const auto isDefault = [](const char* path) {
        return static_cast<int>(VELDyadCtxCollector::IsADefaultContextXML(path));
    };
    EXPECT_EQ(isDefault("\\resources\\xml\\DYAD\\CONTEXT\\Default.xml"), 1);
    EXPECT_EQ(isDefault("/opt/x\\resources\\xml\\DYAD\\CONTEXT\\Default.xml.bak"), 1);
    EXPECT_EQ(isDefault("/opt/resources/xml/DYAD/CONTEXT/Default.xml"), 0);
    EXPECT_EQ(isDefault("\\resources\\xml\\DYAD\\CONTEXT\\default.xml"), 0);
    EXPECT_EQ(isDefault(""), 0);
}

} // namespace
} // namespace dyadctx::test
