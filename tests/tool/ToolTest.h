// SPDX-License-Identifier: MIT
// Runs the built tool in a folder of the test's own.
#pragma once

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::test {

using Json = nlohmann::ordered_json;
using Environment = std::map<std::string, std::optional<std::string>>;

// One run of the tool and what must come of it.
struct ToolCase {
    std::string name;
    std::vector<std::string> arguments;
    int status = 0;
    // The whole of standard output, where given.
    std::optional<std::string> output;
    // Each is somewhere in standard error; without any, standard error is empty.
    std::vector<std::string> remarks;
    Environment environment;
};

class ToolTest : public testing::Test {
protected:
    ChildResult Run(const std::vector<std::string>& arguments,
                    const Environment& environment = {}) const;
    // The same with that text on standard input.
    ChildResult RunOnInput(const std::string& input,
                           const std::vector<std::string>& arguments) const;
    // The same through a shell, with $DYADCTX for the tool.
    ChildResult RunInShell(const std::string& command, const Environment& environment = {}) const;
    // Runs without the rights of the super-user, in a folder others may enter.
    ChildResult RunAsOrdinaryUser(const std::vector<std::string>& arguments,
                                  const Environment& environment = {}) const;
    // Runs with --format json and returns the document; the status must be the given one.
    Json RunForJson(std::vector<std::string> arguments, int status = 0,
                    const Environment& environment = {}) const;
    // The same for a check of one file: what the document says of that file.
    Json VerdictOn(const std::vector<std::string>& arguments, int status = 0,
                   const Environment& environment = {}) const;
    void Expect(const ToolCase& example) const;
    void ExpectEach(const std::vector<ToolCase>& examples) const;

    // Writes a context file with that content of CtxData and returns its name in the folder.
    std::string WriteContexts(const std::string& name, std::string_view contexts) const;

    TemporaryFolder folder_;
};

// A file of the project's examples.
std::string ExampleFile(const std::string& name);

} // namespace dyadctx::test
