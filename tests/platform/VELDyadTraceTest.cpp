// SPDX-License-Identifier: MIT
#include "platform/VELDyadTrace.h"

#include "support/FailingAllocation.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

class ThrowingSink : public VELDyadTraceSink {
public:
    int calls = 0;

private:
    void Write(VELDyadTraceKind, const char*) override {
        ++calls;
        throw std::runtime_error("the host's fault");
    }
};

// Called like this, a format escapes the compiler's check, which is what these tests need.
using TraceFunction = void (*)(const char*, ...);
const TraceFunction UncheckedLog = _CDCDyadTraceLog;

} // namespace

TEST(VELDyadTrace, PassesEachKindOfLineToTheSink) {
    RecordingTrace trace;
    _CDCDyadTraceEnter("entering <%s>", "A");
    _CDCDyadTraceLog("%d of %d", 1, 2);
    _CDCDyadTraceWarning("careful");
    _CDCDyadTraceError("100 %%");
    _CDCDyadTraceLeave("left\n");

    EXPECT_EQ(trace.Lines(), (Lines{"ENTER entering <A>", "LOG 1 of 2", "WARNING careful",
                                    "ERROR 100 %", "LEAVE left\n"}));
}

TEST(VELDyadTrace, CutsNoLine) {
    const std::string text(1000000, 'x');
    RecordingTrace trace;
    _CDCDyadTraceLog("<%s>", text.c_str());

    EXPECT_EQ(trace.Lines(), Lines{"LOG <" + text + ">"});
}

TEST(VELDyadTrace, ASinkReceivesATextAsItIs) {
    RecordingTrace trace;
    _CDCDyadTraceLog("<%s>", "two\nlines\x1b\u202e");
    EXPECT_EQ(trace.TakeLines(), std::vector<std::string>{"LOG <two\nlines\x1b\u202e>"});
}

TEST(VELDyadTrace, NeverTakesAnArgumentForAFormat) {
    RecordingTrace trace;
    _CDCDyadTraceLog("<%s>", "%s%n%d");

    EXPECT_EQ(trace.Lines(), Lines{"LOG <%s%n%d>"});
}

TEST(VELDyadTrace, WritesTheFormatItselfWhenItCannotBeApplied) {
    RecordingTrace trace;
    // In the locale "C" this character has no bytes.
    _CDCDyadTraceLog("wide <%ls>", L"\x20AC");

    EXPECT_EQ(trace.Lines(), Lines{"LOG wide <%ls>"});
}

TEST(VELDyadTrace, WritesNothingWithoutFormat) {
    RecordingTrace trace;
    UncheckedLog(nullptr);

    EXPECT_EQ(trace.Lines(), Lines{});
}

TEST(VELDyadTrace, SwallowsWhatASinkThrows) {
    ThrowingSink sink;
    VELDyadTraceSink* former = SetDyadTraceSink(&sink);
    EXPECT_NO_THROW(_CDCDyadTraceLog("text"));
    EXPECT_EQ(sink.calls, 1);
    EXPECT_EQ(SetDyadTraceSink(former), &sink);
}

TEST(VELDyadTrace, LosesALineItHasNoMemoryFor) {
    const std::string text(100, 'x');
    ThrowingSink sink;
    VELDyadTraceSink* former = SetDyadTraceSink(&sink);
    {
        const FailingAllocation failure(1, FailingAllocations::FromThatOneOn);
        EXPECT_NO_THROW(_CDCDyadTraceLog("<%s>", text.c_str()));
    }
    SetDyadTraceSink(former);
    EXPECT_EQ(sink.calls, 0);
}

TEST(VELDyadTrace, IsActiveWhileItsActivityPointsAtANumberOtherThanZero) {
    int* const former = DyadContextTrace.activity;
    int activity = 0;
    DyadContextTrace.activity = nullptr;
    EXPECT_FALSE(VELIsTraceActive());
    DyadContextTrace.activity = &activity;
    EXPECT_FALSE(VELIsTraceActive());
    activity = -1;
    EXPECT_TRUE(VELIsTraceActive());
    DyadContextTrace.activity = former;
    EXPECT_FALSE(VELIsTraceActive());
}

TEST(VELDyadTrace, BatchStackIsOneLogLineWhileActive) {
    RecordingTrace trace;
    BatchStack();
    EXPECT_EQ(trace.TakeLines(), Lines{"LOG BatchStack : console trace set"});

    int* const active = DyadContextTrace.activity;
    DyadContextTrace.activity = nullptr;
    BatchStack();
    DyadContextTrace.activity = active;
    EXPECT_EQ(trace.Lines(), Lines{});
}

} // namespace dyadctx::test
