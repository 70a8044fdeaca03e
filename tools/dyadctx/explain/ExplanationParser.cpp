// SPDX-License-Identifier: MIT
#include "tools/dyadctx/explain/Explanation.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>

namespace dyadctx::tool {

namespace {

constexpr std::string_view Title = "# ";
constexpr std::string_view Section = "## ";
constexpr std::string_view Fence = "```";
constexpr std::string_view Parameter = "- {";
constexpr std::string_view MeaningSection = "Meaning";
constexpr std::string_view AdviceSection = "What to do";
constexpr std::string_view ByProgram = "program";
constexpr std::array<std::string_view, 4> Roles{"Program", "Wrong", "Right", "Example"};
constexpr std::array<std::string_view, 3> Languages{"xml", "console", "cpp"};

template<std::size_t Count>
bool Holds(const std::array<std::string_view, Count>& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

class Parser {
public:
    Parser(std::string_view key, std::string_view text) : in_(std::string(text)) {
        explanation_.key = key;
    }

    Explanation Parse() {
        Require(Next() && line_ == std::string(Title) + explanation_.key,
                "the title is not the key");
        while (Next())
            TakeLine();
        Require(!explanation_.meaning.empty() && !explanation_.advice.empty(),
                "meaning or advice is missing");
        for (const ExplanationExample& example : explanation_.examples)
            Require(!example.text.empty(), "an example is missing");
        return std::move(explanation_);
    }

private:
    bool Next() {
        ++number_;
        return static_cast<bool>(std::getline(in_, line_));
    }

    void Require(bool holds, const char* fault) const {
        if (!holds)
            throw std::logic_error("explanation of " + explanation_.key + ", line " +
                                   std::to_string(number_) + ": " + fault);
    }

    void TakeLine() {
        if (line_.starts_with(Section))
            BeginSection(line_.substr(Section.size()));
        else if (line_.starts_with(Fence))
            TakeExample(line_.substr(Fence.size()));
        else if (line_.starts_with(Parameter) && section_.empty())
            TakeParameter();
        else
            TakeText();
    }

    void BeginSection(const std::string& name) {
        section_ = name;
        isNewParagraph_ = true;
        if (name == MeaningSection || name == AdviceSection)
            return;
        Require(Holds(Roles, name), "the section is not known");
        explanation_.examples.emplace_back().role = name;
    }

    void TakeParameter() {
        const std::string start =
            std::string(Parameter) + std::to_string(explanation_.parameters.size()) + "}: ";
        Require(line_.starts_with(start), "the parameter is out of order");
        explanation_.parameters.push_back(line_.substr(start.size()));
    }

    void TakeText() {
        if (line_.empty()) {
            isNewParagraph_ = true;
            return;
        }
        Paragraphs& paragraphs =
            section_ == MeaningSection ? explanation_.meaning : explanation_.advice;
        if (section_ == MeaningSection || section_ == AdviceSection) {
            if (isNewParagraph_)
                paragraphs.emplace_back();
            AddLine(paragraphs.back());
        } else {
            Require(!explanation_.examples.empty() && explanation_.examples.back().text.empty(),
                    "the text belongs to nothing");
            AddLine(explanation_.examples.back().remark);
        }
        isNewParagraph_ = false;
    }

    void AddLine(std::string& paragraph) const {
        paragraph += (paragraph.empty() ? "" : " ") + line_;
    }

    // The language and the options follow the fence.
    void TakeExample(const std::string& information) {
        Require(!explanation_.examples.empty() && explanation_.examples.back().text.empty(),
                "the example belongs to nothing");
        ExplanationExample& example = explanation_.examples.back();
        std::istringstream words(information);
        words >> example.language;
        Require(Holds(Languages, example.language), "the language of the example is not known");
        for (std::string word; words >> word;) {
            if (word == ByProgram)
                example.byProgram = true;
            else
                example.options.push_back(word);
        }
        while (Next() && line_ != Fence)
            example.text += line_ + "\n";
        Require(line_ == Fence, "the example has no end");
    }

    std::istringstream in_;
    std::string line_;
    int number_ = 0;
    std::string section_;
    bool isNewParagraph_ = true;
    Explanation explanation_;
};

} // namespace

Explanation ParseExplanation(std::string_view key, std::string_view text) {
    return Parser(key, text).Parse();
}

} // namespace dyadctx::tool
