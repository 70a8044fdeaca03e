// SPDX-License-Identifier: MIT
// The reason and the place of a fault, as whoever reads a file is told them.
#include "platform/DomTesting.h"
#include "platform/VELMsgCatalog.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>

using namespace std::string_literals;

namespace dyadctx::test {

namespace {

struct Fault {
    std::string text;
    DomFailure failure;
};

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << testing::PrintToString(fault.text.substr(0, 100));
}

class XmlFaultOfText : public testing::TestWithParam<Fault> {};
class XmlFaultOfBytes : public testing::TestWithParam<Fault> {};

void ExpectFailure(std::string_view text, const DomFailure& expected) {
    const DomReading reading = ReadXml(text);
    EXPECT_EQ(reading.result, E_FAIL);
    ASSERT_EQ(reading.failures.size(), 1U);
    EXPECT_EQ(reading.failures[0].line, expected.line);
    EXPECT_EQ(reading.failures[0].column, expected.column);
    EXPECT_EQ(reading.failures[0].reason, expected.reason);
}

// Of characters below U+10000.
std::string InUtf16(std::string_view text, bool isLittleEndian) {
    std::string units;
    const auto add = [&](unsigned int unit) {
        const char high = static_cast<char>(unit >> 8U);
        const char low = static_cast<char>(unit & 0xFFU);
        units += isLittleEndian ? std::string{low, high} : std::string{high, low};
    };
    const auto bits = [&](std::size_t at) { return static_cast<unsigned char>(text[at]) & 0x3FU; };
    add(0xFEFF);
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto lead = static_cast<unsigned char>(text[at]);
        if (lead < 0x80) {
            add(lead);
        } else if (lead < 0xE0) {
            add((lead & 0x1FU) << 6U | bits(at + 1));
            at += 1;
        } else {
            add((lead & 0x0FU) << 12U | bits(at + 1) << 6U | bits(at + 2));
            at += 2;
        }
    }
    return units;
}

constexpr const char* Ampersand =
    "\"&\" begins a reference such as \"&amp;\"; the character itself is written \"&amp;\"";
constexpr const char* LessThan = "\"<\" is not allowed in a value; it is written \"&lt;\"";
constexpr const char* Dashes = "\"--\" is not allowed inside a comment";
constexpr const char* Typographic = "this is a typographic quote; values are put in \" or '";

} // namespace

TEST_P(XmlFaultOfText, IsNamedAtItsPlace) {
    ExpectFailure(GetParam().text, GetParam().failure);
}

