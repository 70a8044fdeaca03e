// SPDX-License-Identifier: MIT
// While the trace is off the reader leaves out walks that read nothing. With the trace on it makes
// every one of them, so the two must agree on any tree of elements, right or wrong.
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"
#include "support/TemporaryFolder.h"
#include "xml/ReaderSupport.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>

namespace dyadctx::test {

namespace {

class RandomTree {
public:
    explicit RandomTree(std::uint32_t seed) : random_(seed) {}

    std::string Nodes(int depth) {
        std::string text;
        for (std::uint32_t left = Below(4); left > 0; --left)
            text += Node(depth);
        return text;
    }

private:
    std::uint32_t Below(std::uint32_t bound) {
        return static_cast<std::uint32_t>(random_()) % bound;
    }

    std::string Node(int depth) {
        static constexpr std::array tags{"Context",       "Context",  "Context",    "CtxFriends",
                                         "CtxAssociated", "Scenario", "ScenarioID", "Option",
                                         "CtxData",       "Other"};
        if (Below(6) == 0)
            return " text <!-- comment -->";
        // The last two tags are rare.
        const std::string tag = tags[Below(Below(8) == 0 ? 10 : 8)];
        return "<" + tag + Attributes(tag) + ">" + (depth > 0 ? Nodes(depth - 1) : "") + "</" +
               tag + ">";
    }

    std::string Attributes(const std::string& tag) {
        const std::string number = std::to_string(Below(4));
        if (Below(40) == 0)
            return "";
        if (tag == "Context" && Below(3) == 0)
            return " Name='V" + number +
                   "' Parameter='p' ParameterType='Database' "
                   "ConnectorName='KRL' ServerName='s" +
                   number + "'";
        if (tag == "Context")
            return " Name='A" + number + "' Parameter='p' ParameterType='Path'";
        return " Ident='I' name='n" + number + "' value='v'";
    }

    std::mt19937 random_;
};

std::string Describe(const Reading& reading) {
    std::string text = std::to_string(reading.result) + " " + reading.message;
    for (const std::string& name : AllOf(reading))
        text += "\n" + name;
    for (int pos = 1; pos <= static_cast<int>(DeclaredOf(reading).size()); ++pos) {
        text += "\ndeclared " + Text(DeclaredAt(reading, pos).GetName()) + " associated " +
                AssociatedAt(reading, pos) + " friends";
        for (const std::string& name : FriendsAt(reading, pos))
            text += " " + name;
    }
    for (const std::string& row : RowsOf(reading))
        text += "\n" + row;
    return text;
}

} // namespace

TEST(ReaderFastPath, ReadsAnyTreeAsTheFullWalkDoes) {
    const KeyCatalog catalog;
    const TemporaryFolder folder;
    int accepted = 0;
    for (std::uint32_t seed = 1; seed <= 1500; ++seed) {
        const std::string document = DocumentWith(Path("First") + RandomTree(seed).Nodes(3));
        const std::string file = folder.Write("contexts.xml", document);
        const DbEnvironment db(seed % 2 == 0);
        const Reading quiet = ReadFile(file);
        std::string traced;
        {
            const RecordingTrace trace;
            traced = Describe(ReadFile(file));
        }
        ASSERT_EQ(Describe(quiet), traced) << document;
        accepted += quiet.result == S_OK ? 1 : 0;
    }
    // Both kinds must be among them in number.
    EXPECT_GT(accepted, 150);
    EXPECT_LT(accepted, 1350);
}

} // namespace dyadctx::test
