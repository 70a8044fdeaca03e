#include "check/detail/SourceText.h"

#include "platform/detail/FileReader.h"

#include <algorithm>

namespace dyadctx {

namespace {

constexpr std::size_t BlockSize = 1024;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view Blanks = " \t\r\n";
constexpr std::string_view NameEnds = " \t\r\n=/>";

// UTF-16 shows itself in its first characters, which are of ASCII.
bool IsMadeOfBytes(std::string_view text) {
    const std::string_view start = text.substr(0, 4);
    return start.find('\0') == std::string_view::npos && !start.starts_with("\xFE\xFF") &&
           !start.starts_with("\xFF\xFE");
}

bool BeginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::size_t CountCharactersIn(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), BeginsCharacter));
}

} // namespace

SourceText::SourceText(const VELUnicodeString& file) {
    Read(file);
    Index();
}

SourceText::SourceText(std::string_view text) : text_(text) {
    Index();
}

void SourceText::Index() {
    if (!IsMadeOfBytes(text_))
        text_ = {};
    FindLines();
    CountCharacters();
}

void SourceText::Read(const VELUnicodeString& file) {
    FileReader reader;
    if (!reader.Open(file))
        return;
    const auto size = static_cast<std::size_t>(reader.Size());
    bytes_ = std::make_unique_for_overwrite<char[]>(size);
    std::size_t filled = 0;
    while (filled < size) {
        const auto count = reader.Read(bytes_.get() + filled, size - filled);
        if (count <= 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    text_ = {bytes_.get(), filled};
}

void SourceText::FindLines() {
    lines_.push_back(text_.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0);
    // Most files end their lines with a line feed alone, which is found faster.
    const bool hasReturns = text_.find('\r') != std::string_view::npos;
    const auto next = [&](std::size_t from) {
        return hasReturns ? text_.find_first_of("\r\n", from) : text_.find('\n', from);
    };
    for (std::size_t at = next(0); at != std::string_view::npos; at = next(at)) {
        at += text_.compare(at, 2, "\r\n") == 0 ? 2U : 1U;
        lines_.push_back(at);
    }
}

void SourceText::CountCharacters() {
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text_.size(); at += BlockSize) {
        blocks_.push_back(characters);
        characters += CountCharactersIn(text_.substr(at, BlockSize));
    }
    blocks_.push_back(characters);
}

std::size_t SourceText::CharactersBefore(std::size_t offset) const noexcept {
    const std::size_t block = offset / BlockSize;
    return blocks_[block] + CountCharactersIn(text_.substr(block * BlockSize, offset % BlockSize));
}

std::size_t SourceText::OffsetOf(VELPlace place) const noexcept {
    if (place.line < 1 || place.column < 1 || static_cast<std::size_t>(place.line) > lines_.size())
        return Nowhere;
    const std::size_t offset = lines_[static_cast<std::size_t>(place.line) - 1] +
                               static_cast<std::size_t>(place.column) - 1;
    return offset <= text_.size() ? offset : Nowhere;
}

VELPlace SourceText::PlaceAt(std::size_t offset, int line) const noexcept {
    const std::size_t start = lines_[static_cast<std::size_t>(line) - 1];
    return {line, static_cast<int>(CharactersBefore(offset) - CharactersBefore(start)) + 1};
}

VELPlace SourceText::InCharacters(VELPlace place) const {
    const std::size_t offset = OffsetOf(place);
    return offset == Nowhere ? place : PlaceAt(offset, place.line);
}

VELPlace SourceText::OfAttribute(VELPlace element, std::string_view attribute) const {
    const std::size_t tag = OffsetOf(element);
    const std::size_t found = tag == Nowhere ? Nowhere : FindInTag(tag, attribute);
    if (found == Nowhere)
        return InCharacters(element);
    const auto next = std::upper_bound(lines_.begin(), lines_.end(), found);
    return PlaceAt(found, static_cast<int>(next - lines_.begin()));
}

// The file is well-formed as far as this tag, unless it has changed meanwhile.
std::size_t SourceText::FindInTag(std::size_t tag, std::string_view attribute) const noexcept {
    const std::string_view text = text_;
    if (tag >= text.size() || text[tag] != '<')
        return Nowhere;
    std::size_t at = text.find_first_of(NameEnds, tag + 1);
    for (;;) {
        at = text.find_first_not_of(Blanks, at);
        const std::size_t nameEnd = text.find_first_of(NameEnds, at);
        if (nameEnd == std::string_view::npos || nameEnd == at)
            return Nowhere;
        if (text.substr(at, nameEnd - at) == attribute)
            return at;
        const std::size_t quote = text.find_first_of("\"'", nameEnd);
        if (quote == std::string_view::npos)
            return Nowhere;
        at = text.find(text[quote], quote + 1);
        if (at == std::string_view::npos)
            return Nowhere;
        ++at;
    }
}

} // namespace dyadctx
