// SPDX-License-Identifier: MIT
// Creation where memory runs out: null or a whole collector, and nothing lost.
#include "support/ContextFile.h"
#include "support/EnvironmentVariable.h"
#include "support/FailingAllocation.h"
#include "support/RecordingTrace.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace dyadctx::test {
namespace {

// Names and texts are longer than a string object holds by itself.
constexpr const char* WholeContexts = R"(
    <Context Name="The design of the whole product" Parameter="somewhere on a large disk"
             ParameterType="Path">
      <CtxAssociated><Context Name="The vault of the whole product"/></CtxAssociated>
      <CtxFriends><Context Name="The library of standard parts"/></CtxFriends>
      <Scenario><ScenarioID Ident="A scenario with a long name" name="A profile with a long name">
        <Option name="An option with a long name" value="A value of some length"/>
      </ScenarioID></Scenario></Context>
    <Context Name="The library of standard parts" Parameter="elsewhere on a large disk"
             ParameterType="Path"/>
    <Context Name="The vault of the whole product" Parameter="the database of the product"
             ParameterType="Database" ConnectorName="A connector with a long name"
             ServerName="A server with a long name" Role="A role with a long name"/>
    <Context Name="A second vault of the product" Parameter="the second database"
             ParameterType="Database" ConnectorName="A connector with a long name"
             ServerName="Another server with a long name" Role="A role with a long name"/>
    <Context Name="A single file of the product" Parameter="a file on a large disk"
             ParameterType="File"/>
    <Context Name="DYADIC" Parameter="" ParameterType="Default"/>)";

void DescribeContexts(VELDyadCtxCollector& collector, std::string& text) {
    for (int pos = 1; pos <= collector.GetNbCtxs(); ++pos) {
        VELDyadContext* context = nullptr;
        collector.GetCtxAtIndex(pos, context);
        VELDyadContext* associated = nullptr;
        context->GetAssociatedContext(associated);
        VELIDyadDbProvider_var provider;
        context->GetDyadDbProvider(provider);
        VELUnicodeString type;
        if (!provider.IsNull())
            provider->GetName(type);
        text += Text(context->GetName()) + "|" + Text(context->GetParameter()) + "|" +
                Text(context->GetParameterType()) + "|" + Text(type) + "|" +
                (associated != nullptr ? Text(associated->GetName()) : "") + "|";
        for (const std::string& name : FriendsOf(*context))
            text += name + "|";
        text += "\n";
    }
}

// All that a client can ask of the collector.
std::string Describe(VELDyadCtxCollector& collector) {
    std::string text;
    DescribeContexts(collector, text);
    collector.SetContextPathType();
    for (const std::string& name : ViewOf(collector))
        text += "path " + name + "\n";
    collector.SetContextFileType();
    for (const std::string& name : ViewOf(collector))
        text += "file " + name + "\n";
    collector.SetContextDatabaseType(VELListValVELUnicodeString());
    for (const std::string& name : ViewOf(collector))
        text += "database " + name + "\n";
    VELListValVELUnicodeString names;
    VELListValVELUnicodeString values;
    collector.GetOptionsfromExchangeProfile("The design of the whole product",
                                            "A profile with a long name", names, values);
    for (int pos = 1; pos <= names.Size(); ++pos)
        text += "option " + Text(names[pos]) + "=" + Text(values[pos]) + "\n";
    return text;
}

// Whether an allocation of the call could fail.
template<class Call>
bool WithFailure(int number, const Call& call) {
    const FailingAllocation failing(number);
    call();
    return failing.HasFailed();
}

// Creates the collector with one allocation after the other failing.
int CreateWithFailures(const std::string& expected) {
    return ForEachAllocation([&](int number) {
        VELUnicodeString message;
        std::unique_ptr<VELDyadCtxCollector> collector;
        const bool failed = WithFailure(number, [&] {
            collector.reset(VELDyadCtxCollector::CreateExchangeChannelCollector(message));
        });
        if (collector != nullptr)
            EXPECT_EQ(Describe(*collector), expected) << "allocation " << number;
        else
            EXPECT_TRUE(failed) << "allocation " << number << ": " << Text(message);
        return failed && !testing::Test::HasFailure();
    });
}

TEST(CreationWithoutMemory, ReturnsNullOrTheWholeCollector) {
    const DbEnvironment environment(true);
    const TemporaryFolder folder;
    const EnvironmentVariable variable("ExchangeChannel",
                                       folder.Write("a.xml", DocumentWith(WholeContexts)));
    VELUnicodeString message;
    const std::unique_ptr<VELDyadCtxCollector> whole(
        VELDyadCtxCollector::CreateExchangeChannelCollector(message));
    ASSERT_NE(whole, nullptr) << Text(message);
    const std::string expected = Describe(*whole);
    ASSERT_NE(expected.find("option An option with a long name=A value of some length"),
              std::string::npos);

    EXPECT_GT(CreateWithFailures(expected), 50);
}

TEST(CreationWithoutMemory, ReturnsNullForAFileThatIsRefused) {
    const TemporaryFolder folder;
    const EnvironmentVariable variable(
        "ExchangeChannel",
        folder.Write("a.xml", DocumentWith(R"(<Context Name="A name with a ! and some length"
            Parameter="" ParameterType="A type that nobody knows"/>)")));

    const int failures = ForEachAllocation([](int number) {
        VELUnicodeString message("a text that was there before");
        const bool failed = WithFailure(number, [&] {
            EXPECT_EQ(VELDyadCtxCollector::CreateExchangeChannelCollector(message), nullptr);
        });
        EXPECT_NE(Text(message).find("a text that was there before"), std::string::npos);
        return failed;
    });

    EXPECT_GT(failures, 20);
}

TEST(CheckContextWithoutMemory, ReturnsNo) {
    const Creation creation =
        CreateFromContexts(R"(<Context Name="A" Parameter="p" ParameterType="Path"/>)");
    ASSERT_NE(creation.collector, nullptr);
    VELDyadContext faulty("A name with a ! and some length", "", "A type that nobody knows");

    const int failures = ForEachAllocation([&](int number) {
        VELUnicodeString message;
        return WithFailure(
            number, [&] { EXPECT_EQ(creation.collector->CheckContext(&faulty, message, 0), 0); });
    });

    EXPECT_GT(failures, 3);
}

TEST(FindMatchingCtxWithoutMemory, FindsTheContextAllTheSame) {
    const std::unique_ptr<VELDyadCtxCollector> collector(
        VELDyadCtxCollector::CreateCollectorFromScratch());
    for (int i = 0; i < 40; ++i)
        collector->AddContext(new VELDyadContext("A", "p", "Path"), nullptr, 0);
    VELDyadContext* first = nullptr;
    collector->GetCtxAtIndex(1, first);
    VELDyadContext* second = nullptr;
    collector->GetCtxAtIndex(2, second);

    const int failures = ForEachAllocation([&](int number) {
        VELDyadContext* match = nullptr;
        // An assignment puts remembered names out of use, so that they are gathered again.
        *first = VELDyadContext("A", "p", "Path");
        return WithFailure(number, [&] {
            EXPECT_EQ(collector->FindMatchingCtx(1, first, &match), 1);
            EXPECT_EQ(match, second);
        });
    });

    EXPECT_GT(failures, 0);
}

} // namespace
} // namespace dyadctx::test
