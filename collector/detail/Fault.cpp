// SPDX-License-Identifier: MIT
#include "collector/detail/Fault.h"

#include "trace/detail/TraceLine.h"
#include "trace/detail/UserMessage.h"

namespace dyadctx {

void MessageReporter::Report(const Fault& fault) {
    const VELUnicodeString* parameters =
        fault.parameterCount > 0 ? fault.parameters.data() : nullptr;
    for (int i = 0; i < fault.times; ++i)
        LogCollectorError(fault.method, fault.key, message_, parameters, fault.parameterCount, 1);
}

unsigned char LogCollectorError(const char* method, const char* key, VELUnicodeString& message,
                                const VELUnicodeString* parameters, int count, int newLine) {
    AppendCatalogText(message, key, parameters, count, newLine);
    TRACE_WARNING("VELDyadCtxCollector::LogError Method <%s> Error=<%s>", method,
                  message.ConvertToChar());
    return 0;
}

} // namespace dyadctx
