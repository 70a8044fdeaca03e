// SPDX-License-Identifier: MIT
#include "support/ChildEnvironment.h"

#include <string_view>

namespace dyadctx::test {

namespace {

bool IsOfNoConcern(std::string_view entry) {
    for (const std::string_view prefix :
         {"VELDyad", "VELInstallPath=", "VELSettingPath=", "VELMessage", "VELDbContextEnvironment=",
          "TE_MULTISITE_DBCONTEXT=", "ExchangeChannel=", "LANG=", "LANGUAGE=", "LC_",
          "XDG_CONFIG_HOME=", "HOME=", "APPDATA=", "NO_COLOR=", "CLICOLOR"}) {
        if (entry.substr(0, prefix.size()) == prefix)
            return true;
    }
    return false;
}

} // namespace

std::vector<std::string> ChildEnvironment(const ChildRun& run,
                                          const std::vector<std::string>& own) {
    std::vector<std::string> entries;
    for (const std::string& entry : own) {
        if (!IsOfNoConcern(entry) && !run.environment.contains(entry.substr(0, entry.find('='))))
            entries.push_back(entry);
    }
    const auto home = run.environment.find("HOME");
    const auto folder = home == run.environment.end() ? "/nonexistent" : home->second;
    for (const char* name : {"HOME", "APPDATA"}) {
        if (folder && !run.environment.contains(name))
            entries.push_back(std::string(name) + "=" + *folder);
    }
    for (const auto& [name, value] : run.environment) {
        if (value)
            entries.push_back(name + "=" + *value);
    }
    return entries;
}

} // namespace dyadctx::test
