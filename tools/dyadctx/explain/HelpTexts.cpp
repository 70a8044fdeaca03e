// SPDX-License-Identifier: MIT
#include "tools/dyadctx/explain/ExplanationPages.h"

namespace dyadctx::tool {

std::string HelpText(const Explanation& explanation) {
    std::string text = WithoutMarks(JoinedParagraphs(explanation.advice));
    for (const ExplanationExample& example : explanation.examples) {
        text += "\n\n" + example.Caption() + "\n";
        if (!example.remark.empty())
            text += WithoutMarks(example.remark) + "\n";
        text += "\n" + example.text;
    }
    return text;
}

std::string HelpMarkdown(const Explanation& explanation) {
    std::string text = JoinedParagraphs(explanation.advice);
    for (const ExplanationExample& example : explanation.examples) {
        text += "\n\n**" + example.Caption() + "**\n\n";
        if (!example.remark.empty())
            text += example.remark + "\n\n";
        text += "```" + example.language + "\n" + example.text + "```";
    }
    return text + "\n";
}

} // namespace dyadctx::tool
