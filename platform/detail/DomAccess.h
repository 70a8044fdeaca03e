// Names of a document by number, for a reader that asks for the same few names again and again.
#pragma once

#include "platform/VELIXMLDOM.h"
#include "platform/detail/DomDocument.h"
#include "platform/detail/DomFaults.h"

#include <cstdint>
#include <string_view>

namespace dyadctx {

struct DomAccess {
    // None for a name that is nowhere in the document. The handle is not null.
    static std::uint32_t NameId(const VELIDOMHandle& handle, std::string_view name) {
        return handle.Document().Names().Find(name);
    }

    // What GetTagName gives, as number. False, and `id` as before, for what is not an element.
    static bool GetTagId(const VELIDOMNode& node, std::uint32_t& id) {
        const DomNode* element = node.Node();
        if (element == nullptr || TakeDomFault(DomCall::GetTagName) != DomFault::None)
            return false;
        id = element->name;
        return true;
    }

    static bool IsFromScanner(const VELIDOMHandle& handle) {
        return handle.Document().IsFromScanner();
    }

    // Frees memory of what stands before an element in the file; see DomDocument::ForgetBefore.
    static void ForgetBefore(const VELIDOMElement& element) {
        element.Document().ForgetBefore(*element.Node());
    }

    // The attribute's value; null without it. Good while the document lives.
    static const DomAttribute* FindAttribute(const VELIDOMElement& element, std::uint32_t name) {
        return name != DomNames::None ? DomDocument::FindAttribute(*element.Node(), name) : nullptr;
    }
};

} // namespace dyadctx
