// SPDX-License-Identifier: MIT
// Names in pictures: shortened, measured, and escaped for each language.
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/graph/DotWriter.h"
#include "tools/dyadctx/graph/MermaidWriter.h"
#include "tools/dyadctx/graph/PictureText.h"
#include "tools/dyadctx/graph/SvgShapes.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using namespace dyadctx::tool;

struct TextCase {
    std::string text;
    std::string expected;
};

std::string Repeated(const std::string& text, int times) {
    std::string repeated;
    for (int i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

} // namespace

TEST(GraphText, DotShowsEveryTextAsItIs) {
    const std::vector<TextCase> cases{
        {"", R"("")"},
        {"plain", R"("plain")"},
        {R"(say "hi")", R"("say \"hi\"")"},
        {R"(C:\new\N)", R"("C:\\new\\N")"},
        {"end\\", R"("end\\")"},
        {"two\nlines", R"("two\nlines")"},
        {"a & b &lt; c", R"("a &amp; b &amp;lt; c")"},
        {"<b>x</b>", R"("<b>x</b>")"},
        {"{a|b} [c] ; // # %s %n", R"("{a|b} [c] ; // # %s %n")"},
        {"図面", R"("図面")"},
    };
    for (const TextCase& example : cases)
        EXPECT_EQ(DotQuoted(example.text), example.expected);
}

TEST(GraphText, MermaidShowsEveryTextAsItIs) {
    const std::vector<TextCase> cases{
        {"", R"("")"},
        {"two words", R"("two words")"},
        {"Main-vault_2.1,b", R"("Main-vault_2.1,b")"},
        {"/data/design", R"("/data/design")"},
        {R"(say "hi")", R"("say #34;hi#34;")"},
        {"[a](b){c}<d>|e|", R"("#91;a#93;#40;b#41;#123;c#125;#60;d#62;#124;e#124;")"},
        {"a#b;", R"("a#35;b#59;")"},
        {"&amp;", R"("#38;amp#59;")"},
        {"%%{init}%% %s", R"("#37;#37;#123;init#125;#37;#37; #37;s")"},
        {"`code` *bold* _it_", R"("#96;code#96; #42;bold#42; #95;it#95;")"},
        {"1. first", R"("1#46; first")"},
        {"- first", R"("#45; first")"},
        {"style:x#y", R"("style#58;x#35;y")"},
        {R"(C:\new)", R"("C#58;#92;new")"},
        {"end", R"("end")"},
        {"two\nlines", R"("two<br/>lines")"},
        {"図面", R"("図面")"},
    };
    for (const TextCase& example : cases)
        EXPECT_EQ(MermaidQuoted(example.text), example.expected);
}

TEST(GraphText, XmlShowsEveryTextAsItIs) {
    const std::vector<TextCase> cases{
        {"", ""},
        {"<b>&\"'</b>", "&lt;b&gt;&amp;&quot;&#39;&lt;/b&gt;"},
        {"]]>", "]]&gt;"},
        {"&amp; %s", "&amp;amp; %s"},
        {"a\xEF\xBF\xBE\xEF\xBF\xBF z", "a\xEF\xBF\xBD\xEF\xBF\xBD z"},
        {"図面 🚀", "図面 🚀"},
    };
    for (const TextCase& example : cases)
        EXPECT_EQ(XmlEscaped(example.text), example.expected);
}

TEST(GraphText, WhatWouldNotBeSeenIsWrittenOut) {
    const std::vector<TextCase> cases{
        {"a\nb", "a\\nb"},
        {std::string("a\0b", 3), "a\\x00b"},
        {"a\xC3", "a\\xc3"},
        {"a\u200Bb\uFEFF", "a\\u200bb\\ufeff"},
        {"x\u202Ey", "x\\u202ey"},
        {"👩\u200D🚀", "👩\u200D🚀"},
        {"مخزن", "مخزن"},
        {"\x1b[2J\u009b", "\\x1b[2J\\u009b"},
        {"\u2028\u061c\u200f", "\\u2028\\u061c\\u200f"},
    };
    for (const TextCase& example : cases)
        EXPECT_EQ(Traceable(example.text), example.expected);
}

TEST(GraphText, LongTextsKeepTheirBeginningAndTheirEnd) {
    EXPECT_EQ(Shortened("short", 5), "short");
    EXPECT_EQ(Shortened("abcdefghijklmnop", 10), "abcdef…nop");
    EXPECT_EQ(Shortened("図面図面図面図面", 10), "図面図…面");
    EXPECT_EQ(Shortened(Repeated("x", 100000), 10), "xxxxxx…xxx");
}

TEST(GraphText, MarksOnALetterAreNotCutOff) {
    // e with an accent of its own, before and after the cut.
    const std::string e = "e\u0301";
    EXPECT_EQ(Shortened(Repeated(e, 12), 7), Repeated(e, 4) + "…" + Repeated(e, 2));
}

TEST(GraphText, PilesOfMarksDoNotMakeATextEndless) {
    const std::string pile = "a" + Repeated("\u0301", 5000);
    EXPECT_LT(Shortened(pile, 10).size(), 200U);
}

TEST(GraphText, ANodeSaysWhatItIs) {
    GraphNode node;
    node.name = "Design";
    node.parameter = "/work";
    node.type = "Path";
    EXPECT_EQ(HeadLine(node), "Design");
    EXPECT_EQ(SubLine(node), "/work");
    EXPECT_EQ(FullText(node), "Design\nType: Path\nParameter: /work");
    node.parameter = "";
    EXPECT_EQ(SubLine(node), "Path");
    node.name = "";
    node.isUnresolved = true;
    EXPECT_EQ(HeadLine(node), "(no name)");
    EXPECT_EQ(SubLine(node), "not declared");
    EXPECT_EQ(FullText(node), "(no name)\nnot declared");
}

TEST(GraphText, TheFullNameStaysWhereTheBoxHasAPart) {
    GraphNode node;
    node.name = Repeated("long ", 40) + "end";
    EXPECT_LE(DisplayWidth(HeadLine(node)), 32);
    EXPECT_EQ(FullText(node), node.name);
}

TEST(GraphText, WideCharactersTakeMoreRoom) {
    EXPECT_GT(TextWidth("図面", 10), 1.4 * TextWidth("ab", 10));
    EXPECT_GT(TextWidth("WW", 10), TextWidth("ii", 10));
    EXPECT_DOUBLE_EQ(TextWidth("e\u0301", 10), TextWidth("e", 10));
    EXPECT_DOUBLE_EQ(TextWidth("abc", 20), 2 * TextWidth("abc", 10));
}

TEST(GraphText, NumbersHaveAtMostOneDigitAfterThePoint) {
    EXPECT_EQ(SvgNumber(0), "0");
    EXPECT_EQ(SvgNumber(12.34), "12.3");
    EXPECT_EQ(SvgNumber(-0.04), "0");
    EXPECT_EQ(SvgNumber(-0.5), "-0.5");
    EXPECT_EQ(SvgNumber(99.96), "100");
}

} // namespace dyadctx::test
