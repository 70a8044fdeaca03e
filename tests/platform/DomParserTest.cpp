// SPDX-License-Identifier: MIT
// The parser fed by a source of the test's own.
#include "platform/detail/XmlParser.h"

#include "platform/detail/XmlReasons.h"
#include "platform/detail/XmlSerializer.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <string_view>

using namespace dyadctx;

namespace {

// Gives a text in pieces of a size of the test's choice; may break off before the end.
class PieceSource final : public XmlSource {
public:
    PieceSource(std::string_view text, std::size_t pieceSize,
                std::size_t breakAt = std::string::npos)
        : text_(text), pieceSize_(pieceSize), breakAt_(breakAt) {}

    std::int64_t Read(void* buffer, std::size_t size) override {
        if (next_ >= breakAt_)
            return -1;
        const std::size_t count = std::min({pieceSize_, size, text_.size() - next_});
        text_.copy(static_cast<char*>(buffer), count, next_);
        next_ += count;
        return static_cast<std::int64_t>(count);
    }

private:
    std::string_view text_;
    std::size_t pieceSize_;
    std::size_t breakAt_;
    std::size_t next_ = 0;
};

class ThrowingSource final : public XmlSource {
public:
    std::int64_t Read(void*, std::size_t) override { throw std::runtime_error("source"); }
};

// Can go back to its start a number of times, and notes how often it has.
class RewindableSource final : public XmlSource {
public:
    RewindableSource(std::string_view text, int rewindsLeft)
        : text_(text), rest_(text), rewindsLeft_(rewindsLeft) {}

    std::int64_t Read(void* buffer, std::size_t size) override {
        const std::size_t count = rest_.copy(static_cast<char*>(buffer), size);
        rest_.remove_prefix(count);
        return static_cast<std::int64_t>(count);
    }
    bool Rewind() override {
        if (rewindsLeft_ == 0)
            return false;
        --rewindsLeft_;
        rest_ = text_;
        return true;
    }
    int RewindsLeft() const { return rewindsLeft_; }

private:
    std::string_view text_;
    std::string_view rest_;
    int rewindsLeft_;
};

std::string Reread(XmlSource& source) {
    XmlFailure failure;
    const std::unique_ptr<DomDocument> document = ParseXml(source, failure);
    if (document == nullptr)
        return "(" + std::string(TextOfReason(failure.reason, failure.parameters).AsView()) + ")";
    std::string text;
    EXPECT_TRUE(SerializeXml(*document, XmlLayout::OneLine, text));
    return text;
}

} // namespace

TEST(XmlParser, ReadsASourceThatReturnsLittleAtATime) {
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<a x=\"1\"><b y=\"\xE2\x82\xAC\"/><c/></a>\n";
    for (const std::size_t pieceSize : {1U, 2U, 3U, 7U, 1000U}) {
        PieceSource source(text, pieceSize);
        EXPECT_EQ(Reread(source), text) << pieceSize;
    }
}

TEST(XmlParser, ReadsSourcesWhoseSizeIsThatOfTheBuffer) {
    for (const std::size_t size : {262143U, 262144U, 262145U, 524288U}) {
        const std::string text = "<a>" + std::string(size - 7, ' ') + "</a>";
        PieceSource source(text, 65536);
        EXPECT_EQ(Reread(source), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>\n") << size;
    }
}

TEST(XmlParser, RefusesASourceThatBreaksOff) {
    const std::string text = "<a>" + std::string(1'000'000, ' ') + "</a>";
    for (const std::size_t breakAt : {0U, 1000U, 900000U}) {
        PieceSource source(text, 1000, breakAt);
        EXPECT_EQ(Reread(source), "(the file cannot be read)") << breakAt;
    }
}

TEST(XmlParser, ReadsAPlainDocumentOnce) {
    RewindableSource source("<a x='1'/>", 9);
    XmlFailure failure;
    const auto document = ParseXml(source, failure);
    ASSERT_NE(document, nullptr);
    EXPECT_TRUE(document->IsFromScanner());
    EXPECT_EQ(source.RewindsLeft(), 8);
}

TEST(XmlParser, ReadsAnyOtherDocumentFromItsStartAgain) {
    RewindableSource source("<a>", 9);
    EXPECT_EQ(Reread(source), "(the file ends while an element is still open)");
    EXPECT_EQ(source.RewindsLeft(), 7);

    RewindableSource declared("<!DOCTYPE a [<!ATTLIST a y CDATA '2'>]><a x='1'/>", 9);
    XmlFailure failure;
    const auto document = ParseXml(declared, failure);
    ASSERT_NE(document, nullptr);
    EXPECT_FALSE(document->IsFromScanner());
    EXPECT_EQ(document->Root()->attributeCount, 2U);
}

TEST(XmlParser, LeavesASourceThatCannotGoBackToTheParser) {
    RewindableSource source("<a/>", 0);
    XmlFailure failure;
    const auto document = ParseXml(source, failure);
    ASSERT_NE(document, nullptr);
    EXPECT_FALSE(document->IsFromScanner());
}

TEST(XmlParser, RefusesASourceThatGoesBackOnlyOnce) {
    RewindableSource source("<!DOCTYPE a><a/>", 1);
    EXPECT_EQ(Reread(source), "(the file cannot be read)");
}

TEST(XmlParser, ContainsWhatASourceThrows) {
    ThrowingSource source;
    XmlFailure failure;
    EXPECT_EQ(ParseXml(source, failure), nullptr);
}

TEST(XmlParser, TheTreeTakesLittleMoreRoomThanAnElementNeeds) {
    EXPECT_EQ(sizeof(DomNode), 40U);
    EXPECT_EQ(sizeof(DomAttribute), 16U);
}
