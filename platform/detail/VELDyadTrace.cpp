// SPDX-License-Identifier: MIT
#include "platform/VELDyadTrace.h"

#include "platform/VELEnvironment.h"
#include "platform/VELUnicodeString.h"
#include "platform/detail/TraceOutput.h"
#include "platform/detail/VisibleText.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

namespace {

// Constant, so that the trace works before any static object is constructed.
constinit int activity = 0;
constinit std::atomic<VELDyadTraceSink*> hostSink{nullptr};

VELUnicodeString ReadTraceSetting() noexcept {
    try {
        return VELUnicodeString(VELGetEnv("VELDyadContextTrace"));
    } catch (const std::exception&) {
        return {};
    }
}

// Read at load, whatever the initialisation order.
const VELUnicodeString& TraceSetting() noexcept {
    static const VELUnicodeString setting = ReadTraceSetting();
    return setting;
}

bool TurnOnAsSet() noexcept {
    const std::string_view value = TraceSetting().AsView();
    if (!value.empty() && value != "0")
        activity = 1;
    return activity != 0;
}

[[maybe_unused]] const bool isOnFromStart = TurnOnAsSet();

bool NamesFile(const VELUnicodeString& setting) {
    const std::string_view value = setting.AsView();
    return !value.empty() && value != "0" && value != "1";
}

dyadctx::TraceHandle TraceOutput() {
    static const dyadctx::TraceHandle handle = NamesFile(TraceSetting())
                                                   ? dyadctx::OpenTraceFile(TraceSetting())
                                                   : dyadctx::StandardErrorHandle();
    return handle;
}

const char* NameOf(VELDyadTraceKind kind) {
    switch (kind) {
    case VELDyadTraceKind::Enter:
        return "ENTER";
    case VELDyadTraceKind::Leave:
        return "LEAVE";
    case VELDyadTraceKind::Log:
        return "LOG";
    case VELDyadTraceKind::Warning:
        return "WARNING";
    case VELDyadTraceKind::Error:
        return "ERROR";
    }
    return "";
}

// The whole text, however long; the format itself if formatting fails.
VELDYADCTX_PRINTF(1, 0)
std::string FormatText(const char* format, va_list args) {
    va_list measured;
    va_copy(measured, args);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0)
        return format;
    std::string text(static_cast<std::size_t>(length), '\0');
    // The terminating zero goes where the string keeps its own.
    std::vsnprintf(text.data(), text.size() + 1, format, args);
    return text;
}

VELDYADCTX_PRINTF(2, 0)
void WriteTraceLine(VELDyadTraceKind kind, const char* format, va_list args) noexcept {
    if (format == nullptr)
        return;
    try {
        const std::string text = FormatText(format, args);
        if (VELDyadTraceSink* sink = hostSink.load()) {
            sink->Write(kind, text.c_str());
            return;
        }
        std::string line = NameOf(kind);
        line += ' ';
        // One line, whatever the texts in it hold.
        dyadctx::AppendVisible(text, line);
        line += '\n';
        dyadctx::WriteTrace(TraceOutput(), line);
    } catch (...) {
        // Neither lack of memory nor a host's sink may disturb what is being traced.
    }
}

} // namespace

constinit VELTraceObject DyadContextTrace{&activity};

void _CDCDyadTraceEnter(const char* format, ...) {
    va_list args;
    va_start(args, format);
    WriteTraceLine(VELDyadTraceKind::Enter, format, args);
    va_end(args);
}

void _CDCDyadTraceLeave(const char* format, ...) {
    va_list args;
    va_start(args, format);
    WriteTraceLine(VELDyadTraceKind::Leave, format, args);
    va_end(args);
}

void _CDCDyadTraceLog(const char* format, ...) {
    va_list args;
    va_start(args, format);
    WriteTraceLine(VELDyadTraceKind::Log, format, args);
    va_end(args);
}

void _CDCDyadTraceWarning(const char* format, ...) {
    va_list args;
    va_start(args, format);
    WriteTraceLine(VELDyadTraceKind::Warning, format, args);
    va_end(args);
}

void _CDCDyadTraceError(const char* format, ...) {
    va_list args;
    va_start(args, format);
    WriteTraceLine(VELDyadTraceKind::Error, format, args);
    va_end(args);
}

VELDyadTraceSink::~VELDyadTraceSink() = default;

VELDyadTraceSink* SetDyadTraceSink(VELDyadTraceSink* sink) noexcept {
    return hostSink.exchange(sink);
}

void BatchStack() {
    if (VELIsTraceActive())
        _CDCDyadTraceLog("BatchStack : console trace set");
}
