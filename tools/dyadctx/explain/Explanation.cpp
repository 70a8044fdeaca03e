// SPDX-License-Identifier: MIT
#include "tools/dyadctx/explain/Explanation.h"

#include "platform/VELMsgCatalog.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/EmbeddedFiles.h"
#include "tools/dyadctx/Suggestion.h"
#include "trace/VELDyadMessageKeys.h"

#include <algorithm>
#include <optional>

namespace dyadctx::tool {

namespace {

// How the keys of the catalog begin; the other ids have no capital letters.
constexpr std::string_view CatalogPrefix = "Ctx.";

std::string_view WithoutBrackets(std::string_view key) {
    if (key.size() > 2 && key.starts_with('[') && key.ends_with(']'))
        return key.substr(1, key.size() - 2);
    return key;
}

std::optional<VELDyadCtxFindingKind> OwnKind(const std::string& id) {
    for (const VELDyadCtxFindingKind& kind : FindingKinds()) {
        if (kind.id.AsView() == id)
            return kind;
    }
    return std::nullopt;
}

std::vector<Explanation> ParseAll() {
    std::vector<Explanation> all;
    for (const EmbeddedFile& file : ExplanationFiles())
        all.push_back(ParseExplanation(file.name, file.text));
    return all;
}

std::string Manner(const ExplanationExample& example) {
    if (example.language == "cpp")
        return "client program";
    if (example.language == "console")
        return "commands";
    std::string manner = "context file";
    if (example.byProgram)
        manner += ", checked by the program";
    for (const std::string& option : example.options)
        manner += (&option == &example.options.front() ? ", with " : " ") + option;
    return manner;
}

} // namespace

std::string ExplanationExample::Caption() const {
    return role + " (" + Manner(*this) + ")";
}

bool Explanation::IsOfCatalog() const noexcept {
    return key.starts_with(CatalogPrefix);
}

std::string Explanation::Kind() const {
    if (!IsOfCatalog()) {
        const std::optional<VELDyadCtxFindingKind> kind = OwnKind(key);
        return NameOf(kind ? kind->severity : Severity::Error);
    }
    if (IsLabelKey(key))
        return "label";
    return IsHeadingKey(key) ? "heading" : NameOf(Severity::Error);
}

std::string Explanation::Message() const {
    if (!IsOfCatalog()) {
        const std::optional<VELDyadCtxFindingKind> kind = OwnKind(key);
        return kind ? ToText(kind->text) : "";
    }
    // A count without parameters leaves the places as they are.
    const VELUnicodeString text =
        VELMsgCatalog::BuildMessage(VELString(key::Catalog), VELString(key.c_str()), nullptr,
                                    static_cast<int>(parameters.size()), VELUnicodeString());
    return std::string(text.AsView());
}

const std::vector<Explanation>& Explanations() {
    static const std::vector<Explanation> all = ParseAll();
    return all;
}

const Explanation* FindExplanation(std::string_view key) {
    const std::string wanted = InSmallLetters(WithoutBrackets(key));
    const std::vector<Explanation>& all = Explanations();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Explanation& one) {
        return InSmallLetters(one.key) == wanted;
    });
    return found != all.end() ? &*found : nullptr;
}

std::string NearestKey(std::string_view key) {
    const std::string_view word = WithoutBrackets(key);
    const std::string ending = "." + InSmallLetters(word);
    std::vector<std::string> keys;
    for (const Explanation& explanation : Explanations()) {
        if (InSmallLetters(explanation.key).ends_with(ending))
            return explanation.key;
        keys.push_back(explanation.key);
    }
    return Nearest(word, keys);
}

std::string JoinedParagraphs(const Paragraphs& paragraphs) {
    std::string text;
    for (const std::string& paragraph : paragraphs)
        text += (text.empty() ? "" : "\n\n") + paragraph;
    return text;
}

std::string WithoutMarks(std::string text) {
    std::erase(text, '`');
    return text;
}

} // namespace dyadctx::tool
