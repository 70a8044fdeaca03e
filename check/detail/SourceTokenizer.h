// The parts of a source text: elements and their attributes.
#pragma once

#include "check/detail/SourceReader.h"
#include "platform/VELPlace.h"

#include <string>

namespace dyadctx {

// Takes apart the start tag that begins where the reader is. The text is well-formed as far as that
// tag, unless it has changed meanwhile. Throws std::bad_alloc.
class SourceTokenizer {
public:
    // The reader outlives the tokenizer.
    explicit SourceTokenizer(SourceReader& reader) noexcept : reader_(reader) {}

    // The name of the element; false where no start tag begins.
    bool ReadElement(std::string& name);
    struct Attribute {
        std::string name;
        // Where the name begins.
        VELPlace place;
    };
    // The next attribute in the order of the text; false behind the last one.
    bool ReadAttribute(Attribute& attribute);

private:
    void PassBlanks();
    void ReadName(std::string& name);
    bool PassValue();

    SourceReader& reader_;
};

} // namespace dyadctx
