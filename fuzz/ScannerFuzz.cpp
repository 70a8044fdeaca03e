// SPDX-License-Identifier: MIT
// The scanner of plain documents makes of any bytes what the parser makes of them, or leaves them
// alone, however they come in pieces.
#include "support/ScannerComparison.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const bool isScanned = dyadctx::test::CompareScanner(text, 65536).isScanned;
    for (const std::size_t pieceSize : {1U, 5U, 64U, 65536U}) {
        const auto comparison = dyadctx::test::CompareScanner(text, pieceSize);
        if (!comparison.difference.empty() || comparison.isScanned != isScanned)
            std::abort();
    }
    return 0;
}
