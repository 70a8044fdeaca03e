// SPDX-License-Identifier: MIT
// The files of resources/explanations: what is read of them, and what is refused.
#include "tools/dyadctx/explain/Explanation.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace dyadctx::test {

namespace {

using tool::Explanation;
using tool::ParseExplanation;

const std::string Start = "# a-key\n\n## Meaning\n\nIt is so.\n\n## What to do\n\nDo so.\n\n";

// The complaint about a file, empty for one that is taken.
std::string FaultOf(const std::string& text) {
    try {
        ParseExplanation("a-key", text);
        return "";
    } catch (const std::logic_error& error) {
        return error.what();
    }
}

} // namespace

TEST(ExplanationParser, ReadsAllSections) {
    const Explanation read = ParseExplanation("a-key", "# a-key\n\n"
                                                       "- {0}: the name\n- {1}: the type\n\n"
                                                       "## Meaning\n\nOne\nline.\n\nAnother.\n\n"
                                                       "## What to do\n\nDo so.\n\n"
                                                       "## Wrong\n\nSee.\n\n"
                                                       "```xml --deep --db-context\n<a>\n\n```\n\n"
                                                       "## Right\n\n```console\n$ b\n```\n");
    EXPECT_EQ(read.key, "a-key");
    EXPECT_EQ(read.parameters, (std::vector<std::string>{"the name", "the type"}));
    EXPECT_EQ(read.meaning, (tool::Paragraphs{"One line.", "Another."}));
    EXPECT_EQ(read.advice, (tool::Paragraphs{"Do so."}));
    ASSERT_EQ(read.examples.size(), 2U);
    EXPECT_EQ(read.examples[0].role, "Wrong");
    EXPECT_EQ(read.examples[0].remark, "See.");
    EXPECT_EQ(read.examples[0].language, "xml");
    EXPECT_EQ(read.examples[0].options, (std::vector<std::string>{"--deep", "--db-context"}));
    EXPECT_FALSE(read.examples[0].byProgram);
    EXPECT_EQ(read.examples[0].text, "<a>\n\n");
    EXPECT_EQ(read.examples[1].text, "$ b\n");
}

TEST(ExplanationParser, AFileForAProgramIsNoneForTheTool) {
    const Explanation read =
        ParseExplanation("a-key", Start + "## Wrong\n\n```xml program\na\n```\n");
    EXPECT_TRUE(read.examples.at(0).byProgram);
    EXPECT_TRUE(read.examples.at(0).options.empty());
}

TEST(ExplanationParser, RefusesWhatIsNotAsItShouldBe) {
    const std::pair<std::string, std::string> cases[] = {
        {"# other\n", "line 1: the title is not the key"},
        {"", "line 1: the title is not the key"},
        {"# a-key\n\n- {1}: second\n", "line 3: the parameter is out of order"},
        {"# a-key\n\nloose text\n", "line 3: the text belongs to nothing"},
        {"# a-key\n\n## Reason\n", "line 3: the section is not known"},
        {"# a-key\n\n## Meaning\n\nIt is so.\n", "meaning or advice is missing"},
        {Start + "```xml\n", "line 11: the example belongs to nothing"},
        {Start + "## Wrong\n```text\n", "line 12: the language of the example is not known"},
        {Start + "## Wrong\n```xml\n<a/>\n", "the example has no end"},
        {Start + "## Wrong\n", "an example is missing"},
        {Start + "## Wrong\n```xml\na\n```\n```xml\nb\n```\n", "line 15: the example belongs to"},
        {Start + "## Wrong\n```xml\na\n```\nbehind\n", "line 15: the text belongs to nothing"},
    };
    for (const auto& [text, fault] : cases) {
        EXPECT_NE(FaultOf(text).find(fault), std::string::npos)
            << FaultOf(text) << "\nis not: " << fault;
        EXPECT_EQ(FaultOf(text).find("explanation of a-key, line "), 0U);
    }
    EXPECT_EQ(FaultOf(Start), "");
}

} // namespace dyadctx::test
