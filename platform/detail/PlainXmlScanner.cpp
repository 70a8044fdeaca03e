// SPDX-License-Identifier: MIT
#include "platform/detail/PlainXmlScanner.h"

#include "platform/detail/DomTreeBuilder.h"
#include "platform/detail/FileReader.h"
#include "platform/detail/Utf8.h"
#include "platform/detail/XmlCharacters.h"
#include "platform/detail/XmlPositions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dyadctx {

namespace {

// The limit for one tag, comment, section or instruction.
constexpr std::size_t LargestPiece = std::size_t{1} << 20U;
// Each attribute is compared with all before it.
constexpr std::size_t MostAttributes = 64;

enum ByteClass : unsigned int {
    NameStart = 1,
    NamePart = 2,
    Blank = 4,
    LineEnd = 8,
    // Needs no further check in attribute values, in text, and in comments and the like.
    InValue = 16,
    InText = 32,
    InData = 64,
};

constexpr unsigned int ClassesOf(char byte) noexcept {
    const auto isOneOf = [byte](std::string_view characters) {
        return characters.find(byte) != std::string_view::npos;
    };
    const bool isPrintable = static_cast<unsigned char>(byte) < 0x80 && byte >= ' ';
    const bool isBlank = isOneOf(" \t");
    return (IsAsciiNameStart(byte) ? NameStart : 0U) | (IsAsciiNamePart(byte) ? NamePart : 0U) |
           (isBlank ? Blank : 0U) | (isOneOf("\r\n") ? LineEnd : 0U) |
           (isPrintable && !isOneOf("<&\"'") ? InValue : 0U) |
           ((isPrintable || isBlank) && !isOneOf("<&]") ? InText : 0U) |
           ((isPrintable || isBlank) && !isOneOf("-?]") ? InData : 0U);
}

constexpr auto Classes = [] {
    std::array<unsigned char, 256> classes{};
    for (std::size_t byte = 0; byte < classes.size(); ++byte)
        classes[byte] = static_cast<unsigned char>(ClassesOf(static_cast<char>(byte)));
    return classes;
}();

bool Is(char byte, unsigned int classes) noexcept {
    return (Classes[static_cast<unsigned char>(byte)] & classes) != 0;
}

// One pass over one source.
//
// Functions that consume bytes return false on doubt and when the piece runs out; they are then at
// its end. An incomplete token is read again from its start once there are more bytes, so it
// creates no element until it is complete.
class Scanner {
public:
    Scanner(XmlSource& source, DomDocument& document, std::size_t pieceSize)
        : source_(source), size_(pieceSize), builder_(document) {}

    // False on the first doubt.
    bool Run();

private:
    // Counted from the start of the source.
    struct Lines {
        std::uint64_t line = 1;
        std::uint64_t start = 0;
        std::uint64_t afterReturn = 0;
    };

    bool Refill();
    bool Start();
    bool Token();
    bool StartTag();
    bool Attribute();
    bool Value(char quote);
    bool Decode(std::string_view& value, char quote);
    bool SpecialInValue();
    bool EndTag();
    bool Text();
    bool SpecialInText();
    bool Comment() {
        if (!Take("<!--") || !Through("--") || !Take(">"))
            return false;
        builder_.Other();
        return true;
    }
    bool Section() {
        if (builder_.Depth() == 0 || !Take("<![CDATA[") || !Through("]]>"))
            return false;
        builder_.StartSection();
        builder_.EndSection();
        return true;
    }
    bool Instruction();
    bool Name(std::string_view& name) noexcept {
        const char* begin = at_;
        if (IsAtEnd() || !Is(*at_, NameStart))
            return false;
        Pass(NamePart);
        name = {begin, at_};
        return !IsAtEnd();
    }
    bool Reference();
    bool CharacterReference();
    bool Character() noexcept;
    bool Through(std::string_view mark) noexcept;
    // Consumes `text` if it comes next.
    bool Take(std::string_view text) noexcept {
        const std::string_view rest = Rest();
        if (rest.starts_with(text)) {
            at_ += text.size();
            return true;
        }
        if (text.starts_with(rest))
            at_ = end_;
        return false;
    }
    bool TakeOneOf(std::initializer_list<std::string_view> texts) noexcept {
        return std::any_of(texts.begin(), texts.end(), [this](auto text) { return Take(text); });
    }

