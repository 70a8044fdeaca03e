// SPDX-License-Identifier: MIT
// Runs a program to its end and returns what it wrote and how it ended.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace dyadctx::test {

struct ChildRun {
    // The program to run; its arguments without the program itself.
    std::string program;
    std::vector<std::string> arguments;
    // Changes to this process's environment; no value removes the variable. The library's own
    // variables, LANG, LC_* and XDG_CONFIG_HOME are removed first, HOME becomes an unused
    // folder; APPDATA is that of HOME unless it is given.
    std::map<std::string, std::optional<std::string>> environment;
    std::string workingFolder;
    std::string standardInput;
    // Give up the rights of the super-user, where this process has them.
    bool asOrdinaryUser = false;
    // The program writes line ends as they are on every system. From others, each line end is one
    // character in the result all the same.
    bool hasBinaryStreams = false;
    // The most stack, where it is not the program that says so; 0 for that of this process.
    int stackKilobytes = 0;
    int timeoutSeconds = 60;
};

struct ChildResult {
    // The exit status, or minus the number of the signal that ended the program.
    int status = 0;
    bool timedOut = false;
    std::string standardOutput;
    std::string standardError;
};

ChildResult RunChild(const ChildRun& run);

} // namespace dyadctx::test
