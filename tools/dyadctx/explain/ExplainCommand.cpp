// SPDX-License-Identifier: MIT
// `explain`: what a message means, and what to do about it.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/explain/ExplanationPages.h"

#include <nlohmann/json.hpp>

namespace dyadctx::tool {

namespace {

class Explain final : public Command {
public:
    const char* Name() const override { return "explain"; }
    const char* Summary() const override {
        return "Tell what a finding of check means and what to do";
    }
    const char* Synopsis() const override { return "[KEY] [--format text|json|man]"; }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    const Explanation& Wanted() const;
    void WriteAll(Output& output) const;

    std::optional<std::string> key_;
    std::string format_ = "text";
};

std::vector<Example> Explain::Examples() const {
    return {{"dyadctx explain Ctx.Check.CtxUnknownParamType",
             "What the message means and what to do; the key stands behind the finding"},
            {"dyadctx explain", "All keys"}};
}

void Explain::Declare(Arguments& arguments) {
    arguments
        .Add("KEY", key_,
             "The key behind a finding, with its brackets or without; all keys are listed when it "
             "is left out. The message is shown in the language of the user, the explanation in "
             "English")
        .Takes("KEY");
    arguments
        .Add("--format", format_,
             "How to write the answer: text for people, json for programs, man for the source of "
             "dyadctx-messages(7), which tells all keys")
        .OneOf({"text", "json", "man"})
        .ShowPreset();
}

const Explanation& Explain::Wanted() const {
    const Explanation* found = FindExplanation(*key_);
    if (found != nullptr)
        return *found;
    const std::string nearest = NearestKey(*key_);
    throw Failure(ExitStatus::NotFound, Words("explain.no-key", {Visible(*key_)}) +
                                            (nearest.empty() ? Words("explain.all-keys")
                                                             : Words("did-you-mean", {nearest})));
}

void Explain::WriteAll(Output& output) const {
    if (format_ == "json")
        output.WriteJson(KeysAsJson());
    else if (format_ == "man")
        output.Write(ManualPage());
    else
        WriteKeys(output);
}

ExitStatus Explain::Run(Output& output) {
    if (!key_) {
        WriteAll(output);
        return ExitStatus::Done;
    }
    if (format_ == "man")
        throw Failure(ExitStatus::Usage, Words("explain.man"));
    const Explanation& explanation = Wanted();
    if (format_ == "json")
        output.WriteJson(ExplanationAsJson(explanation));
    else
        WriteExplanation(explanation, output);
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeExplain() {
    return std::make_unique<Explain>();
}

} // namespace dyadctx::tool
