// SPDX-License-Identifier: MIT
// The entries of a gettext PO file, as far as the project's own files go.
#pragma once

#include <string>
#include <vector>

namespace dyadctx::test {

struct PoEntry {
    std::string context;
    std::string original;
    std::string translation;
    bool isCheckedFormat = false;
};

// The entries with a context, in the order of the file. Throws when the file cannot be read.
std::vector<PoEntry> ReadPoFile(const std::string& path);

} // namespace dyadctx::test
