// SPDX-License-Identifier: MIT
#include "collector/DeclaredContexts.h"
#include "collector/detail/CollectorInternals.h"
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

namespace dyadctx::test {
namespace {

using Lines = std::vector<std::string>;

class Validation : public testing::Test {
protected:
    KeyCatalog catalog_;
    DeclaredContexts contexts_;
};

// ---- Which contexts are looked at ---------------------------------------------------------------

TEST_F(Validation, CheckOfNoContextIsRefusedWithoutLeaving) {
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Check(), E_FAIL);

    EXPECT_EQ(contexts_.Message(), "Ctx.Check.NoCtxDefined()\n");
    EXPECT_EQ(trace.Lines(), (Lines{"ENTER VELDyadCtxCollector:Check",
                                    "WARNING VELDyadCtxCollector::LogError Method "
                                    "<VELDyadCtxCollector::Check> "
                                    "Error=<Ctx.Check.NoCtxDefined()\n>"}));
}

TEST_F(Validation, CheckOfValidContextsTracesEachOfThem) {
    contexts_.Declare("A", "one");
    contexts_.Declare("DYADIC", "", "Default");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Check(), S_OK);

    EXPECT_EQ(contexts_.Message(), "");
    EXPECT_EQ(
        trace.Lines(),
        (Lines{"ENTER VELDyadCtxCollector:Check", "ENTER VELDyadCtxCollector:CheckContext <A>",
               "LOG VELDyadCtxCollector:CheckContext <A> of Prov <one> of Type <Path>",
               "LOG VELDyadContext:GetFriends Ctx <A> has 0 Friends",
               "LEAVE VELDyadCtxCollector:CheckContext <A> OK",
               "ENTER VELDyadCtxCollector:CheckContext <DYADIC>",
               "LOG VELDyadCtxCollector:CheckContext <DYADIC> of Prov <> of Type <Default>",
               "LOG VELDyadContext:GetFriends Ctx <DYADIC> has 0 Friends",
               "LEAVE VELDyadCtxCollector:CheckContext <DYADIC> OK",
               "LEAVE VELDyadCtxCollector:Check"}));
}

TEST_F(Validation, CheckStopsAfterTheFirstInvalidContext) {
    contexts_.Declare("A");
    contexts_.Declare("B!");
    contexts_.Declare("C!");

    EXPECT_EQ(contexts_.Check(), E_FAIL);

    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxNameWithInvalidChar()\n");
}

TEST_F(Validation, CheckStopsAtAnEmptyPositionAndLeaves) {
    contexts_.DeclareNull();
    contexts_.Declare("B!");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Check(), E_FAIL);

    EXPECT_EQ(contexts_.Message(), "Ctx.Collector.InternalError()\n");
    EXPECT_EQ(trace.Lines(), (Lines{"ENTER VELDyadCtxCollector:Check",
                                    "WARNING VELDyadCtxCollector::LogError Method "
                                    "<VELDyadCtxCollector::Check> "
                                    "Error=<Ctx.Collector.InternalError()\n>",
                                    "LEAVE VELDyadCtxCollector:Check"}));
}

TEST_F(Validation, CheckUnderAFilterLooksAtAsManyDeclaredContextsAsTheViewHolds) {
    const DbEnvironment environment(true);
    contexts_.Declare("First", "file", "File");
    contexts_.Declare("Second!", "file", "File");
    contexts_.Declare("Third");
    contexts_.Collector().SetCtxTypeList();
    contexts_.Collector().SetContextPathType();

    // The Path view holds the third context alone; the first declared one is looked at.
    EXPECT_EQ(contexts_.Check(), S_OK);
    EXPECT_EQ(contexts_.Message(), "");
}

TEST_F(Validation, CheckOfAViewLargerThanTheDeclaredContextsFindsAnEmptyPosition) {
    const DbEnvironment environment(true);
    contexts_.Declare("A");
    contexts_.Collector().SetCtxTypeList();
    contexts_.Collector().SetCtxTypeList();
    contexts_.Collector().SetContextPathType();

    EXPECT_EQ(contexts_.Check(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), "Ctx.Collector.InternalError()\n");
}

