// SPDX-License-Identifier: MIT
#include "collector/VELDyadCtxCollector.h"

#include "collector/detail/CollectorInternals.h"
#include "context/detail/ContextAccess.h"
#include "context/detail/ParameterTypes.h"
#include "platform/detail/HostCode.h"
#include "trace/detail/ProcessSettings.h"
#include "trace/detail/TraceLine.h"

#include <algorithm>
#include <exception>
#include <tuple>
#include <utility>
#include <vector>

using dyadctx::CollectorIndex;
using dyadctx::CollectorInternals;
using dyadctx::CollectorState;
using dyadctx::ContextAccess;
using dyadctx::ContextWatch;
using dyadctx::ContextWatches;

namespace {

template<class... Fields>
std::tuple<Fields...> CopyOf(const std::tuple<const Fields&...>& fields) {
    return fields;
}

// Removes a context from the links of `holder` as a client would: by the positions its friends had
// at first, although each removal moves the later ones up. Every trace line may run a host's code,
// which may delete holder and target.
class Unlinking {
public:
    Unlinking(ContextWatches& watches, VELDyadContext* holder, VELDyadContext* const& target)
        : holder_(holder), target_(target), watch_(watches, holder_) {}

    void Run() {
        ContextAccess::TraceAssociated(*holder_);
        if (IsGoing() && ContextAccess::Associated(*holder_) == target_)
            RemoveAssociated();
        if (IsGoing())
            ContextAccess::TraceFriends(*holder_);
        if (IsGoing())
            RemoveFriends(ContextAccess::Friends(*holder_));
    }

private:
    bool IsGoing() const noexcept { return holder_ != nullptr && target_ != nullptr; }

    void RemoveAssociated() {
        TRACE_LOG("VELDyadContext:RemoveAssociatedContext");
        if (holder_ != nullptr)
            ContextAccess::ClearAssociated(*holder_);
    }

    void RemoveFriends(dyadctx::FriendView friends) {
        if (std::find(friends.begin(), friends.end(), target_) == friends.end())
            return;
        const std::vector<VELDyadContext*> friendsBefore(friends.begin(), friends.end());
        for (std::size_t at = 0; IsGoing() && at < friendsBefore.size(); ++at) {
            if (friendsBefore[at] == target_)
                holder_->RemoveFriend(static_cast<int>(at) + 1);
        }
    }

    VELDyadContext* holder_;
    VELDyadContext* const& target_;
    ContextWatch watch_;
};

// A context that never was in a collector need not be searched for, which saves a file's reader a
// search per context.
bool Holds(CollectorIndex& index, const VELListPtrVELDyadContext& owned, VELDyadContext* ctx) {
    if (!ContextAccess::WasRegistered(*ctx))
        return false;
    try {
        return index.Owns(owned, ctx);
    } catch (const std::exception&) {
        // Slower, but needs no memory.
        return owned.Locate(ctx) != 0;
    }
}

// Ends when `target` has become null.
void UnlinkInView(VELDyadCtxCollector& collector, ContextWatches& watches,
                  VELDyadContext* const& target) {
    const int count = collector.GetNbCtxs();
    for (int pos = 1; target != nullptr && pos <= count; ++pos) {
        VELDyadContext* holder = nullptr;
        if (collector.GetCtxAtIndex(pos, holder) != S_OK || holder == nullptr)
            continue;
        try {
            Unlinking(watches, holder, target).Run();
        } catch (const std::exception&) {
            // Not enough memory to go by position; TakeOut removes the links that are left.
        }
    }
}

// Removes everything that still points at `target`: links of contexts outside the view and a second
// entry among the declared contexts. Contexts after a second entry keep their positions.
void TakeOut(VELListPtrVELDyadContext& owned, VELListPtrVELDyadContext& declared,
             VELDyadContext* target) noexcept {
    declared.RemoveValue(target);
    for (int pos = 1; pos <= declared.Size(); ++pos) {
        if (declared[pos] == target)
            declared[pos] = nullptr;
    }
    owned.RemoveValue(target);
    for (int pos = 1; pos <= owned.Size(); ++pos)
        ContextAccess::RemoveLinksTo(*owned[pos], target);
}

// The positions of the current view; null when it has no list or serves nothing.
const VELRawCollint* ServedPositions(int type, const VELRawCollint& path,
                                     const VELRawCollint& database, const VELRawCollint& file) {
    switch (type) {
    case dyadctx::PathContexts:
        return &path;
    case dyadctx::DatabaseContexts:
        return &database;
    case dyadctx::FileContexts:
        return dyadctx::IsDbEnvironmentOn() ? &file : nullptr;
    default:
        return nullptr;
    }
}

// The place of the first context of that name in the current view; 0 without one. Needs no memory.
int WalkToName(VELDyadCtxCollector& collector, const VELUnicodeString& name) {
    const int count = collector.GetNbCtxs();
    for (int place = 1; place <= count; ++place) {
        VELDyadContext* context = nullptr;
        if (collector.GetCtxAtIndex(place, context) == S_OK && context != nullptr &&
            context->GetName() == name)
            return place;
    }
    return 0;
}

} // namespace

