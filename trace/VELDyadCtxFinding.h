// SPDX-License-Identifier: MIT
// The findings of a context file check, each with its place.
#pragma once

#include "platform/VELListVal.h"
#include "platform/VELPlace.h"
#include "platform/VELUnicodeString.h"

enum class VELDyadCtxSeverity { Error, Warning, Note };

// Another place involved in a finding, in the same file.
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
    // The context at fault; `hasContext` distinguishes an empty name from none.
    bool hasContext = false;
    VELUnicodeString context;
    // Of the attribute at fault, else of its element; `end` is one character after the attribute's
    // value or the element's name.
    VELPlace place;
    VELPlace end;
    VELListVal<VELDyadCtxRelatedPlace> related;
    // The position, from 1, of the error that caused it; 0 if none. Such a consequence is a note
    // right after that error and its other consequences. It keeps its id, is not counted and cannot
    // be silenced: it disappears once the error is fixed.
    int cause = 0;
};

// A kind of finding other than the library's messages.
struct VELDyadCtxFindingKind {
    VELUnicodeString id;
    VELDyadCtxSeverity severity = VELDyadCtxSeverity::Error;
    // With placeholders {0}, {1} for the parameters.
    VELUnicodeString text;
};
