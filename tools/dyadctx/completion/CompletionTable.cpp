// SPDX-License-Identifier: MIT
#include "tools/dyadctx/completion/CompletionTable.h"

#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/EmbeddedFiles.h"
#include "tools/dyadctx/FileChoiceText.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace dyadctx::tool {

namespace {

struct NamedOffer {
    std::string_view value;
    const char* offer;
};

// By the name that a value has in the help.
constexpr std::array NamedOffers{
    NamedOffer{"FILE", "contextfiles"},  NamedOffer{"OUT", "files"},
    NamedOffer{"A", "contextfiles"},     NamedOffer{"B", "contextfiles"},
    NamedOffer{"VALUE", "contextfiles"}, NamedOffer{"NAME", "contexts"},
    NamedOffer{"PROVIDER", "providers"}, NamedOffer{"TAG", "words en fr de ja"},
};

Offer OfferOfWords(const std::vector<std::string>& words) {
    Offer offer = "words";
    for (const std::string& word : words)
        offer += " " + word;
    return offer;
}

// The findings that check can leave out.
std::vector<std::string> SilencedKinds() {
    std::vector<std::string> ids;
    for (const VELDyadCtxFindingKind& kind : FindingKinds()) {
        if (kind.severity != Severity::Error)
            ids.push_back(ToText(kind.id));
    }
    return ids;
}

Offer OfferFor(const Argument& argument) {
    if (!argument.words.empty())
        return OfferOfWords(argument.words);
    if (argument.value.empty())
        return "";
    if (argument.value == "ID")
        return OfferOfWords(SilencedKinds());
    if (argument.value == "COMMAND")
        return OfferOfWords(NamesOf(JsonSchemas()));
    if (argument.value == "KEY")
        return OfferOfWords(NamesOf(ExplanationFiles()));
    if (argument.value == "ATTRIBUTE")
        return OfferOfWords({FileAttribute});
    const auto* named =
        std::find_if(NamedOffers.begin(), NamedOffers.end(),
                     [&](const NamedOffer& one) { return one.value == argument.value; });
    return named != NamedOffers.end() ? named->offer : "any";
}

// The first clause: a list of completions has one line for each.
std::string ShortMeaning(const std::string& meaning) {
    std::size_t end = meaning.size();
    for (const char* mark : {"; ", ". ", ": "})
        end = std::min(end, meaning.find(mark));
    return meaning.substr(0, end);
}

void AddOptions(const std::vector<Argument>& options, CompletionRow& row) {
    for (const Argument& option : options) {
        for (const std::string& name : option.names)
            row.options.push_back({name, OfferFor(option), ShortMeaning(option.meaning)});
    }
}

// `inherited` are the options of the commands above, which hold here as well.
void AddRows(const CommandNode& node, const std::string& path,
             const std::vector<Argument>& inherited, std::vector<CompletionRow>& rows) {
    CompletionRow row;
    row.path = path;
    for (const CommandNode& command : node.commands)
        row.commands.push_back({command.name, ShortMeaning(command.summary)});
    for (const Argument& value : node.values) {
        row.values.push_back(OfferFor(value));
        row.repeats = value.isRepeatable;
    }
    AddOptions(node.options, row);
    AddOptions(inherited, row);
    rows.push_back(row);
    std::vector<Argument> options = node.options;
    options.insert(options.end(), inherited.begin(), inherited.end());
    for (const CommandNode& command : node.commands)
        AddRows(command, path.empty() ? command.name : path + " " + command.name, options, rows);
}

} // namespace

std::vector<CompletionRow> CompletionTable(const CommandNode& root) {
    std::vector<CompletionRow> rows;
    AddRows(root, "", {}, rows);
    for (CompletionRow& row : rows) {
        if (row.path != "help")
            continue;
        std::vector<std::string> names;
        for (const CommandNode& command : root.commands)
            names.push_back(command.name);
        row.values = {OfferOfWords(names)};
        row.repeats = false;
    }
    return rows;
}

} // namespace dyadctx::tool
