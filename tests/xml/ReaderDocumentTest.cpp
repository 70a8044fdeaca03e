// The document round the contexts: well-formedness, root, and where the contexts are looked for.
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/TemporaryFolder.h"
#include "xml/ReaderSupport.h"
#include "xml/detail/ContextPlaces.h"
#include "xml/detail/VELDyadCtxXml.h"

#include "collector/detail/CollectorAccess.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Names = std::vector<std::string>;

struct DocumentCase {
    std::string document;
    VELResult result;
    std::string message;
    Names declared;
};

class Document : public testing::TestWithParam<DocumentCase> {};

const std::string A = Path("A");
const std::string SyntaxError = "Ctx.Parse.XMLSyntaxError()\n";
const std::string NoData = "Ctx.Parse.TagNotFound(CtxData)\n";

std::string Root(const std::string& inner) {
    return "<DyAdDescription>" + inner + "</DyAdDescription>";
}

std::string Data(const std::string& inner) {
    return "<CtxData>" + inner + "</CtxData>";
}

DocumentCase Refused(const std::string& document, const std::string& message) {
    return {document, E_FAIL, message, {}};
}

DocumentCase Accepted(const std::string& document, const Names& declared) {
    return {document, S_OK, "", declared};
}

} // namespace

TEST_P(Document, IsReadTheSameInBothEnvironments) {
    for (const bool environment : {false, true}) {
        const DbEnvironment db(environment);
        const KeyCatalog catalog;
        const Reading reading = ReadText(GetParam().document);
        EXPECT_EQ(reading.result, GetParam().result);
        EXPECT_EQ(reading.message, GetParam().message);
        EXPECT_EQ(DeclaredOf(reading), GetParam().declared);
    }
}

INSTANTIATE_TEST_SUITE_P(
    NotWellFormed, Document,
    testing::Values(Refused("", SyntaxError), Refused("text", SyntaxError),
                    Refused("<DyAdDescription>", SyntaxError),
                    Refused(Root(Data(A)) + "<more/>", SyntaxError),
                    Refused(Root(Data("<Context Name='A' Name='B'/>")), SyntaxError),
                    Refused(Root(Data("<Context Name='&unknown;'/>")), SyntaxError),
                    Refused("<?xml version='1.0' encoding='KOI8-R'?>" + Root(Data(A)), SyntaxError),
                    Refused(Root(Data("<Context Name='\xFF'/>")), SyntaxError)));

INSTANTIATE_TEST_SUITE_P(
    Roots, Document,
    testing::Values(Refused("<DyadDescription>" + Data(A) + "</DyadDescription>",
                            "Ctx.Parse.NotAValidTag(DyadDescription)\n"),
                    Refused("<CtxData/>", "Ctx.Parse.NotAValidTag(CtxData)\n"),
                    Refused("<x:DyAdDescription xmlns:x='u'>" + Data(A) + "</x:DyAdDescription>",
                            "Ctx.Parse.NotAValidTag(x:DyAdDescription)\n"),
                    Accepted("<DyAdDescription xmlns='u'>" + Data(A) + "</DyAdDescription>",
                             {"A"})));

INSTANTIATE_TEST_SUITE_P(PlacesOfTheData, Document,
                         testing::Values(Refused(Root(""), NoData),
                                         Refused(Root("<ctxdata>" + A + "</ctxdata>"), NoData),
                                         Refused(Root(Data(A) + Data(A)), NoData),
                                         Refused(Root(Data(A + Data(A))), NoData),
                                         Refused(Root(Data(Path("A", "<CtxData/>"))), NoData),
                                         Refused(Root("<CtxData/>"), NoData),
                                         Refused(Root("<CtxData></CtxData>"), NoData),
                                         Accepted(Root("<CtxData> </CtxData>"), {}),
                                         Accepted(Root("<CtxData><!-- none --></CtxData>"), {}),
                                         Accepted(Root("<CtxData><Other/></CtxData>"), {}),
                                         Accepted(Root("<a><b>" + Data(A) + "</b></a>"), {"A"}),
                                         Accepted(Root(A + Data(Path("B"))), {"B"})));

INSTANTIATE_TEST_SUITE_P(
    EncodingsAndDeclarations, Document,
    testing::Values(
        Accepted("\xEF\xBB\xBF" + Root(Data(A)), {"A"}),
        Accepted("<?xml version='1.0' encoding='ISO-8859-1'?>" + Root(Data(Path("\xE9"))),
                 {"\xC3\xA9"}),
        Accepted("<!DOCTYPE DyAdDescription SYSTEM 'absent.dtd'>" + Root(Data(A)), {"A"}),
        Accepted("<!DOCTYPE DyAdDescription [<!ENTITY n 'A'>]>" + Root(Data(Path("&n;"))), {"A"}),
        Accepted("<!DOCTYPE DyAdDescription [<!ATTLIST Context Parameter CDATA 'p' "
                 "ParameterType CDATA 'Path'>]>" +
                     Root(Data(Named("A"))),
                 {"A"}),
        Accepted("<!DOCTYPE DyAdDescription [<!ELEMENT DyAdDescription EMPTY>]>" + Root(Data(A)),
                 {"A"})));

TEST(ReaderDocument, MissingFileIsASyntaxError) {
    const KeyCatalog catalog;
    const TemporaryFolder folder;
    const Reading reading = ReadFile(folder.PathOf("absent.xml"));
    EXPECT_EQ(reading.result, E_FAIL);
    EXPECT_EQ(reading.message, "Ctx.Parse.XMLSyntaxError()\n");
}

