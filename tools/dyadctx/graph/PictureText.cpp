// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/PictureText.h"

#include "platform/detail/Utf8.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Words.h"

#include <algorithm>
#include <array>
#include <vector>

namespace dyadctx::tool {

namespace {

constexpr int HeadColumns = 32;
constexpr int SubColumns = 34;
// Marks without a width may pile up on one letter, and yet the box must not grow.
constexpr std::size_t MaxCharactersPerColumn = 4;

struct InvisibleMark {
    std::string_view bytes;
    std::string_view writtenOut;
};

constexpr std::array<InvisibleMark, 4> InvisibleMarks{
    {{"\u00AD", "\\u00ad"}, {"\u200B", "\\u200b"}, {"\u2060", "\\u2060"}, {"\uFEFF", "\\ufeff"}}};

std::vector<std::string_view> CharactersOf(std::string_view text) {
    std::vector<std::string_view> characters;
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        characters.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return characters;
}

// How many characters, taken from `first` on, fit into that many columns.
template<class Iterator>
std::size_t CountWithin(Iterator first, Iterator last, int columns) {
    std::size_t count = 0;
    const std::size_t most = MaxCharactersPerColumn * static_cast<std::size_t>(columns);
    for (; first != last && count < most; ++first, ++count) {
        columns -= DisplayWidth(*first);
        if (columns < 0)
            break;
    }
    return count;
}

// Widths in hundredths of the font size, for the widest of the common fonts.
double WidthOf(std::string_view character) {
    constexpr std::string_view narrow = "iljtfrI.,:;'|!()[]{} -/\\\"`";
    constexpr std::string_view wide = "mwMWQOGD%@&";
    const int columns = DisplayWidth(character);
    if (columns != 1)
        return columns == 0 ? 0 : 105;
    if (character.size() == 4)
        return 125;
    const char letter = character.size() == 1 ? character.front() : 'e';
    if (narrow.find(letter) != std::string_view::npos)
        return 42;
    if (wide.find(letter) != std::string_view::npos)
        return 98;
    return letter >= 'A' && letter <= 'Z' ? 74 : 66;
}

std::string LineOf(const char* label, const std::string& value) {
    return value.empty() ? "" : "\n" + Words(label) + ": " + Traceable(value);
}

std::string QuotedName(const GraphNode& node) {
    return node.name.empty() ? Words("picture.no-name") : "'" + Traceable(node.name) + "'";
}

} // namespace

std::string Traceable(std::string_view text) {
    std::string visible = Visible(text);
    for (const InvisibleMark& mark : InvisibleMarks) {
        std::size_t at = 0;
        while ((at = visible.find(mark.bytes, at)) != std::string::npos) {
            visible.replace(at, mark.bytes.size(), mark.writtenOut);
            at += mark.writtenOut.size();
        }
    }
    return visible;
}

std::string Shortened(const std::string& text, int columns) {
    const std::vector<std::string_view> characters = CharactersOf(text);
    const std::size_t most = MaxCharactersPerColumn * static_cast<std::size_t>(columns);
    if (characters.size() <= most && DisplayWidth(text) <= columns)
        return text;
    const int tailColumns = (columns - 1) / 3;
    const std::size_t head =
        CountWithin(characters.begin(), characters.end(), columns - 1 - tailColumns);
    std::size_t tail = CountWithin(characters.rbegin(), characters.rend(), tailColumns);
    tail = std::min(tail, characters.size() - head);
    // The cut is not between a letter and its mark.
    while (tail > 0 && DisplayWidth(characters[characters.size() - tail]) == 0)
        --tail;
    std::string shortened;
    for (std::size_t i = 0; i < head; ++i)
        shortened += characters[i];
    shortened += "…";
    for (std::size_t i = characters.size() - tail; i < characters.size(); ++i)
        shortened += characters[i];
    return shortened;
}

std::string HeadLine(const GraphNode& node) {
    return node.name.empty() ? Words("picture.no-name")
                             : Shortened(Traceable(node.name), HeadColumns);
}

std::string SubLine(const GraphNode& node) {
    if (node.isUnresolved)
        return Words("picture.undeclared");
    if (!node.parameter.empty())
        return Shortened(Traceable(node.parameter), SubColumns);
    return node.type.empty() ? Words("picture.no-type")
                             : Shortened(Traceable(node.type), SubColumns);
}

std::string FaultLine(const GraphNode& node) {
    if (node.faults.empty())
        return "";
    return CountedWords(std::ssize(node.faults), "count.error");
}

std::string FullText(const GraphNode& node) {
    std::string text = node.name.empty() ? Words("picture.no-name") : Traceable(node.name);
    if (node.isUnresolved)
        return text + "\n" + Words("picture.undeclared");
    text += LineOf("show.type", node.type) + LineOf("show.parameter", node.parameter);
    if (node.isOnCycle)
        text += "\n" + Words("picture.on-cycle");
    for (const std::string& fault : node.faults)
        text += LineOf("picture.error", fault);
    return text;
}

std::string FullText(const Graph& graph, const GraphLink& link) {
    const GraphNode& from = graph.nodes[static_cast<std::size_t>(link.from)];
    const GraphNode& to = graph.nodes[static_cast<std::size_t>(link.to)];
    const bool isFriend = link.kind == LinkKind::Friend;
    std::string text = Words(isFriend ? "picture.friend-link" : "picture.associated-link",
                             {QuotedName(from), QuotedName(to)});
    if (link.isUnresolved)
        text += Words("picture.to-undeclared");
    return link.isOnCycle ? text + Words("picture.in-cycle") : text;
}

double TextWidth(std::string_view text, double fontSize) {
    double hundredths = 0;
    for (const std::string_view character : CharactersOf(text))
        hundredths += WidthOf(character);
    return hundredths * fontSize / 100;
}

} // namespace dyadctx::tool
