// SPDX-License-Identifier: MIT
// What a message or another finding means, and what to do about it.
//
// The texts are the files of resources/explanations, whose README says how they are written. Code
// in them is in backquotes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

struct ExplanationExample {
    // "Wrong", "Right", "Example" for one that is neither, "Program" for a client program that the
    // others use.
    std::string role;
    // What is to be known before one reads it, perhaps nothing.
    std::string remark;
    // "xml" for a context file, "console" for commands with what they say, "cpp" for a program.
    std::string language;
    // Of a context file: the options of `dyadctx check`.
    std::vector<std::string> options;
    // Of a context file: whether the program checks it instead of the tool.
    bool byProgram = false;
    // Each line with its line feed.
    std::string text;

    // "Wrong (context file, with --db-context)".
    std::string Caption() const;
};

using Paragraphs = std::vector<std::string>;

struct Explanation {
    std::string key;
    // What the places {0}, {1}, ... of the text stand for.
    std::vector<std::string> parameters;
    Paragraphs meaning;
    Paragraphs advice;
    std::vector<ExplanationExample> examples;

    // Whether it is a message of the catalog, and no finding of the check alone.
    bool IsOfCatalog() const noexcept;
    // "error", "warning", "note"; "heading" and "label" for texts that are no findings.
    std::string Kind() const;
    // The message itself, in the language of the user, with its places as they are.
    std::string Message() const;
};

// Reads one file of resources/explanations. Throws std::logic_error, with the line, for a file that
// is not as its README says.
Explanation ParseExplanation(std::string_view key, std::string_view text);

// All there are, in alphabetical order of the keys.
const std::vector<Explanation>& Explanations();

// The one for that key, letter case aside; "[KEY]", as after a finding, will do as well.
// Null when there is none.
const Explanation* FindExplanation(std::string_view key);

// The key that may have been meant; empty when none is near.
std::string NearestKey(std::string_view key);

// The paragraphs with a blank line between them.
std::string JoinedParagraphs(const Paragraphs& paragraphs);
// The same without the backquotes round code.
std::string WithoutMarks(std::string text);

} // namespace dyadctx::tool
