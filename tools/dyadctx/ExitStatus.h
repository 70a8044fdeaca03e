// SPDX-License-Identifier: MIT
// How the tool ends, and how a command gives up.
#pragma once

#include <stdexcept>
#include <string>

namespace dyadctx::tool {

enum class ExitStatus {
    Done = 0,
    No = 1,
    Usage = 2,
    NoFile = 3,
    NotLoadable = 4,
    NotFound = 5,
    NotWritten = 6,
    Internal = 70
};

// Ends a command. The text goes to standard error, after "dyadctx: error: ".
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& text)
        : std::runtime_error(text), status_(status) {}
    ExitStatus Status() const noexcept { return status_; }

private:
    ExitStatus status_;
};

} // namespace dyadctx::tool
