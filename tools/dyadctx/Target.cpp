// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Target.h"

#include "platform/VELFileSystem.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Words.h"

#include <new>

namespace dyadctx::tool {

bool IsStandardOutput(const std::string& target) {
    return target == "-" || target == "/dev/stdout" || target == "/dev/fd/1" ||
           target == "/proc/self/fd/1";
}

void WriteTarget(const std::string& target, std::string_view content, Output& output) {
    // Not by its descriptor: the answer has a stream of its own.
    if (IsStandardOutput(target))
        return output.Write(content);
    VELFileRefusal refusal;
    if (VELReplaceFile(VELUnicodeString(target), content, &refusal) >= 0)
        return;
    if (refusal.kind == VELFileRefusal::Kind::NoMemory)
        throw std::bad_alloc();
    throw Failure(ExitStatus::NotWritten,
                  Words("failure.not-written", {target.empty() ? "''" : Visible(target),
                                                Visible(refusal.reason.AsView())}));
}

} // namespace dyadctx::tool
