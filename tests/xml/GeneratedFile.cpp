// SPDX-License-Identifier: MIT
#include "xml/GeneratedFile.h"

#include "support/ContextFile.h"
#include "xml/ReaderSupport.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <vector>

namespace dyadctx::test {

namespace {

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

// The characters of XML, ordinary ones and borders more often than the rest.
constexpr std::array Ranges{
    Range{'a', 'z'},         Range{' ', '~'},          Range{'\t', '\n'},
    Range{'\r', '\r'},       Range{0x7F, 0xFF},        Range{0x100, 0xD7FF},
    Range{0xE000, 0xFFFD},   Range{0xFEFF, 0xFEFF},    Range{0x10000, 0x10FFFF},
    Range{0x1F300, 0x1F6FF}, Range{0x10FFFF, 0x10FFFF}};

void AppendUtf8(std::string& text, std::uint32_t c) {
    const auto add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80)
        return add(c);
    if (c < 0x800) {
        add(0xC0 | (c >> 6));
    } else if (c < 0x10000) {
        add(0xE0 | (c >> 12));
        add(0x80 | ((c >> 6) & 0x3F));
    } else {
        add(0xF0 | (c >> 18));
        add(0x80 | ((c >> 12) & 0x3F));
        add(0x80 | ((c >> 6) & 0x3F));
    }
    add(0x80 | (c & 0x3F));
}

class Generator {
public:
    Generator(std::uint32_t seed, const GeneratedContent& content)
        : random_(seed), content_(content) {}

    std::string Run();

private:
    struct Context {
        std::string name;
        bool isDatabase = false;
        std::vector<std::size_t> friends;
        std::size_t associated = None;
    };
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    std::uint32_t Below(std::uint32_t bound) {
        return static_cast<std::uint32_t>(random_()) % bound;
    }
    // A text as it is written in an attribute.
    std::string Text(std::uint32_t leastLength, std::uint32_t mostLength);
    void AppendCharacter(std::string& text, std::uint32_t c);
    std::string UniqueName();
    void Link(std::size_t position);
    std::string Element(const Context& context);
    std::string DatabaseElement(const Context& context);
    std::string Links(const Context& context) const;

    std::mt19937 random_;
    GeneratedContent content_;
    std::set<std::string> names_;
    std::vector<Context> contexts_;
    int servers_ = 0;
};

void Generator::AppendCharacter(std::string& text, std::uint32_t c) {
    const bool needsReference = c < 0x20 || c == '&' || c == '<' || c == '"' || Below(8) == 0;
    if (needsReference)
        text += "&#" + std::to_string(c) + ";";
    else
        AppendUtf8(text, c);
}

std::string Generator::Text(std::uint32_t leastLength, std::uint32_t mostLength) {
    std::string text;
    for (std::uint32_t left = leastLength + Below(mostLength - leastLength + 1); left > 0; --left) {
        const Range& range = Ranges[Below(Ranges.size())];
        const std::uint32_t c = range.first + Below(range.last - range.first + 1);
        // The one character that no name may hold.
        AppendCharacter(text, c == '!' ? '?' : c);
    }
    return text;
}

// The number keeps names apart that differ in their spelling only.
std::string Generator::UniqueName() {
    std::string name = Text(0, 100) + "#" + std::to_string(names_.size());
    names_.insert(name);
    return name;
}

// Links go to later contexts only, so no two contexts can name one another.
void Generator::Link(std::size_t position) {
    const auto count = static_cast<std::uint32_t>(contexts_.size() - position - 1);
    if (count == 0)
        return;
    Context& context = contexts_[position];
    for (std::uint32_t left = Below(4); left > 0; --left)
        context.friends.push_back(position + 1 + Below(count));
    if (content_.databases && Below(3) == 0)
        context.associated = position + 1 + Below(count);
}

std::string Generator::Links(const Context& context) const {
    std::string friends;
    for (const std::size_t position : context.friends)
        friends += Named(contexts_[position].name);
    std::string links;
    if (!friends.empty())
        links += Friends(friends);
    if (context.associated != None)
        links += Associated(Named(contexts_[context.associated].name));
    return links;
}

std::string Generator::DatabaseElement(const Context& context) {
    static constexpr std::array connectors{"KRL", "TN5", "HWB", "Gyre"};
    const std::string server = "s" + std::to_string(++servers_) + Text(0, 5);
    const std::string details = " http=\"" + Text(0, 5) + "\" URI=\"" + Text(0, 5) + "\"";
    const std::string element = Database(context.name, connectors[Below(connectors.size())], server,
                                         Text(0, 5), Links(context));
    return element.substr(0, 8) + details + element.substr(8);
}

std::string Generator::Element(const Context& context) {
    if (!context.isDatabase)
        return "<Context Name=\"" + context.name + "\" Parameter=\"" + Text(1, 30) +
               "\" ParameterType=\"" + "Path" + "\">" + Links(context) + "</Context>";
    std::string elements = DatabaseElement(context);
    Context site;
    site.name = context.name;
    for (std::uint32_t left = content_.sites ? Below(4) : 0; left > 0; --left)
        elements += DatabaseElement(site);
    return elements;
}

std::string Generator::Run() {
    const std::uint32_t count = 1 + Below(12);
    for (std::uint32_t i = 0; i < count; ++i) {
        Context context;
        context.name = UniqueName();
        context.isDatabase = content_.databases && Below(2) == 0;
        contexts_.push_back(context);
    }
    std::string elements;
    for (std::size_t position = 0; position < contexts_.size(); ++position) {
        Link(position);
        elements += Element(contexts_[position]);
        if (Below(4) == 0)
            elements += "\n<!-- between -->\n";
    }
    return DocumentWith(elements);
}

std::string DescribeProvider(const VELIDyadDbProvider_var& provider) {
    std::string text;
    for (const std::string& part : ProviderOf(provider))
        text += " [" + part + "]";
    return text + "\n";
}

std::string DescribeContext(VELDyadContext& context) {
    std::string text = "context " + Text(context.GetName()) + "\n parameter " +
                       Text(context.GetParameter()) + "\n type " +
                       Text(context.GetParameterType()) + "\n";
    for (const std::string& name : FriendsOf(context))
        text += " friend " + name + "\n";
    VELDyadContext* associated = nullptr;
    if (context.GetAssociatedContext(associated) == S_OK)
        text += " associated " + Text(associated->GetName()) + "\n";
    VELIDyadDbProvider_var provider;
    context.GetDyadDbProvider(provider);
    text += " provider" + DescribeProvider(provider);
    for (const std::string& site : SitesOf(context)) {
        VELIDyadDbProvider_var siteProvider;
        context.LocateInMultisiteHash(VELUnicodeString(site.c_str(), site.size()), siteProvider);
        text += " site " + site + DescribeProvider(siteProvider);
    }
    return text;
}

} // namespace

std::string GenerateDocument(std::uint32_t seed, const GeneratedContent& content) {
    return Generator(seed, content).Run();
}

std::string Describe(VELDyadCtxCollector& collector) {
    std::string text;
    for (int pos = 1; pos <= collector.GetNbCtxs(); ++pos) {
        VELDyadContext* context = nullptr;
        if (collector.GetCtxAtIndex(pos, context) == S_OK)
            text += DescribeContext(*context);
    }
    return text;
}

} // namespace dyadctx::test
