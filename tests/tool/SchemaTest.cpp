// SPDX-License-Identifier: MIT
// `schema`: the schemas as they are in their files.
#include "tool/ToolTest.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace dyadctx::test {

namespace {

class Schema : public ToolTest {};

std::string SchemaFile(const std::string& name) {
    std::ifstream in(std::string(DYADCTX_SOURCE_DIR) + "/resources/schema/" + name,
                     std::ios::binary);
    EXPECT_TRUE(in) << name;
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

TEST_F(Schema, IsTheFileByteForByte) {
    ExpectEach({
        {"by itself", {"schema"}, 0, SchemaFile("dyadctx-context.rnc"), {}, {}},
        {"compact", {"schema", "rnc"}, 0, SchemaFile("dyadctx-context.rnc"), {}, {}},
        {"RELAX NG", {"schema", "rng"}, 0, SchemaFile("dyadctx-context.rng"), {}, {}},
        {"XML Schema", {"schema", "xsd"}, 0, SchemaFile("dyadctx-context.xsd"), {}, {}},
        {"catalog", {"schema", "catalog"}, 0, SchemaFile("catalog.xml"), {}, {}},
    });
}

TEST_F(Schema, OfEachListedCommandIsItsFile) {
    const ChildResult list = Run({"schema", "json"});
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(list.standardError, "");
    std::istringstream in(list.standardOutput);
    std::vector<std::string> commands;
    for (std::string command; std::getline(in, command);) {
        Expect({command,
                {"schema", "json", command},
                0,
                SchemaFile("dyadctx-" + command + ".schema.json"),
                {},
                {}});
        commands.push_back(command);
    }
    for (const char* command :
         {"check", "diff", "explain", "list", "scenarios", "settings", "show", "which"})
        EXPECT_NE(std::find(commands.begin(), commands.end(), command), commands.end()) << command;
}

TEST_F(Schema, ThatDoesNotExistIsToldWithThoseThatDo) {
    ExpectEach({
        {"kind", {"schema", "dtd"}, 2, "", {"dtd", "rnc,rng,xsd,catalog,json", "usage:"}, {}},
        {"command",
         {"schema", "json", "chek"},
         5,
         "",
         {"no JSON schema for 'chek'; did you mean 'check'?", "check, diff, explain, list"},
         {}},
        {"command without a document", {"schema", "json", "graph"}, 5, "", {"'graph'"}, {}},
        {"command without json", {"schema", "rng", "list"}, 2, "", {"'list' goes with json"}, {}},
        {"one too many", {"schema", "json", "list", "show"}, 2, "", {"argument 'show'"}, {}},
    });
}

TEST_F(Schema, ThatCannotBeWrittenIsAnError) {
    const ChildResult result = RunInShell("\"$DYADCTX\" schema xsd >/dev/full");
    EXPECT_EQ(result.status, 6);
    EXPECT_NE(result.standardError.find("could not be written"), std::string::npos);
}

} // namespace dyadctx::test
