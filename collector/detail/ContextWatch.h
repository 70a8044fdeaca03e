// SPDX-License-Identifier: MIT
// Pointers to contexts that an operation still needs although a host's code may run in between.
//
// A collector notifies its watches of each context it releases, and they forget it. Watches are
// nested like the calls they serve.
#pragma once

#include "context/VELListPtrVELDyadContext.h"
#include "context/detail/FriendList.h"
#include "platform/detail/HostCode.h"

#include <new>
#include <optional>

namespace dyadctx {

class ContextWatch;

// The watches of one collector.
class ContextWatches {
public:
    // Forgets every watched context of which `isGone` says so.
    template<class IsGone>
    void Forget(IsGone isGone) noexcept;

private:
    friend class ContextWatch;
    ContextWatch* newest_ = nullptr;
};

class ContextWatch {
public:
    // The pointer, which may be null and may change, becomes null once its context is released.
    ContextWatch(ContextWatches& watches, VELDyadContext*& context) noexcept
        : ContextWatch(watches, &context, nullptr) {}
    // The same for every entry of a list.
    ContextWatch(ContextWatches& watches, VELListPtrVELDyadContext& contexts) noexcept
        : ContextWatch(watches, nullptr, &contexts) {}
    ~ContextWatch() { watches_.newest_ = older_; }
    ContextWatch(const ContextWatch&) = delete;
    ContextWatch& operator=(const ContextWatch&) = delete;

private:
    friend class ContextWatches;

    ContextWatch(ContextWatches& watches, VELDyadContext** context,
                 VELListPtrVELDyadContext* contexts) noexcept
        : watches_(watches), older_(watches.newest_), context_(context), contexts_(contexts) {
        watches.newest_ = this;
    }

    template<class IsGone>
    void Forget(IsGone isGone) noexcept {
        if (context_ != nullptr && *context_ != nullptr && isGone(*context_))
            *context_ = nullptr;
        for (int pos = 1; contexts_ != nullptr && pos <= contexts_->Size(); ++pos) {
            VELDyadContext*& entry = (*contexts_)[pos];
            if (entry != nullptr && isGone(entry))
                entry = nullptr;
        }
    }

    ContextWatches& watches_;
    ContextWatch* older_;
    VELDyadContext** context_;
    VELListPtrVELDyadContext* contexts_;
};

template<class IsGone>
void ContextWatches::Forget(IsGone isGone) noexcept {
    for (ContextWatch* watch = newest_; watch != nullptr; watch = watch->older_)
        watch->Forget(isGone);
}

// A walk through the friends a context has now: in place, or through a copy of the list if a host's
// code can run meanwhile.
class FriendWalk {
public:
    // Throws std::bad_alloc.
    FriendWalk(ContextWatches& watches, FriendView friends) : friends_(friends) {
        if (friends.Size() > 0 && HostCodeCanRun())
            copy_.emplace(watches, friends);
    }

    int Size() const noexcept { return friends_.Size(); }
    // Null for a friend that the collector has released.
    VELDyadContext* operator[](int pos) const noexcept {
        return copy_ ? copy_->contexts[pos] : friends_[pos];
    }
    // Whether it was null from the start. Valid up to the first that was.
    bool IsNull(int pos) const noexcept {
        return copy_ ? pos == copy_->firstNull : friends_[pos] == nullptr;
    }

private:
    struct Copy {
        Copy(ContextWatches& watches, FriendView friends)
            : contexts(friends.Size()), watch(watches, contexts) {
            for (VELDyadContext* context : friends) {
                if (contexts.Append(context) == 0)
                    throw std::bad_alloc();
            }
            firstNull = contexts.Locate(nullptr);
        }

        VELListPtrVELDyadContext contexts;
        ContextWatch watch;
        int firstNull;
    };

    // If there is a copy, only the size is still valid.
    FriendView friends_;
    std::optional<Copy> copy_;
};

} // namespace dyadctx
