// SPDX-License-Identifier: MIT
// The document round the contexts: well-formedness, root, and where the contexts are looked for.
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/TemporaryFolder.h"
#include "xml/ReaderSupport.h"
#include "xml/detail/ReadObserver.h"
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

// Notes where each context and the syntax error are.
class PlaceObserver final : public ReadObserver {
public:
    Names contexts;
    std::string syntaxError;

private:
    static std::string Where(int line, int column) {
        return std::to_string(line) + ":" + std::to_string(column);
    }
    void OnSyntaxError(const VELPlace& place, const char* reason) override {
        syntaxError = Where(place.line, place.column) + " " + reason;
    }
    void OnContext(const VELDyadContext& context, const VELIDOMElement& element,
                   unsigned int) override {
        contexts.push_back(Where(element.GetLine(), element.GetColumn()) + " " +
                           Text(context.GetName()));
    }
    void OnDocument(const VELIDOMElement&) override {}
    void OnFault(const Fault&, const VELIDOMNode&) override {}
    void OnTooManyContexts() override {}
    void OnLeftOut(const VELDyadContext&, const VELIDOMElement&, bool) override {}
    void OnRepeated(const VELDyadContext&, const VELIDOMElement&) override {}
};

PlaceObserver PlacesIn(const std::string& document) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("contexts.xml", document);
    const std::unique_ptr<VELDyadCtxCollector> collector(
        CollectorAccess::New(VELUnicodeString(file.c_str()), 0));
    PlaceObserver places;
    VELUnicodeString message;
    VELDyadCtxXml(collector.get(), &places).Unstream(message);
    return places;
}

} // namespace

TEST(ReaderPlaces, EveryEnteredContextHasThePlaceOfItsElement) {
    const DbEnvironment db(true);
    const PlaceObserver places =
        PlacesIn("<DyAdDescription><CtxData>\n  " + A + "\n" +
                 Path("B", Friends("\n   " + Named("A"))) + "\n" + Database("V", "KRL", "s", "r") +
                 "\n " + Database("V", "KRL", "t", "r") + "</CtxData></DyAdDescription>");
    EXPECT_EQ(places.contexts, (Names{"2:3 A", "3:1 B", "4:4 A", "5:1 V"}));
    EXPECT_EQ(places.syntaxError, "");
}

TEST(ReaderPlaces, ASyntaxErrorHasAPlaceAndAReason) {
    const PlaceObserver places = PlacesIn("<DyAdDescription>\n  </CtxData>");
    EXPECT_EQ(places.syntaxError.substr(0, 2), "2:");
    EXPECT_GT(places.syntaxError.size(), 10U);
}

} // namespace dyadctx::test
