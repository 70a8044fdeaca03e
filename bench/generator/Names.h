// SPDX-License-Identifier: MIT
// Names and choices of generated files. All are functions of seed and position, so a file can refer
// to a context without remembering it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dyadctx::bench {

// A number that looks random, the same for the same arguments on every system. `purpose` keeps the
// choices for one position apart.
std::uint64_t Chance(std::uint64_t seed, std::uint64_t position, std::uint64_t purpose) noexcept;

// "word-123".
std::string Numbered(std::string_view word, std::uint64_t number);

// Names of 6 to about 30 characters, different for different positions.
std::string NameAt(std::uint64_t seed, std::uint64_t position);
// One of a few connectors that compare databases.
std::string_view ConnectorAt(std::uint64_t seed, std::uint64_t position) noexcept;

} // namespace dyadctx::bench
