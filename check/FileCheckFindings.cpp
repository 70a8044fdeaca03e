// SPDX-License-Identifier: MIT
// The places of the findings of linking and checking, and what is reported with them.
#include "check/detail/FileCheckRun.h"

#include "collector/detail/CollectorAccess.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/UserMessage.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/ReadState.h"

#include <algorithm>
#include <array>
#include <string>

namespace dyadctx {

namespace {

// What a finding is about besides the context itself.
enum class Party { None, Associated, Later };

struct FindingSpot {
    std::string_view key;
    // The attribute at fault, of the context or of the friend or associated context it names.
    const char* attribute;
    Party party;
    // The missing values that already explain the finding (see MissingValue).
    unsigned int follows;
};

constexpr unsigned int Nothing = 0;

constexpr std::array Spots{
    FindingSpot{key::CtxEmptyName, format::NameAttribute, Party::None, MissingName},
    FindingSpot{key::CtxNameTooLong, format::NameAttribute, Party::None, Nothing},
    FindingSpot{key::CtxNameWithInvalidChar, format::NameAttribute, Party::None, Nothing},
    FindingSpot{key::CtxEmptyParam, format::ParameterAttribute, Party::None, MissingParameter},
    FindingSpot{key::CtxUnknownParamType, format::ParameterTypeAttribute, Party::None,
                MissingParameterType},
    FindingSpot{key::CtxDefaultInvalidParamType, format::ParameterTypeAttribute, Party::None,
                MissingParameterType},
    FindingSpot{key::CtxDefaultInvalidName, format::NameAttribute, Party::None, MissingName},
    FindingSpot{key::CtxDefaultInvalidParam, format::ParameterAttribute, Party::None, Nothing},
    FindingSpot{key::CtxAlreadyDefined, format::NameAttribute, Party::Later, MissingName},
    FindingSpot{key::CtxDatabaseAlreadyDefined, format::ConnectorAttribute, Party::Later, Nothing},
    FindingSpot{key::CtxFriendNoName, format::NameAttribute, Party::None, Nothing},
    FindingSpot{key::CtxAndFriendWithSameName, format::NameAttribute, Party::None, MissingName},
    FindingSpot{key::CtxAndFriendWithCyclicity, format::NameAttribute, Party::None, Nothing},
    FindingSpot{key::CtxFriendNoMatchingCtx, format::NameAttribute, Party::None, Nothing},
    FindingSpot{key::CtxAssocNoName, format::NameAttribute, Party::Associated, Nothing},
    FindingSpot{key::CtxAndAssocWithSameName, format::NameAttribute, Party::Associated,
                MissingName},
    FindingSpot{key::CtxAndAssocWithCyclicity, format::NameAttribute, Party::Associated, Nothing},
    FindingSpot{key::CtxAssocNoMatchingCtx, format::NameAttribute, Party::Associated, Nothing},
};

constexpr FindingSpot OfNoRule{{}, nullptr, Party::None, Nothing};

const FindingSpot& RowOf(const Fault& fault) {
    const auto* found = std::find_if(
        Spots.begin(), Spots.end(), [&](const FindingSpot& spot) { return spot.key == fault.key; });
    return found != Spots.end() ? *found : OfNoRule;
}

bool IsUnknownName(const Fault& fault) {
    const std::string_view key = fault.key;
    return key == key::CtxFriendNoMatchingCtx || key == key::CtxAssocNoMatchingCtx;
}

VELUnicodeString Sentence(const VELDyadContext& context, const char* key) {
    return OwnText(key, &context.GetName(), 1);
}

} // namespace

void FileCheckRun::Report(const Fault& fault) {
    if (IsFollowUp(fault))
        return;
    const std::span<const VELUnicodeString> parameters(
        fault.parameters.data(), static_cast<std::size_t>(fault.parameterCount));
    FindingList::Entry& entry =
        findings_.AddAbout(fault.context->GetName(), fault.key, parameters, SpotOf(fault));
    Relate(fault, entry);
    if (IsUnknownName(fault))
        unknown_.push_back({fault.context, fault.other});
}

// Whether the finding is about a value whose absence has been reported already.
bool FileCheckRun::IsFollowUp(const Fault& fault) const {
    if (missing_.empty())
        return false;
    const FindingSpot& row = RowOf(fault);
    const auto lacks = [this](const VELDyadContext* context, unsigned int values) {
        const auto found = missing_.find(context);
        return found != missing_.end() && (found->second & values) != 0;
    };
    return lacks(fault.context, row.follows) ||
           (row.party == Party::Later && lacks(fault.other, row.follows));
}

Spot FileCheckRun::SpotOf(const Fault& fault) const {
    const FindingSpot& row = RowOf(fault);
    const VELDyadContext* at = fault.context;
    if (IsUnknownName(fault))
        at = fault.other;
    else if (fault.friendPosition > 0)
        at = references_->FriendAt(checked_, fault.friendPosition);
    else if (row.party == Party::Associated)
        at = references_->AssociatedAt(checked_);
    return SpotOfContext(at, row.attribute);
}

Spot FileCheckRun::SpotOfContext(const VELDyadContext* context, const char* attribute) const {
    const VELPlace* element = ElementOf(context);
    return element != nullptr ? Spot{*element, attribute} : Spot{};
}

void FileCheckRun::Relate(const Fault& fault, FindingList::Entry& entry) {
    const FindingSpot& row = RowOf(fault);
    if (IsUnknownName(fault)) {
        RelateUnknown(fault, entry);
    } else if (row.party == Party::Later) {
        const bool isNamesake = row.key == key::CtxAlreadyDefined;
        entry.related.push_back({SpotOfContext(fault.other, row.attribute),
                                 Sentence(*fault.other, isNamesake ? "related.declared-again"
                                                                   : "related.same-database")});
    } else if (row.key == key::CtxAndFriendWithCyclicity ||
               row.key == key::CtxAndAssocWithCyclicity) {
        RelateReturn(fault, entry);
    }
}

// The name may be that of a context that was left out.
void FileCheckRun::RelateUnknown(const Fault& fault, FindingList::Entry& entry) {
    if (leftOutByName_.empty()) {
        for (std::size_t i = 0; i < leftOut_.size(); ++i)
            leftOutByName_.emplace(leftOut_[i].name.AsView(), i);
    }
    const auto found = leftOutByName_.find(fault.other->GetName().AsView());
    if (found != leftOutByName_.end())
        entry.related.push_back({{leftOut_[found->second].place, format::NameAttribute},
                                 Sentence(*fault.other, "related.left-out")});
}

// Where the other party names this context.
void FileCheckRun::RelateReturn(const Fault& fault, FindingList::Entry& entry) {
    const int other = PositionOfName(fault.other->GetName());
    const bool isFriend = fault.friendPosition > 0;
    const VELDyadContext* reference =
        isFriend ? references_->FriendNamed(other, fault.context->GetName())
                 : references_->AssociatedAt(other);
    // A context that names itself is one place only.
    if (reference != nullptr && fault.other != fault.context)
        entry.related.push_back({SpotOfContext(reference, format::NameAttribute),
                                 Sentence(*fault.other, isFriend ? "related.names-as-friend"
                                                                 : "related.names-as-associated")});
}

int FileCheckRun::PositionOfName(const VELUnicodeString& name) const {
    return CollectorAccess::PositionOfName(*collector_, name);
}

} // namespace dyadctx