// ---- Construction, copy and destruction ---------------------------------------------------------

VELDyadCtxCollector::VELDyadCtxCollector(const VELUnicodeString& file,
                                         const unsigned char& isDefault)
    : _XMLFile(file), _IsDefault(isDefault != 0), state_(std::make_unique<CollectorState>()) {
    TRACE_LOG("VELDyadCtxCollector:Constructor-isDefault=%d - File=<%s>",
              static_cast<int>(isDefault), _XMLFile.ConvertToChar());
}

VELDyadCtxCollector::VELDyadCtxCollector(const VELDyadCtxCollector& src)
    : state_(std::make_unique<CollectorState>()) {
    CollectorInternals::CopiedFields(*this) = CollectorInternals::CopiedFields(src);
}

VELDyadCtxCollector& VELDyadCtxCollector::operator=(const VELDyadCtxCollector& src) {
    // All copies are made before the first field changes.
    CollectorInternals::CopiedFields(*this) = CopyOf(CollectorInternals::CopiedFields(src));
    state_->index.Forget();
    state_->watches.Forget(
        [this](VELDyadContext* context) { return _Contexts.Locate(context) == 0; });
    return *this;
}

VELDyadCtxCollector::~VELDyadCtxCollector() {
    TRACE_LOG("VELDyadCtxCollector:Destructor");
    for (int pos = 1; pos <= _Contexts.Size(); ++pos)
        delete _Contexts[pos];
    _Contexts.RemoveAll(VELCollec::KeepMemory);
    _MainContexts.RemoveAll(VELCollec::KeepMemory);
    _PathCtxIndexes.RemoveAll(VELCollec::KeepMemory);
    _DatabaseCtxIndexes.RemoveAll(VELCollec::KeepMemory);
}

VELDyadCtxCollector* VELDyadCtxCollector::CreateCollectorFromScratch() {
    try {
        auto* collector = new VELDyadCtxCollector(VELUnicodeString(), 0);
        TRACE_LOG("VELDyadCtxCollector:CreateCollectorFromScratch");
        if (dyadctx::IsTracerVariableSet())
            BatchStack();
        return collector;
    } catch (const std::exception&) {
        return nullptr;
    }
}

// ---- Registry -----------------------------------------------------------------------------------

