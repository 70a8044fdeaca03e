// SPDX-License-Identifier: MIT
// The parts of a source text: elements and their attributes.
#pragma once

#include "check/detail/SourceReader.h"
#include "platform/VELPlace.h"

#include <string>

namespace dyadctx {

// Takes apart the start tag at the reader's position. The text is well-formed up to that tag,
// unless it has changed meanwhile. Throws std::bad_alloc.
class SourceTokenizer {
public:
    // The reader outlives the tokenizer.
    explicit SourceTokenizer(SourceReader& reader) noexcept : reader_(reader) {}

    // Reads the name of the element; false if no start tag begins here.
    bool ReadElement(std::string& name);
    struct Attribute {
        std::string name;
        // Where the name begins.
        VELPlace place;
    };
    // Reads the next attribute; false after the last one.
    bool ReadAttribute(Attribute& attribute);

private:
    void PassBlanks();
    void ReadName(std::string& name);
    bool PassValue();

    SourceReader& reader_;
};

} // namespace dyadctx
