// The checks of the collector: which contexts are looked at, and the searches they share with the
// reader. The rules themselves are in collector/detail/ContextRules.cpp.
#include "collector/VELDyadCtxCollector.h"

#include "collector/detail/CheckRun.h"
#include "collector/detail/CollectorState.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/TraceLine.h"

#include <utility>

using dyadctx::CheckExtent;
using dyadctx::CheckRun;
using dyadctx::MessageReporter;

namespace {

void StoreMatch(VELDyadContext* found, VELDyadContext** match) {
    if (found != nullptr && match != nullptr)
        *match = found;
}

} // namespace

VELResult VELDyadCtxCollector::Check(VELUnicodeString& message) {
    TRACE_ENTER("VELDyadCtxCollector:Check");
    const int count = GetNbCtxs();
    if (count == 0) {
        LogError(dyadctx::CheckMethod, dyadctx::key::NoCtxDefined, message, nullptr, 0, 1);
        return E_FAIL;
    }
    MessageReporter reporter(message);
    CheckRun run(*this, CheckExtent::AllContexts, reporter);
    bool valid = true;
    for (int pos = 1; valid && pos <= count; ++pos) {
        run.Prefetch(pos);
        VELDyadContext* context = std::as_const(_MainContexts)[pos];
        if (context == nullptr)
            LogError(dyadctx::CheckMethod, dyadctx::key::InternalError, message, nullptr, 0, 1);
        valid = context != nullptr && run.CheckContext(context, pos);
    }
    TRACE_LEAVE("VELDyadCtxCollector:Check");
    return valid ? S_OK : E_FAIL;
}

unsigned char VELDyadCtxCollector::CheckContext(VELDyadContext* context, VELUnicodeString& message,
                                                int index) {
    try {
        MessageReporter reporter(message);
        CheckRun run(*this, CheckExtent::OneContext, reporter);
        return run.CheckContext(context, index) ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

unsigned char VELDyadCtxCollector::CheckDefaultContext(const VELUnicodeString& name,
                                                       const VELUnicodeString& parameter,
                                                       const VELUnicodeString& parameterType,
                                                       VELUnicodeString& message) {
    MessageReporter reporter(message);
    CheckRun run(*this, CheckExtent::OneContext, reporter);
    return run.CheckDefaultContext(name, parameter, parameterType) ? 1 : 0;
}

unsigned char VELDyadCtxCollector::IsAValidParamType(const VELUnicodeString& parameterType) {
    return dyadctx::RuleLookups::IsKnownType(parameterType) ? 1 : 0;
}

unsigned char VELDyadCtxCollector::FindMatchingCtx(int index, VELDyadContext* context,
                                                   VELDyadContext** match) {
    if (context == nullptr)
        return 0;
    VELDyadContext* found =
        dyadctx::FindLaterNamesake(_MainContexts, state_->index, context->GetName(), index);
    StoreMatch(found, match);
    return found != nullptr ? 1 : 0;
}

unsigned char VELDyadCtxCollector::FindMatchingDatabase(int index, VELDyadContext* context,
                                                        VELDyadContext** match) {
    VELDyadContext* found = nullptr;
    const dyadctx::ContextWatch watch(state_->watches, found);
    dyadctx::FindLaterOnSameDatabase(_MainContexts, state_->watches, context, index, found);
    StoreMatch(found, match);
    return found != nullptr ? 1 : 0;
}
