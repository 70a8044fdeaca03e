// SPDX-License-Identifier: MIT
#include "collector/detail/CollectorIndex.h"

#include "context/detail/ContextAccess.h"
#include "support/ContextFile.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace dyadctx::test {

namespace {

class CollectorIndexTest : public testing::Test {
protected:
    VELDyadContext* Make(const std::string& name) {
        contexts_.push_back(std::make_unique<VELDyadContext>(name.c_str(), "", "Path"));
        return contexts_.back().get();
    }
    void Append(const std::string& name) { declared.Append(Make(name)); }

    // What a walk through the list returns.
    int Walk(const std::string& name, int after) const {
        for (int pos = std::max(after, 0) + 1; pos <= declared.Size(); ++pos) {
            const VELDyadContext* context = declared[pos];
            if (context != nullptr && Text(context->GetName()) == name)
                return pos;
        }
        return 0;
    }
    int Ask(const std::string& name, int after = 0) {
        return index.PositionOfName(declared, name.c_str(), after);
    }

    VELListPtrVELDyadContext declared;
    CollectorIndex index;

private:
    std::vector<std::unique_ptr<VELDyadContext>> contexts_;
};

TEST_F(CollectorIndexTest, FindsNothingInAnEmptyList) {
    EXPECT_EQ(Ask("A"), 0);
    EXPECT_EQ(Ask(""), 0);
}

TEST_F(CollectorIndexTest, FindsTheFirstAfterAPosition) {
    for (const char* name : {"A", "B", "A", "C", "A"})
        Append(name);
    struct Case {
        const char* name;
        int after;
        int expected;
    };
    for (const Case& c : {Case{"A", 0, 1},
                          {"A", -5, 1},
                          {"A", 1, 3},
                          {"A", 2, 3},
                          {"A", 3, 5},
                          {"A", 4, 5},
                          {"A", 5, 0},
                          {"A", 99, 0},
                          {"B", 0, 2},
                          {"B", 2, 0},
                          {"none", 0, 0}})
        EXPECT_EQ(Ask(c.name, c.after), c.expected) << c.name << " after " << c.after;
}

TEST_F(CollectorIndexTest, FollowsNamesakes) {
    for (const char* name : {"A", "B", "A"})
        Append(name);
    EXPECT_EQ(index.NextNamesake(declared, 1), 3);
    EXPECT_EQ(index.NextNamesake(declared, 3), 0);
    EXPECT_EQ(index.NextNamesake(declared, 2), 0);
    Append("B");
    EXPECT_EQ(index.NextNamesake(declared, 2), 4);
}

TEST_F(CollectorIndexTest, GrowsWithTheListAndSkipsNull) {
    std::mt19937 random(20);
    for (int i = 0; i < 3000; ++i) {
        const auto number = random() % 500;
        if (number == 0)
            declared.Append(nullptr);
        else
            Append("name " + std::to_string(number));
        if (i % 7 != 0)
            continue;
        const std::string asked = "name " + std::to_string(random() % 600);
        const int after = static_cast<int>(random() % 3000) - 10;
        ASSERT_EQ(Ask(asked, after), Walk(asked, after)) << asked << " after " << after;
        ASSERT_EQ(Ask(asked), Walk(asked, 0)) << asked;
    }
}

TEST_F(CollectorIndexTest, ANameThatIsChangedByAssignmentIsFoundUnderTheNewOne) {
    Append("A");
    EXPECT_EQ(Ask("A"), 1);
    *declared[1] = VELDyadContext("B", "", "Path");
    EXPECT_EQ(Ask("A"), 0);
    EXPECT_EQ(Ask("B"), 1);
}

TEST_F(CollectorIndexTest, ForgetsWhatItKnew) {
    Append("A");
    Append("B");
    EXPECT_EQ(Ask("B"), 2);
    declared.RemovePosition(1);
    Append("C");
    index.Forget();
    EXPECT_EQ(Ask("A"), 0);
    EXPECT_EQ(Ask("B"), 1);
    EXPECT_EQ(Ask("C"), 2);
}

TEST_F(CollectorIndexTest, AShorterListIsReadAnew) {
    Append("A");
    Append("B");
    EXPECT_EQ(Ask("B"), 2);
    declared.RemovePosition(1);
    EXPECT_EQ(Ask("B"), 1);
}

// Walking along the chain for each of these questions would take minutes.
TEST_F(CollectorIndexTest, IsFastAlsoWhenAllNamesAreAlike) {
    VELDyadContext* context = Make("A");
    constexpr int count = 100000;
    for (int i = 0; i < count; ++i) {
        declared.Append(context);
        ASSERT_EQ(Ask("A", i), i + 1);
        ASSERT_EQ(Ask("A", i + 1), 0);
    }
    for (int pos = 1; pos < count; ++pos)
        ASSERT_EQ(Ask("A", pos), pos + 1);
}

// What an index keeps takes no memory when it is asked again.
TEST_F(CollectorIndexTest, KeepsWhatItKnowsWhenANullOrRepeatedEntryIsFollowedByOthers) {
    for (VELDyadContext* odd : {static_cast<VELDyadContext*>(nullptr), Make("odd")}) {
        declared.RemoveAll(VELCollec::KeepMemory);
        index.Forget();
        declared.Append(odd);
        declared.Append(odd);
        for (int i = 0; i < 100; ++i) {
            Append("A");
            ASSERT_EQ(Ask("A"), 3);
        }
        for (int i = 0; i < 10; ++i) {
            Append("B");
            const VELUnicodeString asked("B");
            const FailingAllocation noMemory(1);
            ASSERT_EQ(index.PositionOfName(declared, asked), 103);
            ASSERT_FALSE(noMemory.HasFailed());
        }
    }
}

TEST_F(CollectorIndexTest, AViewIsReadAnewOnlyWhenTheListReachesAPositionOutside) {
    VELRawCollint view;
    for (int i = 0; i < 3; ++i)
        Append("A");
    view.Append(1);
    view.Append(5);
    const VELUnicodeString asked("B");
    EXPECT_EQ(index.PlaceOfName(declared, view, PathContexts, asked), 0);
    Append("B");
    {
        const FailingAllocation noMemory(1);
        EXPECT_EQ(index.PlaceOfName(declared, view, PathContexts, asked), 0);
        EXPECT_FALSE(noMemory.HasFailed());
    }
    Append("B");
    EXPECT_EQ(index.PlaceOfName(declared, view, PathContexts, asked), 2);
}

TEST_F(CollectorIndexTest, FindsPlacesOfAViewLikeAWalkThroughIt) {
    std::mt19937 random(21);
    for (int round = 0; round < 60; ++round) {
        declared.RemoveAll(VELCollec::KeepMemory);
        index.Forget();
        VELRawCollint view;
        for (int i = 0; i < 40; ++i) {
            if (random() % 8 == 0)
                declared.Append(nullptr);
            else
                Append("n" + std::to_string(random() % 12));
            // Repeated, unordered and outdated positions occur as well.
            view.Append(static_cast<int>(random() % 50));
            const std::string asked = "n" + std::to_string(random() % 14);
            int expected = 0;
            for (int place = view.Size(); place >= 1; --place) {
                const VELDyadContext* context =
                    static_cast<const VELListPtrVELDyadContext&>(declared)[view[place]];
                if (context != nullptr && Text(context->GetName()) == asked)
                    expected = place;
            }
            ASSERT_EQ(index.PlaceOfName(declared, view, PathContexts, asked.c_str()), expected);
        }
    }
}

TEST_F(CollectorIndexTest, EachViewHasPlacesOfItsOwn) {
    Append("A");
    Append("B");
    VELRawCollint path;
    VELRawCollint file;
    path.Append(2);
    file.Append(1);
    file.Append(2);
    EXPECT_EQ(index.PlaceOfName(declared, path, PathContexts, "B"), 1);
    EXPECT_EQ(index.PlaceOfName(declared, file, FileContexts, "B"), 2);
    EXPECT_EQ(index.PlaceOfName(declared, path, PathContexts, "A"), 0);
}

TEST_F(CollectorIndexTest, KnowsWhatTheListOwns) {
    VELDyadContext* a = Make("A");
    VELDyadContext* b = Make("B");
    VELListPtrVELDyadContext owned;
    EXPECT_FALSE(index.Owns(owned, a));
    owned.Append(a);
    EXPECT_TRUE(index.Owns(owned, a));
    EXPECT_FALSE(index.Owns(owned, b));
    owned.Append(b);
    EXPECT_TRUE(index.Owns(owned, b));
    owned.RemoveAll(VELCollec::KeepMemory);
    EXPECT_FALSE(index.Owns(owned, a));
}

TEST(PositionChains, HoldKeysApartWhoseHashesCollide) {
    const std::vector<int> keys{1, 2, 1, 3, 2, 1};
    PositionChains chains;
    const auto hasKey = [&](int key) {
        return [&keys, key](int pos) { return keys[static_cast<std::size_t>(pos) - 1] == key; };
    };
    for (const int key : keys)
        chains.Append(42, hasKey(key));
    chains.AppendWithoutKey();
    EXPECT_EQ(chains.Size(), 7);
    EXPECT_EQ(chains.Find(42, hasKey(1)).last, 6);
    EXPECT_EQ(chains.Find(42, hasKey(1)).first, 1);
    EXPECT_EQ(chains.Next(1), 3);
    EXPECT_EQ(chains.Next(3), 6);
    EXPECT_EQ(chains.Next(6), 0);
    EXPECT_EQ(chains.Find(42, hasKey(3)).first, 4);
    EXPECT_EQ(chains.Find(42, hasKey(3)).last, 4);
    EXPECT_EQ(chains.Find(42, hasKey(4)).last, 0);
    EXPECT_EQ(chains.Find(std::uint64_t{43} << 32, hasKey(1)).last, 0);
    EXPECT_EQ(chains.Next(7), 0);
    chains.Clear();
    EXPECT_EQ(chains.Size(), 0);
    EXPECT_EQ(chains.Find(42, hasKey(1)).last, 0);
}

} // namespace

} // namespace dyadctx::test
