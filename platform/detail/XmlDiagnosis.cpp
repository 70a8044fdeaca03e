// SPDX-License-Identifier: MIT
#include "platform/detail/XmlDiagnosis.h"

#include "platform/detail/Utf8.h"
#include "platform/detail/XmlCharacterReader.h"
#include "platform/detail/XmlCharacters.h"
#include "platform/detail/XmlReasons.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <vector>

namespace dyadctx {

namespace {

// For a longer tag, the parser's reason is kept.
constexpr std::size_t LongestText = std::size_t{64} << 10U;
// How much text after the fault is read: as much as is shown of a name.
constexpr std::size_t TextAfter = 100;

// The part of a tag that has the fault.
enum class TagPart { Other, BetweenAttributes, AfterName, AfterEquals, Value, AfterValue };

bool IsBlank(std::uint32_t c) noexcept {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool IsQuote(std::uint32_t c) noexcept {
    return c == '"' || c == '\'';
}

// Quotes as word processors write them.
bool IsTypographicQuote(std::uint32_t c) noexcept {
    return (c >= 0x2018 && c <= 0x201F) || c == 0xAB || c == 0xBB || c == 0x2039 || c == 0x203A;
}

// All characters beyond ASCII count as letters.
bool IsInName(std::uint32_t c) noexcept {
    return c < 0x80 ? IsAsciiNamePart(static_cast<char>(c)) : !IsTypographicQuote(c);
}

std::string Hexadecimal(const char* prefix, int digits, std::uint32_t number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%s%0*X", prefix, digits,
                  static_cast<unsigned int>(number));
    return text.data();
}

class Diagnosis {
public:
    Diagnosis(XmlSource& source, XmlFailure& failure)
        : fault_(failure.fault), failure_(failure), reader_(source, fault_.isUtf8) {}

    void Run();

private:
    bool ReadText();
    // Whether the parser reports only the start of the faulty token.
    bool IsAtTokenStart() const noexcept {
        return fault_.error == XML_ERROR_UNDEFINED_ENTITY ||
               fault_.error == XML_ERROR_UNCLOSED_TOKEN;
    }
    std::uint32_t At(std::size_t index) const noexcept {
        return index < text_.size() ? text_[index].number : 0;
    }
    bool Begins(std::size_t index, std::string_view text) const noexcept;
    std::size_t Find(std::string_view text, std::size_t from) const noexcept;
    std::size_t SkipBlanks(std::size_t index) const noexcept;
    std::size_t SkipName(std::size_t index) const noexcept;
    std::size_t EndOfMarkup(std::size_t begin) const noexcept;
    std::size_t EndOfTag(std::size_t begin) const noexcept;
    std::size_t FindMarkup() const noexcept;
    TagPart FindPart(std::size_t tag) noexcept;

    void DiagnoseToken();
    bool DiagnoseCharacter();
    bool DiagnoseReference();
    void DiagnoseTag(std::size_t tag);
    void DiagnoseValue();
    void DiagnoseAfterValue();
    void DiagnoseAfterEquals();
    void DiagnoseEntity();
    void DiagnoseEndTag();

    bool IsPredefined(std::size_t reference) const noexcept;
    std::string NameAt(std::size_t index) const;
    void SayOpenValue();
    void Say(const char* reason, const XmlCharacter& where,
             std::initializer_list<std::string> parameters = {});

