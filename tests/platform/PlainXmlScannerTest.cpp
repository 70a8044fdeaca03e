// SPDX-License-Identifier: MIT
// The scanner of plain documents makes of a text what the parser makes of it, or leaves it alone.
#include "platform/detail/PlainXmlScanner.h"

#include "platform/GeneratedXml.h"
#include "platform/VELEnvironment.h"
#include "support/ScannerComparison.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace dyadctx::test {

namespace {

constexpr std::size_t UsualPiece = 65536;

// One of everything that the scanner knows.
constexpr std::string_view Rich =
    "\xEF\xBB\xBF<?xml version=\"1.0\" encoding='UTF-8' standalone=\"yes\" ?>\r\n"
    "<!-- a - b -->\n<?style-sheet a?b?><?p?>\r<a:r.x-1\txmlns:a = 'u&amp;v'\r\n _=\"\" "
    "b='&lt;&gt;&quot;&apos;&#65;&#x20aC;\t\r\n\n\r\"'>\n"
    " t]]a&amp;&#10;\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80>\r\r\n"
    "<![CDATA[<&>]]]]>]<![CDATA[]]><b/><c ></c\n>--<d\n/><!---x--><!----><?q --> ?>\n"
    "<e n='a value that is long' v=\"\xE6\x97\xA5\xEF\xBF\xBD\x7F\">x</e></a:r.x-1 >\n<!--\r-->\n";

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A text as a literal, shortened.
std::string Shown(std::string_view text) {
    std::string shown;
    for (const char c : text.substr(0, 1500)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= ' ' && byte < 0x7F)
            shown += c;
        else
            shown += "\\" + std::to_string(byte) + ";";
    }
    return shown;
}

bool IsScanned(std::string_view text, std::size_t pieceSize = UsualPiece) {
    const ScannerComparison comparison = CompareScanner(text, pieceSize);
    EXPECT_EQ(comparison.difference, "") << pieceSize << ": " << Shown(text);
    return comparison.isScanned;
}

// How many documents a test makes by chance; a long run asks for more.
int DocumentCount() {
    constexpr int Usual = 4000;
    const char* wanted = VELGetEnv("DYADCTX_TEST_DOCUMENTS");
    const std::string_view text = wanted != nullptr ? wanted : "";
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    return error == std::errc() ? count : Usual;
}

} // namespace

TEST(PlainXmlScanner, ReadsOneOfEverythingItKnows) {
    for (const std::size_t pieceSize : {1U, 2U, 3U, 5U, 17U, 64U, 300U, 65536U})
        EXPECT_TRUE(IsScanned(Rich, pieceSize)) << pieceSize;
}

TEST(PlainXmlScanner, ReadsTheSamples) {
    const std::filesystem::path root = DYADCTX_SOURCE_DIR;
    EXPECT_TRUE(IsScanned(ReadFile(root / "examples/site.xml")));
    EXPECT_TRUE(IsScanned(ReadFile(root / "examples/hints.xml")));
    int samples = 0;
    int scanned = 0;
    for (const char* folder : {"examples/broken", "fuzz/corpus/xml", "resources/schema"}) {
        for (const auto& entry : std::filesystem::directory_iterator(root / folder)) {
            ++samples;
            scanned += IsScanned(ReadFile(entry.path())) ? 1 : 0;
        }
    }
    EXPECT_GT(samples, 20);
    EXPECT_GT(scanned, 15);
}

TEST(PlainXmlScanner, AgreesWithTheParserOnEveryChangeOfOneByte) {
    int scanned = 0;
    for (std::size_t at = 0; at < Rich.size(); ++at) {
        std::string text(Rich);
        for (unsigned int byte = 0; byte < 256; ++byte) {
            text[at] = static_cast<char>(byte);
            scanned += IsScanned(text) ? 1 : 0;
        }
    }
    EXPECT_GT(scanned, 10000);
}

TEST(PlainXmlScanner, AgreesWithTheParserOnEveryByteLeftOutOrDoubledAndEveryCut) {
    for (std::size_t at = 0; at < Rich.size(); ++at) {
        for (const std::size_t pieceSize : {std::size_t{1}, std::size_t{50}, UsualPiece}) {
            IsScanned(std::string(Rich).erase(at, 1), pieceSize);
            IsScanned(std::string(Rich).insert(at, 1, Rich[at]), pieceSize);
            EXPECT_FALSE(IsScanned(Rich.substr(0, at), pieceSize) &&
                         !IsReadByParser(Rich.substr(0, at)));
        }
    }
}

TEST(PlainXmlScanner, AgreesWithTheParserOnDocumentsMadeByChance) {
    const int count = DocumentCount();
    int scanned = 0;
    for (int seed = 0; seed < count; ++seed) {
        GeneratedXml generator(static_cast<unsigned int>(seed));
        const std::string plain = generator.Document();
        EXPECT_TRUE(IsScanned(plain, generator.PieceSize())) << seed << ": " << Shown(plain);
        const std::string damaged = generator.Damage(plain);
        scanned += IsScanned(damaged, generator.PieceSize()) ? 1 : 0;
    }
    EXPECT_GT(scanned, count / 20);
    EXPECT_LT(scanned, count);
}

TEST(PlainXmlScanner, LeavesToTheParserWhatIsNotPlain) {
    std::string manyAttributes = "<a";
    for (int i = 0; i < 1000; ++i)
        manyAttributes += " a" + std::to_string(i) + "=''";
    std::string deep;
    for (int i = 0; i < 5001; ++i)
        deep += "<e>";
    const std::string texts[] = {
        "<!DOCTYPE a><a/>",
        "<?xml version='1.0' encoding='ISO-8859-1'?><a/>",
        "<?xml version='1.1'?><a/>",
        std::string("\xFF\xFE<\0a\0/\0>\0", 10),
        "<\xC3\xA9l/>",
        "<a \xC3\xA9='1'/>",
        manyAttributes + "/>",
        deep,
        "<a v='" + std::string(1100000, 'x') + "'/>",
        "<a><!--" + std::string(1100000, 'x') + "--></a>",
    };
    for (const std::string& text : texts)
        EXPECT_FALSE(IsScanned(text)) << Shown(text.substr(0, 60));
}

TEST(PlainXmlScanner, ReadsTokensAndTextsLongerThanAPiece) {
    const std::string value(900000, 'x');
    const std::string lines = [] {
        std::string text;
        for (int i = 0; i < 200000; ++i)
            text += "line\r\n";
        return text;
    }();
    EXPECT_TRUE(IsScanned("<a v='" + value + "'/>"));
    EXPECT_TRUE(IsScanned("<a>" + lines + "<b/></a>"));
    EXPECT_TRUE(IsScanned("<a>" + std::string(3000000, ']') + "<b/></a>"));
}

TEST(PlainXmlScanner, ReadsElementsNestedAsDeepAsTheParserAllows) {
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "<e>";
    for (int i = 0; i < 5000; ++i)
        text += "</e>";
    EXPECT_TRUE(IsScanned(text));
}

} // namespace dyadctx::test
