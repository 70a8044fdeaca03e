// SPDX-License-Identifier: MIT
// Sets or removes an environment variable of this process until the end of a scope.
#pragma once

#include <optional>
#include <string>

namespace dyadctx::test {

class EnvironmentVariable {
public:
    EnvironmentVariable(const std::string& name, const std::optional<std::string>& value);
    ~EnvironmentVariable();
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    std::string name_;
    std::optional<std::string> former_;
};

} // namespace dyadctx::test
