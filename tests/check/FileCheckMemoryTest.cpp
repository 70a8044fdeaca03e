// SPDX-License-Identifier: MIT
// The check of a file where memory runs out: no findings at all, all of them, or the one that the
// file cannot be read, which is what a factory says then.
#include "check/VELDyadCtxFileCheck.h"
#include "support/ContextFile.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

// Names are longer than a string object holds by itself.
constexpr const char* Contexts = R"(
<Context Name="The first context of the file" Parameter="somewhere on a disk" ParameterType="Path">
  <CtxFriends><Context Name="The second context of the file"/>
              <Context Name="The third contextt of the file"/></CtxFriends>
  <Scenario><ScenarioID Ident="1"><Option/></ScenarioID></Scenario></Context>
<Context Name="The second context of the file" Parameter="somewhere" ParameterType="Path">
  <CtxFriends><Context Name="The third context of the file"/></CtxFriends></Context>
<Context Name="The third context of the file" Parameterr="somewhere else on a large disk">
  <CtxFriends><Context Name="The first context of the file"/></CtxFriends></Context>
<Context Name="A vault that is left out while the switch is off" Parameter="v"
         ParameterType="Database" ConnectorName="A connector with a long name"/>
<Contextt/>)";

// Without the texts: that of a message is empty where there is no memory for it. A provider that
// has none looks like one that refuses.
std::string Describe(const VELDyadCtxFileCheck& check) {
    std::string text;
    for (int pos = 1; pos <= check.GetNbFindings(); ++pos) {
        const VELDyadCtxFinding& finding = check.GetFindingAt(pos);
        if (finding.id.AsView() == "provider-failed")
            continue;
        text += std::to_string(finding.place.line) + ":" + std::to_string(finding.place.column) +
                " " + Text(finding.id) + "\n";
    }
    return text;
}

bool IsUnreadable(const VELDyadCtxFileCheck& check) {
    const std::string id = check.GetNbFindings() == 1 ? Text(check.GetFindingAt(1).id) : "";
    return id == "Ctx.Collector.XMLFileNotValid" || id == "Ctx.Parse.XMLSyntaxError";
}

int CheckWithFailures(const VELUnicodeString& file, const VELUnicodeString* text,
                      const std::string& expected) {
    return ForEachAllocation([&](int number) {
        VELDyadCtxFileCheck check;
        VELResult result = S_OK;
        bool failed = false;
        {
            const FailingAllocation failing(number);
            result = text != nullptr ? check.Run(file, *text) : check.Run(file);
            failed = failing.HasFailed();
        }
        if (result < 0) {
            EXPECT_EQ(check.GetNbFindings(), 0);
            EXPECT_EQ(check.GetCollector(), nullptr);
        } else if (!IsUnreadable(check)) {
            EXPECT_EQ(Describe(check), expected) << number;
        }
        return failed && !testing::Test::HasFailure();
    });
}

void ExpectNothingHalf() {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file.xml", DocumentWith(Contexts));
    VELDyadCtxFileCheck whole;
    ASSERT_EQ(whole.Run(file.c_str()), S_FALSE);
    const std::string expected = Describe(whole);
    ASSERT_NE(expected.find("nearest-name"), std::string::npos) << expected;
    ASSERT_NE(expected.find("friend-ring"), std::string::npos) << expected;
    EXPECT_GT(CheckWithFailures(file.c_str(), nullptr, expected), 50);
    const VELUnicodeString text(DocumentWith(Contexts));
    EXPECT_GT(CheckWithFailures(file.c_str(), &text, expected), 50);
}

} // namespace

TEST(FileCheckMemory, WithoutTheDbEnvironmentThereIsNothingHalf) {
    ExpectNothingHalf();
}

TEST(FileCheckMemory, WithTheDbEnvironmentThereIsNothingHalf) {
    const DbEnvironment db(true);
    ExpectNothingHalf();
}

} // namespace dyadctx::test
