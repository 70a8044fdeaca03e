// SPDX-License-Identifier: MIT
#include "context/VELListPtrVELDyadContext.h"

#include "context/VELDyadContext.h"
#include "support/ContextFile.h"

#include <gtest/gtest.h>
#include <memory>
#include <type_traits>

namespace dyadctx::test {

namespace {

using Names = std::vector<std::string>;

class VELListPtrVELDyadContextTest : public testing::Test {
protected:
    VELDyadContext a{"A", "", "Path"};
    VELDyadContext b{"B", "", "Path"};
    VELDyadContext c{"C", "", "Path"};

    VELListPtrVELDyadContext ListOf(std::initializer_list<VELDyadContext*> contexts) const {
        VELListPtrVELDyadContext list;
        for (VELDyadContext* context : contexts)
            list.Append(context);
        return list;
    }
};

TEST_F(VELListPtrVELDyadContextTest, BeginsEmptyWhateverTheInitialSize) {
    EXPECT_EQ(VELListPtrVELDyadContext().Size(), 0);
    EXPECT_EQ(VELListPtrVELDyadContext(12).Size(), 0);
    EXPECT_EQ(VELListPtrVELDyadContext(-3).Size(), 0);
    const VELListPtrVELDyadContext several[2];
    EXPECT_EQ(several[1].Size(), 0);
}

TEST_F(VELListPtrVELDyadContextTest, PositionOneIsTheFirstContextAppended) {
    VELListPtrVELDyadContext list;
    EXPECT_EQ(list.Append(&a), 1);
    EXPECT_EQ(list.Append(nullptr), 2);
    EXPECT_EQ(list[1], &a);
    EXPECT_EQ(list[2], nullptr);
    list[2] = &b;
    EXPECT_EQ(NamesOf(list), (Names{"A", "B"}));
}

TEST_F(VELListPtrVELDyadContextTest, PositionsOutsideAreHarmless) {
    VELListPtrVELDyadContext list = ListOf({&a});
    const VELListPtrVELDyadContext& constant = list;
    for (const int pos : {-1, 0, 2}) {
        EXPECT_EQ(constant[pos], nullptr);
        list[pos] = &b;
        EXPECT_EQ(list[pos], nullptr);
    }
    EXPECT_EQ(NamesOf(list), Names{"A"});
}

TEST_F(VELListPtrVELDyadContextTest, InsertsFromTheFirstPositionToTheOneAfterTheLast) {
    VELListPtrVELDyadContext list = ListOf({&b});
    EXPECT_EQ(list.InsertAt(1, &a), 1);
    EXPECT_EQ(list.InsertAt(3, &c), 3);
    EXPECT_EQ(list.InsertAt(0, &c), 0);
    EXPECT_EQ(list.InsertAt(5, &c), 0);
    EXPECT_EQ(NamesOf(list), (Names{"A", "B", "C"}));
}

TEST_F(VELListPtrVELDyadContextTest, LocatesByIdentityNotByName) {
    VELDyadContext namesake{"A", "", "Path"};
    const VELListPtrVELDyadContext list = ListOf({&b, &a, nullptr, &a});
    EXPECT_EQ(list.Locate(&a), 2);
    EXPECT_EQ(list.Locate(&a, 3), 4);
    EXPECT_EQ(list.Locate(&a, -4), 2);
    EXPECT_EQ(list.Locate(&a, 5), 0);
    EXPECT_EQ(list.Locate(nullptr), 3);
    EXPECT_EQ(list.Locate(&namesake), 0);
}

TEST_F(VELListPtrVELDyadContextTest, RemovesTheFirstOccurrenceOfAContext) {
    VELListPtrVELDyadContext list = ListOf({&a, &b, &a});
    EXPECT_EQ(list.RemoveValue(&a), 1);
    EXPECT_EQ(NamesOf(list), (Names{"B", "A"}));
    EXPECT_EQ(list.RemoveValue(&c), 0);
    EXPECT_EQ(list.Size(), 2);
}

TEST_F(VELListPtrVELDyadContextTest, RemovesPositionsOneOrSeveral) {
    VELListPtrVELDyadContext list = ListOf({&a, &b, &c, &a});
    list.RemovePosition(2);
    EXPECT_EQ(NamesOf(list), (Names{"A", "C", "A"}));
    EXPECT_EQ(list.RemovePosition(1, 0U), 0);
    EXPECT_EQ(list.RemovePosition(4, 1U), 0);
    EXPECT_EQ(list.RemovePosition(2, 9U), 2);
    EXPECT_EQ(NamesOf(list), Names{"A"});
    list.RemovePosition(0);
    list.RemovePosition(2);
    EXPECT_EQ(list.Size(), 1);
}

TEST_F(VELListPtrVELDyadContextTest, EmptiesInEitherMode) {
    for (const auto mode : {VELCollec::ReleaseMemory, VELCollec::KeepMemory}) {
        VELListPtrVELDyadContext list = ListOf({&a, &b});
        list.RemoveAll(mode);
        EXPECT_EQ(list.Size(), 0);
        EXPECT_EQ(list.Append(&c), 1);
    }
    EXPECT_EQ(static_cast<int>(VELCollec::KeepMemory), 1);
}

TEST_F(VELListPtrVELDyadContextTest, EqualAndUnequalAreAlwaysOpposite) {
    struct Case {
        VELListPtrVELDyadContext one;
        VELListPtrVELDyadContext other;
        int equal;
    };
    const Case cases[] = {{ListOf({}), ListOf({}), 1},
                          {ListOf({&a, &b}), ListOf({&a, &b}), 1},
                          {ListOf({&a, &b}), ListOf({&b, &a}), 0},
                          {ListOf({&a}), ListOf({&a, &a}), 0},
                          {ListOf({nullptr}), ListOf({}), 0}};
    for (const Case& c0 : cases) {
        EXPECT_EQ(c0.one == c0.other, c0.equal);
        EXPECT_EQ(c0.one != c0.other, 1 - c0.equal);
    }
    static_assert(std::is_same_v<decltype(cases[0].one == cases[0].other), int>);
}

TEST_F(VELListPtrVELDyadContextTest, CopiesHoldTheSameContexts) {
    VELListPtrVELDyadContext list = ListOf({&a, &b});
    const VELListPtrVELDyadContext copy = list;
    VELListPtrVELDyadContext assigned = ListOf({&c, &c, &c});
    assigned = list;
    list.RemoveAll(VELCollec::KeepMemory);
    EXPECT_EQ(NamesOf(copy), (Names{"A", "B"}));
    EXPECT_EQ(NamesOf(assigned), (Names{"A", "B"}));
}

TEST_F(VELListPtrVELDyadContextTest, AssignmentToItselfChangesNothing) {
    VELListPtrVELDyadContext list = ListOf({&a, &b});
    const VELListPtrVELDyadContext& same = list;
    EXPECT_EQ(&(list = same), &list);
    EXPECT_EQ(NamesOf(list), (Names{"A", "B"}));
}

TEST_F(VELListPtrVELDyadContextTest, MayBeDeletedThroughItsBaseAndLeavesItsContextsAlive) {
    auto* list = new VELListPtrVELDyadContext(ListOf({&a, &b}));
    std::unique_ptr<VELRawColl<VELDyadContext*>> base(list);
    base.reset();
    EXPECT_EQ(Text(a.GetName()) + Text(b.GetName()), "AB");
}

} // namespace

} // namespace dyadctx::test
