// SPDX-License-Identifier: MIT
// What a command takes on its line: options, switches, and values known by their place. Once the
// line is read, what it gives is in the variables named here; the others keep what they held. Only
// what declares the line as a whole sees the parser, which takes long to compile.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace dyadctx::tool {

class Arguments {
public:
    class Option;

    explicit Arguments(CLI::App& app) : app_(&app) {}

    // "-o,--output" is an option, "FILE" a value known by its place.
    Option Add(const char* names, std::string& value, const std::string& meaning);
    Option Add(const char* names, std::optional<std::string>& value, const std::string& meaning);
    Option Add(const char* names, std::vector<std::string>& values, const std::string& meaning);
    Option Add(const char* names, int& value, const std::string& meaning);
    Option AddSwitch(const char* names, bool& value, const std::string& meaning);
    // A command below this one, of which the line must name one; it takes the options above it too.
    Arguments AddCommand(const char* name, const char* meaning);
    // The one that the line named; empty before it is read.
    std::string ChosenCommand() const;

private:
    CLI::App* app_;
};

// Each call says more of the option and returns it.
class Arguments::Option {
public:
    explicit Option(CLI::Option* option) : option_(option) {}

    Option& Required();
    // What the help calls its value.
    Option& Takes(const char* label);
    Option& OneOf(const std::vector<std::string>& words);
    Option& Between(int least, int most);
    // The help shows what its variable holds now.
    Option& ShowPreset();
    // It may be repeated, with one value each time.
    Option& OneValueEach();
    Option& Needs(const Option& other);
    Option& Excludes(const Option& other);

private:
    CLI::Option* option_;
};

} // namespace dyadctx::tool
