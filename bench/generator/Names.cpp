// SPDX-License-Identifier: MIT
#include "bench/generator/Names.h"

#include <array>

namespace dyadctx::bench {

namespace {

constexpr std::uint64_t NamePurpose = 101;
constexpr std::uint64_t ConnectorPurpose = 102;

constexpr std::array<std::string_view, 16> Words{
    "Wing",         "Design",      "Library",  "Vault",
    "Engine-Mount", "Archive",     "Project",  "Structure",
    "Tooling",      "Release-2nd", "Supplier", "Landing-Gear-Left",
    "Cabin",        "Hydraulik",   "Étude",    "Standard-Parts-Common"};

constexpr std::array<std::string_view, 8> ConnectorNames{"KRL", "QZ1", "TN5",  "TNR1",
                                                         "HWB", "JOC", "Gyre", "ORB1"};

// The finishing steps of the splitmix generator.
std::uint64_t Scramble(std::uint64_t value) noexcept {
    value += 0x9E3779B97F4A7C15U;
    value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31U);
}

} // namespace

std::uint64_t Chance(std::uint64_t seed, std::uint64_t position, std::uint64_t purpose) noexcept {
    return Scramble(Scramble(Scramble(seed) ^ position) ^ purpose);
}

std::string Numbered(std::string_view word, std::uint64_t number) {
    std::string text(word);
    text += '-';
    text += std::to_string(number);
    return text;
}

std::string NameAt(std::uint64_t seed, std::uint64_t position) {
    return Numbered(Words[Chance(seed, position, NamePurpose) % Words.size()], position);
}

std::string_view ConnectorAt(std::uint64_t seed, std::uint64_t position) noexcept {
    return ConnectorNames[Chance(seed, position, ConnectorPurpose) % ConnectorNames.size()];
}

} // namespace dyadctx::bench
