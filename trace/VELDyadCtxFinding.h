// What a check of a context file finds: each finding a value with its place.
#pragma once

#include "platform/VELListVal.h"
#include "platform/VELPlace.h"
#include "platform/VELUnicodeString.h"

enum class VELDyadCtxSeverity { Error, Warning, Note };

// The other party of a finding, in the same file.
struct VELDyadCtxRelatedPlace {
    VELUnicodeString text;
    VELPlace place;
};

struct VELDyadCtxFinding {
    // The key of the library's message, or the id of a kind of finding.
    VELUnicodeString id;
    VELDyadCtxSeverity severity = VELDyadCtxSeverity::Error;
    VELListValVELUnicodeString parameters;
    VELUnicodeString text;
    // The name of the context at fault; `hasContext` tells an empty name from none.
    bool hasContext = false;
    VELUnicodeString context;
    // Of the attribute at fault, else of its element.
    VELPlace place;
    VELListVal<VELDyadCtxRelatedPlace> related;
};

// A kind of finding that is not a message of the library.
struct VELDyadCtxFindingKind {
    VELUnicodeString id;
    VELDyadCtxSeverity severity = VELDyadCtxSeverity::Error;
    // With {0}, {1} in place of the parameters.
    VELUnicodeString text;
};
