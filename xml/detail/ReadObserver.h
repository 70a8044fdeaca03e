// Whoever wants to know all that is wrong with a file, and not only the first fault.
#pragma once

#include "collector/detail/Fault.h"
#include "context/VELDyadContext.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELPlace.h"

namespace dyadctx {

// Told what a reader meets; all that the reader knows of a check. With an observer the reader adds
// nothing to the message: it continues after a fault, and a context that lacks required attributes
// is entered all the same, so that whoever names it, and what is below it, is not at fault too.
class ReadObserver {
public:
    // Where the file is not well-formed (column in bytes), and why; the fault itself comes after
    // it.
    virtual void OnSyntaxError(const VELPlace& place, const char* reason) = 0;
    // The file is XML with the right root element; what is wrong comes after this.
    virtual void OnDocument(const VELIDOMElement& root) = 0;
    // `where` is the element at fault; null where there is none. A fault for which the library has
    // no message bears an id instead of the key.
    virtual void OnFault(const Fault& fault, const VELIDOMNode& where) = 0;
    // A context is about to be entered; `missing` tells which values it lacks (see MissingValue).
    virtual void OnContext(const VELDyadContext& context, const VELIDOMElement& element,
                           unsigned int missing) = 0;
    // A database context that is left out because the DB context environment is off, and whether it
    // is a declared one.
    virtual void OnLeftOut(const VELDyadContext& context, const VELIDOMElement& element,
                           bool isDeclared) = 0;
    // A database context that only adds a site to a declared one, `first`.
    virtual void OnRepeated(const VELDyadContext& first, const VELIDOMElement& element) = 0;

protected:
    ~ReadObserver() = default;
};

} // namespace dyadctx
