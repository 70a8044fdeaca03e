// What the attributes of one Context element say.
#pragma once

#include "context/detail/ContextAccess.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/ReadState.h"

namespace dyadctx {

// How deep an element stands among friends and among associated contexts; both 0 for a context
// declared directly in the file.
struct ContextLevels {
    int friendLevel = 0;
    int associatedLevel = 0;
};

// What an element lacks of what it needs.
enum MissingValue : unsigned int {
    MissingName = 1,
    MissingParameter = 2,
    MissingParameterType = 4,
    MissingConnector = 8
};

struct ContextValues {
    ContextTexts texts;
    // The rest is read for database contexts only.
    VELUnicodeString connector;
    // Parallel to the server details of the format.
    VELListValVELUnicodeString detailValues;

    // A sum of MissingValue.
    unsigned int missing = 0;

    // Makes it ready for the next element; storage of the list is kept.
    void Clear();
};

// Reads the attributes into `values`, which is empty. E_FAIL, and a message, for the first required
// attribute that is missing; where reading continues after a fault, a message for each. `ownerName`
// is the context a friend or associated context belongs to.
VELResult GetXMLValuesContext(const VELIDOMElement& element, ContextLevels levels,
                              const VELUnicodeString& ownerName, const ReadState& state,
                              ContextValues& values);

} // namespace dyadctx
