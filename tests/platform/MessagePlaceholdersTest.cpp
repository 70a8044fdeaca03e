// SPDX-License-Identifier: MIT
#include "platform/detail/MessagePlaceholders.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

std::string Filled(std::string_view text, const std::vector<VELUnicodeString>& parameters) {
    return std::string(
        FillPlaceholders(text, parameters.data(), static_cast<int>(parameters.size())).AsView());
}

} // namespace

TEST(MessagePlaceholders, AreReplacedByTheParameterOfTheirNumber) {
    struct Case {
        const char* text;
        const char* filled;
    };
    for (const Case& expected : std::vector<Case>{
             {"", ""},
             {"plain", "plain"},
             {"{0}", "A"},
             {"<{0}>", "<A>"},
             {"{1}{0}{1}", "BAB"},
             {"from {0} to {1}.", "from A to B."},
             // Beyond the parameters.
             {"[{2}][{9}]", "[][]"},
             // Doubled braces.
             {"{{0}}", "{0}"},
             {"{{{0}}}", "{A}"},
             {"{{}}", "{}"},
             {"{{{{", "{{"},
             // What is no placeholder stays as it is.
             {"{", "{"},
             {"}", "}"},
             {"{}", "{}"},
             {"{0", "{0"},
             {"0}", "0}"},
             {"{10}", "{10}"},
             {"{-1}", "{-1}"},
             {"{a}", "{a}"},
             {"{ 0}", "{ 0}"},
             {"{0:x}", "{0:x}"},
             {"{0,5}", "{0,5}"},
             {"{99999999999999999999}", "{99999999999999999999}"},
             {"%s %n {0}", "%s %n A"},
             {"{x{0}", "{xA"},
         }) {
        EXPECT_EQ(Filled(expected.text, {"A", "B"}), expected.filled) << expected.text;
    }
}

TEST(MessagePlaceholders, AreNotLookedForInParameters) {
    EXPECT_EQ(Filled("{0} and {1}", {"{1}", "{0}"}), "{1} and {0}");
    EXPECT_EQ(Filled("{0}", {"{{%s}}"}), "{{%s}}");
    EXPECT_EQ(Filled("{0}0}", {"{"}), "{0}");
}

TEST(MessagePlaceholders, KeepZeroBytesOfParameters) {
    const std::string withZero("a\0b", 3);
    EXPECT_EQ(Filled("<{0}>", {VELUnicodeString(withZero)}), "<" + withZero + ">");
}

TEST(MessagePlaceholders, StayWhenThereIsACountButNoParameters) {
    EXPECT_EQ(FillPlaceholders("<{0}> {{}}", nullptr, 2), VELUnicodeString("<{0}> {}"));
}

TEST(MessagePlaceholders, AreEmptyWithoutParameters) {
    EXPECT_EQ(FillPlaceholders("<{0}>", nullptr, 0), VELUnicodeString("<>"));
    const VELUnicodeString unused("A");
    EXPECT_EQ(FillPlaceholders("<{0}>", &unused, 0), VELUnicodeString("<>"));
    EXPECT_EQ(FillPlaceholders("<{0}>", &unused, -1), VELUnicodeString("<>"));
}

} // namespace dyadctx::test
