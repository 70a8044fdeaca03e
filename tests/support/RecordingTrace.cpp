// SPDX-License-Identifier: MIT
#include "support/RecordingTrace.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace dyadctx::test {

RecordingTrace::RecordingTrace()
    : formerActivity_(DyadContextTrace.activity), formerSink_(SetDyadTraceSink(this)) {
    DyadContextTrace.activity = &active_;
}

RecordingTrace::~RecordingTrace() {
    DyadContextTrace.activity = formerActivity_;
    SetDyadTraceSink(formerSink_);
}

std::vector<std::string> RecordingTrace::TakeLines() {
    return std::exchange(lines_, {});
}

std::vector<std::string> RecordingTrace::LinesWith(const std::string& part) const {
    std::vector<std::string> found;
    std::copy_if(lines_.begin(), lines_.end(), std::back_inserter(found),
                 [&](const std::string& line) { return line.find(part) != std::string::npos; });
    return found;
}

void RecordingTrace::Write(VELDyadTraceKind kind, const char* text) {
    static constexpr std::array names{"ENTER", "LEAVE", "LOG", "WARNING", "ERROR"};
    lines_.push_back(std::string(names[static_cast<std::size_t>(kind)]) + " " + text);
}

} // namespace dyadctx::test