VELResult VELDyadCtxCollector::AddContext(VELDyadContext* ctx, VELDyadContext* parent,
                                          int associated) {
    if (parent == nullptr && _MainContexts.Append(ctx) == 0)
        return E_FAIL;
    const bool isNew = ctx != nullptr && !Holds(state_->index, _Contexts, ctx);
    if (isNew && _Contexts.Append(ctx) == 0) {
        if (parent == nullptr)
            _MainContexts.RemovePosition(_MainContexts.Size());
        return E_FAIL;
    }
    if (isNew)
        ContextAccess::MarkRegistered(*ctx);
    if (parent == nullptr) {
        ++_NbCtxs;
        return S_OK;
    }
    const bool mustAsk = associated != 0 || dyadctx::HostCodeCanRun();
    if (mustAsk && dyadctx::IsDbEnvironmentOn() && associated != 0)
        return parent->AddAssociatedContext(ctx);
    return parent->AddFriend(ctx);
}

VELResult VELDyadCtxCollector::DeleteContext(const VELUnicodeString& name) {
    VELDyadContext* target = nullptr;
    if (GetCtxFromName(name, target) != S_OK)
        return E_FAIL;
    // If a host's code deletes the same context meanwhile, nothing is left to do.
    const ContextWatch watch(state_->watches, target);
    UnlinkInView(*this, state_->watches, target);
    if (target == nullptr)
        return S_OK;
    VELDyadContext* doomed = target;
    TakeOut(_Contexts, _MainContexts, doomed);
    _NbCtxs = _MainContexts.Size();
    state_->index.Forget();
    state_->watches.Forget([doomed](VELDyadContext* context) { return context == doomed; });
    // `name` may have been the name of the target itself.
    delete doomed;
    return S_OK;
}

// ---- Lookups ------------------------------------------------------------------------------------

// The File view outside the DB context environment counts all declared contexts although
// GetCtxAtIndex serves none of them.
int VELDyadCtxCollector::GetNbCtxs() {
    const VELRawCollint* positions =
        ServedPositions(_CtxType, _PathCtxIndexes, _DatabaseCtxIndexes, _FileCtxIndexes);
    return positions == nullptr ? _NbCtxs : positions->Size();
}

VELResult VELDyadCtxCollector::GetCtxAtIndex(int index, VELDyadContext*& ctx) {
    int pos = index;
    if (_CtxType != dyadctx::AllContexts) {
        const VELRawCollint* positions =
            ServedPositions(_CtxType, _PathCtxIndexes, _DatabaseCtxIndexes, _FileCtxIndexes);
        // A position outside the list is 0.
        pos = positions == nullptr ? 0 : (*positions)[index];
    }
    // The position may be out of date after a removal.
    if (pos < 1 || pos > _MainContexts.Size())
        return E_FAIL;
    ctx = _MainContexts[pos];
    return S_OK;
}

VELResult VELDyadCtxCollector::GetCtxFromName(const VELUnicodeString& name, VELDyadContext*& ctx,
                                              int* index) {
    int place = 0;
    try {
        // The File view may ask a host, which may assign to the context that has the name.
        const bool isHostAsked = _CtxType == dyadctx::FileContexts && dyadctx::HostCodeCanRun();
        const VELUnicodeString kept = isHostAsked ? name : VELUnicodeString();
        const VELUnicodeString& asked = isHostAsked ? kept : name;
        const VELRawCollint* positions =
            ServedPositions(_CtxType, _PathCtxIndexes, _DatabaseCtxIndexes, _FileCtxIndexes);
        const auto view = dyadctx::ViewType(_CtxType);
        if (_CtxType == dyadctx::AllContexts)
            place = state_->index.PositionOfName(_MainContexts, asked);
        else if (positions != nullptr)
            place = state_->index.PlaceOfName(_MainContexts, *positions, view, asked);
    } catch (const std::exception&) {
        // Without memory for the index, search the view itself.
        place = WalkToName(*this, name);
    }
    if (place == 0 || GetCtxAtIndex(place, ctx) != S_OK)
        return E_FAIL;
    if (index != nullptr)
        *index = place;
    return S_OK;
}

const VELUnicodeString& VELDyadCtxCollector::GetXMLFile(unsigned char& isDefault) const noexcept {
    isDefault = _IsDefault ? 1 : 0;
    return _XMLFile;
}
