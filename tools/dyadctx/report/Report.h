// SPDX-License-Identifier: MIT
// The verdict on checked files in the formats that people and programs read.
#pragma once

#include "tools/dyadctx/FindingRecorder.h"
#include "tools/dyadctx/Output.h"
#include "tools/dyadctx/Source.h"

#include <cstddef>
#include <string>
#include <vector>

namespace dyadctx::tool {

struct CheckedFile {
    Source source;
    std::vector<Finding> findings;
    // How many of them the DB context environment would make vanish.
    std::size_t vanishing = 0;
};

// "%2F" for "/".
std::string PercentEscape(char letter);

// Without consequences, which do not count.
std::size_t CountOf(const CheckedFile& file, Severity severity);
// Whether the file could not be loaded and no error says why.
bool FailedSilently(const CheckedFile& file);

// Lines as compilers write them, then a summary unless the user wants quiet. `failOn` is the lowest
// severity that makes the check fail.
void WriteTextReport(const std::vector<CheckedFile>& files, Severity failOn, Output& output);

Json JsonReport(const std::vector<CheckedFile>& files);

// SARIF 2.1.0, which code-scanning services and editors read. `status` is that of the tool.
Json SarifReport(const std::vector<CheckedFile>& files, ExitStatus status);

// Workflow commands that GitHub turns into annotations of the lines.
std::string GithubReport(const std::vector<CheckedFile>& files);

} // namespace dyadctx::tool
