#include "collector/detail/ContextWatch.h"

#include "platform/detail/HostCode.h"

#include <new>

namespace dyadctx {

FriendWalk::Copy::Copy(ContextWatches& watches, FriendView friends)
    : contexts(friends.Size()), watch(watches, contexts) {
    for (VELDyadContext* context : friends) {
        if (contexts.Append(context) == 0)
            throw std::bad_alloc();
    }
    firstNull = contexts.Locate(nullptr);
}

FriendWalk::FriendWalk(ContextWatches& watches, FriendView friends) : friends_(friends) {
    if (friends.Size() > 0 && HostCodeCanRun())
        copy_.emplace(watches, friends);
}

} // namespace dyadctx
