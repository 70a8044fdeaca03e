// SPDX-License-Identifier: MIT
// What the reader makes of services that fail: the XML tree and database providers.
#include "support/ContextFile.h"
#include "support/DomFaults.h"
#include "support/FaultyProviders.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"
#include "xml/ReaderSupport.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Names = std::vector<std::string>;

const std::string InternalError = "Ctx.Collector.InternalError()\n";
const std::string NoData = "Ctx.Parse.TagNotFound(CtxData)\n";

struct DomCase {
    DomCall call;
    int number;
    DomFault fault;
    std::string contexts;
    VELResult result;
    std::string message;
    // A line that must be in the trace.
    std::string line;
};

class DomFailure : public testing::TestWithParam<DomCase> {};

const std::string A = Path("A");
const std::string AWithFriend = Path("A", Friends(Named("B")));
// The scanner of plain documents leaves it to the parser.
const std::string AWithLetters = A + "<\xC3\xA9l\xC3\xA9ment/>";
const std::string AWithScenario = Path("A", Scenario(ScenarioId("I", "p")));

} // namespace

TEST_P(DomFailure, IsReported) {
    const KeyCatalog catalog;
    const RecordingTrace trace;
    const DomFaultScope fault(GetParam().call, GetParam().number, GetParam().fault);

    const Reading reading = ReadContexts(GetParam().contexts);

    ASSERT_TRUE(DomFaultScope::HasStruck());
    EXPECT_EQ(reading.result, GetParam().result);
    EXPECT_EQ(reading.message, GetParam().message);
    EXPECT_NE(trace.LinesWith(GetParam().line), Names()) << GetParam().line;
}

INSTANTIATE_TEST_SUITE_P(
    OfTheDocument, DomFailure,
    testing::Values(DomCase{DomCall::CreateBuilder, 1, DomFault::Fail, A, E_FAIL, "",
                            "VELDyadCtxXml:Unstream"},
                    DomCase{DomCall::CreateBuilder, 1, DomFault::NullHandle, A, E_FAIL, "",
                            "VELDyadCtxXml:Unstream"},
                    DomCase{DomCall::GetDocumentElement, 1, DomFault::Fail, A, E_FAIL, "",
                            "VELDyadCtxXml:Unstream"},
                    DomCase{DomCall::GetDocumentElement, 1, DomFault::NullHandle, A, E_FAIL, "",
                            "VELDyadCtxXml:Unstream"},
                    DomCase{DomCall::GetTagName, 1, DomFault::Fail, A, E_FAIL,
                            "Ctx.Parse.NotAValidTag()\n", "Method <VELDyadCtxXml::Unstream>"},
                    DomCase{DomCall::ParserMemory, 1, DomFault::Fail, AWithLetters, E_FAIL,
                            "Ctx.Parse.XMLSyntaxError()\n", "Method <VELDyadCtxXml::Unstream>"}));

INSTANTIATE_TEST_SUITE_P(
    OfTheLookup, DomFailure,
    testing::Values(
        DomCase{DomCall::GetElementsByTagName, 1, DomFault::Fail, A, E_FAIL, InternalError + NoData,
                "WARNING VELDyadCtxXml:GetNodeListByTagName - ispRootElement fails"},
        DomCase{DomCall::Item, 1, DomFault::Fail, A, E_FAIL, NoData,
                "WARNING VELDyadCtxXml:GetNodeListByTagName - Item fails"},
        DomCase{DomCall::Item, 1, DomFault::NullHandle, A, E_FAIL, NoData,
                "WARNING VELDyadCtxXml:GetNodeListByTagName - spNodeElements issue"},
        DomCase{DomCall::GetChildNodes, 1, DomFault::Fail, A, E_FAIL, InternalError + NoData,
                "WARNING VELDyadCtxXml:GetNodeListByTagName - GetChildNodes Internal error"},
        // Nothing found below a context is no failure, so only the message shows it.
        DomCase{DomCall::GetChildNodes, 2, DomFault::Fail, A, S_OK, InternalError,
                "WARNING VELDyadCtxXml:GetNodeListByTagName - GetChildNodes Internal error"},
        DomCase{DomCall::Item, 3, DomFault::Fail, AWithFriend, E_FAIL, InternalError,
                "WARNING VELDyadCtxXml:GetNodeListByTagName - Failed(hr)"},
        DomCase{DomCall::Item, 3, DomFault::NullHandle, AWithFriend, E_FAIL, InternalError,
                "ERROR VELDyadCtxXml:ParseXMLNodes <CtxFriends>"}));

