// SPDX-License-Identifier: MIT
#include "tools/dyadctx/help/Roff.h"

#include <algorithm>
#include <array>
#include <utility>

namespace dyadctx::tool {

namespace {

constexpr std::array<std::pair<char, std::string_view>, 7> Escapes{{{'\\', "\\e"},
                                                                    {'-', "\\-"},
                                                                    {'"', "\\(dq"},
                                                                    {'\'', "\\(aq"},
                                                                    {'`', "\\(ga"},
                                                                    {'^', "\\(ha"},
                                                                    {'~', "\\(ti"}}};

} // namespace

std::string RoffEscaped(std::string_view text) {
    std::string escaped;
    for (const char letter : text) {
        const auto* found = std::find_if(Escapes.begin(), Escapes.end(),
                                         [letter](const auto& one) { return one.first == letter; });
        if (found != Escapes.end())
            escaped += found->second;
        else
            escaped += letter;
    }
    return escaped;
}

std::string RoffLine(const std::string& escaped) {
    return (escaped.starts_with('.') ? "\\&" : "") + escaped + "\n";
}

} // namespace dyadctx::tool
