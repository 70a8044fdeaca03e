// SPDX-License-Identifier: MIT
#include "check/detail/SourceTokenizer.h"

#include <string_view>

namespace dyadctx {

namespace {

constexpr std::string_view Blanks = " \t\r\n";
constexpr std::string_view NameEnds = " \t\r\n=/><\"'";

bool IsOneOf(std::string_view bytes, char byte) {
    return bytes.find(byte) != std::string_view::npos;
}

} // namespace

bool SourceTokenizer::ReadElement(std::string& name) {
    if (!reader_.HasMore() || reader_.Next() != '<')
        return false;
    reader_.Pass();
    ReadName(name);
    return !name.empty();
}

bool SourceTokenizer::ReadAttribute(Attribute& attribute) {
    PassBlanks();
    if (!reader_.HasMore())
        return false;
    attribute.place = reader_.Here();
    ReadName(attribute.name);
    return !attribute.name.empty() && PassValue();
}

void SourceTokenizer::PassBlanks() {
    while (reader_.HasMore() && IsOneOf(Blanks, reader_.Next()))
        reader_.Pass();
}

void SourceTokenizer::ReadName(std::string& name) {
    name.clear();
    for (; reader_.HasMore() && !IsOneOf(NameEnds, reader_.Next()); reader_.Pass())
        name += reader_.Next();
}

// False where there is no value in quotes.
bool SourceTokenizer::PassValue() {
    PassBlanks();
    if (!reader_.HasMore() || reader_.Next() != '=')
        return false;
    reader_.Pass();
    PassBlanks();
    if (!reader_.HasMore() || !IsOneOf("\"'", reader_.Next()))
        return false;
    const char quote = reader_.Next();
    do
        reader_.Pass();
    while (reader_.HasMore() && reader_.Next() != quote);
    if (!reader_.HasMore())
        return false;
    reader_.Pass();
    return true;
}

} // namespace dyadctx
