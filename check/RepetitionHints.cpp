// SPDX-License-Identifier: MIT
// What a context has more than once although once is enough.
#include "check/detail/FileHints.h"

#include "context/detail/ParameterTypes.h"
#include "trace/detail/FindingIds.h"
#include "trace/detail/UserMessage.h"
#include "xml/detail/ContextFileFormat.h"
#include "xml/detail/ReadState.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace dyadctx {

namespace {

using Elements = std::vector<VELIDOMElement>;

// The elements of that tag below `parent` with nothing but containers between, in the order of the
// file: what the reader reaches.
Elements Reached(const VELIDOMElement& parent, std::uint32_t tag,
                 std::initializer_list<std::uint32_t> containers) {
    struct Level {
        VELIDOMNodeList children;
        int next = 0;
    };
    Elements reached;
    std::vector<Level> levels{{ChildrenOf(parent)}};
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.children.GetLength()) {
            levels.pop_back();
            continue;
        }
        VELIDOMNode child;
        std::uint32_t childTag = 0;
        if (level.children.Item(level.next++, child) < 0 || !ReadTag(child, childTag))
            continue;
        if (childTag == tag)
            reached.emplace_back(child);
        if (std::find(containers.begin(), containers.end(), childTag) != containers.end())
            levels.push_back({ChildrenOf(child)});
    }
    return reached;
}

class RepetitionSearch {
public:
    RepetitionSearch(const FormatIds& ids, FindingList& findings)
        : ids_(ids), findings_(findings) {}

    // A declared context, with the contexts that it names.
    void Look(const VELIDOMElement& context) {
        const WalksBelow below = FindWalksBelow(context, ids_);
        name_ = AttributeOrEmpty(context, ids_.name);
        if (below.friends)
            LookAtFriends(Reached(context, ids_.context, {ids_.friends}));
        if (below.associated && IsDbEnvironmentOn())
            LookAtAssociated(Reached(context, ids_.context, {ids_.associated}));
        if (below.scenarios)
            LookAtScenarios(Reached(context, ids_.scenarioId, {ids_.scenario, ids_.scenarioId}));
    }

private:
    // The first element that says the same; null if this is the first.
    const VELPlace* FirstOf(const std::string& what, const VELIDOMElement& element) {
        const auto [first, isNew] = said_.try_emplace(what, PlaceOf(element));
        return isNew ? nullptr : &first->second;
    }

    // Contexts without name are errors.
    bool ReadName(const VELIDOMElement& element, VELUnicodeString& name) const {
        return ReadAttribute(element, ids_.name, name) && !name.IsEmpty();
    }

    void LookAtFriends(const Elements& friends) {
        said_.clear();
        VELUnicodeString name;
        for (const VELIDOMElement& element : friends) {
            if (!ReadName(element, name))
                continue;
            const std::array parameters{name_, name};
            if (const VELPlace* first = FirstOf(std::string(name.AsView()), element))
                Warn(id::RepeatedFriend, parameters, {PlaceOf(element), format::NameAttribute},
                     {{*first, format::NameAttribute}, OwnText("related.named-first")});
        }
    }

    void LookAtAssociated(const Elements& associated) {
        VELUnicodeString name;
        for (std::size_t i = 0; i + 1 < associated.size(); ++i) {
            if (!ReadName(associated[i], name))
                continue;
            const std::array parameters{name_, name};
            Warn(id::SeveralAssociated, parameters, {PlaceOf(associated[i]), format::NameAttribute},
                 {{PlaceOf(associated.back()), format::NameAttribute},
                  OwnText("related.this-one-counts")});
        }
    }

    void LookAtScenarios(const Elements& scenarios) {
        said_.clear();
        for (const VELIDOMElement& element : scenarios) {
            const std::array parameters{name_, AttributeOrEmpty(element, ids_.scenarioIdent),
                                        AttributeOrEmpty(element, ids_.scenarioName)};
            const std::string both =
                std::string(parameters[1].AsView()) + '\0' + std::string(parameters[2].AsView());
            if (const VELPlace* first = FirstOf(both, element))
                Warn(id::RepeatedScenario, parameters, {PlaceOf(element)},
                     {{*first}, OwnText("related.is-first")});
        }
        for (const VELIDOMElement& element : scenarios)
            LookAtOptions(Reached(element, ids_.option, {}));
    }

    void LookAtOptions(const Elements& options) {
        said_.clear();
        VELUnicodeString name;
        for (const VELIDOMElement& element : options) {
            if (!ReadAttribute(element, ids_.optionName, name))
                continue;
            if (const VELPlace* first = FirstOf(std::string(name.AsView()), element))
                Warn(id::RepeatedOption, {&name, 1},
                     {PlaceOf(element), format::OptionNameAttribute},
                     {{*first, format::OptionNameAttribute}, OwnText("related.given-first")});
        }
    }

    void Warn(const char* id, std::span<const VELUnicodeString> parameters, const Spot& spot,
              FindingList::Related related) {
        findings_.AddAbout(name_, id, parameters, spot).related.push_back(std::move(related));
    }

    const FormatIds& ids_;
    FindingList& findings_;
    // Of the declared context.
    VELUnicodeString name_;
    std::unordered_map<std::string, VELPlace> said_;
};

} // namespace

void HintAtRepetitions(const VELIDOMElement& data, const FormatIds& ids, FindingList& findings) {
    RepetitionSearch search(ids, findings);
    for (const VELIDOMElement& context : Reached(data, ids.context, {}))
        search.Look(context);
}

} // namespace dyadctx
