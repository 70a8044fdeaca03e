// SPDX-License-Identifier: MIT
// What the writer writes.
#include "collector/detail/CollectorInternals.h"
#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"
#include "xml/ReaderSupport.h"
#include "xml/WriterSupport.h"
#include "xml/detail/VELDyadCtxXml.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

// Three contexts that know one another, one of them a database.
CollectorPtr LinkedCollector() {
    CollectorPtr collector = EmptyCollector();
    VELDyadContext& a = Declare(*collector, "A", "/a", "Path");
    VELDyadContext& v = Declare(*collector, "V", "main", "Database");
    VELDyadContext& d = Declare(*collector, "DYADIC", "", "Default");
    a.AddFriend(&v);
    a.AddFriend(&d);
    a.AddAssociatedContext(&v);
    v.SetDyadDbProvider(ProviderWith("KRL", {"ServerName", "", "Role"}, {"srv", "x", ""}));
    return collector;
}

} // namespace

TEST(Writer, EmptyCollectorIsAnEmptyData) {
    const CollectorPtr collector = EmptyCollector();
    const Writing writing = Write(*collector);
    EXPECT_EQ(writing.result, S_OK);
    EXPECT_EQ(writing.text, WrittenDocument({}));
}

TEST(Writer, AViewIsTheSameTextAsInAFile) {
    const DbEnvironment db(true);
    const CollectorPtr collector = LinkedCollector();
    collector->SetCtxTypeList();
    for (const auto view :
         {&VELDyadCtxCollector::SetContextAllType, &VELDyadCtxCollector::SetContextPathType,
          &VELDyadCtxCollector::SetContextFileType}) {
        (collector.get()->*view)();
        VELUnicodeString text("before");
        EXPECT_EQ(collector->StreamText(text), S_OK);
        EXPECT_EQ(Text(text), Write(*collector).text);
    }
}

TEST(Writer, AViewThatCannotBeWrittenLeavesTheTextAsItWas) {
    const CollectorPtr collector = EmptyCollector();
    Declare(*collector, "A\x01", "/a", "Path");
    VELUnicodeString text("before");
    EXPECT_EQ(collector->StreamText(text), E_FAIL);
    EXPECT_EQ(Text(text), "before");
}

TEST(Writer, WithoutEnvironmentWritesFriendsButNothingOfDatabases) {
    const CollectorPtr collector = LinkedCollector();
    const Writing writing = Write(*collector);
    EXPECT_EQ(writing.result, S_OK);
    EXPECT_EQ(
        writing.text,
        WrittenDocument({R"(<Context Name="A" Parameter="/a" ParameterType="Path">)",
                         R"(  <CtxFriends>)", R"(    <Context Name="V"/>)",
                         R"(    <Context Name="DYADIC"/>)", R"(  </CtxFriends>)", R"(</Context>)",
                         R"(<Context Name="V" Parameter="main" ParameterType="Database"/>)",
                         R"(<Context Name="DYADIC" Parameter="" ParameterType="Default"/>)"}));
}

TEST(Writer, WithEnvironmentWritesAssociatedFirstAndDetailsInTheirOrder) {
    const DbEnvironment db(true);
    const CollectorPtr collector = LinkedCollector();
    const Writing writing = Write(*collector);
    EXPECT_EQ(writing.result, S_OK);
    EXPECT_EQ(
        writing.text,
        WrittenDocument({R"(<Context Name="A" Parameter="/a" ParameterType="Path">)",
                         R"(  <CtxAssociated>)", R"(    <Context Name="V"/>)",
                         R"(  </CtxAssociated>)", R"(  <CtxFriends>)", R"(    <Context Name="V"/>)",
                         R"(    <Context Name="DYADIC"/>)", R"(  </CtxFriends>)", R"(</Context>)",
                         R"(<Context Name="V" Parameter="main" ParameterType="Database" )"
                         R"(ConnectorName="KRL" ServerName="srv" Role=""/>)",
                         R"(<Context Name="DYADIC" Parameter="" ParameterType="Default"/>)"}));
}

TEST(Writer, DatabaseWithoutProviderHasNoConnector) {
    const DbEnvironment db(true);
    const CollectorPtr collector = EmptyCollector();
    Declare(*collector, "V", "p", "Database");
    const Writing writing = Write(*collector);
    EXPECT_EQ(writing.result, S_OK);
    EXPECT_EQ(writing.text,
              WrittenDocument({R"(<Context Name="V" Parameter="p" ParameterType="Database"/>)"}));
}

TEST(Writer, DetailNamedLikeAnAttributeReplacesItInItsPlace) {
    const DbEnvironment db(true);
    const CollectorPtr collector = EmptyCollector();
    Declare(*collector, "V", "p", "Database")
        .SetDyadDbProvider(ProviderWith("KRL", {"Role", "Name"}, {"r", "other"}));
    EXPECT_EQ(Write(*collector).text,
              WrittenDocument({R"(<Context Name="other" Parameter="p" ParameterType="Database" )"
                               R"(ConnectorName="KRL" Role="r"/>)"}));
}

TEST(Writer, AllSixDetailsOfAReadContextAreWritten) {
    const DbEnvironment db(true);
    const Reading reading = ReadContexts(Database("V", "ORB1", "s", "r"));
    EXPECT_EQ(Write(*reading.collector).text,
              WrittenDocument(
                  {R"(<Context Name="V" Parameter="p" ParameterType="Database" )"
                   R"(ConnectorName="ORB1" http="" Role="r" ServerName="s" ServerPort="" URI="" )"
                   R"(SiteId=""/>)"}));
}

