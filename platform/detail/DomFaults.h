// Lets a private test make one call of the XML layer fail, to see what its callers make of it.
// While no test has armed it, it costs one load of an atomic.
#pragma once

#include <atomic>

namespace dyadctx {

enum class DomCall {
    CreateBuilder,
    CreateDocument,
    GetDocumentElement,
    GetElementsByTagName,
    GetChildNodes,
    Item,
    GetTagName,
    CreateElement,
    SetAttribute,
    AppendChild,
    // An allocation of the parser itself.
    ParserMemory,
};

// E_FAIL, or S_OK with a null handle. Where a call gives no handle both are E_FAIL.
enum class DomFault { None, Fail, NullHandle };

extern std::atomic<bool> domFaultIsArmed;

// Not for use outside this header.
DomFault TakeArmedDomFault(DomCall call) noexcept;

// What a call that is about to run has to do.
inline DomFault TakeDomFault(DomCall call) noexcept {
    if (!domFaultIsArmed.load(std::memory_order_relaxed))
        return DomFault::None;
    return TakeArmedDomFault(call);
}

// From its construction to its end the n-th such call of the process, from 1, fails. One at a time.
class DomFaultScope {
public:
    DomFaultScope(DomCall call, int nth, DomFault fault = DomFault::Fail) noexcept;
    ~DomFaultScope();
    DomFaultScope(const DomFaultScope&) = delete;
    DomFaultScope& operator=(const DomFaultScope&) = delete;

    // Whether that call has come.
    static bool HasStruck() noexcept;
};

} // namespace dyadctx
