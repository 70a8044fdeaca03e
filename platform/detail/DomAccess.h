// SPDX-License-Identifier: MIT
// A document's names by number, for readers that look up the same few names repeatedly.
#pragma once

#include "platform/VELIXMLDOM.h"
#include "platform/detail/DomDocument.h"

#include <cstdint>
#include <string_view>

namespace dyadctx {

struct DomAccess {
    // None if the document does not contain the name. The handle must not be null.
    static std::uint32_t NameId(const VELIDOMHandle& handle, std::string_view name) {
        return handle.Document().Names().Find(name);
    }

    // Like GetTagName, as a number. False, with `id` unchanged, for non-elements.
    static bool GetTagId(const VELIDOMNode& node, std::uint32_t& id) {
        const DomNode* element = node.Node();
        if (element == nullptr)
            return false;
        id = element->name;
        return true;
    }

    // The number of elements in the document.
    static std::uint64_t ElementCount(const VELIDOMHandle& handle) {
        return handle.Document().Names().AllElements();
    }

    static bool IsFromScanner(const VELIDOMHandle& handle) {
        return handle.Document().IsFromScanner();
    }

    // Frees memory of what precedes an element in the file; see DomDocument::ForgetBefore.
    static void ForgetBefore(const VELIDOMElement& element) {
        element.Document().ForgetBefore(*element.Node());
    }

    // The attribute, or null; valid while the document lives.
    static const DomAttribute* FindAttribute(const VELIDOMElement& element, std::uint32_t name) {
        return name != DomNames::None ? DomDocument::FindAttribute(*element.Node(), name) : nullptr;
    }
};

} // namespace dyadctx
