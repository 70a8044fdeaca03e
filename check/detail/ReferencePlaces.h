// The placeholder of each friend and associated context before linking: only it has the place where
// the friend is written.
#pragma once

#include "context/VELDyadContext.h"
#include "context/VELListPtrVELDyadContext.h"
#include "platform/VELUnicodeString.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace dyadctx {

class ReferencePlaces {
public:
    // Records the placeholders of the declared contexts, which are not linked yet.
    explicit ReferencePlaces(const VELListPtrVELDyadContext& declared);

    // The placeholder of a friend; both positions run from 1. Null outside.
    const VELDyadContext* FriendAt(int context, int position) const noexcept;
    // Null without one.
    const VELDyadContext* AssociatedAt(int context) const noexcept;
    // The first placeholder of that name among the friends of a context. Null without one.
    const VELDyadContext* FriendNamed(int context, const VELUnicodeString& name);

private:
    struct References {
        std::size_t firstFriend = 0;
        const VELDyadContext* associated = nullptr;
    };

    void Index(int context);
    bool Holds(int context) const noexcept;

    std::vector<const VELDyadContext*> friends_;
    // One per declared context and one after the last.
    std::vector<References> references_;
    // The context whose friends are in byName_.
    int indexed_ = 0;
    std::unordered_map<std::string_view, const VELDyadContext*> byName_;
};

} // namespace dyadctx
