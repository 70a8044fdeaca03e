#include "platform/detail/XmlReasons.h"

#include <algorithm>
#include <array>

namespace dyadctx {

namespace {

struct Reason {
    XML_Error error;
    const char* words;
};

constexpr std::array Reasons{
    Reason{XML_ERROR_NO_MEMORY, NoMemoryReason},
    Reason{XML_ERROR_SYNTAX, "this is not XML"},
    Reason{XML_ERROR_NO_ELEMENTS, "the file holds no element"},
    Reason{XML_ERROR_INVALID_TOKEN,
           "a character stands here that XML does not allow at this place"},
    Reason{XML_ERROR_UNCLOSED_TOKEN, "the file ends inside a tag, comment or reference"},
    Reason{XML_ERROR_PARTIAL_CHAR, "the file ends inside a character"},
    Reason{XML_ERROR_TAG_MISMATCH, "this end tag does not belong to the element that is open"},
    Reason{XML_ERROR_DUPLICATE_ATTRIBUTE, "the element has the same attribute twice"},
    Reason{XML_ERROR_JUNK_AFTER_DOC_ELEMENT, "something follows the end of the root element"},
    Reason{XML_ERROR_PARAM_ENTITY_REF, "a parameter entity cannot be used at this place"},
    Reason{XML_ERROR_UNDEFINED_ENTITY, "the entity is not declared"},
    Reason{XML_ERROR_RECURSIVE_ENTITY_REF, "the entity contains itself"},
    Reason{XML_ERROR_ASYNC_ENTITY, "an element begins in one entity and ends in another"},
    Reason{XML_ERROR_BAD_CHAR_REF, "the number is not that of a character XML allows"},
    Reason{XML_ERROR_BINARY_ENTITY_REF, "the entity does not stand for text"},
    Reason{XML_ERROR_ATTRIBUTE_EXTERNAL_ENTITY_REF,
           "an attribute value cannot use an entity from outside the file"},
    Reason{XML_ERROR_MISPLACED_XML_PI, "the XML declaration is not at the start of the file"},
    Reason{XML_ERROR_UNKNOWN_ENCODING, "the declared encoding is not known"},
    Reason{XML_ERROR_INCORRECT_ENCODING, "the file is not in the encoding it declares"},
    Reason{XML_ERROR_UNCLOSED_CDATA_SECTION, "the file ends inside a CDATA section"},
    Reason{XML_ERROR_NOT_STANDALONE, "the document is not standalone"},
    Reason{XML_ERROR_INCOMPLETE_PE, "the parameter entity holds only part of a declaration"},
    Reason{XML_ERROR_XML_DECL, "the XML declaration is wrong"},
    Reason{XML_ERROR_TEXT_DECL, "the text declaration is wrong"},
    Reason{XML_ERROR_PUBLICID, "the public identifier holds a character it must not"},
    Reason{XML_ERROR_AMPLIFICATION_LIMIT_BREACH,
           "the entities would grow far beyond the size of the file"},
};

} // namespace

const char* ReasonFor(XML_Error error) noexcept {
    const auto* reason = std::find_if(Reasons.begin(), Reasons.end(),
                                      [error](const Reason& r) { return r.error == error; });
    return reason != Reasons.end() ? reason->words : "the file is not well-formed XML";
}

} // namespace dyadctx
