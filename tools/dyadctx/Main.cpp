// SPDX-License-Identifier: MIT
// The command-line tool: see `dyadctx --help`.
#include "tools/dyadctx/CommandLine.h"
#include "tools/dyadctx/Output.h"
#include "tools/dyadctx/SystemServices.h"
#include "tools/dyadctx/Words.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <vector>

namespace {

using namespace dyadctx::tool;

int Status(ExitStatus status) {
    return static_cast<int>(status);
}

// The answer counts only once it is written.
int Finish(Output& output, ExitStatus status) {
    if (output.Finish())
        return Status(status);
    output.Error(Words("failure.answer", {output.WhyFailed()}));
    return Status(ExitStatus::NotWritten);
}

int Answer(CommandLine& commandLine) {
    Output output(commandLine.Color(), commandLine.IsQuiet());
    const std::string remark = commandLine.RemarkOnLanguage();
    if (!remark.empty())
        output.Note(remark);
    try {
        return Finish(output, commandLine.Chosen().Run(output));
    } catch (const Failure& failure) {
        output.Error(failure.what());
        if (failure.Status() == ExitStatus::Usage)
            output.Remark(commandLine.Usage());
        return Status(failure.Status());
    }
}

int Run(const std::vector<std::string>& arguments) {
    const Console console;
    CommandLine commandLine;
    try {
        if (commandLine.Read(arguments))
            return Answer(commandLine);
    } catch (const Failure& failure) {
        Output output(ColorChoice::Auto, false);
        output.Error(failure.what());
        output.Remark(commandLine.Usage());
        return Status(failure.Status());
    }
    Output output(ColorChoice::Never, false);
    output.Write(commandLine.Text());
    return Finish(output, ExitStatus::Done);
}

int InternalError(const char* reason) {
    std::fprintf(stderr, "dyadctx: internal error: %s\n", reason);
    return Status(ExitStatus::Internal);
}

// Where memory runs out while a failure is being cleared away, no exception can be caught.
[[noreturn]] void EndAtOnce() {
    std::_Exit(InternalError("it cannot go on, most likely for lack of memory"));
}

} // namespace

int main(int argc, char** argv) {
    std::set_terminate(EndAtOnce);
    try {
        return Run(ArgumentsOf(argc, argv));
    } catch (const std::bad_alloc&) {
        return InternalError("out of memory");
    } catch (const std::exception& error) {
        return InternalError(error.what());
    } catch (...) {
        return InternalError("unknown");
    }
}