TEST_F(Validation, MessagesAreAddedToWhatTheTextHolds) {
    contexts_.SetMessage("before\n");
    contexts_.Declare("B!");

    EXPECT_EQ(contexts_.Check(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), "before\nCtx.Check.CtxNameWithInvalidChar()\n");
}

// ---- One context ----------------------------------------------------------------------------

TEST_F(Validation, CheckContextRefusesNullAndPositionsOutsideTheViewSilently) {
    VELDyadContext& context = contexts_.Declare("!");
    VELUnicodeString message;
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Collector().CheckContext(nullptr, message, 1), 0);
    EXPECT_EQ(contexts_.Collector().CheckContext(&context, message, -1), 0);
    EXPECT_EQ(contexts_.Collector().CheckContext(&context, message, 2), 0);

    EXPECT_EQ(Text(message), "");
    EXPECT_EQ(trace.Lines(), Lines());
}

TEST_F(Validation, CheckContextTakesPositionNoughtForAContextThatIsNotRegistered) {
    contexts_.Declare("A");
    VELDyadContext loose("B", "somewhere", "Path");

    EXPECT_EQ(contexts_.CheckOne(loose, 0), 1);
    EXPECT_EQ(contexts_.Message(), "");
}

TEST_F(Validation, CheckContextWithPositionNoughtFindsARegisteredContextItself) {
    VELDyadContext& context = contexts_.Declare("A");

    EXPECT_EQ(contexts_.CheckOne(context, 0), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAlreadyDefined(A)\n");
}

TEST_F(Validation, EveryRuleIsAppliedAndTracedWhateverTheOnesBefore) {
    contexts_.Declare("B");
    VELDyadContext& context = contexts_.Declare("", "", "Odd");
    contexts_.Declare("");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.CheckOne(context, 2), 0);

    const std::string first = "Ctx.Check.CtxEmptyName()\n";
    const std::string second = first + "Ctx.Check.CtxEmptyParam()\n";
    const std::string third = second + "Ctx.Check.CtxUnknownParamType(|Odd)\n";
    const std::string fourth = third + "Ctx.Check.CtxAlreadyDefined()\n";
    EXPECT_EQ(contexts_.Message(), fourth);
    const std::string logged =
        "WARNING VELDyadCtxCollector::LogError Method <VELDyadCtxCollector::Check> Error=<";
    EXPECT_EQ(
        trace.Lines(),
        (Lines{"ENTER VELDyadCtxCollector:CheckContext <>",
               "LOG VELDyadCtxCollector:CheckContext <> of Prov <> of Type <Odd>",
               logged + first + ">", "WARNING VELDyadCtxCollector:CheckContext Null context name",
               logged + second + ">", logged + third + ">", logged + fourth + ">",
               "LOG VELDyadContext:GetFriends Ctx <> has 0 Friends",
               "ERROR VELDyadCtxCollector:CheckContext <> KO"}));
}

TEST_F(Validation, ALongNameIsTracedWithItsLengthAfterTheMessage) {
    const std::string name(130, 'n');
    VELDyadContext& context = contexts_.Declare(name);
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.CheckOne(context, 1), 0);

    EXPECT_EQ(trace.LinesWith("WARNING"),
              (Lines{"WARNING VELDyadCtxCollector::LogError Method <VELDyadCtxCollector::Check> "
                     "Error=<Ctx.Check.CtxNameTooLong(" +
                         name + ")\n>",
                     "WARNING VELDyadCtxCollector:CheckContext Context name too lng (130 > 125 "
                     "car)"}));
}

TEST_F(Validation, AForbiddenCharacterIsTracedAfterTheMessage) {
    VELDyadContext& context = contexts_.Declare("a!b");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.CheckOne(context, 1), 0);

    EXPECT_EQ(trace.LinesWith("WARNING"),
              (Lines{"WARNING VELDyadCtxCollector::LogError Method <VELDyadCtxCollector::Check> "
                     "Error=<Ctx.Check.CtxNameWithInvalidChar()\n>",
                     "WARNING VELDyadCtxCollector:CheckContext Name with '!' character"}));
}