    void Pass(unsigned int classes) noexcept {
        const char* at = at_;
        while (at != end_ && Is(*at, classes))
            ++at;
        at_ = at;
    }
    void PassBlanks() noexcept {
        for (;;) {
            Pass(Blank);
            if (IsAtEnd() || !Is(*at_, LineEnd))
                return;
            PassLineEnd();
        }
    }
    bool PassLineEnd() noexcept;
    // What was consumed is not read again.
    void KeepPassed() noexcept {
        kept_ = at_;
        linesKept_ = lines_;
    }

    bool IsAtEnd() const noexcept { return at_ == end_; }
    std::string_view Rest() const noexcept { return {at_, static_cast<std::size_t>(end_ - at_)}; }
    std::uint64_t Offset() const noexcept {
        return offset_ + static_cast<std::uint64_t>(at_ - piece_.get());
    }

    XmlSource& source_;
    std::size_t size_;
    std::unique_ptr<char[]> piece_ = std::make_unique_for_overwrite<char[]>(size_);
    // The offset of the piece in the source, and whether it is the last.
    std::uint64_t offset_ = 0;
    bool isLast_ = false;
    // The next byte, the end of the piece, and the end of what is finished.
    const char* at_ = piece_.get();
    const char* end_ = at_;
    const char* kept_ = at_;
    Lines lines_;
    Lines linesKept_;

