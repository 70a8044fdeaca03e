// SPDX-License-Identifier: MIT
// A client program whose environment decides what it traces and says. It prints nothing of its own.
//   trace       three lines to the platform trace while it is active
//   late        the same, after the variable has been removed and set again
//   turned-on   one line after the program has turned the trace on
//   message     a label of the message catalog, to standard output
//   early       that label as it was before any static object of the library was needed
#include "platform/VELDyadTrace.h"
#include "platform/VELMsgCatalog.h"
#include "support/EnvironmentVariable.h"

#include <cstdio>
#include <string_view>

namespace {

VELUnicodeString Label() {
    return VELMsgCatalog::BuildMessage("VELDyadCtxDlgSelection", "Ctx.ParameterType.Path", nullptr,
                                       0, "(unknown)");
}

const VELUnicodeString earlyLabel = Label();

void TraceThreeLines() {
    if (!VELIsTraceActive())
        return;
    _CDCDyadTraceEnter("Probe:Run <%s>", "%s");
    _CDCDyadTraceWarning("two\nlines %s", "\x1b[2J\xff \u0085\u2028\u202e");
    _CDCDyadTraceLeave("Probe:Run");
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc > 1 ? argv[1] : "";
    if (what == "trace") {
        TraceThreeLines();
    } else if (what == "late") {
        const dyadctx::test::EnvironmentVariable variable("VELDyadContextTrace", "1");
        TraceThreeLines();
    } else if (what == "turned-on") {
        *DyadContextTrace.activity = 1;
        _CDCDyadTraceLog("turned on");
    } else if (what == "message") {
        std::puts(Label().ConvertToChar());
    } else if (what == "early") {
        std::puts(earlyLabel.ConvertToChar());
    } else {
        return 2;
    }
    return 0;
}
