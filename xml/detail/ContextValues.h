// The attribute values of one Context element.
#pragma once

#include "context/detail/ContextAccess.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/ReadState.h"

namespace dyadctx {

// How deep an element is nested in friends and in associated contexts; both 0 for a declared
// context.
struct ContextLevels {
    int friendLevel = 0;
    int associatedLevel = 0;
};

// Required values that an element lacks.
enum MissingValue : unsigned int {
    MissingName = 1,
    MissingParameter = 2,
    MissingParameterType = 4,
    MissingConnector = 8
};

struct ContextValues {
    ContextTexts texts;
    // The rest is only for database contexts.
    VELUnicodeString connector;
    // Parallel to the server details of the format.
    VELListValVELUnicodeString detailValues;

    // A sum of MissingValue.
    unsigned int missing = 0;

    // Prepares for the next element; the list keeps its storage.
    void Clear();
};

// Reads the attributes into `values`, which is empty. E_FAIL and a message for the first missing
// required attribute, or for each if reading continues after a fault. `ownerName` is the context a
// friend or associated context belongs to.
VELResult GetXMLValuesContext(const VELIDOMElement& element, ContextLevels levels,
                              const VELUnicodeString& ownerName, const ReadState& state,
                              ContextValues& values);

} // namespace dyadctx
