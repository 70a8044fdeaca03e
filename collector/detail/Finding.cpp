#include "collector/detail/Finding.h"

#include "trace/detail/TraceLine.h"
#include "trace/detail/UserMessage.h"

namespace dyadctx {

void MessageReporter::Report(const Finding& finding) {
    const VELUnicodeString* parameters =
        finding.parameterCount > 0 ? finding.parameters.data() : nullptr;
    LogCollectorError(finding.method, finding.key, message_, parameters, finding.parameterCount, 1);
}

unsigned char LogCollectorError(const char* method, const char* key, VELUnicodeString& message,
                                const VELUnicodeString* parameters, int count, int newLine) {
    AppendCatalogText(message, key, parameters, count, newLine);
    TRACE_WARNING("VELDyadCtxCollector::LogError Method <%s> Error=<%s>", method,
                  message.ConvertToChar());
    return 0;
}

} // namespace dyadctx
