// SPDX-License-Identifier: MIT
#include "platform/GeneratedXml.h"

#include "platform/detail/Utf8.h"

#include <cstdint>
#include <set>

namespace dyadctx::test {

std::string GeneratedXml::OneOf(std::initializer_list<const char*> choices) {
    return *(choices.begin() + Below(static_cast<unsigned int>(choices.size())));
}

std::string GeneratedXml::Repeated(unsigned int most, std::string (GeneratedXml::*part)()) {
    std::string text;
    for (unsigned int left = Below(most + 1); left > 0; --left)
        text += (this->*part)();
    return text;
}

std::string GeneratedXml::Name() {
    return OneOf({"a", "B", "_", ":", "Context", "Friends", "x-1", "n.m", "p:q", "a:b:c", "xml",
                  "xmlns:a", "CtxData", "aVeryLongNameOfSomething"});
}

// Any that XML allows, but for what is markup or a line end.
std::string GeneratedXml::Character() {
    constexpr std::uint32_t Limits[] = {0x7F, 0x7F, 0x7FF, 0xFFFF, 0x10FFFF};
    const auto isAllowed = [](std::uint32_t c) {
        return c >= ' ' && (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c != '<' &&
               c != '&' && c != '"' && c != '\'' && c != '-' && c != '?' && c != ']';
    };
    std::uint32_t character = 0;
    while (!isAllowed(character))
        character = Below(Limits[Below(5)] + 1);
    std::string text;
    AppendCharacter(character, text);
    return text;
}

std::string GeneratedXml::Reference() {
    return OneOf({"&lt;", "&gt;", "&amp;", "&quot;", "&apos;", "&#9;", "&#10;", "&#xD;", "&#x20;",
                  "&#65;", "&#xe9;", "&#8364;", "&#xFFFD;", "&#x10FFFF;", "&#0065;"});
}

std::string GeneratedXml::ValuePart() {
    if (Chance(70))
        return Character();
    if (Chance(30))
        return Reference();
    return Chance(30) ? Blank() : OneOf({"/some/path", ">", "]]>", "-", "--", "?>", "value"});
}

std::string GeneratedXml::TextPart() {
    if (Chance(40))
        return Blank();
    if (Chance(50))
        return Character();
    return Chance(40) ? Reference() : OneOf({"text", "]", "]]", "'", "\"", "--", "?", "/"}) + " ";
}

std::string GeneratedXml::Declaration() {
    return OneOf({"", "\xEF\xBB\xBF", "<?xml version='1.0'?>",
                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n",
                  "<?xml version='1.0' encoding='utf-8' standalone='no' ?>\r\n",
                  "\xEF\xBB\xBF<?xml version=\"1.0\" standalone='yes'?>"});
}

std::string GeneratedXml::Misc() {
    if (Chance(50))
        return Blank();
    if (Chance(50))
        return "<!--" + Repeated(9, &GeneratedXml::Character) + OneOf({"", "- ", "\r\n", ">"}) +
               "-->";
    return OneOf({"<?p?>", "<?p ?>", "<?xml-style\ta='>'?>", "<?p:q\r\n?a?>", "<?_ <&]]>?>"});
}

std::string GeneratedXml::Section() {
    return "<![CDATA[" + Repeated(5, &GeneratedXml::Character) +
           OneOf({"", "<a>", "&b;", "]", "]]", "\r\n", "--"}) + "]]>";
}

std::string GeneratedXml::Attributes() {
    std::string text;
    std::set<std::string> names;
    for (unsigned int left = Below(6); left > 0; --left) {
        const std::string name = Name();
        if (!names.insert(name).second)
            continue;
        const std::string quote = OneOf({"'", "\""});
        text += Blank() + Blanks() + name + Blanks() + "=" + Blanks() + quote +
                Repeated(12, &GeneratedXml::ValuePart) + quote;
    }
    return text;
}

std::string GeneratedXml::Element(unsigned int depth) {
    const std::string name = Name();
    const std::string start = "<" + name + Attributes() + Blanks();
    if (Chance(30))
        return start + "/>";
    std::string text = start + ">";
    for (unsigned int left = Below(depth == 0 ? 3 : 6); left > 0; --left) {
        if (Chance(40))
            text += Repeated(8, &GeneratedXml::TextPart);
        else if (depth > 0 && Chance(70))
            text += Element(depth - 1);
        else
            text += Chance(50) ? Misc() : Section();
    }
    return text + "</" + name + Blanks() + ">";
}

std::string GeneratedXml::Document() {
    return Declaration() + Repeated(3, &GeneratedXml::Misc) + Element(4) +
           Repeated(3, &GeneratedXml::Misc);
}

std::string GeneratedXml::Damage(std::string text) {
    for (unsigned int left = 1 + Below(2); left > 0; --left) {
        const std::size_t at = Below(static_cast<unsigned int>(text.size()));
        const unsigned int kind = Below(4);
        if (kind == 0)
            text[at] = static_cast<char>(Below(256));
        else if (kind == 1)
            text.erase(at, 1 + Below(3));
        else if (kind == 2)
            text.insert(at, 1, "<>&'\"=/!?-[]; \r\n\t"[Below(17)]);
        else
            text.insert(at, OneOf({"]]>",
                                   "--",
                                   "<!DOCTYPE a>",
                                   "&x;",
                                   "&#0;",
                                   "&#xD800;",
                                   "&#xFFFE;",
                                   "&#x110000;",
                                   "\xEF\xBF\xBE",
                                   "\xED\xA0\x80",
                                   "\xC0",
                                   "\x01",
                                   "<?xml version='1.0'?>",
                                   "<?XML?>",
                                   "\r",
                                   "<a",
                                   "<b/>",
                                   "</a>",
                                   "<![CDATA[",
                                   " a=''",
                                   "<!ELEMENT a ANY>"}));
        if (text.empty())
            return text;
    }
    return text;
}

} // namespace dyadctx::test