TEST(ReaderDocument, ReaderWithoutCollectorRefuses) {
    VELUnicodeString message("before");
    EXPECT_EQ(VELDyadCtxXml(nullptr).Unstream(message), E_FAIL);
    EXPECT_EQ(Text(message), "before");
}

TEST(ReaderDocument, ContextsReadBeforeAFailureStayInTheCollector) {
    const Reading reading = ReadContexts(A + Path("B") + "<Context/>" + Path("C"));
    EXPECT_EQ(reading.result, E_FAIL);
    EXPECT_EQ(DeclaredOf(reading), (Names{"A", "B"}));
}

TEST(ReaderDocument, WorkedExampleIsReadInItsOrder) {
    const std::string example = R"(
        <Context Name="Design" Parameter="D:\work\design" ParameterType="Path">
          <CtxFriends>
            <Context Name="Library" Parameter="D:\work\lib" ParameterType="Path"/>
          </CtxFriends>
          <Scenario>
            <ScenarioID Ident="EX1" name="Export"><Option name="Format" value="STEP"/></ScenarioID>
          </Scenario>
        </Context>
        <Context Name="Vault" Parameter="Main" ParameterType="Database" ConnectorName="ORB1"
                 ServerName="srv1" Role="Main"/>
        <Context Name="Default" Parameter="" ParameterType="Default"/>)";
    for (const bool environment : {false, true}) {
        const DbEnvironment db(environment);
        const Reading reading = ReadContexts(example);
        EXPECT_EQ(reading.result, S_OK);
        EXPECT_EQ(AllOf(reading), environment ? (Names{"Design", "Library", "Vault", "Default"})
                                              : (Names{"Design", "Library", "Default"}));
        EXPECT_EQ(DeclaredOf(reading), environment ? (Names{"Design", "Vault", "Default"})
                                                   : (Names{"Design", "Default"}));
        EXPECT_EQ(FriendsAt(reading, 1), Names{"Library"});
        EXPECT_EQ(RowsOf(reading), Names{"Design|Design|Export|EX1|Format|STEP"});
    }
}

namespace {

ContextPlaces PlacesIn(const std::string& document,
                       std::unique_ptr<VELDyadCtxCollector>& collector) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("contexts.xml", document);
    collector.reset(CollectorAccess::New(VELUnicodeString(file.c_str()), 0));
    ContextPlaces places;
    VELUnicodeString message;
    VELDyadCtxXml(collector.get(), &places).Unstream(message);
    return places;
}

std::string Where(const Place& place) {
    return std::to_string(place.line) + ":" + std::to_string(place.column);
}

} // namespace

TEST(ReaderPlaces, EveryEnteredContextHasThePlaceOfItsElement) {
    std::unique_ptr<VELDyadCtxCollector> collector;
    const DbEnvironment db(true);
    const ContextPlaces places = PlacesIn(
        "<DyAdDescription><CtxData>\n  " + A + "\n" + Path("B", Friends("\n   " + Named("A"))) +
            "\n" + Database("V", "KRL", "s", "r") + "\n " + Database("V", "KRL", "t", "r") +
            "</CtxData></DyAdDescription>",
        collector);
    const VELListPtrVELDyadContext& all = CollectorAccess::Contexts(*collector);
    ASSERT_EQ(NamesOf(all), (Names{"A", "B", "A", "V"}));
    EXPECT_EQ(places.contexts.size(), 4U);
    EXPECT_EQ(Where(places.contexts.at(all[1])), "2:3");
    EXPECT_EQ(Where(places.contexts.at(all[2])), "3:1");
    EXPECT_EQ(Where(places.contexts.at(all[3])), "4:4");
    EXPECT_EQ(Where(places.contexts.at(all[4])), "5:1");
    EXPECT_EQ(Where(places.fault), "0:0");
    EXPECT_EQ(places.syntaxError, "");
}

TEST(ReaderPlaces, FaultIsTheElementAtWhichReadingEnded) {
    std::unique_ptr<VELDyadCtxCollector> collector;
    const std::string begin = "<DyAdDescription><CtxData>\n" + A + "\n";
    const std::string end = "</CtxData></DyAdDescription>";
    EXPECT_EQ(Where(PlacesIn(begin + " <Context/>" + end, collector).fault), "3:2");
    EXPECT_EQ(Where(PlacesIn(begin + "  <CtxFriends/>" + end, collector).fault), "3:3");
    const std::string unnamed = Path("B", ScenarioId("I", "p", "<Option/>"));
    EXPECT_EQ(Where(PlacesIn(begin + unnamed + end, collector).fault), "3:1");
    const std::string nested = Path("B", "\n <CtxFriends>\n  <Context/></CtxFriends>");
    EXPECT_EQ(Where(PlacesIn(begin + nested + end, collector).fault), "5:3");
    EXPECT_EQ(Where(PlacesIn("<!-- -->\n<other/>", collector).fault), "2:1");
}

TEST(ReaderPlaces, SyntaxErrorHasAPlaceAndAReason) {
    std::unique_ptr<VELDyadCtxCollector> collector;
    const ContextPlaces places = PlacesIn("<DyAdDescription>\n  </CtxData>", collector);
    EXPECT_EQ(places.fault.line, 2);
    EXPECT_GT(places.fault.column, 0);
    EXPECT_NE(places.syntaxError, "");
}

} // namespace dyadctx::test