    const XmlFault& fault_;
    XmlFailure& failure_;
    XmlCharacterReader reader_;
    // The text from the last place known to be outside markup; the fault is at `at_`.
    std::vector<XmlCharacter> text_;
    std::size_t at_ = 0;
    XmlCharacter end_;
    XmlCharacter openElement_;
    // The current or last attribute, and its value's opening quote.
    std::size_t attribute_ = 0;
    std::size_t quote_ = 0;
};

void Diagnosis::Run() {
    if (!ReadText())
        return;
    switch (fault_.error) {
    case XML_ERROR_UNDEFINED_ENTITY:
        return DiagnoseEntity();
    case XML_ERROR_TAG_MISMATCH:
        return DiagnoseEndTag();
    case XML_ERROR_SYNTAX:
    case XML_ERROR_XML_DECL:
    case XML_ERROR_PARTIAL_CHAR:
    case XML_ERROR_INVALID_TOKEN:
    case XML_ERROR_UNCLOSED_TOKEN:
        return DiagnoseToken();
    default:
        return;
    }
}

// False if there is too much of it.
bool Diagnosis::ReadText() {
    const std::size_t textAfter = IsAtTokenStart() ? LongestText : TextAfter;
    XmlCharacter character;
    while (reader_.Next(character)) {
        if (character.offset == fault_.openOffset)
            openElement_ = character;
        if (character.offset < fault_.textBefore) {
            // Frees the lines before.
            reader_.PositionAt(character.offset);
            continue;
        }
        text_.push_back(character);
        if (character.offset < fault_.offset)
            at_ = text_.size();
        if (at_ > LongestText)
            return false;
        if (text_.size() > at_ + textAfter)
            return fault_.error != XML_ERROR_UNCLOSED_TOKEN;
    }
    end_ = character;
    if (fault_.error == XML_ERROR_UNCLOSED_TOKEN)
        at_ = text_.size();
    return true;
}

bool Diagnosis::Begins(std::size_t index, std::string_view text) const noexcept {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (At(index + i) != static_cast<unsigned char>(text[i]))
            return false;
    }
    return true;
}

// The end of the text if not found.
std::size_t Diagnosis::Find(std::string_view text, std::size_t from) const noexcept {
    while (from < text_.size() && !Begins(from, text))
        ++from;
    return from;
}

std::size_t Diagnosis::SkipBlanks(std::size_t index) const noexcept {
    while (IsBlank(At(index)))
        ++index;
    return index;
}

std::size_t Diagnosis::SkipName(std::size_t index) const noexcept {
    while (index < text_.size() && IsInName(At(index)))
        ++index;
    return index;
}

std::size_t Diagnosis::EndOfMarkup(std::size_t begin) const noexcept {
    if (Begins(begin, "<!--"))
        return Find("-->", begin + 4) + 3;
    if (Begins(begin, "<![CDATA["))
        return Find("]]>", begin + 9) + 3;
    if (Begins(begin, "<?"))
        return Find("?>", begin + 2) + 2;
    return EndOfTag(begin);
}

std::size_t Diagnosis::EndOfTag(std::size_t begin) const noexcept {
    for (std::size_t i = begin + 1; i < text_.size(); ++i) {
        if (At(i) == '>')
            return i + 1;
        if (IsQuote(At(i)))
            i = Find(At(i) == '"' ? "\"" : "'", i + 1);
    }
    return text_.size() + 1;
}

// The start of the markup that contains the fault; the end of the text if none does.
std::size_t Diagnosis::FindMarkup() const noexcept {
    for (std::size_t begin = Find("<", 0); begin < at_;) {
        const std::size_t end = EndOfMarkup(begin);
        if (end > at_)
            return begin;
        begin = Find("<", end);
    }
    return text_.size();
}

// Everything before the fault is valid.
TagPart Diagnosis::FindPart(std::size_t tag) noexcept {
    std::size_t next = SkipName(tag + 1);
    while (next < at_) {
        attribute_ = SkipBlanks(next);
        if (attribute_ >= at_)
            return TagPart::BetweenAttributes;
        next = SkipBlanks(SkipName(attribute_));
        if (next >= at_)
            return TagPart::AfterName;
        quote_ = SkipBlanks(next + 1);
        if (quote_ >= at_)
            return TagPart::AfterEquals;
        next = Find(At(quote_) == '"' ? "\"" : "'", quote_ + 1);
        if (next >= at_)
            return TagPart::Value;
        if (++next == at_)
            return TagPart::AfterValue;
    }
    return TagPart::Other;
}

void Diagnosis::DiagnoseToken() {
    if (DiagnoseCharacter() || fault_.isInDoctype || DiagnoseReference())
        return;
    const std::size_t markup = FindMarkup();
    if (markup >= at_)
        return;
    if (Begins(markup, "<!--")) {
        if (at_ >= markup + 6 && Begins(at_ - 2, "--"))
            Say(reason::DashesInComment, text_[at_ - 2]);
    } else if (!Begins(markup, "<!") && !Begins(markup, "<?")) {
        DiagnoseTag(markup);
    } else if (IsTypographicQuote(At(at_))) {
        Say(reason::TypographicQuote, text_[at_]);
    }
}

// Characters allowed nowhere.
bool Diagnosis::DiagnoseCharacter() {
    if (at_ >= text_.size())
        return false;
    const XmlCharacter& character = text_[at_];
    if (!character.isUtf8)
        Say(reason::NotUtf8, character, {Hexadecimal("0x", 2, character.number)});
    else if (character.number == 0)
        Say(reason::NulCharacter, character);
    else if (!IsXmlCharacter(character.number))
        Say(reason::ForbiddenCharacter, character, {Hexadecimal("U+", 4, character.number)});
    else
        return false;
    return true;
}

// The parser stops at the first character that cannot be part of the reference.
bool Diagnosis::DiagnoseReference() {
    std::size_t begin = at_;
    while (begin > 0 && (IsInName(At(begin - 1)) || At(begin - 1) == '#'))
        --begin;
    if (begin == 0 || At(begin - 1) != '&')
        return false;
    Say(reason::BareAmpersand, text_[begin - 1]);
    return true;
}

void Diagnosis::DiagnoseTag(std::size_t tag) {
    const TagPart part = FindPart(tag);
    const std::uint32_t c = At(at_);
    if (part == TagPart::Value)
        DiagnoseValue();
    else if (at_ >= text_.size())
        return;
    else if (part == TagPart::AfterEquals)
        DiagnoseAfterEquals();
    else if (part == TagPart::AfterValue && IsInName(c))
        DiagnoseAfterValue();
    else if (IsTypographicQuote(c))
        Say(reason::TypographicQuote, text_[at_]);
    else if (part == TagPart::AfterName && (IsInName(c) || IsQuote(c) || c == '>' || c == '/'))
        Say(reason::MissingEquals, text_[at_], {NameAt(attribute_)});
}

// The only faults in a value are "<" and the end of the file.
void Diagnosis::DiagnoseValue() {
    const auto begin = text_.begin() + static_cast<std::ptrdiff_t>(quote_) + 1;
    const auto end = text_.begin() + static_cast<std::ptrdiff_t>(std::min(at_, text_.size()));
    const auto quote = std::find_if(
        begin, end, [](const XmlCharacter& c) { return IsTypographicQuote(c.number); });
    const bool isOpen = std::any_of(
        begin, end, [](const XmlCharacter& c) { return c.number == '>' || c.number == '\n'; });
    if (at_ < text_.size() && !isOpen)
        Say(reason::LessThanInValue, text_[at_]);
    else if (quote != end)
        Say(reason::TypographicQuote, *quote);
    else
        SayOpenValue();
}

// A value that ends with "=" was closed by the next value's opening quote: its own is missing.
void Diagnosis::DiagnoseAfterValue() {
    if (At(at_ - 2) == '=')
        SayOpenValue();
    else
        Say(reason::MissingBlank, text_[at_], {NameAt(attribute_)});
}

void Diagnosis::DiagnoseAfterEquals() {
    if (IsTypographicQuote(At(at_)))
        Say(reason::TypographicQuote, text_[at_]);
    else
        Say(reason::MissingQuotes, text_[at_], {NameAt(attribute_)});
}

// In a value, the fault is the first reference to an entity that is not predefined. With a DOCTYPE
// this is not certain: a declared entity may use an undeclared one.
void Diagnosis::DiagnoseEntity() {
    if (fault_.hasDoctype)
        return;
    std::size_t reference = Find("&", at_);
    while (IsPredefined(reference))
        reference = Find("&", reference + 1);
    if (reference < text_.size())
        Say(reason::UndeclaredEntity, text_[reference], {NameAt(reference + 1)});
}

bool Diagnosis::IsPredefined(std::size_t reference) const noexcept {
    constexpr std::string_view References[] = {"&lt;", "&gt;", "&amp;", "&quot;", "&apos;", "&#"};
    return std::any_of(std::begin(References), std::end(References),
                       [&](std::string_view text) { return Begins(reference, text); });
}

// The parser stops at the end tag's name.
void Diagnosis::DiagnoseEndTag() {
    if (at_ < 2 || !Begins(at_ - 2, "</"))
        return;
    Say(reason::WrongEndTag, text_[at_],
        {NameAt(at_), fault_.openName, std::to_string(openElement_.place.line),
         std::to_string(openElement_.place.column)});
}

std::string Diagnosis::NameAt(std::size_t index) const {
    std::string name;
    const std::size_t end = std::min(SkipName(index), index + TextAfter);
    for (; index < end; ++index)
        AppendCharacter(At(index), name);
    return name;
}

void Diagnosis::SayOpenValue() {
    const DomPosition& begin = text_[quote_].place;
    Say(reason::OpenValue, at_ < text_.size() ? text_[at_] : end_,
        {NameAt(attribute_), std::to_string(begin.line), std::to_string(begin.column)});
}

void Diagnosis::Say(const char* reason, const XmlCharacter& where,
                    std::initializer_list<std::string> parameters) {
    failure_.parameters = std::vector<VELUnicodeString>(parameters.begin(), parameters.end());
    failure_.reason = reason;
    failure_.position = reader_.PositionAt(where.offset);
}

} // namespace

void DiagnoseXml(XmlSource& source, XmlFailure& failure) noexcept {
    try {
        const XML_Error error = failure.fault.error;
        const bool isOfTheFile = error != XML_ERROR_NONE && error != XML_ERROR_NO_MEMORY;
        if (isOfTheFile && source.Rewind())
            Diagnosis(source, failure).Run();
    } catch (...) {
        // The reason of the parser is good enough.
        return;
    }
}

} // namespace dyadctx
