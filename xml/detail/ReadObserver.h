// Whoever wants to know all that is wrong with a file, and not only the first fault.
#pragma once

#include "collector/detail/Finding.h"
#include "context/VELDyadContext.h"
#include "platform/VELIXMLDOM.h"

namespace dyadctx {

// Told what a reader meets. With an observer the reader adds nothing to the message: it goes on
// behind a fault, and a context that lacks required attributes is entered all the same, so that
// whoever names it, and what stands below it, is not at fault too.
class ReadObserver {
public:
    // The file is XML with the right root element; what is wrong comes after this.
    virtual void MeetDocument(const VELIDOMElement& root) = 0;
    // `where` is the element at fault; null where there is none. A fault for which the library has
    // no message bears an id in place of the key.
    virtual void MeetFault(const Finding& fault, const VELIDOMNode& where) = 0;
    // A context is about to be entered; `missing` tells which values it lacks (see MissingValue).
    virtual void MeetContext(const VELDyadContext& context, unsigned int missing) = 0;
    // A database context that is left out because the DB context environment is off, and whether it
    // is a declared one.
    virtual void MeetLeftOut(const VELDyadContext& context, const VELIDOMElement& element,
                             bool isDeclared) = 0;
    // A database context that only adds a site to a declared one, `first`.
    virtual void MeetRepeated(const VELDyadContext& first, const VELIDOMElement& element) = 0;

protected:
    ~ReadObserver() = default;
};

} // namespace dyadctx
