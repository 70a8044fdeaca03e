// `write`: a view of a file, written as a context file.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Target.h"

#include <CLI/CLI.hpp>

namespace dyadctx::tool {

namespace {

class Write final : public Command {
public:
    const char* Name() const override { return "write"; }
    const char* Summary() const override { return "Write the contexts to another file"; }
    const char* Synopsis() const override {
        return "[FILE] -o OUT [--type all|path|database|file] [--provider PROVIDER]...";
    }
    std::vector<Example> Examples() const override;
    void Declare(CLI::App& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::optional<std::string> file_;
    std::string target_;
    ViewChoice view_;
};

std::vector<Example> Write::Examples() const {
    return {{"dyadctx write site.xml --db-context -o copy.xml",
             "All contexts as the library writes them; scenarios are left out"}};
}

void Write::Declare(CLI::App& arguments) {
    DeclareFile(arguments, file_);
    arguments
        .add_option("-o,--output", target_,
                    "The file to write; an existing one is replaced. - is standard output")
        ->type_name("OUT")
        ->required();
    DeclareView(arguments, view_);
}

ExitStatus Write::Run(Output& output) {
    const Source source = LoadSourceOrFail(file_, output);
    VELDyadCtxCollector& collector = *source.collector;
    SelectView(collector, view_, output);
    VELUnicodeString text;
    if (collector.StreamText(text) < 0)
        throw Failure(ExitStatus::NotWritten,
                      Visible(target_) +
                          " could not be written: a context cannot be put into a file");
    WriteTarget(target_, text.AsView(), output);
    const int count = collector.GetNbCtxs();
    if (!IsStandardOutput(target_))
        output.Note(std::to_string(count) + (count == 1 ? " context" : " contexts") +
                    " written to " + Visible(target_));
    if (collector.GetNbScenarios() > 0)
        output.Note("exchange scenarios are not written");
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeWrite() {
    return std::make_unique<Write>();
}

} // namespace dyadctx::tool
