// Lets a private test make one call of the XML layer fail. Unarmed, it costs one atomic load.
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
    // An allocation by the parser itself.
    ParserMemory,
};

// E_FAIL, or S_OK with a null handle. For calls that return no handle both are E_FAIL.
enum class DomFault { None, Fail, NullHandle };

extern std::atomic<bool> domFaultIsArmed;

// Private to this header.
DomFault TakeArmedDomFault(DomCall call) noexcept;

// The fault that the next call must simulate.
inline DomFault TakeDomFault(DomCall call) noexcept {
    if (!domFaultIsArmed.load(std::memory_order_relaxed))
        return DomFault::None;
    return TakeArmedDomFault(call);
}

// While it lives, makes the n-th such call of the process, from 1, fail. One at a time.
class DomFaultScope {
public:
    DomFaultScope(DomCall call, int nth, DomFault fault = DomFault::Fail) noexcept;
    ~DomFaultScope();
    DomFaultScope(const DomFaultScope&) = delete;
    DomFaultScope& operator=(const DomFaultScope&) = delete;

    // Whether that call has happened.
    static bool HasStruck() noexcept;
};

} // namespace dyadctx
