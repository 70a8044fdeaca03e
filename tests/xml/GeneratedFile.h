// SPDX-License-Identifier: MIT
// Context files made by chance, all of them valid.
#pragma once

#include "collector/VELDyadCtxCollector.h"

#include <cstdint>
#include <string>

namespace dyadctx::test {

struct GeneratedContent {
    // Database contexts and associated contexts, which need the DB context environment.
    bool databases = false;
    // Further sites of database contexts, which need multisite support.
    bool sites = false;
};

// The same seed produces the same document. Names and parameters are drawn from all characters that
// XML can carry.
std::string GenerateDocument(std::uint32_t seed, const GeneratedContent& content);

// Everything the collector returns about its contexts, as text to compare.
std::string Describe(VELDyadCtxCollector& collector);

} // namespace dyadctx::test
