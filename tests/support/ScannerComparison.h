// SPDX-License-Identifier: MIT
// The scanner of plain documents held against the parser.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dyadctx::test {

struct ScannerComparison {
    // Whether the scanner has read the document; else it leaves it to the parser.
    bool isScanned = false;
    // Empty when the parser makes the same document of it.
    std::string difference;
};

// The scanner reads the text in pieces of that size at first.
ScannerComparison CompareScanner(std::string_view text, std::size_t pieceSize);

// Whether the parser reads it.
bool IsReadByParser(std::string_view text);

} // namespace dyadctx::test
