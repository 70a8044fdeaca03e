// SPDX-License-Identifier: MIT
// `show`: one context and who names it.
#include "tool/ToolTest.h"

namespace dyadctx::test {

namespace {

constexpr const char* Contexts = R"(
    <Context Name="Design" Parameter="/d" ParameterType="Path">
      <CtxFriends><Context Name="Library"/></CtxFriends></Context>
    <Context Name="Review" Parameter="/r" ParameterType="Path">
      <CtxAssociated><Context Name="Vault"/></CtxAssociated>
      <CtxFriends><Context Name="Library"/></CtxFriends></Context>
    <Context Name="Library" Parameter="/l" ParameterType="Path"/>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="north" Role="main"/>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="south" Role="copy"/>)";

class Show : public ToolTest {
protected:
    void SetUp() override { WriteContexts("site.xml", Contexts); }
};

} // namespace

TEST_F(Show, ShowsWhichContextsNameIt) {
    Expect({"friend",
            {"show", "Library", "site.xml", "--db-context"},
            0,
            "Name            Library\n"
            "Position        3\n"
            "Type            Path\n"
            "Parameter       /l\n"
            "Friend of       Design, Review\n",
            {},
            {}});
}

TEST_F(Show, ShowsTheSitesOfADatabase) {
    Expect({"sites",
            {"show", "Vault", "site.xml", "--db-context"},
            0,
            "Name            Vault\n"
            "Position        4\n"
            "Type            Database\n"
            "Parameter       v\n"
            "Provider        KRL (Role=main, ServerName=north)\n"
            "Site            north:main: KRL (Role=main, ServerName=north)\n"
            "Site            south:copy: KRL (Role=copy, ServerName=south)\n"
            "Associated of   Review\n",
            {},
            {{"TE_MULTISITE_DBCONTEXT", ""}}});
}

TEST_F(Show, JsonHasTheContextAndItsCallers) {
    const Json document = RunForJson({"show", "Vault", "site.xml", "--db-context"}, 0,
                                     {{"TE_MULTISITE_DBCONTEXT", ""}});
    EXPECT_EQ(document.begin().key(), "schema");
    EXPECT_EQ(document["schema"], "dyadctx/show/1");
    EXPECT_EQ(document["file"], "site.xml");
    EXPECT_EQ(document["context"]["name"], "Vault");
    EXPECT_EQ(document["context"]["sites"], Json({"north:main", "south:copy"}));
    EXPECT_EQ(document["siteProviders"][1]["site"], "south:copy");
    EXPECT_EQ(document["siteProviders"][1]["provider"]["serverDetails"]["ServerName"], "south");
    EXPECT_EQ(document["friendOf"], Json::array());
    EXPECT_EQ(document["associatedOf"], Json({"Review"}));
}

TEST_F(Show, AnUnknownNameIsRefusedWithTheNearestOne) {
    ExpectEach({
        {"near",
         {"show", "Libary", "site.xml", "--db-context"},
         5,
         "",
         {"there is no context 'Libary' in site.xml; did you mean 'Library'?"},
         {}},
        {"other case",
         {"show", "library", "site.xml", "--db-context"},
         5,
         "",
         {"did you mean 'Library'?"},
         {}},
        {"far",
         {"show", "Xyz", "site.xml", "--db-context", "--format", "json"},
         5,
         "",
         {"there is no context 'Xyz' in site.xml\n"},
         {}},
        {"dropped database",
         {"show", "Vault", "site.xml"},
         5,
         "",
         {"database contexts are left out without --db-context"},
         {}},
    });
}

TEST_F(Show, AFieldIsPrintedAlone) {
    const auto field = [this](const std::string& context, const std::string& name) {
        return Run({"show", context, "site.xml", "--db-context", "--field", name});
    };
    EXPECT_EQ(field("Vault", "provider.server").standardOutput, "north\n");
    EXPECT_EQ(field("Vault", "provider.ServerName").standardOutput, "north\n");
    EXPECT_EQ(field("Vault", "provider.role").standardOutput, "main\n");
    EXPECT_EQ(field("Vault", "provider.name").standardOutput, "KRL\n");
    EXPECT_EQ(field("Vault", "parameterType").standardOutput, "Database\n");
    EXPECT_EQ(field("Library", "friendOf").standardOutput, "Design\nReview\n");
    EXPECT_EQ(field("Library", "friends").standardOutput, "");
    EXPECT_EQ(field("Review", "associated").standardOutput, "Vault\n");
    EXPECT_EQ(field("Review", "position").standardOutput, "2\n");
}

TEST_F(Show, AFieldIsPrintedAsItIs) {
    WriteContexts("odd.xml", "<Context Name='A' Parameter='a&#9;\xC2\x9B&quot;' "
                             "ParameterType='Path'/>");
    EXPECT_EQ(Run({"show", "A", "odd.xml", "--field", "parameter"}).standardOutput,
              "a\t\xC2\x9B\"\n");
}

TEST_F(Show, AFieldThatIsNotThereIsRefused) {
    ExpectEach({
        {"not of this context",
         {"show", "Design", "site.xml", "--field", "provider.server"},
         5,
         "",
         {"the context 'Design' has no provider.server"},
         {}},
        {"no such field",
         {"show", "Design", "site.xml", "--field", "parametr"},
         2,
         "",
         {"there is no field 'parametr'; did you mean 'parameter'?"},
         {}},
        {"no such detail",
         {"show", "Vault", "site.xml", "--db-context", "--field", "provider.servr"},
         2,
         "",
         {"there is no field 'provider.servr'; did you mean 'provider.server'?"},
         {}},
        {"in a document",
         {"show", "Design", "site.xml", "--field", "name", "--format", "json"},
         2,
         "",
         {"--field"},
         {}},
    });
}

} // namespace dyadctx::test
