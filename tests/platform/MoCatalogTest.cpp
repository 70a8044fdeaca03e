// SPDX-License-Identifier: MIT
#include "platform/detail/MoCatalog.h"

#include "platform/MoImage.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

// Exactly as large as the image, so that a sanitizer sees a read past its end.
std::vector<unsigned char> Bytes(const std::string& image) {
    return {image.begin(), image.end()};
}

std::string Found(const MoCatalog& catalog, const std::string& key) {
    const auto text = catalog.Find(key);
    return text ? std::string(*text) : "(nothing)";
}

const std::vector<MoEntry>& SmallCatalog() {
    static const std::vector<MoEntry> entries{
        {"", "Content-Type: text/plain; charset=UTF-8\n"},
        {WithContext("Ctx.Empty"), ""},
        {WithContext("Ctx.First"), "The first text"},
        {WithContext("Ctx.Linked..Twice"), "Zwei Punkte – 二"},
    };
    return entries;
}

} // namespace

TEST(MoCatalog, FindsTextsByContextInBothByteOrders) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
        const auto image = Bytes(MoImageOf(SmallCatalog(), order));
        const MoCatalog catalog(image);

        EXPECT_EQ(Found(catalog, "Ctx.First"), "The first text");
        EXPECT_EQ(Found(catalog, "Ctx.Linked..Twice"), "Zwei Punkte – 二");
        EXPECT_EQ(Found(catalog, "Ctx.Empty"), "");
        EXPECT_EQ(Found(catalog, "Ctx.Linked.Twice"), "(nothing)");
        EXPECT_EQ(Found(catalog, "ctx.first"), "(nothing)");
        EXPECT_EQ(Found(catalog, ""), "(nothing)");
    }
}

TEST(MoCatalog, LeavesOutTextsWithoutContext) {
    const auto image = Bytes(MoImageOf({{"no context", "text"}, {"", "header"}}));
    const MoCatalog catalog(image);

    EXPECT_EQ(Found(catalog, "no context"), "(nothing)");
    EXPECT_EQ(Found(catalog, ""), "(nothing)");
}

TEST(MoCatalog, TakesTheFirstOfPluralFormsAndOfEqualKeys) {
    using namespace std::string_literals;
    const auto image = Bytes(MoImageOf(
        {{WithContext("K", "one\0many"s), "eins\0viele"s}, {WithContext("K", "other"), "second"}}));

    EXPECT_EQ(Found(MoCatalog(image), "K"), "eins");
}

TEST(MoCatalog, KnowsNoTextOfWhatIsNoMoFile) {
    const std::string good = MoImageOf({{WithContext("K"), "text"}});
    std::string wrongMagic = good;
    wrongMagic[0] = 'X';
    std::string laterRevision = good;
    laterRevision[6] = 2;
    for (const std::string& image : {std::string(), std::string("<xml/>"), wrongMagic,
                                     laterRevision, std::string(100, '\0')}) {
        const auto bytes = Bytes(image);
        EXPECT_EQ(Found(MoCatalog(bytes), "K"), "(nothing)");
    }
    const auto bytes = Bytes(good);
    EXPECT_EQ(Found(MoCatalog(bytes), "K"), "text");
}

TEST(MoCatalog, ReturnsWholeTextsOrNoneOfAFileCutAnywhere) {
    const std::string whole = MoImageOf(SmallCatalog());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const auto bytes = Bytes(whole.substr(0, size));
        const MoCatalog catalog(bytes);

        const std::string first = Found(catalog, "Ctx.First");
        const std::string twice = Found(catalog, "Ctx.Linked..Twice");
        EXPECT_TRUE(first == "The first text" || first == "(nothing)") << size << first;
        EXPECT_TRUE(twice == "Zwei Punkte – 二" || twice == "(nothing)") << size << twice;
    }
}

TEST(MoCatalog, StaysInsideTheImageWhateverItsBytes) {
    const std::string whole = MoImageOf(SmallCatalog());
    std::mt19937 random(20240117);
    std::size_t found = 0;
    for (int round = 0; round < 20000; ++round) {
        auto bytes = Bytes(whole);
        const std::uint32_t changes = 1 + random() % 8;
        for (std::uint32_t change = 0; change < changes; ++change)
            bytes[random() % bytes.size()] = static_cast<unsigned char>(random());
        const MoCatalog catalog(bytes);
        for (const char* key : {"Ctx.First", "Ctx.Linked..Twice", "Ctx.Empty"}) {
            const auto text = catalog.Find(key);
            if (!text)
                continue;
            ++found;
            const char* begin = reinterpret_cast<const char*>(bytes.data());
            ASSERT_GE(text->data(), begin);
            ASSERT_LE(text->data() + text->size(), begin + bytes.size());
        }
    }
    EXPECT_GT(found, 0U);
}

TEST(MoCatalog, StopsAtTheEndOfATableThatClaimsToBeLonger) {
    std::string image = MoImageOf({{WithContext("K"), "text"}});
    for (std::size_t i = 8; i < 12; ++i)
        image[i] = '\xFF';
    const auto bytes = Bytes(image);

    EXPECT_EQ(Found(MoCatalog(bytes), "K"), "text");
}

TEST(MoCatalog, LeavesOutTextsThatAreNotWellFormed) {
    const auto image = Bytes(MoImageOf({{WithContext("Broken"), "a\xC3"},
                                        {WithContext("Latin1"), "D\xE9"
                                                                "faut"},
                                        {WithContext("Sound"), "Défaut"}}));
    const MoCatalog catalog(image);

    EXPECT_EQ(Found(catalog, "Broken"), "(nothing)");
    EXPECT_EQ(Found(catalog, "Latin1"), "(nothing)");
    EXPECT_EQ(Found(catalog, "Sound"), "Défaut");
}

TEST(MoCatalog, LeavesOutKeysAndTextsOfAbsurdLength) {
    const std::string longestKey(255, 'k');
    const std::string longestText(65536, 't');
    const auto image = Bytes(MoImageOf({{WithContext(longestKey), "found"},
                                        {WithContext(longestKey + "k"), "too long"},
                                        {WithContext("LongText"), longestText},
                                        {WithContext("TooLongText"), longestText + "t"}}));
    const MoCatalog catalog(image);

    EXPECT_EQ(Found(catalog, longestKey), "found");
    EXPECT_EQ(Found(catalog, longestKey + "k"), "(nothing)");
    EXPECT_EQ(Found(catalog, "LongText"), longestText);
    EXPECT_EQ(Found(catalog, "TooLongText"), "(nothing)");
}

} // namespace dyadctx::test
