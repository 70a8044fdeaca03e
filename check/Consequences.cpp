// SPDX-License-Identifier: MIT
#include "check/detail/Consequences.h"

#include "context/detail/ParameterTypes.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/FindingIds.h"
#include "xml/detail/ContextFileFormat.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <utility>

namespace dyadctx {

namespace {

// Both are found at the same element.
struct Consequence {
    std::string_view id;
    std::string_view fault;
    // What the consequence must suggest; empty matches any text.
    std::string_view suggestion;
};

constexpr std::array Table{
    // The default context has a fixed name and type, and no parameter.
    Consequence{key::CtxEmptyParam, key::CtxDefaultInvalidName, {}},
    Consequence{key::CtxEmptyName, key::CtxDefaultInvalidName, {}},
    Consequence{key::CtxUnknownParamType, key::CtxDefaultInvalidParamType, {}},
    Consequence{id::MissingPath, key::CtxDefaultInvalidParam, {}},
    Consequence{id::MissingFile, key::CtxDefaultInvalidParam, {}},
    // Contexts without a name all have the same one.
    Consequence{key::CtxAlreadyDefined, key::CtxEmptyName, {}},
    Consequence{key::CtxAndFriendWithSameName, key::CtxFriendNoName, {}},
    Consequence{key::CtxAndAssocWithSameName, key::CtxAssocNoName, {}},
    // A context that names itself is named in return.
    Consequence{key::CtxAndFriendWithCyclicity, key::CtxAndFriendWithSameName, {}},
    Consequence{key::CtxAndAssocWithCyclicity, key::CtxAndAssocWithSameName, {}},
    Consequence{key::CtxNoDatabase, key::CtxNoConnector, {}},
    // What is read depends on the type.
    Consequence{id::UnusedAttribute, key::CtxUnknownParamType, {}},
    Consequence{id::UnusedAttribute, key::CtxNoParamType, {}},
    // A misspelled attribute is missing.
    Consequence{id::UnknownAttribute, key::CtxNoName, format::NameAttribute},
    Consequence{id::UnknownAttribute, key::CtxFriendNoName, format::NameAttribute},
    Consequence{id::UnknownAttribute, key::CtxAssocNoName, format::NameAttribute},
    Consequence{id::UnknownAttribute, key::CtxNoParam, format::ParameterAttribute},
    Consequence{id::UnknownAttribute, key::CtxNoParamType, format::ParameterTypeAttribute},
    Consequence{id::UnknownAttribute, key::CtxNoConnector, format::ConnectorAttribute},
    Consequence{id::UnknownAttribute, id::OptionWithoutName, format::OptionNameAttribute},
};

bool IsFault(std::string_view id) {
    return std::any_of(Table.begin(), Table.end(),
                       [id](const Consequence& row) { return row.fault == id; });
}

std::string_view LastParameter(const VELDyadCtxFinding& finding) {
    const int count = finding.parameters.Size();
    return count > 0 ? finding.parameters[count].AsView() : std::string_view();
}

// Elements that come from entities share a place.
bool ConcernSameContext(const VELDyadCtxFinding& left, const VELDyadCtxFinding& right) {
    return !left.hasContext || !right.hasContext || left.context == right.context;
}

class FaultSearch {
public:
    explicit FaultSearch(std::span<const FindingList::Entry> entries) : entries_(entries) {
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const std::string_view id = entries[i].finding.id.AsView();
            if (IsFault(id))
                atElement_.emplace(std::pair(entries[i].spot.element, id), i);
            if (id == key::CtxDefaultInvalidName && misnamedDefault_ == None)
                misnamedDefault_ = i;
        }
    }

    std::size_t FaultOf(std::size_t entry) const {
        for (std::size_t next = CauseOf(entry); next != None; next = CauseOf(next))
            entry = next;
        return entry;
    }

private:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    std::size_t CauseOf(std::size_t entry) const {
        const VELDyadCtxFinding& finding = entries_[entry].finding;
        const std::string_view id = finding.id.AsView();
        for (const Consequence& row : Table) {
            if (row.id != id ||
                (!row.suggestion.empty() && row.suggestion != LastParameter(finding)))
                continue;
            const auto found = atElement_.find(std::pair(entries_[entry].spot.element, row.fault));
            if (found != atElement_.end() &&
                ConcernSameContext(finding, entries_[found->second].finding))
                return found->second;
        }
        const bool isUnknown =
            id == key::CtxFriendNoMatchingCtx || id == key::CtxAssocNoMatchingCtx;
        return isUnknown && LastParameter(finding) == DefaultContextName ? misnamedDefault_ : None;
    }

    std::span<const FindingList::Entry> entries_;
    // The first of each id at each element.
    std::map<std::pair<VELPlace, std::string_view>, std::size_t> atElement_;
    // A default context of another name: references by the right name do not find it.
    std::size_t misnamedDefault_ = None;
};

} // namespace

std::vector<std::size_t> FindFaults(std::span<const FindingList::Entry> entries) {
    const FaultSearch search(entries);
    std::vector<std::size_t> faults;
    faults.reserve(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i)
        faults.push_back(search.FaultOf(i));
    return faults;
}

} // namespace dyadctx
