// SPDX-License-Identifier: MIT
// A client program that writes console trace lines and ends without flushing anything itself. Its
// argument names the lines.
#include "trace/VELDyadConsoleTrace.h"

#include "support/EnvironmentVariable.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

namespace {

// Called like these, a format escapes the compiler's check.
using LineFunction = void (*)(const char*, ...);
using ResultLineFunction = void (*)(long, const char*, ...);

void WriteEachKind() {
    DYADCTXOUT("plain");
    DYADCTXOUT(0L, "done %d", 1);
    DYADCTXOUT(1L, "more");
    DYADCTXOUT(-1L, "less");
    DYADCTXERR("plain <%s>", "%s");
    DYADCTXERR(0L, "done");
    DYADCTXERR(-1L, "failed %s %s", "a", "b");
}

void WriteResults() {
    // An int picks the form with a result.
    DYADCTXOUT(0, "int");
    DYADCTXOUT(static_cast<int>(0x80004005U), "failure");
    // The same code in a long that keeps it positive.
    DYADCTXOUT(static_cast<long>(0x80004005U), "failure");
    DYADCTXERR(static_cast<long>(0x80004005U), "failure");
}

void WriteOddTexts() {
    DYADCTXOUT(1L, "ends in a newline\n");
    DYADCTXOUT("Element : made\n");
    DYADCTXOUT("%s", "");
    DYADCTXOUT(0L, "a%cb", 0);
    DYADCTXOUT(0L, "wide %ls", L"\x20AC");
    DYADCTXOUT("after");
}

void WriteLongTexts() {
    const std::string fits(9999, 'a');
    const std::string longer(20000, 'b');
    DYADCTXOUT("%s", fits.c_str());
    DYADCTXOUT("%s", longer.c_str());
    DYADCTXERR(0L, "%s", longer.c_str());
    DYADCTXERR(-1L, "short");
}

void WriteWithoutFormat() {
    const LineFunction out = DYADCTXOUT;
    const LineFunction err = DYADCTXERR;
    const ResultLineFunction outWithResult = DYADCTXOUT;
    const ResultLineFunction errWithResult = DYADCTXERR;
    out(nullptr);
    err(nullptr);
    outWithResult(0, nullptr);
    errWithResult(-1, nullptr);
}

void WriteAfterSetting() {
    const dyadctx::test::EnvironmentVariable late("VELDyadCtxTracer", "1");
    DYADCTXOUT("late");
}

} // namespace

int main(int argc, char** argv) {
    const std::map<std::string, void (*)()> parts{
        {"kinds", WriteEachKind}, {"results", WriteResults},         {"odd", WriteOddTexts},
        {"long", WriteLongTexts}, {"no-format", WriteWithoutFormat}, {"late", WriteAfterSetting},
    };
    const auto part = parts.find(argc > 1 ? argv[1] : "");
    if (part == parts.end())
        return 2;
    part->second();
    // Drops what is still in the buffers of the standard streams.
    std::_Exit(0);
}