TEST_P(XmlFaultOfText, IsNamedInUtf16Too) {
    ExpectFailure(InUtf16(GetParam().text, true), GetParam().failure);
    ExpectFailure(InUtf16(GetParam().text, false), GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(
    References, XmlFaultOfText,
    testing::Values(
        Fault{"<a>\n <b p='R & D'/></a>", {2, 10, Ampersand}},
        Fault{"<a>\n <b p='R&D'/></a>", {2, 9, Ampersand}},
        Fault{"<a>\n <b p='?x=1&y=2;'/></a>", {2, 12, Ampersand}},
        Fault{"<a>R&D</a>", {1, 5, Ampersand}}, Fault{"<a>&</a>", {1, 4, Ampersand}},
        Fault{"<a>&#x;</a>", {1, 4, Ampersand}},
        Fault{"<a>\n<b>&nbsp;</b></a>", {2, 4, "the entity \"nbsp\" is not declared"}},
        Fault{"<a>\n<b p='1' q='x&uuml;y'/></a>", {2, 14, "the entity \"uuml\" is not declared"}},
        Fault{"<!DOCTYPE a [<!ENTITY e '&f;'>]>\n<a>&e;</a>", {2, 4, "the entity is not declared"}},
        Fault{"<!DOCTYPE a [<!ENTITY e 'f'>]>\n<a>& e;</a>", {2, 4, Ampersand}}));

INSTANTIATE_TEST_SUITE_P(
    Values, XmlFaultOfText,
    testing::Values(
        Fault{"<a>\n <b p='1' q=\"x/>\n <c r=\"2\"/>\n</a>",
              {3, 2, "the value of \"q\" that begins at line 2, column 13 has no closing quote"}},
        Fault{"<a>\n <b p=\"1 q=\"2\"/>\n</a>",
              {2, 13, "the value of \"p\" that begins at line 2, column 7 has no closing quote"}},
        Fault{"<a>\n<b x='1",
              {2, 8, "the value of \"x\" that begins at line 2, column 6 has no closing quote"}},
        Fault{"<a>\n<b x='1' yy='\n\n",
              {4, 1, "the value of \"yy\" that begins at line 2, column 13 has no closing quote"}},
        Fault{"<a>\n<b x='\xC3\xA9' y='\n<",
              {3, 1, "the value of \"y\" that begins at line 2, column 12 has no closing quote"}},
        Fault{"<a>\n <b p='1 < 2'/></a>", {2, 10, LessThan}},
        Fault{"<a>\n <b p='<c>'/></a>", {2, 8, LessThan}},
        Fault{"<a>\n <b p=1/></a>", {2, 7, "the value of \"p\" is not in quotes"}},
        Fault{"<a>\n <b p= >x</b></a>", {2, 8, "the value of \"p\" is not in quotes"}},
        Fault{"<a>\n <b p=\xE2\x80\x9C"
              "1\xE2\x80\x9D/></a>",
              {2, 7, Typographic}},
        Fault{"<a>\n <b p=\"1\xE2\x80\x9D q=''/>\n</a>", {2, 9, Typographic}},
        Fault{"<?xml version=\xE2\x80\x9C"
              "1.0\xE2\x80\x9D?><a/>",
              {1, 15, Typographic}}));

INSTANTIATE_TEST_SUITE_P(
    Attributes, XmlFaultOfText,
    testing::Values(
        Fault{"<a>\n <b p='1'q='2'/></a>", {2, 10, "a blank is missing after the value of \"p\""}},
        Fault{"<a>\n <b one='1' two='2'three='3'/></a>",
              {2, 20, "a blank is missing after the value of \"two\""}},
        Fault{"<a>\n <b p '1'/></a>",
              {2, 7, "\"=\" and a value in quotes are missing after the attribute \"p\""}},
        Fault{"<a>\n <b p/></a>",
              {2, 6, "\"=\" and a value in quotes are missing after the attribute \"p\""}},
        Fault{"<a>\n <b selected>x</b></a>",
              {2, 13, "\"=\" and a value in quotes are missing after the attribute \"selected\""}},
        Fault{"<a>\n <b p q='2'/></a>",
              {2, 7, "\"=\" and a value in quotes are missing after the attribute \"p\""}}));

INSTANTIATE_TEST_SUITE_P(
    Markup, XmlFaultOfText,
    testing::Values(
        Fault{"<a>\n<!-- one -- two -->\n</a>", {2, 10, Dashes}},
        Fault{"<!---- x --><a/>", {1, 5, Dashes}}, Fault{"<!-- one --- --><a/>", {1, 10, Dashes}},
        Fault{"<a>\n  <b></a>",
              {2, 8,
               "the end tag \"a\" does not belong to the open element \"b\", which begins at line "
               "2, column 3"}},
        Fault{"<a>\n <e><b/><c></c></d>",
              {2, 18,
               "the end tag \"d\" does not belong to the open element \"e\", which begins at "
               "line 2, column 2"}},
        Fault{"<a>\n <b>\n <c p='&amp;'><!-- </c> --><![CDATA[</c>]]></a></c></b></a>",
              {3, 46,
               "the end tag \"a\" does not belong to the open element \"c\", which begins at line "
               "3, column 2"}}));

INSTANTIATE_TEST_SUITE_P(
    Characters, XmlFaultOfText,
    testing::Values(
        Fault{"<a>\n <b p='\x01'/></a>", {2, 8, "XML does not allow the character U+0001"}},
        Fault{"<a>\x1B</a>", {1, 4, "XML does not allow the character U+001B"}},
        Fault{"<a>\n<!-- \f --></a>", {2, 6, "XML does not allow the character U+000C"}},
        Fault{"<a>\xEF\xBF\xBF</a>", {1, 4, "XML does not allow the character U+FFFF"}},
        Fault{"<a p='\0'/>"s, {1, 7, "the file contains a NUL character here"}},
        Fault{"<a/>\n\0"s, {2, 1, "the file contains a NUL character here"}}));

TEST_P(XmlFaultOfBytes, IsNamedAtItsPlace) {
    ExpectFailure(GetParam().text, GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(
    NoUtf8, XmlFaultOfBytes,
    testing::Values(
        Fault{
            "<a>\n <b p='caf\xE9'/></a>",
            {2, 11, "the byte 0xE9 is not UTF-8; save the file as UTF-8 or declare its encoding"}},
        Fault{
            "<?xml version='1.0' encoding='UTF-8'?><a>\xFC"
            "ber</a>",
            {1, 42, "the byte 0xFC is not UTF-8; save the file as UTF-8 or declare its encoding"}},
        Fault{"<a>\xED\xA0\x80</a>",
              {1, 4, "the byte 0xED is not UTF-8; save the file as UTF-8 or declare its encoding"}},
        Fault{
            "<!DOCTYPE a [<!-- \xFF -->]><a/>",
            {1, 19, "the byte 0xFF is not UTF-8; save the file as UTF-8 or declare its encoding"}},
        Fault{"<a>\xE2\x82",
              {1, 4, "the byte 0xE2 is not UTF-8; save the file as UTF-8 or declare its encoding"}},
        // Columns count bytes here, as those of elements do.
        Fault{"<a p='\xC3\xA9\xC3\xA9' q='1'r=''/>",
              {1, 18, "a blank is missing after the value of \"q\""}},
        Fault{"<?xml version='1.0' encoding='ISO-8859-1'?>\n<a p='\xE9\xE9' q='1'r=''/>",
              {2, 16, "a blank is missing after the value of \"q\""}},
        Fault{
            "<?xml version='1.0' encoding='ISO-8859-1'?>\n<\xE9></b>",
            {2, 6,
             "the end tag \"b\" does not belong to the open element \"\xC3\xA9\", which begins at "
             "line 2, column 1"}}));

TEST(XmlDiagnosis, FindsAFaultFarDownTheFile) {
    std::string text = "<a>";
    for (int line = 0; line < 50000; ++line)
        text += "\n<b p='value'>text</b>";
    ExpectFailure(text + "\n<b p='R & D'/></a>", {50002, 9, Ampersand});
    ExpectFailure(text + "\n</b>",
                  {50002, 3,
                   "the end tag \"b\" does not belong to the open element \"a\", which begins at "
                   "line 1, column 1"});
}

TEST(XmlDiagnosis, SaysWhatTheParserSaysOfATagThatIsTooLong) {
    ExpectFailure("<a p='" + std::string(100000, 'x') + "' q 'y'/>",
                  {1, 100011, "a character stands here that XML does not allow at this place"});
}

TEST(XmlFault, IsNamedInTheLanguageOfTheMessages) {
    VELMsgCatalog::SetLanguage("de");
    ExpectFailure("<a><b p='1'q='2'/></a>", {1, 12, "nach dem Wert von „p“ fehlt ein Leerzeichen"});
    ExpectFailure("", {1, 1, "die Datei enthält kein Element"});
    VELMsgCatalog::SetLanguage(nullptr);
}

} // namespace dyadctx::test