TEST(Writer, EscapesWhatWouldNotBeReadBack) {
    const CollectorPtr collector = EmptyCollector();
    Declare(*collector, "<&>\"'\t\n\r", " x ", "Path");
    const Writing writing = Write(*collector);
    EXPECT_EQ(writing.text, WrittenDocument({"<Context Name=\"&lt;&amp;&gt;&quot;'&#9;&#10;&#13;\" "
                                             "Parameter=\" x \" ParameterType=\"Path\"/>"}));
}

TEST(Writer, TextThatXmlCannotCarryIsRefusedAndTheOldFileKept) {
    for (const std::string& bad :
         {std::string("\x01"), std::string("a\0b", 3), std::string("\x1F"), std::string("\xFF"),
          std::string("\xED\xA0\x80"), std::string("\xEF\xBF\xBF")}) {
        const CollectorPtr collector = EmptyCollector();
        Declare(*collector, "A", "", "Path");
        Declare(*collector, "B", bad, "Path");
        EXPECT_EQ(Write(*collector).text, "absent");
        const Writing writing = WriteOver(*collector, "old");
        EXPECT_LT(writing.result, 0);
        EXPECT_EQ(writing.text, "old");
    }
}

TEST(Writer, WritesTheCurrentViewOnly) {
    const DbEnvironment db(true);
    const CollectorPtr collector = LinkedCollector();
    Declare(*collector, "F", "/f", "File");
    ASSERT_EQ(collector->SetCtxTypeList(), S_OK);
    ASSERT_EQ(collector->SetContextPathType(), S_OK);
    const std::string text = Write(*collector).text;
    EXPECT_EQ(text.find("Name=\"F\""), std::string::npos);
    EXPECT_NE(text.find("<Context Name=\"A\" Parameter"), std::string::npos);
    int type = 0;
    collector->GetContextType(type);
    EXPECT_EQ(type, 1);
}

TEST(Writer, WritesAnEmptyViewAsEmptyData) {
    const DbEnvironment db(true);
    const CollectorPtr collector = EmptyCollector();
    Declare(*collector, "A", "/a", "Path");
    ASSERT_EQ(collector->SetContextFileType(), S_OK);
    const Writing writing = Write(*collector);
    EXPECT_EQ(writing.result, S_OK);
    EXPECT_EQ(writing.text, WrittenDocument({}));
}

TEST(Writer, FileViewWithoutEnvironmentCannotBeFetchedAndIsRefused) {
    const CollectorPtr collector = EmptyCollector();
    Declare(*collector, "A", "/a", "Path");
    {
        const DbEnvironment db(true);
        ASSERT_EQ(collector->SetContextFileType(), S_OK);
    }
    const Writing writing = WriteOver(*collector, "old");
    EXPECT_EQ(writing.result, E_FAIL);
    EXPECT_EQ(writing.text, "old");
}

TEST(Writer, NullContextAmongTheDeclaredIsRefused) {
    const CollectorPtr collector = LinkedCollector();
    ASSERT_EQ(collector->AddContext(nullptr, nullptr, 0), S_OK);
    const Writing writing = WriteOver(*collector, "old");
    EXPECT_EQ(writing.result, E_FAIL);
    EXPECT_EQ(writing.text, "old");
}

TEST(Writer, StaleViewAfterADeletionIsRefused) {
    const DbEnvironment db(true);
    const CollectorPtr collector = EmptyCollector();
    Declare(*collector, "A", "/a", "Path");
    Declare(*collector, "B", "/b", "Path");
    ASSERT_EQ(collector->SetCtxTypeList(), S_OK);
    ASSERT_EQ(collector->DeleteContext(VELUnicodeString("A")), S_OK);
    ASSERT_EQ(collector->SetContextPathType(), S_OK);
    EXPECT_EQ(WriteOver(*collector, "old").text, "old");
}

TEST(Writer, ScenariosAreNotWritten) {
    const Reading reading = ReadContexts(Path("A", ScenarioId("I", "p")));
    EXPECT_EQ(Write(*reading.collector).text,
              WrittenDocument({R"(<Context Name="A" Parameter="p" ParameterType="Path"/>)"}));
}

TEST(Writer, LeavesTheCollectorAsItWas) {
    const CollectorPtr collector = LinkedCollector();
    CollectorInternals::XmlFile(*collector) = VELUnicodeString("/former.xml");
    ASSERT_EQ(Write(*collector).result, S_OK);
    unsigned char isDefault = 1;
    EXPECT_EQ(Text(collector->GetXMLFile(isDefault)), "/former.xml");
    EXPECT_EQ(ViewOf(*collector), (std::vector<std::string>{"A", "V", "DYADIC"}));
}

TEST(Writer, WithoutCollectorRefuses) {
    const TemporaryFolder folder;
    VELUnicodeString message;
    EXPECT_EQ(
        VELDyadCtxXml(nullptr).Stream(VELUnicodeString(folder.PathOf("out.xml").c_str()), message),
        E_FAIL);
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("out.xml")));
}

TEST(Writer, FileWrittenIsReadBackWithFriendsByName) {
    const CollectorPtr collector = EmptyCollector();
    VELDyadContext& a = Declare(*collector, "A", "/a", "Path");
    VELDyadContext& b = Declare(*collector, "B", "/b", "Path");
    a.AddFriend(&b);
    const Creation again = CreateFromText(Write(*collector).text);
    ASSERT_NE(again.collector, nullptr) << again.message;
    VELDyadContext* first = nullptr;
    ASSERT_EQ(again.collector->GetCtxAtIndex(1, first), S_OK);
    EXPECT_EQ(FriendsOf(*first), std::vector<std::string>{"B"});
}

} // namespace dyadctx::test
