// SPDX-License-Identifier: MIT
// Writes a context file for measurements: generate_contexts SHAPE COUNT FILE [SEED]
#include "bench/generator/GenerateContexts.h"

#include <charconv>
#include <cstdio>
#include <exception>
#include <string>

namespace {

using namespace dyadctx::bench;

int Usage() {
    std::fputs("usage: generate_contexts SHAPE COUNT FILE [SEED]\nshapes:", stderr);
    for (const Shape shape : AllShapes())
        std::fprintf(stderr, " %s", std::string(NameOf(shape)).c_str());
    std::fputc('\n', stderr);
    return 2;
}

std::optional<std::uint64_t> NumberIn(std::string_view text) {
    std::uint64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

int Generate(int argc, char** argv) {
    if (argc < 4 || argc > 5)
        return Usage();
    const auto shape = ShapeNamed(argv[1]);
    const auto count = NumberIn(argv[2]);
    const auto seed = NumberIn(argc == 5 ? argv[4] : "1");
    if (!shape || !count || !seed)
        return Usage();
    if (WriteContextFile({*shape, *count, *seed}, argv[3]))
        return 0;
    std::fprintf(stderr, "generate_contexts: cannot write %s\n", argv[3]);
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Generate(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "generate_contexts: %s\n", error.what());
        return 1;
    }
}
