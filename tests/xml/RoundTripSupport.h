// SPDX-License-Identifier: MIT
// Reading, writing and reading again.
#pragma once

#include "xml/GeneratedFile.h"

#include <cstdint>

namespace dyadctx::test {

// Of the files generated from the seeds 1 to `lastSeed`: what was written and read again is the
// same as before, and writing it again produces the same bytes.
void ExpectRoundTrips(std::uint32_t lastSeed, const GeneratedContent& content);

} // namespace dyadctx::test
