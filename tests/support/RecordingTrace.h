// SPDX-License-Identifier: MIT
// Receives the platform trace of a test: every line, in order, and no others.
#pragma once

#include "platform/VELDyadTrace.h"

#include <string>
#include <vector>

namespace dyadctx::test {

// From construction to destruction the trace is active and its lines come here.
class RecordingTrace : private VELDyadTraceSink {
public:
    RecordingTrace();
    ~RecordingTrace() override;
    RecordingTrace(const RecordingTrace&) = delete;
    RecordingTrace& operator=(const RecordingTrace&) = delete;

    // Each line as its kind ("ENTER", "LEAVE", "LOG", "WARNING", "ERROR"), a blank and its text.
    const std::vector<std::string>& Lines() const { return lines_; }
    // The lines since the last call of this operation.
    std::vector<std::string> TakeLines();
    // The lines whose text contains `part`.
    std::vector<std::string> LinesWith(const std::string& part) const;

private:
    void Write(VELDyadTraceKind kind, const char* text) override;

    int active_ = 1;
    int* formerActivity_;
    VELDyadTraceSink* formerSink_;
    std::vector<std::string> lines_;
};

} // namespace dyadctx::test
