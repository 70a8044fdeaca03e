// SPDX-License-Identifier: MIT
// `write`: a view of a file, written as a context file.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Losses.h"
#include "tools/dyadctx/Paths.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Target.h"
#include "tools/dyadctx/Words.h"

#include <filesystem>
#include <fstream>
#include <new>
#include <sstream>
#include <system_error>

namespace dyadctx::tool {

namespace {

class Write final : public Command {
public:
    const char* Name() const override { return "write"; }
    const char* Summary() const override { return "Write the contexts to another file"; }
    const char* Synopsis() const override {
        return "[FILE] -o OUT [--force] [--type all|path|database|file] [--provider PROVIDER]...";
    }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::optional<std::string> file_;
    std::string target_;
    bool force_ = false;
    ViewChoice view_;
};

std::vector<Example> Write::Examples() const {
    return {{"dyadctx write site.xml --db-context -o copy.xml",
             "All contexts as the library writes them; scenarios are left out"}};
}

void Write::Declare(Arguments& arguments) {
    DeclareFile(arguments, file_);
    arguments
        .Add("-o,--output", target_,
             "The file to write; an existing one is replaced. - is standard output")
        .Takes("OUT")
        .Required();
    arguments.AddSwitch("--force", force_,
                        "Write also over the FILE that is read when something of it would be lost");
    DeclareView(arguments, view_);
}

std::string BytesOf(const std::string& file) {
    std::ifstream stream(NativePath(file), std::ios::binary);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

bool IsSameFile(const std::string& one, const std::string& other) {
    std::error_code missing;
    return std::filesystem::equivalent(NativePath(one), NativePath(other), missing);
}

std::string ViewAsText(VELDyadCtxCollector& collector, const std::string& target) {
    VELUnicodeString text;
    if (collector.StreamText(text) < 0)
        throw Failure(
            ExitStatus::NotWritten,
            Words("failure.not-written", {Visible(target), Words("failure.not-storable")}));
    return std::string(text.AsView());
}

std::string Enumerated(const std::vector<Loss>& losses) {
    std::string text;
    for (const Loss& loss : losses)
        text += (text.empty() ? "" : ", ") + loss.what;
    return text;
}

// Says what `check` will say of the result, where it will refuse it.
void NoteFaultsOf(const std::string& result, Output& output) {
    VELDyadCtxFileCheck check;
    if (check.Run("./result.xml", VELUnicodeString(result)) < 0)
        throw std::bad_alloc();
    for (const Finding& error : ErrorsOf(check))
        output.Note(
            Words("write.refused", {Visible(error.text.AsView()), Visible(error.id.AsView())}));
}

ExitStatus Write::Run(Output& output) {
    const Source source = LoadSourceOrFail(file_, output);
    VELDyadCtxCollector& collector = *source.collector;
    VELDyadCtxFileCheck check;
    RunCheck(check, source);
    SelectView(collector, view_, output);
    const std::string text = ViewAsText(collector, target_);
    const std::vector<Loss> losses = LossesOf(
        source.text ? std::string(source.text->AsView()) : BytesOf(source.path), check, collector);
    for (const Loss& loss : losses)
        output.Note(Words("write.left-out", {loss.what, loss.why}));
    NoteFaultsOf(text, output);
    if (!losses.empty() && !force_ && !source.text && IsSameFile(source.path, target_))
        throw Failure(ExitStatus::NotWritten,
                      Words("write.would-lose", {Visible(target_), Enumerated(losses)}));
    WriteTarget(target_, text, output);
    if (!IsStandardOutput(target_))
        output.Note(CountedWords(collector.GetNbCtxs(), "write.done", Visible(target_)));
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeWrite() {
    return std::make_unique<Write>();
}

} // namespace dyadctx::tool
