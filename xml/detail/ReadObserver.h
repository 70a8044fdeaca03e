// SPDX-License-Identifier: MIT
// For callers that need every fault of a file, not only the first.
#pragma once

#include "collector/detail/Fault.h"
#include "context/VELDyadContext.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELPlace.h"

namespace dyadctx {

// Callbacks for what the reader finds. With an observer the reader adds nothing to the message and
// continues after a fault; a context that lacks required attributes is entered all the same, so
// that references to it, and what is below it, are not faults too.
class ReadObserver {
public:
    // Where the file is not well-formed (column in bytes), and why; called before the fault itself.
    virtual void OnSyntaxError(const VELPlace& place, const char* reason) = 0;
    // The file is XML with the right root element; further faults come after this.
    virtual void OnDocument(const VELIDOMElement& root) = 0;
    // `where` is the element at fault; null if there is none. A fault without a message in the
    // library has an id instead of the key.
    virtual void OnFault(const Fault& fault, const VELIDOMNode& where) = 0;
    // The file would make more contexts than the limit, so reading ends here; called before the
    // fault itself.
    virtual void OnTooManyContexts() = 0;
    // A context is about to be entered; `missing` is a sum of MissingValue.
    virtual void OnContext(const VELDyadContext& context, const VELIDOMElement& element,
                           unsigned int missing) = 0;
    // A database context is left out because the DB context environment is off; also whether it is
    // a declared one.
    virtual void OnLeftOut(const VELDyadContext& context, const VELIDOMElement& element,
                           bool isDeclared) = 0;
    // A database context only adds a site to the declared context `first`.
    virtual void OnRepeated(const VELDyadContext& first, const VELIDOMElement& element) = 0;

protected:
    ~ReadObserver() = default;
};

} // namespace dyadctx
