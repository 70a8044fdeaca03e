// SPDX-License-Identifier: MIT
// Elements and attributes that nothing is read from.
#include "check/detail/FileHints.h"

#include "check/detail/NearestName.h"
#include "context/detail/ParameterTypes.h"
#include "trace/detail/FindingIds.h"
#include "xml/detail/ContextFileFormat.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/ReadState.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx {

namespace {

using Names = std::span<const std::string_view>;

constexpr std::array<std::string_view, 0> None{};
constexpr std::array<std::string_view, 8> Elements{
    format::RootTag,       format::DataTag,     format::ContextTag,    format::FriendsTag,
    format::AssociatedTag, format::ScenarioTag, format::ScenarioIdTag, format::OptionTag};
constexpr std::array<std::string_view, 10> ContextAttributes{
    format::NameAttribute,      format::ParameterAttribute, format::ParameterTypeAttribute,
    format::ConnectorAttribute, format::HttpDetail,         format::RoleDetail,
    format::ServerNameDetail,   format::ServerPortDetail,   format::UriDetail,
    format::SiteIdDetail};
constexpr std::size_t FirstDatabaseAttribute = 3;
constexpr std::array<std::string_view, 2> ScenarioIdAttributes{format::ScenarioIdentAttribute,
                                                               format::ScenarioNameAttribute};
constexpr std::array<std::string_view, 2> OptionAttributes{format::OptionNameAttribute,
                                                           format::OptionValueAttribute};
constexpr std::array<std::string_view, 1> InRoot{format::DataTag};
// Misplaced containers are errors or read as ordinary children, so the data element may have them
// too.
constexpr std::array<std::string_view, 3> InData{format::ContextTag, format::FriendsTag,
                                                 format::AssociatedTag};
constexpr std::array<std::string_view, 5> InContext{format::ContextTag, format::FriendsTag,
                                                    format::AssociatedTag, format::ScenarioTag,
                                                    format::ScenarioIdTag};
constexpr std::array<std::string_view, 2> InFriends{format::ContextTag, format::FriendsTag};
constexpr std::array<std::string_view, 2> InAssociated{format::ContextTag, format::AssociatedTag};
constexpr std::array<std::string_view, 2> InScenario{format::ScenarioTag, format::ScenarioIdTag};
constexpr std::array<std::string_view, 3> InScenarioId{format::ScenarioTag, format::ScenarioIdTag,
                                                       format::OptionTag};

// What is read of an element.
struct Reading {
    std::string_view element;
    Names children;
    Names attributes;
};

constexpr std::array Readings{
    Reading{format::RootTag, InRoot, None},
    Reading{format::DataTag, InData, None},
    Reading{format::ContextTag, InContext, ContextAttributes},
    Reading{format::FriendsTag, InFriends, None},
    Reading{format::AssociatedTag, InAssociated, None},
    Reading{format::ScenarioTag, InScenario, None},
    Reading{format::ScenarioIdTag, InScenarioId, ScenarioIdAttributes},
    Reading{format::OptionTag, None, OptionAttributes},
};

bool Holds(Names names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

const Reading* ReadingOf(std::string_view element) {
    const auto* found =
        std::find_if(Readings.begin(), Readings.end(),
                     [element](const Reading& reading) { return reading.element == element; });
    return found != Readings.end() ? found : nullptr;
}

// The format does not concern itself with namespaces.
bool IsForeign(std::string_view name) {
    return name.starts_with("xmlns") || name.find(':') != std::string_view::npos;
}

VELUnicodeString TextOf(std::string_view text) {
    return VELUnicodeString(text);
}

// The child positions that lead from the root to the data element, which may be at any depth. Empty
// unless there is exactly one.
std::vector<int> WayToData(const VELIDOMElement& root) {
    struct Level {
        VELIDOMNodeList children;
        int next = 0;
    };
    VELIDOMNodeList found;
    if (root.GetElementsByTagName(dyadctx::Names().data, found, 2) < 0)
        throw std::bad_alloc();
    if (found.GetLength() != 1)
        return {};
    std::vector<Level> levels{{ChildrenOf(root)}};
    VELUnicodeString tag;
    while (!levels.empty() && tag != dyadctx::Names().data) {
        Level& level = levels.back();
        VELIDOMNode child;
        if (level.next == level.children.GetLength())
            levels.pop_back();
        else if (level.children.Item(level.next++, child) >= 0 && child.GetTagName(tag) >= 0)
            levels.push_back({ChildrenOf(child)});
    }
    std::vector<int> way;
    way.reserve(levels.size());
    for (const Level& level : levels)
        way.push_back(level.next - 1);
    // The children of the data element itself are not on the way.
    if (!way.empty())
        way.pop_back();
    return way;
}

// Walks through the elements below the root with its own stack.
class UnreadWalk {
public:
    explicit UnreadWalk(FindingList& findings) : findings_(findings) {}

    void Walk(const VELIDOMElement& root) {
        wayToData_ = WayToData(root);
        VisitAttributes(root, Readings.front());
        pending_.push_back({root, Readings.front(), 0});
        while (!pending_.empty()) {
            const Pending next = pending_.back();
            pending_.pop_back();
            VisitChildren(next);
        }
        if (associatedLeftOut_ > 0) {
            const VELUnicodeString count(std::to_string(associatedLeftOut_).c_str());
            findings_.Add(id::AssociatedLeftOut, {&count, 1}, {firstLeftOut_});
        }
    }

private:
    static constexpr std::size_t OffTheWay = static_cast<std::size_t>(-1);

    struct Pending {
        VELIDOMElement element;
        Reading reading;
        // For an element around the data element: how many of the others are around it.
        std::size_t level;
    };

    void VisitChildren(const Pending& parent) {
        const VELIDOMNodeList children = ChildrenOf(parent.element);
        VELIDOMNode child;
        for (int index = 0; index < children.GetLength(); ++index) {
            if (children.Item(index, child) < 0 || child.GetTagName(tag_) < 0)
                continue;
            const bool leadsToData =
                parent.level < wayToData_.size() && wayToData_[parent.level] == index;
            if (leadsToData)
                GoOnToData(VELIDOMElement(child), parent);
            else
                Visit(VELIDOMElement(child), parent.reading);
        }
    }

    // Elements around the data element have no meaning but must be passed through.
    void GoOnToData(const VELIDOMElement& element, const Pending& parent) {
        if (parent.level + 1 < wayToData_.size()) {
            pending_.push_back(
                {element, {findings_.Keep(tag_.AsView()), InRoot, None}, parent.level + 1});
            return;
        }
        if (parent.level > 0) {
            const VELUnicodeString around = TextOf(parent.reading.element);
            findings_.Add(id::NestedData, {&around, 1}, {PlaceOf(element)});
        }
        Visit(element, parent.reading);
    }

    void Visit(const VELIDOMElement& element, const Reading& parent) {
        const std::string_view tag = tag_.AsView();
        if (IsForeign(tag))
            return;
        if (!Holds(parent.children, tag))
            return HintAtElement(element, parent);
        const Reading* reading = ReadingOf(tag);
        if (tag == format::AssociatedTag && !IsDbEnvironmentOn()) {
            if (associatedLeftOut_++ == 0 || PlaceOf(element) < firstLeftOut_)
                firstLeftOut_ = PlaceOf(element);
            return;
        }
        VisitAttributes(element, *reading);
        pending_.push_back({element, *reading, OffTheWay});
    }

    void HintAtElement(const VELIDOMElement& element, const Reading& parent) {
        const std::string_view tag = tag_.AsView();
        if (Holds(Elements, tag)) {
            const std::array parameters{tag_, TextOf(parent.element)};
            findings_.Add(id::MisplacedElement, parameters, {PlaceOf(element)});
            return;
        }
        const std::array parameters{tag_, TextOf(Nearest(Elements, tag))};
        findings_.AddWithSuggestion(id::UnknownElement, parameters, {PlaceOf(element)});
    }

    void VisitAttributes(const VELIDOMElement& element, const Reading& reading) {
        const int count = element.GetNbAttributes();
        bool hasDatabaseAttribute = false;
        for (int index = 0; index < count; ++index) {
            if (element.GetAttributeAtIndex(index, attribute_) < 0 || attribute_.GetName(name_) < 0)
                throw std::bad_alloc();
            const std::string_view name = name_.AsView();
            const auto found =
                std::find(reading.attributes.begin(), reading.attributes.end(), name);
            if (found == reading.attributes.end())
                HintAtAttribute(element, reading);
            else if (found - reading.attributes.begin() >=
                     static_cast<std::ptrdiff_t>(FirstDatabaseAttribute))
                hasDatabaseAttribute = true;
        }
        if (hasDatabaseAttribute)
            HintAtDatabaseAttributes(element);
    }

    void HintAtAttribute(const VELIDOMElement& element, const Reading& reading) {
        const std::string_view name = name_.AsView();
        if (IsForeign(name))
            return;
        const std::array parameters{name_, TextOf(reading.element),
                                    TextOf(Nearest(reading.attributes, name))};
        FindingList::Entry& entry =
            findings_.AddWithSuggestion(id::UnknownAttribute, parameters, {PlaceOf(element)});
        entry.spot.attribute = findings_.Keep(name);
    }

    // They are read where the type is exactly "Database".
    void HintAtDatabaseAttributes(const VELIDOMElement& element) {
        VELUnicodeString type;
        ReadAttribute(element, dyadctx::Names().parameterType, type);
        if (type == dyadctx::Names().databaseType)
            return;
        for (std::size_t i = FirstDatabaseAttribute; i < ContextAttributes.size(); ++i) {
            const VELUnicodeString name(ContextAttributes[i]);
            if (element.GetAttributeNode(name, attribute_) < 0)
                continue;
            const std::array parameters{name, type};
            findings_.Add(id::UnusedAttribute, parameters,
                          {PlaceOf(element), ContextAttributes[i].data()});
        }
    }

    static std::string_view Nearest(Names known, std::string_view word) {
        return NearestName(std::vector<std::string_view>(known.begin(), known.end())).Find(word);
    }

    FindingList& findings_;
    std::vector<int> wayToData_;
    std::vector<Pending> pending_;
    int associatedLeftOut_ = 0;
    VELPlace firstLeftOut_;
    // Members, so that each element reuses their storage.
    VELUnicodeString tag_;
    VELUnicodeString name_;
    VELIDOMAttr attribute_;
};

} // namespace

void HintAtWhatIsNotRead(const VELIDOMElement& root, FindingList& findings) {
    UnreadWalk(findings).Walk(root);
}

NestedContexts FindDeepestNesting(const VELIDOMElement& root, const FormatIds& ids) {
    struct Level {
        VELIDOMNodeList children;
        // Of the element that has these children; none for other elements than contexts.
        NestedContexts line;
        int next = 0;
    };
    NestedContexts deepest;
    std::vector<Level> levels;
    levels.push_back({ChildrenOf(root), {}});
    while (!levels.empty()) {
        Level& level = levels.back();
        VELIDOMNode child;
        std::uint32_t tag = 0;
        if (level.next == level.children.GetLength()) {
            levels.pop_back();
        } else if (level.children.Item(level.next++, child) >= 0 && ReadTag(child, tag)) {
            NestedContexts line;
            if (tag == ids.context) {
                line.outermost =
                    level.line.depth > 0 ? level.line.outermost : VELIDOMElement(child);
                line.depth = level.line.depth + 1;
            }
            if (line.depth > deepest.depth)
                deepest = line;
            levels.push_back({ChildrenOf(child), line});
        }
    }
    return deepest;
}

} // namespace dyadctx