    DomTreeBuilder builder_;
    // The attributes of the current tag, and their decoded values; capacity is reserved for the
    // longest tag.
    std::vector<DomReadAttribute> attributes_;
    std::string decoded_;
};

bool Scanner::Run() {
    for (bool isStarted = false;;) {
        if (!IsAtEnd() && (isStarted ? Token() : Start())) {
            KeepPassed();
            isStarted = true;
        } else if (IsAtEnd() && isLast_) {
            return kept_ == end_ && builder_.HasRoot() && builder_.Depth() == 0;
        } else if (!IsAtEnd() || !Refill()) {
            return false;
        }
    }
}

// Adds bytes after the unfinished ones and returns to the start of these. False if the source
// cannot be read or they fill the largest piece.
bool Scanner::Refill() {
    const auto passed = static_cast<std::size_t>(kept_ - piece_.get());
    auto left = static_cast<std::size_t>(end_ - kept_);
    if (left >= LargestPiece)
        return false;
    if (left == size_) {
        auto larger = std::make_unique_for_overwrite<char[]>(2 * size_);
        std::memcpy(larger.get(), kept_, left);
        piece_ = std::move(larger);
        size_ *= 2;
    } else {
        std::memmove(piece_.get(), kept_, left);
    }
    offset_ += passed;
    lines_ = linesKept_;
    at_ = kept_ = piece_.get();
    bool failed = false;
    if (!isLast_)
        left += ReadFull(source_, piece_.get() + left, size_ - left, failed);
    end_ = piece_.get() + left;
    isLast_ = left < size_;
    return !failed;
}

// Whether a line ends here; in CR LF, the CR ends it and the LF is part of that.
bool Scanner::PassLineEnd() noexcept {
    const bool isReturn = *at_ == '\r';
    const bool isSecondHalf = !isReturn && Offset() != 0 && Offset() == lines_.afterReturn;
    ++at_;
    lines_.start = Offset();
    lines_.afterReturn = isReturn ? Offset() : 0;
    lines_.line += isSecondHalf ? 0 : 1;
    return !isSecondHalf;
}

// Consumes one character that XML allows.
bool Scanner::Character() noexcept {
    constexpr std::size_t Longest = 4;
    const std::string_view rest = Rest();
    const std::size_t length = CharacterLength(rest);
    if (IsXmlCharacter(rest.substr(0, length))) {
        at_ += length;
        return true;
    }
    // It may just be cut off.
    if (rest.size() < Longest)
        at_ = end_;
    return false;
}

// Consumes everything through the mark.
bool Scanner::Through(std::string_view mark) noexcept {
    for (;;) {
        Pass(InData);
        if (!IsAtEnd() && Take(mark))
            return true;
        if (IsAtEnd())
            return false;
        if (Is(*at_, LineEnd))
            PassLineEnd();
        else if (!Character())
            return false;
    }
}

// Consumes the byte order mark and XML declaration, if present.
bool Scanner::Start() {
    if (Take("\xEF\xBB\xBF"))
        lines_.start = Offset();
    if (!TakeOneOf({"<?xml version=\"1.0\"", "<?xml version='1.0'"}))
        return !IsAtEnd();
    TakeOneOf(
        {" encoding=\"UTF-8\"", " encoding='UTF-8'", " encoding=\"utf-8\"", " encoding='utf-8'"});
    TakeOneOf(
        {" standalone=\"yes\"", " standalone='yes'", " standalone=\"no\"", " standalone='no'"});
    PassBlanks();
    return Take("?>");
}

bool Scanner::Token() {
    if (*at_ != '<')
        return Text();
    const std::string_view rest = Rest();
    if (rest.size() < 3) {
        at_ = end_;
        return false;
    }
    if (rest[1] == '/')
        return EndTag();
    if (rest[1] == '?')
        return Instruction();
    if (rest[1] != '!')
        return StartTag();
    return rest[2] == '-' ? Comment() : Section();
}

bool Scanner::StartTag() {
    const bool isFurtherRoot = builder_.Depth() == 0 && builder_.HasRoot();
    if (isFurtherRoot || builder_.Depth() == DomTreeBuilder::DeepestNesting)
        return false;
    const DomPosition position = LimitedPosition(lines_.line, Offset() - lines_.start + 1);
    attributes_.clear();
    decoded_.clear();
    std::string_view name;
    ++at_;
    if (!Name(name))
        return false;
    for (;;) {
        const char* before = at_;
        PassBlanks();
        if (IsAtEnd())
            return false;
        if (*at_ == '>' || *at_ == '/')
            break;
        if (at_ == before || !Attribute())
            return false;
    }
    const bool isEmpty = *at_ == '/';
    if (!Take(isEmpty ? "/>" : ">"))
        return false;
    builder_.StartElement(builder_.Intern(name), attributes_, position);
    if (isEmpty)
        builder_.EndElement();
    return true;
}

bool Scanner::Attribute() {
    std::string_view name;
    if (!Name(name))
        return false;
    PassBlanks();
    if (!Take("="))
        return false;
    PassBlanks();
    if (IsAtEnd() || (*at_ != '"' && *at_ != '\''))
        return false;
    const std::uint32_t id = builder_.Intern(name);
    const bool isRepeated =
        std::any_of(attributes_.begin(), attributes_.end(),
                    [id](const DomReadAttribute& known) { return known.name == id; });
    if (isRepeated || attributes_.size() == MostAttributes)
        return false;
    attributes_.push_back({id, {}});
    return Value(*at_++);
}

bool Scanner::Value(char quote) {
    const char* begin = at_;
    Pass(InValue);
    std::string_view value(begin, at_);
    if (IsAtEnd() || (*at_ != quote && !Decode(value, quote)))
        return false;
    attributes_.back().value = value;
    ++at_;
    return true;
}

// Continues with a value that may need decoding.
bool Scanner::Decode(std::string_view& value, char quote) {
    decoded_.reserve(size_);
    const std::size_t first = decoded_.size();
    decoded_.append(value);
    while (!IsAtEnd() && *at_ != quote) {
        if (!SpecialInValue())
            return false;
        const char* begin = at_;
        Pass(InValue);
        decoded_.append(begin, at_);
    }
    value = std::string_view(decoded_).substr(first);
    return !IsAtEnd();
}

// A line end or tab becomes a blank.
bool Scanner::SpecialInValue() {
    const char* begin = at_;
    if (*at_ == '&')
        return Reference();
    if (Is(*at_, LineEnd)) {
        decoded_.append(PassLineEnd() ? 1 : 0, ' ');
        return true;
    }
    if (*at_ == '<' || !Character())
        return false;
    decoded_.append(*begin == '\t' ? std::string_view(" ") : std::string_view(begin, at_));
    return true;
}

bool Scanner::EndTag() {
    if (builder_.Depth() == 0)
        return false;
    at_ += 2;
    if (!Take(builder_.OpenName()))
        return false;
    PassBlanks();
    if (!Take(">"))
        return false;
    builder_.EndElement();
    return true;
}

// May stop early; the rest is then another piece of text.
bool Scanner::Text() {
    if (builder_.Depth() == 0) {
        const char* before = at_;
        PassBlanks();
        return at_ != before;
    }
    builder_.Text();
    for (;;) {
        Pass(InText);
        KeepPassed();
        if (IsAtEnd() || *at_ == '<')
            return true;
        if (!SpecialInText())
            return false;
    }
}

bool Scanner::SpecialInText() {
    constexpr std::string_view SectionEnd = "]]>";
    if (Is(*at_, LineEnd)) {
        PassLineEnd();
        return true;
    }
    if (*at_ == '&') {
        decoded_.clear();
        return Reference();
    }
    if (Rest().starts_with(SectionEnd))
        return false;
    if (SectionEnd.starts_with(Rest())) {
        at_ = end_;
        return false;
    }
    return Character();
}

// Leaves three-letter targets starting with x to the parser: "xml" in any case is not allowed.
bool Scanner::Instruction() {
    at_ += 2;
    std::string_view target;
    if (!Name(target) || (target.size() == 3 && (target[0] == 'x' || target[0] == 'X')))
        return false;
    // Without a blank, only the end may follow.
    const bool hasContent = Is(*at_, Blank | LineEnd);
    if (hasContent ? !Through("?>") : !Take("?>"))
        return false;
    builder_.Other();
    return true;
}

// Appends the referenced character to `decoded_`.
bool Scanner::Reference() {
    constexpr std::array Entities{
        std::pair{std::string_view("&lt;"), '<'}, std::pair{std::string_view("&gt;"), '>'},
        std::pair{std::string_view("&amp;"), '&'}, std::pair{std::string_view("&quot;"), '"'},
        std::pair{std::string_view("&apos;"), '\''}};
    if (Take("&#"))
        return CharacterReference();
    for (const auto& [reference, character] : Entities) {
        if (Take(reference)) {
            decoded_ += character;
            return true;
        }
    }
    return false;
}

bool Scanner::CharacterReference() {
    const int base = Take("x") ? 16 : 10;
    std::uint32_t number = 0;
    const auto [next, error] = std::from_chars(at_, end_, number, base);
    if (error != std::errc())
        return false;
    at_ = next;
    if (!Take(";") || !IsXmlCharacter(number))
        return false;
    AppendCharacter(number, decoded_);
    return true;
}

} // namespace

std::unique_ptr<DomDocument> ScanPlainXml(XmlSource& source, std::size_t pieceSize) {
    auto document = std::make_unique<DomDocument>(DomDocument::Purpose::Scanning);
    Scanner scanner(source, *document, pieceSize);
    return scanner.Run() ? std::move(document) : nullptr;
}

} // namespace dyadctx
