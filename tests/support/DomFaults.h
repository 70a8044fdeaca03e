// SPDX-License-Identifier: MIT
// Lets calls of the XML layer fail that never do by themselves.
//
// A test program that links dyadctx_dom_faults has the calls below replaced where it, or the
// objects of the library in it, make them; the library itself knows nothing of it. Calls within the
// source of the XML layer are not replaced.
#pragma once

namespace dyadctx::test {

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

// While it lives, makes the n-th such call, from 1, fail. One at a time.
class DomFaultScope {
public:
    DomFaultScope(DomCall call, int nth, DomFault fault = DomFault::Fail) noexcept;
    ~DomFaultScope();
    DomFaultScope(const DomFaultScope&) = delete;
    DomFaultScope& operator=(const DomFaultScope&) = delete;

    // Whether that call has happened.
    static bool HasStruck() noexcept;
};

} // namespace dyadctx::test
