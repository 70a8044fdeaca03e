// SPDX-License-Identifier: MIT
#include "tool/ToolTest.h"

#include "support/ContextFile.h"

#include <filesystem>

namespace dyadctx::test {

namespace {

ChildRun ToolRun(const TemporaryFolder& folder, const std::vector<std::string>& arguments) {
    ChildRun run;
    run.program = DYADCTX_TOOL;
    run.arguments = arguments;
    run.workingFolder = folder.Path().string();
    run.hasBinaryStreams = true;
    return run;
}

} // namespace

ChildResult ToolTest::Run(const std::vector<std::string>& arguments,
                          const Environment& environment) const {
    ChildRun run = ToolRun(folder_, arguments);
    run.environment = environment;
    return RunChild(run);
}

ChildResult ToolTest::RunOnInput(const std::string& input,
                                 const std::vector<std::string>& arguments) const {
    ChildRun run = ToolRun(folder_, arguments);
    run.standardInput = input;
    return RunChild(run);
}

ChildResult ToolTest::RunInShell(const std::string& command, const Environment& environment) const {
    ChildRun run = ToolRun(folder_, {"-c", command});
    run.program = "/bin/sh";
    run.environment = environment;
    run.environment["DYADCTX"] = DYADCTX_TOOL;
    return RunChild(run);
}

ChildResult ToolTest::RunAsOrdinaryUser(const std::vector<std::string>& arguments,
                                        const Environment& environment) const {
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0755));
    ChildRun run = ToolRun(folder_, arguments);
    run.environment = environment;
    run.asOrdinaryUser = true;
    return RunChild(run);
}

Json ToolTest::RunForJson(std::vector<std::string> arguments, int status,
                          const Environment& environment) const {
    arguments.insert(arguments.end(), {"--format", "json"});
    const ChildResult result = Run(arguments, environment);
    EXPECT_EQ(result.status, status) << result.standardError;
    Json document = Json::parse(result.standardOutput, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << result.standardOutput;
    return document;
}

Json ToolTest::VerdictOn(const std::vector<std::string>& arguments, int status,
                         const Environment& environment) const {
    const Json document = RunForJson(arguments, status, environment);
    EXPECT_EQ(document["files"].size(), 1U) << document;
    return document["files"][0];
}

void ToolTest::Expect(const ToolCase& example) const {
    SCOPED_TRACE(example.name);
    const ChildResult result = Run(example.arguments, example.environment);
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.status, example.status) << result.standardError;
    if (example.output) {
        EXPECT_EQ(result.standardOutput, *example.output);
    }
    for (const std::string& remark : example.remarks) {
        EXPECT_NE(result.standardError.find(remark), std::string::npos)
            << "not found: " << remark << "\nin: " << result.standardError;
    }
    if (example.remarks.empty()) {
        EXPECT_EQ(result.standardError, "");
    }
}

void ToolTest::ExpectEach(const std::vector<ToolCase>& examples) const {
    for (const ToolCase& example : examples)
        Expect(example);
}

std::string ToolTest::WriteContexts(const std::string& name, std::string_view contexts) const {
    folder_.Write(name, DocumentWith(contexts));
    return name;
}

std::string ExampleFile(const std::string& name) {
    return std::string(DYADCTX_SOURCE_DIR) + "/examples/" + name;
}

} // namespace dyadctx::test
