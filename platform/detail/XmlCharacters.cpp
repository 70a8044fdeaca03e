// SPDX-License-Identifier: MIT
#include "platform/detail/XmlCharacters.h"

#include <algorithm>
#include <expat.h>
#include <memory>
#include <new>
#include <string>

namespace dyadctx {

namespace {

bool IsAscii(char c) noexcept {
    return static_cast<unsigned char>(c) < 0x80;
}

// Letters beyond ASCII are the parser's decision: what it would not read is not a name.
bool IsNameForParser(std::string_view name) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate("UTF-8"), XML_ParserFree);
    if (parser == nullptr)
        throw std::bad_alloc();
    const std::string element = std::string("<").append(name).append("/>");
    const XML_Status status =
        XML_Parse(parser.get(), element.data(), static_cast<int>(element.size()), XML_TRUE);
    if (status != XML_STATUS_OK && XML_GetErrorCode(parser.get()) == XML_ERROR_NO_MEMORY)
        throw std::bad_alloc();
    return status == XML_STATUS_OK;
}

} // namespace

bool IsXmlName(std::string_view name) {
    constexpr std::size_t Longest = 1U << 20U;
    if (name.empty() || name.size() > Longest)
        return false;
    if (IsAscii(name.front()) && !IsAsciiNameStart(name.front()))
        return false;
    // Only letters beyond ASCII reach the parser, so the name cannot contain markup.
    const bool asciiIsFine = std::all_of(name.begin(), name.end(),
                                         [](char c) { return !IsAscii(c) || IsAsciiNamePart(c); });
    if (!asciiIsFine || std::all_of(name.begin(), name.end(), IsAscii))
        return asciiIsFine;
    return IsNameForParser(name);
}

bool IsXmlCharacter(std::uint32_t number) noexcept {
    if (number < 0x20)
        return number == '\t' || number == '\n' || number == '\r';
    return number < 0xD800 || (number > 0xDFFF && number <= 0x10FFFF && (number | 1U) != 0xFFFF);
}

bool IsXmlCharacter(std::string_view character) noexcept {
    const auto lead = static_cast<unsigned char>(character.front());
    if (character.size() == 1)
        return lead < 0x80 && (lead >= 0x20 || lead == '\t' || lead == '\n' || lead == '\r');
    return character != "\xEF\xBF\xBE" && character != "\xEF\xBF\xBF";
}

} // namespace dyadctx
