// SPDX-License-Identifier: MIT
// The example programs and the sample files.
#include "tool/ToolTest.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

namespace dyadctx::test {

namespace {

class Examples : public ToolTest {
protected:
    static ChildResult RunExample(const char* program, const std::vector<std::string>& arguments,
                                  const Environment& environment) {
        ChildRun run;
        run.program = program;
        run.arguments = arguments;
        run.environment = environment;
        return RunChild(run);
    }
};

} // namespace

TEST_F(Examples, TheSampleSiteIsValid) {
    const Json document = VerdictOn({"check", ExampleFile("site.xml"), "--db-context"}, 0,
                                    {{"TE_MULTISITE_DBCONTEXT", "1"}});
    EXPECT_EQ(document["valid"], true);
    EXPECT_EQ(document["message"], "");
}

TEST_F(Examples, TheSampleSiteShowsEachKindOfContext) {
    const Json contexts = RunForJson({"list", ExampleFile("site.xml"), "--db-context"}, 0,
                                     {{"TE_MULTISITE_DBCONTEXT", "1"}})["contexts"];
    std::set<std::string> types;
    std::size_t sites = 0;
    for (const Json& context : contexts) {
        types.insert(context["parameterType"]);
        sites = std::max(sites, context["sites"].size());
    }
    EXPECT_EQ(types, (std::set<std::string>{"Database", "Default", "File", "Path"}));
    EXPECT_EQ(sites, 2U);
}

TEST_F(Examples, EachBrokenSampleShowsAFaultOfItsOwn) {
    std::set<std::string> faults;
    std::size_t samples = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ExampleFile("broken"))) {
        const Json document = VerdictOn({"check", entry.path().string(), "--db-context"}, 1);
        std::string keys;
        for (const Json& finding : document["findings"]) {
            keys += finding["key"].get<std::string>() + " ";
            if (finding["key"] == "Ctx.Parse.XMLSyntaxError")
                keys += finding["related"][0]["text"].get<std::string>() + " ";
        }
        EXPECT_TRUE(faults.insert(keys).second) << entry.path() << " repeats " << keys;
        ++samples;
    }
    EXPECT_GE(samples, 6U);
}

TEST_F(Examples, TheClientListsContextsAndOptions) {
    const Environment site{{"ExchangeChannel", ExampleFile("site.xml")}};
    const ChildResult contexts = RunExample(DYADCTX_LIST_CONTEXTS, {}, site);
    EXPECT_EQ(contexts.status, 0);
    EXPECT_EQ(contexts.standardOutput, "DYADIC (Default)\nDesign (Path)\nLibrary (Path)\n"
                                       "Catalogue (File)\nVault (Database)\nArchive (Database)\n");
    const ChildResult options = RunExample(DYADCTX_LIST_CONTEXTS, {"Archive", "Export"}, site);
    EXPECT_TRUE(options.standardOutput.ends_with("Archive (Database)\nFormat = STEP\nLevel = 2\n"))
        << options.standardOutput;
}

TEST_F(Examples, TheClientSaysWhyItHasNoContexts) {
    const ChildResult none =
        RunExample(DYADCTX_LIST_CONTEXTS, {}, {{"ExchangeChannel", "/no/such.xml"}});
    EXPECT_EQ(none.status, 1);
    EXPECT_NE(none.standardError.find("\"/no/such.xml\" cannot be used"), std::string::npos);
}

TEST_F(Examples, TheClientIsShort) {
    std::ifstream source(ExampleFile("list_contexts.cpp"));
    const std::string text((std::istreambuf_iterator<char>(source)), {});
    EXPECT_LT(std::count(text.begin(), text.end(), '\n'), 60);
}

TEST_F(Examples, TheCheckWritesEachFindingWithItsLine) {
    const ChildResult broken =
        RunExample(DYADCTX_CHECK_FILE, {ExampleFile("broken/unknown-type.xml")}, {});
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(broken.standardOutput.find("4: The context \"Design\" has the unknown ParameterType "
                                         "\"Folder\"."),
              0U)
        << broken.standardOutput;
    const ChildResult valid = RunExample(DYADCTX_CHECK_FILE, {ExampleFile("site.xml")},
                                         {{"VELDbContextEnvironment", "1"}});
    EXPECT_EQ(valid.status, 0) << valid.standardOutput;
}

TEST_F(Examples, TheCheckNeedsASeparatorInThePath) {
    ChildRun run;
    run.program = "/bin/sh";
    run.arguments = {"-c", "cd \"$1\" && \"$2\" site.xml; test $? = 1 && \"$2\" ./site.xml", "sh",
                     ExampleFile(""), DYADCTX_CHECK_FILE};
    run.environment = {{"VELDbContextEnvironment", "1"}};
    const ChildResult result = RunChild(run);
    EXPECT_EQ(result.status, 0) << result.standardOutput;
    EXPECT_NE(result.standardOutput.find("\"site.xml\" cannot be used"), std::string::npos)
        << result.standardOutput;
}

TEST_F(Examples, TheReadmeShowsTheProgramThatChecksAFile) {
    const auto textOf = [](const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    const std::string program = textOf(ExampleFile("check_file.cpp"));
    const std::string readme = textOf(std::string(DYADCTX_SOURCE_DIR) + "/README.md");
    ASSERT_FALSE(program.empty());
    EXPECT_NE(readme.find("```cpp\n" + program + "```"), std::string::npos);
}

TEST_F(Examples, TheHostReadsWithServicesOfItsOwn) {
    const ChildResult result = RunExample(DYADCTX_HOST, {ExampleFile("site.xml")}, {});
    EXPECT_EQ(result.status, 0) << result.standardError;
    EXPECT_EQ(result.standardOutput, "Vault-KRL: Vault\nread, 0 trace errors\n");
}

} // namespace dyadctx::test
