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

TEST_F(Show, TellsWhoNamesTheContext) {
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

TEST_F(Show, TellsTheSitesOfADatabase) {
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

} // namespace dyadctx::test
