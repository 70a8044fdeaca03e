// SPDX-License-Identifier: MIT
// Reads a context file into a collector and writes a collector to a context file.
//
// For one collector, which it never owns, and for one reading or writing. Messages for the user are
// added to the caller's text. Results are S_OK, E_FAIL, or a failing code of the collector or the
// provider services.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

namespace dyadctx {
class ReadObserver;
}

class VELDyadCtxXml {
public:
    // With `observer`, reading continues after faults and reports each to the observer.
    explicit VELDyadCtxXml(VELDyadCtxCollector* collector,
                           dyadctx::ReadObserver* observer = nullptr) noexcept;
    ~VELDyadCtxXml();
    VELDyadCtxXml(const VELDyadCtxXml&) = delete;
    VELDyadCtxXml& operator=(const VELDyadCtxXml&) = delete;

    // Reads the collector's own file.
    VELResult Unstream(VELUnicodeString& message);
    // The same from the bytes of that file, which is not opened then.
    VELResult Unstream(const VELUnicodeString& text, VELUnicodeString& message);
    // Writes the collector's current view. Adds no message.
    VELResult Stream(const VELUnicodeString& target, VELUnicodeString& message);
    // The same bytes as a text; `text` is unchanged on failure.
    VELResult StreamText(VELUnicodeString& text);

    // The text that identifies a server site, composed by the connector's rule; empty for a
    // connector without one. It is stored in `key` and returned.
    static VELUnicodeString GetServerdetailsForHashTable(VELUnicodeString& key,
                                                         const VELUnicodeString& connector,
                                                         const VELListValVELUnicodeString& names,
                                                         const VELListValVELUnicodeString& values);

private:
    // Reads the file where `text` is null.
    VELResult Read(const VELUnicodeString* text, VELUnicodeString& message);

    VELDyadCtxCollector* collector_;
    dyadctx::ReadObserver* observer_;
};