INSTANTIATE_TEST_SUITE_P(
    OfTheWalk, DomFailure,
    testing::Values(
        DomCase{DomCall::Item, 2, DomFault::Fail, A, E_FAIL, InternalError,
                "ERROR VELDyadCtxXml:ParseXMLNodes <CtxData>"},
        DomCase{DomCall::Item, 2, DomFault::NullHandle, A, E_FAIL, InternalError,
                "ERROR VELDyadCtxXml:ParseXMLNodes <CtxData>"},
        DomCase{DomCall::GetChildNodes, 3, DomFault::Fail, A, E_FAIL, InternalError,
                "ERROR VELDyadCtxXml:ParseXMLNodes : scenario parsing problem, node index=0"},
        DomCase{DomCall::Item, 4, DomFault::Fail, AWithScenario, E_FAIL, InternalError,
                "Method <VELDyadCtxXml::ParseXMLExchangeScenarioNodes>"},
        DomCase{DomCall::Item, 4, DomFault::NullHandle, AWithScenario, E_FAIL, InternalError,
                "Method <VELDyadCtxXml::ParseXMLExchangeScenarioNodes>"},
        DomCase{DomCall::GetChildNodes, 4, DomFault::Fail, AWithScenario, E_FAIL, InternalError,
                "ERROR VELDyadCtxXml:ParseXMLExchangeScenarioNodes : scenario parsing problem, "
                "node index=0"}));

TEST(ReaderFaults, EveryCallOfTheTreeMayFailWithoutHarm) {
    const DbEnvironment db(true);
    const std::string contexts =
        Path("A",
             Associated(Named("B")) + Friends(Named("C", ScenarioId("I", "p", Option("x", "1"))))) +
        Database("V", "KRL", "s", "r");
    for (const DomCall call :
         {DomCall::CreateBuilder, DomCall::GetDocumentElement, DomCall::GetElementsByTagName,
          DomCall::GetChildNodes, DomCall::Item, DomCall::GetTagName, DomCall::ParserMemory}) {
        for (const DomFault fault : {DomFault::Fail, DomFault::NullHandle}) {
            bool hasStruck = true;
            for (int number = 1; hasStruck; ++number) {
                ASSERT_LT(number, 10000);
                const DomFaultScope scope(call, number, fault);
                const Reading reading = ReadContexts(contexts);
                hasStruck = DomFaultScope::HasStruck();
                EXPECT_TRUE(reading.result == S_OK || reading.result == E_FAIL);
                EXPECT_TRUE(hasStruck || reading.result == S_OK);
            }
        }
    }
}

// ---- Providers
// -----------------------------------------------------------------------------------

namespace {

const std::string V = Database("V", "KRL", "s", "r");

struct ProviderCase {
    ProviderCall call;
    Fault fault;
};

class ProviderFailure : public testing::TestWithParam<ProviderCase> {};

constexpr VELResult OtherFailure = -7;

} // namespace

