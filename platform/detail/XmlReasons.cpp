// SPDX-License-Identifier: MIT
#include "platform/detail/XmlReasons.h"

#include "platform/detail/OwnText.h"

#include <algorithm>
#include <array>

namespace dyadctx {

namespace {

struct Reason {
    XML_Error error;
    const char* key;
};

constexpr std::array Reasons{
    Reason{XML_ERROR_NO_MEMORY, reason::NoMemory},
    Reason{XML_ERROR_SYNTAX, "xml.not-xml"},
    Reason{XML_ERROR_NO_ELEMENTS, "xml.no-element"},
    Reason{XML_ERROR_INVALID_TOKEN, "xml.invalid-character"},
    Reason{XML_ERROR_UNCLOSED_TOKEN, "xml.ends-in-markup"},
    Reason{XML_ERROR_PARTIAL_CHAR, "xml.ends-in-character"},
    Reason{XML_ERROR_TAG_MISMATCH, "xml.other-end-tag"},
    Reason{XML_ERROR_DUPLICATE_ATTRIBUTE, "xml.same-attribute"},
    Reason{XML_ERROR_JUNK_AFTER_DOC_ELEMENT, "xml.after-root"},
    Reason{XML_ERROR_PARAM_ENTITY_REF, "xml.parameter-entity"},
    Reason{XML_ERROR_UNDEFINED_ENTITY, "xml.entity"},
    Reason{XML_ERROR_RECURSIVE_ENTITY_REF, "xml.recursive-entity"},
    Reason{XML_ERROR_ASYNC_ENTITY, "xml.element-across-entities"},
    Reason{XML_ERROR_BAD_CHAR_REF, "xml.character-number"},
    Reason{XML_ERROR_BINARY_ENTITY_REF, "xml.not-text-entity"},
    Reason{XML_ERROR_ATTRIBUTE_EXTERNAL_ENTITY_REF, "xml.external-in-value"},
    Reason{XML_ERROR_MISPLACED_XML_PI, "xml.misplaced-declaration"},
    Reason{XML_ERROR_UNKNOWN_ENCODING, "xml.unknown-encoding"},
    Reason{XML_ERROR_INCORRECT_ENCODING, "xml.other-encoding"},
    Reason{XML_ERROR_UNCLOSED_CDATA_SECTION, "xml.ends-in-cdata"},
    Reason{XML_ERROR_NOT_STANDALONE, "xml.not-standalone"},
    Reason{XML_ERROR_INCOMPLETE_PE, "xml.partial-entity"},
    Reason{XML_ERROR_XML_DECL, "xml.declaration"},
    Reason{XML_ERROR_TEXT_DECL, "xml.text-declaration"},
    Reason{XML_ERROR_PUBLICID, "xml.public-identifier"},
    Reason{XML_ERROR_AMPLIFICATION_LIMIT_BREACH, "xml.entity-growth"},
};

} // namespace

const char* ReasonFor(XML_Error error) noexcept {
    const auto* reason = std::find_if(Reasons.begin(), Reasons.end(),
                                      [error](const Reason& r) { return r.error == error; });
    return reason != Reasons.end() ? reason->key : "xml.not-well-formed";
}

VELUnicodeString TextOfReason(const char* reason, const std::vector<VELUnicodeString>& parameters) {
    return reason != reason::NoMemory
               ? OwnText(reason, parameters.data(), static_cast<int>(parameters.size()))
               : VELUnicodeString();
}

} // namespace dyadctx
