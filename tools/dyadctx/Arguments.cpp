// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Arguments.h"

#include <CLI/CLI.hpp>

namespace dyadctx::tool {

Arguments::Option Arguments::Add(const char* names, std::string& value,
                                 const std::string& meaning) {
    return Option(app_->add_option(names, value, meaning));
}

Arguments::Option Arguments::Add(const char* names, std::optional<std::string>& value,
                                 const std::string& meaning) {
    return Option(app_->add_option(names, value, meaning));
}

Arguments::Option Arguments::Add(const char* names, std::vector<std::string>& values,
                                 const std::string& meaning) {
    return Option(app_->add_option(names, values, meaning));
}

Arguments::Option Arguments::Add(const char* names, int& value, const std::string& meaning) {
    return Option(app_->add_option(names, value, meaning));
}

Arguments::Option Arguments::AddSwitch(const char* names, bool& value, const std::string& meaning) {
    return Option(app_->add_flag(names, value, meaning));
}

Arguments Arguments::AddCommand(const char* name, const char* meaning) {
    app_->require_subcommand(1);
    return Arguments(*app_->add_subcommand(name, meaning)->fallthrough());
}

std::string Arguments::ChosenCommand() const {
    const std::vector<CLI::App*> chosen = app_->get_subcommands();
    return chosen.empty() ? "" : chosen.front()->get_name();
}

Arguments::Option& Arguments::Option::Required() {
    option_->required();
    return *this;
}

Arguments::Option& Arguments::Option::Takes(const char* label) {
    option_->type_name(label);
    return *this;
}

Arguments::Option& Arguments::Option::OneOf(const std::vector<std::string>& words) {
    std::string type;
    for (const std::string& word : words)
        type += (type.empty() ? "" : "|") + word;
    CLI::Validator isOneOf = CLI::IsMember(words);
    // The words are the name of the type, so they are not repeated.
    isOneOf.description("");
    option_->check(isOneOf)->type_name(type);
    return *this;
}

Arguments::Option& Arguments::Option::Between(int least, int most) {
    option_->check(CLI::Range(least, most).description(""));
    return *this;
}

Arguments::Option& Arguments::Option::ShowPreset() {
    option_->capture_default_str();
    return *this;
}

Arguments::Option& Arguments::Option::OneValueEach() {
    option_->allow_extra_args(false);
    return *this;
}

Arguments::Option& Arguments::Option::Needs(const Option& other) {
    option_->needs(other.option_);
    return *this;
}

Arguments::Option& Arguments::Option::Excludes(const Option& other) {
    option_->excludes(other.option_);
    return *this;
}

} // namespace dyadctx::tool
