// SPDX-License-Identifier: MIT
// Prints the settings that were read at load, each in brackets on a line of its own.
//   (no argument)   as they are
//   late            after the program has given every variable another value
#include "support/EnvironmentVariable.h"
#include "trace/detail/ProcessSettings.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace {

void Print() {
    std::printf("multisite [%d]\n", dyadctx::MultisiteFlag() ? 1 : 0);
    std::printf("init [%s]\n", dyadctx::InitSetting().text.ConvertToChar());
    std::printf("output [%s]\n", dyadctx::OutputSetting().ConvertToChar());
    std::printf("roots [%s]\n", dyadctx::InstallationRoots().text.ConvertToChar());
    std::printf("tracer [%d]\n", dyadctx::TracerLevel());
    std::printf("tracer set now [%d]\n", dyadctx::IsTracerVariableSet() ? 1 : 0);
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::string_view(argv[1]) == "late") {
        const dyadctx::test::EnvironmentVariable multisite("TE_MULTISITE_DBCONTEXT", "late");
        const dyadctx::test::EnvironmentVariable init("VELDyadCtxInit", "late");
        const dyadctx::test::EnvironmentVariable output("VELDyadCtxOut", "late");
        const dyadctx::test::EnvironmentVariable roots("VELInstallPath", "late");
        const dyadctx::test::EnvironmentVariable tracer("VELDyadCtxTracer", "9");
        Print();
        return 0;
    }
    Print();
    return 0;
}
