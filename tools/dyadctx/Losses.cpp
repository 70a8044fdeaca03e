// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Losses.h"

#include "platform/VELEnvironment.h"
#include "platform/VELIXMLDOM.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Words.h"

#include <algorithm>
#include <utility>

namespace dyadctx::tool {

namespace {

constexpr const char* SitesVariable = "TE_MULTISITE_DBCONTEXT";

// What the markup of a file holds beside its elements.
struct Markup {
    int comments = 0;
    int instructions = 0;
    int doctypes = 0;
};

// What the elements of a file hold.
struct Elements {
    // Directly below the data element.
    int contexts = 0;
    int scenarios = 0;
    // Of friends and associated contexts, which are written by name alone.
    int attributesOfLinks = 0;
};

// UTF-16 has a zero byte beside each character of markup.
std::string WithoutZeroBytes(std::string_view text) {
    std::string plain(text);
    plain.erase(std::remove(plain.begin(), plain.end(), '\0'), plain.end());
    return plain;
}

// The end of what begins at `from`, which is after its `ending`.
std::size_t EndOf(std::string_view text, std::size_t from, std::string_view ending) {
    const std::size_t end = text.find(ending, from);
    return end == std::string_view::npos ? text.size() : end + ending.size();
}

// Of a well-formed text, in which `<` begins markup wherever it is outside of the three skipped.
Markup MarkupOf(std::string_view input) {
    const std::string plain = WithoutZeroBytes(input);
    const std::string_view text = plain;
    Markup markup;
    std::size_t pos = 0;
    while ((pos = text.find('<', pos)) != std::string_view::npos) {
        const std::string_view rest = text.substr(pos);
        if (rest.starts_with("<!--")) {
            ++markup.comments;
            pos = EndOf(text, pos + 4, "-->");
        } else if (rest.starts_with("<![CDATA[")) {
            pos = EndOf(text, pos, "]]>");
        } else if (rest.starts_with("<?")) {
            markup.instructions += rest.starts_with("<?xml ") ? 0 : 1;
            pos = EndOf(text, pos, "?>");
        } else {
            markup.doctypes += rest.starts_with("<!DOCTYPE") ? 1 : 0;
            ++pos;
        }
    }
    return markup;
}

void Count(const VELIDOMNode& parent, const std::string& parentTag, Elements& found) {
    VELIDOMNodeList children;
    parent.GetChildNodes(children);
    for (int i = 0; i < children.GetLength(); ++i) {
        VELIDOMNode child;
        VELUnicodeString name;
        children.Item(i, child);
        if (child.GetTagName(name) < 0)
            continue;
        const std::string tag(name.AsView());
        if (tag == "Context" && parentTag == "CtxData")
            ++found.contexts;
        else if (tag == "Context" && (parentTag == "CtxFriends" || parentTag == "CtxAssociated"))
            found.attributesOfLinks += std::max(0, VELIDOMElement(child).GetNbAttributes() - 1);
        found.scenarios += tag == "ScenarioID" ? 1 : 0;
        Count(child, tag, found);
    }
}

Elements ElementsOf(std::string_view input) {
    Elements found;
    VELIXMLDOMDocumentBuilder builder;
    VELIDOMDocument document;
    VELIDOMElement root;
    CreateVELIXMLDOMDocumentBuilder(builder, CLSID_XML4C_DOM);
    if (builder.ParseText(VELUnicodeString(input), nullptr, document) < 0 ||
        document.GetDocumentElement(root) < 0)
        throw Failure(ExitStatus::NoFile, Words("loss.input-changed"));
    Count(root, "", found);
    return found;
}

int NumberOf(const VELDyadCtxFileCheck& check, std::string_view id) {
    int count = 0;
    for (int i = 1; i <= check.GetNbFindings(); ++i)
        count += check.GetFindingAt(i).id.AsView() == id ? 1 : 0;
    return count;
}

class LossList {
public:
    // By the keys of their texts.
    void Add(int count, const std::string& what, const std::string& why) {
        if (count > 0)
            losses_.push_back({CountedWords(count, what), Words(why)});
    }
    std::vector<Loss> Take() { return std::move(losses_); }

private:
    std::vector<Loss> losses_;
};

void AddDatabases(const VELDyadCtxFileCheck& check, const Elements& elements,
                  const VELDyadCtxCollector& collector, LossList& losses) {
    if (!IsDbContextEnvironmentOn()) {
        const char* why = "loss.environment-off";
        losses.Add(CountInFinding(check, "database-left-out"), "loss.database", why);
        losses.Add(CountInFinding(check, "associated-left-out"), "loss.associated", why);
        return;
    }
    if (VELGetEnv(SitesVariable) == nullptr)
        losses.Add(elements.contexts - collector.GetAllNbCtxs(), "loss.server", "loss.sites-off");
}

} // namespace

std::vector<Loss> LossesOf(std::string_view input, const VELDyadCtxFileCheck& check,
                           VELDyadCtxCollector& collector) {
    LossList losses;
    const Markup markup = MarkupOf(input);
    const Elements elements = ElementsOf(input);
    losses.Add(collector.GetAllNbCtxs() - collector.GetNbCtxs(), "count.context",
               "loss.outside-view");
    AddDatabases(check, elements, collector, losses);
    losses.Add(elements.scenarios, "loss.scenario", "loss.never-written");
    losses.Add(markup.comments, "loss.comment", "loss.never-written");
    losses.Add(markup.instructions, "loss.instruction", "loss.never-written");
    losses.Add(markup.doctypes, "loss.doctype", "loss.never-written");
    losses.Add(elements.attributesOfLinks, "loss.link-attribute", "loss.name-alone");
    losses.Add(NumberOf(check, "unknown-attribute") + NumberOf(check, "unused-attribute"),
               "loss.attribute", "loss.not-read");
    losses.Add(NumberOf(check, "unknown-element") + NumberOf(check, "misplaced-element"),
               "loss.element", "loss.not-read");
    return losses.Take();
}

} // namespace dyadctx::tool