TEST_P(ProviderFailure, DropsTheContextAndEndsReadingWithoutMessage) {
    const DbEnvironment db(true);
    const KeyCatalog catalog;
    FaultyProviders providers;
    providers.FailAt(GetParam().call, 1, GetParam().fault);
    {
        const Reading reading = ReadContexts(A + V);
        EXPECT_EQ(reading.result, E_FAIL);
        EXPECT_EQ(reading.message, "");
        EXPECT_EQ(AllOf(reading), Names{"A"});
    }
    EXPECT_EQ(providers.Alive(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryCall, ProviderFailure,
    testing::Values(ProviderCase{ProviderCall::Create, {E_FAIL, false, false}},
                    ProviderCase{ProviderCall::Create, {OtherFailure, false, false}},
                    ProviderCase{ProviderCall::Create, {S_OK, false, false}},
                    ProviderCase{ProviderCall::Create, {E_FAIL, false, true}},
                    ProviderCase{ProviderCall::SetConnectorName, {OtherFailure, false, false}},
                    ProviderCase{ProviderCall::SetConnectorName, {E_FAIL, false, true}},
                    ProviderCase{ProviderCall::SetServerDetails, {OtherFailure, false, false}},
                    ProviderCase{ProviderCall::SetServerDetails, {E_FAIL, false, true}},
                    ProviderCase{ProviderCall::CreateFrom, {OtherFailure, false, false}},
                    ProviderCase{ProviderCall::CreateFrom, {E_FAIL, false, true}}));

TEST(ReaderProviders, AreMadeNamedAndGivenAllDetailsInOrder) {
    const DbEnvironment db(true);
    FaultyProviders providers;
    const Reading reading = ReadContexts(V);
    ASSERT_EQ(reading.result, S_OK);
    EXPECT_EQ(providers.TakeCalls(), (Names{"Create -> #1", "#1 SetConnectorName KRL",
                                            "#1 SetServerDetails 6/6", "CreateFrom #1 -> #2"}));
}

TEST(ReaderProviders, SuccessOtherThanOkIsSuccess) {
    const DbEnvironment db(true);
    for (const ProviderCall call : {ProviderCall::Create, ProviderCall::SetConnectorName,
                                    ProviderCall::SetServerDetails, ProviderCall::CreateFrom}) {
        FaultyProviders providers;
        providers.FailAt(call, 1, {S_FALSE, true, false});
        const Reading reading = ReadContexts(V);
        EXPECT_EQ(reading.result, S_OK);
        EXPECT_EQ(DeclaredOf(reading), Names{"V"});
    }
}

TEST(ReaderProviders, AreNotAskedForWithoutEnvironmentOrForOtherTypes) {
    FaultyProviders providers;
    EXPECT_EQ(ReadContexts(A + V).result, S_OK);
    const DbEnvironment db(true);
    EXPECT_EQ(ReadContexts("<Context Name='A' Parameter='p' ParameterType='Path' "
                           "ConnectorName='KRL'/><Context Name='B' Parameter='p' "
                           "ParameterType='database' ConnectorName='KRL'/>")
                  .result,
              S_OK);
    EXPECT_EQ(providers.TakeCalls(), Names());
}

TEST(ReaderProviders, HoldTheDetailsOfTheirElement) {
    const DbEnvironment db(true);
    const Reading reading = ReadContexts(
        "<Context Name='V' Parameter='p' ParameterType='Database' ConnectorName='TN5' SiteId='6' "
        "URI='5' ServerPort='4' ServerName='3' Role='2' http='1'/>" +
        Database("W", "ORB1", "s", ""));
    ASSERT_EQ(reading.result, S_OK);
    VELIDyadDbProvider_var provider;
    DeclaredAt(reading, 1).GetDyadDbProvider(provider);
    EXPECT_EQ(ProviderOf(provider), (Names{"TN5", "http=1", "Role=2", "ServerName=3",
                                           "ServerPort=4", "URI=5", "SiteId=6"}));
    DeclaredAt(reading, 2).GetDyadDbProvider(provider);
    EXPECT_EQ(ProviderOf(provider),
              (Names{"ORB1", "http=", "Role=", "ServerName=s", "ServerPort=", "URI=", "SiteId="}));
}

TEST(ReaderProviders, LaterDatabaseOfADeclaredNameIsNotEntered) {
    const DbEnvironment db(true);
    const std::string later = Database("V", "TN5", "t", "q");
    EXPECT_EQ(AllOf(ReadContexts(V + later)), Names{"V"});
    EXPECT_EQ(AllOf(ReadContexts(Path("V") + later)), Names{"V"});
    EXPECT_EQ(AllOf(ReadContexts(V + Path("V"))), (Names{"V", "V"}));
    EXPECT_EQ(AllOf(ReadContexts(V + Database("v", "TN5", "t", "q"))), (Names{"V", "v"}));
}

} // namespace dyadctx::test
