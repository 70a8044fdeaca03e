#include "platform/detail/DomFaults.h"

namespace dyadctx {

namespace {

std::atomic<DomCall> armedCall{DomCall::CreateBuilder};
std::atomic<DomFault> armedFault{DomFault::None};
std::atomic<int> callsToGo{0};

} // namespace

std::atomic<bool> domFaultIsArmed{false};

DomFault TakeArmedDomFault(DomCall call) noexcept {
    if (call != armedCall || callsToGo == 0)
        return DomFault::None;
    return --callsToGo == 0 ? armedFault.load() : DomFault::None;
}

DomFaultScope::DomFaultScope(DomCall call, int nth, DomFault fault) noexcept {
    armedCall = call;
    armedFault = fault;
    callsToGo = nth;
    domFaultIsArmed = true;
}

DomFaultScope::~DomFaultScope() {
    domFaultIsArmed = false;
    callsToGo = 0;
}

bool DomFaultScope::HasStruck() noexcept {
    return callsToGo == 0;
}

} // namespace dyadctx
