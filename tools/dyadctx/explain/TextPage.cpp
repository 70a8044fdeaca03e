// SPDX-License-Identifier: MIT
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/explain/ExplanationPages.h"

#include <sstream>

namespace dyadctx::tool {

namespace {

constexpr int Width = 80;
constexpr const char* Indent = "  ";

Paint PaintOfKind(const std::string& kind) {
    if (kind == "error")
        return Paint::Bad;
    return kind == "warning" ? Paint::Changed : Paint::Heading;
}

Paint PaintOfRole(const std::string& role) {
    if (role == "Wrong")
        return Paint::Bad;
    return role == "Right" ? Paint::Good : Paint::Heading;
}

// The words of a paragraph on lines that are not too long, each indented.
std::string Wrapped(const std::string& paragraph) {
    std::istringstream words(paragraph);
    std::string text;
    std::string line;
    for (std::string word; words >> word;) {
        if (!line.empty() && DisplayWidth(Indent + line + " " + word) > Width) {
            text += Indent + line + "\n";
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return text + Indent + line + "\n";
}

std::string Indented(const std::string& text) {
    std::istringstream lines(text);
    std::string indented;
    for (std::string line; std::getline(lines, line);)
        indented += (line.empty() ? "" : Indent + line) + "\n";
    return indented;
}

void WriteParameters(const Explanation& explanation, Output& output) {
    if (!explanation.parameters.empty())
        output.Write("\n");
    int place = 0;
    for (const std::string& parameter : explanation.parameters)
        output.Write(Indent + ("{" + std::to_string(place++)) + "}  " + parameter + "\n");
}

void WriteSection(const std::string& heading, const Paragraphs& paragraphs, Output& output) {
    output.Write("\n" + output.Painted(Paint::Heading, heading) + "\n");
    bool isFirst = true;
    for (const std::string& paragraph : paragraphs) {
        output.Write((isFirst ? "" : "\n") + Wrapped(paragraph));
        isFirst = false;
    }
}

void WriteExample(const ExplanationExample& example, Output& output) {
    output.Write("\n" + output.Painted(PaintOfRole(example.role), example.Caption()) + "\n");
    if (!example.remark.empty())
        output.Write(Wrapped(example.remark) + "\n");
    output.Write(Indented(example.text));
}

// In the list of all keys one sentence of the text will do.
std::string FirstSentence(const std::string& message) {
    constexpr std::string_view FullStop = "\xE3\x80\x82";
    const std::size_t blank = message.find(". ");
    const std::size_t wide = message.find(FullStop);
    if (blank != std::string::npos)
        return message.substr(0, blank + 1);
    return wide != std::string::npos ? message.substr(0, wide + FullStop.size()) : message;
}

std::string KindLabel(const Explanation& explanation) {
    return Words("kind." + explanation.Kind());
}

std::string KeyTable(bool ofCatalog, const Output& output) {
    Table table({Words("explain.key"), Words("explain.kind"), Words("explain.text")});
    for (const Explanation& one : Explanations()) {
        if (one.IsOfCatalog() == ofCatalog)
            table.AddRow({one.key, KindLabel(one), Visible(FirstSentence(one.Message()))});
    }
    return table.Render(output);
}

} // namespace

void WriteExplanation(const Explanation& explanation, Output& output) {
    const std::string kind = explanation.Kind();
    output.Write(output.Painted(Paint::Heading, explanation.key) + " (" +
                 output.Painted(PaintOfKind(kind), KindLabel(explanation)) + ")\n\n");
    output.Write(Wrapped(Visible(explanation.Message())));
    WriteParameters(explanation, output);
    WriteSection(Words("explain.meaning"), explanation.meaning, output);
    WriteSection(Words("explain.advice"), explanation.advice, output);
    for (const ExplanationExample& example : explanation.examples)
        WriteExample(example, output);
}

void WriteKeys(Output& output) {
    output.Write(output.Painted(Paint::Heading, Words("explain.messages")) + "\n");
    output.Write(KeyTable(true, output));
    output.Write("\n" + output.Painted(Paint::Heading, Words("explain.findings")) + "\n");
    output.Write(KeyTable(false, output));
}

} // namespace dyadctx::tool
