// SPDX-License-Identifier: MIT
#include "trace/VELDyadConsoleTrace.h"

#include "support/ChildProcess.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <optional>
#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

std::string ConsoleOf(const std::string& part, const std::optional<std::string>& tracer) {
    ChildRun run;
    run.program = DYADCTX_CONSOLE_PROBE;
    run.arguments = {part};
    run.environment["VELDyadCtxTracer"] = tracer;
    const ChildResult result = RunChild(run);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError, "");
    return result.standardOutput;
}

// A buffer of exactly `size` bytes, with what the call left in it.
struct Formatted {
    int result;
    std::string bytes;
};

VELDYADCTX_PRINTF(2, 3)
Formatted Format(unsigned int size, const char* format, ...) {
    std::vector<char> buffer(size, '#');
    va_list args;
    va_start(args, format);
    const int result = DYADCTXVsnprintf(buffer.data(), size, format, args);
    va_end(args);
    return {result, std::string(buffer.begin(), buffer.end())};
}

int FormatUnchecked(char* buffer, unsigned int size, const char* format, ...) {
    // Reached through a pointer, the call escapes the compiler's check of the format.
    int (*const call)(char*, unsigned int, const char*, va_list) = DYADCTXVsnprintf;
    va_list args;
    va_start(args, format);
    const int result = call(buffer, size, format, args);
    va_end(args);
    return result;
}

} // namespace

TEST(VELDyadConsoleTrace, IsOffUnlessTheTracerLevelIsANumberOtherThanZero) {
    for (const std::optional<std::string>& level :
         std::vector<std::optional<std::string>>{std::nullopt, "", "0", "abc", "0x1", "00", "-0"}) {
        EXPECT_EQ(ConsoleOf("kinds", level), "") << level.value_or("(unset)");
    }
    for (const char* level : {"1", "7", "-1", "1abc", "4294967296", "99999999999999999999"})
        EXPECT_NE(ConsoleOf("kinds", level), "") << level;
}

TEST(VELDyadConsoleTrace, WritesPrefixTextAndResultToStandardOutput) {
    EXPECT_EQ(ConsoleOf("kinds", "1"), "DYADCTX : plain\n"
                                       "DYADCTX : done 1 OK\n"
                                       "DYADCTX : more OK\n"
                                       "DYADCTX : less KO\n"
                                       "DYADCTX ERROR : plain <%s>\n"
                                       "DYADCTX ERROR : done OK\n"
                                       "DYADCTX ERROR : failed a b KO\n");
}

TEST(VELDyadConsoleTrace, TakesTheResultAsA32BitCode) {
    EXPECT_EQ(ConsoleOf("results", "1"), "DYADCTX : int OK\n"
                                         "DYADCTX : failure KO\n"
                                         "DYADCTX : failure KO\n"
                                         "DYADCTX ERROR : failure KO\n");
}

TEST(VELDyadConsoleTrace, WritesTheTextAsItIs) {
    EXPECT_EQ(ConsoleOf("odd", "1"), "DYADCTX : ends in a newline\n OK\n"
                                     "DYADCTX : Element : made\n\n"
                                     "DYADCTX : \n"
                                     "DYADCTX : a OK\n"
                                     "DYADCTX :  OK\n"
                                     "DYADCTX : after\n");
}

TEST(VELDyadConsoleTrace, CutsATextAfter9999Bytes) {
    const std::string a(9999, 'a');
    const std::string b(9999, 'b');
    EXPECT_EQ(ConsoleOf("long", "1"), "DYADCTX : " + a + "\n" + "DYADCTX : " + b + "\n" +
                                          "DYADCTX ERROR : " + b + " OK\n" +
                                          "DYADCTX ERROR : short KO\n");
}

TEST(VELDyadConsoleTrace, WritesNothingWithoutFormat) {
    EXPECT_EQ(ConsoleOf("no-format", "1"), "");
}

TEST(VELDyadConsoleTrace, IsNotTurnedOnAfterLoad) {
    EXPECT_EQ(ConsoleOf("late", std::nullopt), "");
    EXPECT_EQ(ConsoleOf("late", "1"), "DYADCTX : late\n");
}

TEST(DYADCTXVsnprintf, FillsTheBufferToItsLastByte) {
    using namespace std::string_literals;
    struct Case {
        unsigned int size;
        const char* text;
        int result;
        std::string bytes;
    };
    for (const Case& expected : std::vector<Case>{
             {8, "abc", 3, "abc\0####"s},
             {4, "abc", 3, "abc\0"s},
             {3, "abc", 3, "abc"},
             {2, "abc", -1, "ab"},
             {1, "abc", -1, "a"},
             {1, "", 0, "\0"s},
             {0, "", 0, ""},
             {0, "abc", -1, ""},
         }) {
        const Formatted formatted = Format(expected.size, "%s", expected.text);
        EXPECT_EQ(formatted.result, expected.result) << expected.size << expected.text;
        EXPECT_EQ(formatted.bytes, expected.bytes) << expected.size << expected.text;
    }
}

TEST(DYADCTXVsnprintf, UsesItsArgumentsForEachPass) {
    EXPECT_EQ(Format(5, "%d-%s-%d", 1, "x", 2).bytes, "1-x-2");
    EXPECT_EQ(Format(4, "%d-%s-%d", 1, "x", 2).bytes, "1-x-");
}

TEST(DYADCTXVsnprintf, TakesNoBufferOnlyForNoBytes) {
    EXPECT_EQ(FormatUnchecked(nullptr, 0, ""), 0);
    EXPECT_EQ(FormatUnchecked(nullptr, 0, "abc"), -1);
    EXPECT_EQ(FormatUnchecked(nullptr, 5, "abc"), -1);
}

TEST(DYADCTXVsnprintf, RefusesAMissingFormatAndOneThatCannotBeApplied) {
    char buffer[] = "####";
    EXPECT_EQ(FormatUnchecked(buffer, 4, nullptr), -1);
    EXPECT_STREQ(buffer, "####");
    EXPECT_EQ(Format(20, "wide %ls", L"\x20AC").result, -1);
}

TEST(DYADCTXVsnprintf, ReturnsMinusOneWithoutMemory) {
    std::string longText(1000, 'x');
    const FailingAllocation failure(1, FailingAllocations::FromThatOneOn);
    char buffer[4] = "###";
    EXPECT_EQ(FormatUnchecked(buffer, 3, "%s", longText.c_str()), -1);
    EXPECT_STREQ(buffer, "###");
    // What fits needs no memory.
    EXPECT_EQ(FormatUnchecked(buffer, 3, "%s", "ab"), 2);
    EXPECT_STREQ(buffer, "ab");
}

} // namespace dyadctx::test
