// SPDX-License-Identifier: MIT
// Which contexts of a picture bear the errors of a file.
#include "tools/dyadctx/graph/GraphFaults.h"

#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using namespace dyadctx::tool;
using Strings = std::vector<std::string>;

// Each node of the graph of that file: its name and its number of errors.
Strings FaultsIn(const std::string& contexts) {
    const TemporaryFolder folder;
    VELDyadCtxFileCheck check;
    EXPECT_EQ(check.Run(VELUnicodeString(folder.Write("a.xml", DocumentWith(contexts)))), S_FALSE);
    const std::vector<VELDyadContext*> declared = ContextsOfView(*check.GetCollector());
    Graph graph = GraphOf(declared);
    MarkFaults(graph, declared, check);
    Strings faults;
    for (const GraphNode& node : graph.nodes)
        faults.push_back(node.name + " " + std::to_string(node.faults.size()));
    return faults;
}

} // namespace

TEST(GraphFaults, AnErrorBelongsToTheContextItIsAbout) {
    EXPECT_EQ(FaultsIn(R"(<Context Name="A" Parameter="/a" ParameterType="Path">
                            <CtxFriends><Context Name="X"/><Context Name="Y"/></CtxFriends></Context>
                          <Context Name="B" Parameter="/b" ParameterType="Path"/>
                          <Context Name="C!" Parameter="/c" ParameterType="Folder"/>)"),
              Strings({"A 2", "B 0", "C! 2", "X 0", "Y 0"}));
}

TEST(GraphFaults, ANameGivenTwiceMarksBothAndOtherErrorsOnlyOne) {
    EXPECT_EQ(FaultsIn(R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>
                          <Context Name="B" Parameter="/b" ParameterType="Path"/>
                          <Context Name="A" Parameter="" ParameterType="Path"/>)"),
              Strings({"A 1", "B 0", "A 2"}));
}

TEST(GraphFaults, ContextsWithoutNameAreToldApart) {
    EXPECT_EQ(FaultsIn(R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>
                          <Context Parameter="/b" ParameterType="Path"/>
                          <Context Parameter="/c" ParameterType="Path"/>)"),
              Strings({"A 0", " 1", " 1"}));
}

TEST(GraphFaults, AnErrorOfTheWholeFileMarksNoContext) {
    EXPECT_EQ(FaultsIn(R"(<Context Name="A" Parameter="/a" ParameterType="Path"/></CtxData>
                          <CtxData><Context Name="B" Parameter="/b" ParameterType="Path"/>)"),
              Strings());
    EXPECT_EQ(FaultsIn(R"(<CtxFriends><Context Name="A"/></CtxFriends>
                          <Context Name="A" Parameter="/a" ParameterType="Path"/>)"),
              Strings({"A 0"}));
}

} // namespace dyadctx::test