std::string Repeated(const std::string& text, int times) {
    std::string repeated;
    for (int i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

struct OwnRuleCase {
    const char* what;
    std::string name;
    std::string parameter;
    std::string type;
    bool environment;
    std::string message;
};

std::ostream& operator<<(std::ostream& out, const OwnRuleCase& tested) {
    return out << tested.what;
}

class ValidationOfOneContext : public testing::TestWithParam<OwnRuleCase> {};

TEST_P(ValidationOfOneContext, SaysWhatIsWrong) {
    const KeyCatalog catalog;
    const OwnRuleCase& tested = GetParam();
    const DbEnvironment environment(tested.environment);
    DeclaredContexts contexts;
    VELDyadContext& context = contexts.Declare(tested.name, tested.parameter, tested.type);

    EXPECT_EQ(contexts.CheckOne(context, 1), tested.message.empty() ? 1 : 0);
    EXPECT_EQ(contexts.Message(), tested.message);
}

const OwnRuleCase OwnRuleCases[] = {
    {"a plain path", "A", "p", "Path", false, ""},
    {"an empty name breaks one rule alone", "", "p", "Path", false, "Ctx.Check.CtxEmptyName()\n"},
    {"125 characters", std::string(125, 'n'), "p", "Path", false, ""},
    {"126 characters", std::string(126, 'n'), "p", "Path", false,
     "Ctx.Check.CtxNameTooLong(" + std::string(126, 'n') + ")\n"},
    {"125 letters of two bytes", Repeated("\xC3\xA9", 125), "p", "Path", false, ""},
    {"126 letters of two bytes", Repeated("\xC3\xA9", 126), "p", "Path", false,
     "Ctx.Check.CtxNameTooLong(" + Repeated("\xC3\xA9", 126) + ")\n"},
    {"a forbidden character alone", "!", "p", "Path", false,
     "Ctx.Check.CtxNameWithInvalidChar()\n"},
    {"a forbidden character at the end", "ab!", "p", "Path", false,
     "Ctx.Check.CtxNameWithInvalidChar()\n"},
    {"several forbidden characters count once", "!!", "p", "Path", false,
     "Ctx.Check.CtxNameWithInvalidChar()\n"},
    {"an empty parameter", "A", "", "Path", false, "Ctx.Check.CtxEmptyParam(A)\n"},
    {"empty name and parameter", "", "", "Path", false,
     "Ctx.Check.CtxEmptyName()\nCtx.Check.CtxEmptyParam()\n"},
    {"the default context", "DYADIC", "", "Default", false, ""},
    {"the default context of another type", "DYADIC", "", "Path", false,
     "Ctx.Check.CtxDefaultInvalidParamType(DYADIC|Path|Default)\n"},
    {"the default context with a parameter", "DYADIC", "x", "Default", false,
     "Ctx.Check.CtxDefaultInvalidParam(DYADIC|x)\n"},
    {"the default context of another type with a parameter", "DYADIC", "x", "Path", false,
     "Ctx.Check.CtxDefaultInvalidParamType(DYADIC|Path|Default)\n"
     "Ctx.Check.CtxDefaultInvalidParam(DYADIC|x)\n"},
    {"the default context of an unknown type", "DYADIC", "", "default", false,
     "Ctx.Check.CtxUnknownParamType(DYADIC|default)\n"
     "Ctx.Check.CtxDefaultInvalidParamType(DYADIC|default|Default)\n"},
    {"another context of the default type", "A", "x", "Default", false,
     "Ctx.Check.CtxDefaultInvalidName(A|Default|DYADIC)\n"},
    {"another context of the default type without parameter", "dyadic", "", "Default", false,
     "Ctx.Check.CtxEmptyParam(dyadic)\n"
     "Ctx.Check.CtxDefaultInvalidName(dyadic|Default|DYADIC)\n"},
    {"a file outside the environment", "A", "x", "File", false,
     "Ctx.Check.CtxUnknownParamType(A|File)\n"},
    {"a file within the environment", "A", "x", "File", true, ""},
    {"a database outside the environment", "A", "x", "Database", false,
     "Ctx.Check.CtxUnknownParamType(A|Database)\n"},
    {"a database within the environment", "A", "x", "Database", true, ""},
    {"an unknown type within the environment", "A", "x", "path", true,
     "Ctx.Check.CtxUnknownParamType(A|path)\n"},
    {"placeholders of formats stay as they are", "%s%n", "", "%d", false,
     "Ctx.Check.CtxEmptyParam(%s%n)\nCtx.Check.CtxUnknownParamType(%s%n|%d)\n"},
};

INSTANTIATE_TEST_SUITE_P(Rules, ValidationOfOneContext, testing::ValuesIn(OwnRuleCases));

TEST_F(Validation, TextsWithPlaceholdersOfFormatsAreTracedAsTheyAre) {
    VELDyadContext& context = contexts_.Declare("%s%n", "%d");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.CheckOne(context, 1), 1);

    EXPECT_EQ(trace.Lines(),
              (Lines{"ENTER VELDyadCtxCollector:CheckContext <%s%n>",
                     "LOG VELDyadCtxCollector:CheckContext <%s%n> of Prov <%d> of Type <Path>",
                     "LOG VELDyadContext:GetFriends Ctx <%s%n> has 0 Friends",
                     "LEAVE VELDyadCtxCollector:CheckContext <%s%n> OK"}));
}

TEST_F(Validation, ATypeWithAZeroByteAfterAKnownOneIsUnknown) {
    const std::string type("Path\0", 5);
    VELDyadContext& context = contexts_.Declare("A", "p", type);

    EXPECT_EQ(contexts_.CheckOne(context, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxUnknownParamType(A|" + type + ")\n");
}

// ---- The default context ----------------------------------------------------------------------

TEST_F(Validation, CheckDefaultContextReportsUnderItsOwnName) {
    VELUnicodeString message("before\n");
    const RecordingTrace trace;

    EXPECT_EQ(CollectorInternals::CheckDefaultContext(contexts_.Collector(), "DYADIC", "x", "Path",
                                                      message),
              0);

    const std::string first = "before\nCtx.Check.CtxDefaultInvalidParamType(DYADIC|Path|Default)\n";
    const std::string second = first + "Ctx.Check.CtxDefaultInvalidParam(DYADIC|x)\n";
    EXPECT_EQ(Text(message), second);
    const std::string logged = "WARNING VELDyadCtxCollector::LogError Method "
                               "<VELDyadCtxCollector::CheckDefaultContext> Error=<";
    EXPECT_EQ(trace.Lines(), (Lines{logged + first + ">", logged + second + ">"}));
}

TEST_F(Validation, CheckDefaultContextAcceptsTheDefaultContextAndAnyOther) {
    VELUnicodeString message;

    EXPECT_EQ(CollectorInternals::CheckDefaultContext(contexts_.Collector(), "DYADIC", "",
                                                      "Default", message),
              1);
    EXPECT_EQ(
        CollectorInternals::CheckDefaultContext(contexts_.Collector(), "A", "", "Odd", message), 1);
    EXPECT_EQ(Text(message), "");
}

TEST_F(Validation, KnownParameterTypesFollowTheEnvironment) {
    const auto isKnown = [&](const char* type) {
        return static_cast<int>(CollectorInternals::IsAValidParamType(contexts_.Collector(), type));
    };
    EXPECT_EQ(isKnown("Path"), 1);
    EXPECT_EQ(isKnown("Default"), 1);
    EXPECT_EQ(isKnown("File"), 0);
    EXPECT_EQ(isKnown("Database"), 0);
    EXPECT_EQ(isKnown(""), 0);

    const DbEnvironment environment(true);
    EXPECT_EQ(isKnown("Path"), 1);
    EXPECT_EQ(isKnown("Default"), 1);
    EXPECT_EQ(isKnown("File"), 1);
    EXPECT_EQ(isKnown("Database"), 1);
    EXPECT_EQ(isKnown("database"), 0);
}

} // namespace
} // namespace dyadctx::test
