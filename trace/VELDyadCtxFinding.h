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
    VELPlace end;
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
    // Of the attribute at fault, else of its element; `end` is one character after the value of the
    // attribute or the name of the element.
    VELPlace place;
    VELPlace end;
    VELListVal<VELDyadCtxRelatedPlace> related;
    // The position, from 1, of the error it follows from; 0 for a finding in its own right. Such a
    // consequence is a note right after that error and other consequences of it. It keeps its id,
    // counts for nothing and cannot be silenced: once the error is mended it is gone.
    int cause = 0;
};

// A kind of finding that is not a message of the library.
struct VELDyadCtxFindingKind {
    VELUnicodeString id;
    VELDyadCtxSeverity severity = VELDyadCtxSeverity::Error;
    // With {0}, {1} in place of the parameters.
    VELUnicodeString text;
};
