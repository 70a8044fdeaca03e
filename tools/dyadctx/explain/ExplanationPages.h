// SPDX-License-Identifier: MIT
// The explanations as people and programs read them.
#pragma once

#include "tools/dyadctx/Output.h"
#include "tools/dyadctx/explain/Explanation.h"

#include <string>

namespace dyadctx::tool {

// One explanation for the terminal.
void WriteExplanation(const Explanation& explanation, Output& output);
// One line for each key.
void WriteKeys(Output& output);

Json ExplanationAsJson(const Explanation& explanation);
Json KeysAsJson();

// Advice and examples, as plain text and as Markdown.
std::string HelpText(const Explanation& explanation);
std::string HelpMarkdown(const Explanation& explanation);

// All of them as the source of the manual page dyadctx-messages(7).
std::string ManualPage();

} // namespace dyadctx::tool
