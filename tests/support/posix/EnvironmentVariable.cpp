// SPDX-License-Identifier: MIT
#include "support/EnvironmentVariable.h"

#include <cstdlib>

namespace dyadctx::test {

namespace {

void Put(const std::string& name, const std::optional<std::string>& value) {
    if (value)
        setenv(name.c_str(), value->c_str(), 1);
    else
        unsetenv(name.c_str());
}

} // namespace

EnvironmentVariable::EnvironmentVariable(const std::string& name,
                                         const std::optional<std::string>& value)
    : name_(name) {
    if (const char* former = std::getenv(name.c_str()))
        former_ = former;
    Put(name_, value);
}

EnvironmentVariable::~EnvironmentVariable() {
    Put(name_, former_);
}

} // namespace dyadctx::test
