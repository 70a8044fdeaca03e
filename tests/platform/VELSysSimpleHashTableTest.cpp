// SPDX-License-Identifier: MIT
#include "platform/VELSysSimpleHashTable.h"

#include <deque>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace {

struct Record {
    int key;
    int value = 0;
};

int hashCalls = 0;
int compareCalls = 0;

unsigned int HashOf(void* record) {
    ++hashCalls;
    return record == nullptr ? 0 : static_cast<unsigned int>(static_cast<Record*>(record)->key);
}

unsigned int SameHash(void*) {
    return 7;
}

// As a client's function may: -1 for what cannot be compared.
int Compare(void* first, void* second) {
    ++compareCalls;
    if (first == nullptr || second == nullptr)
        return -1;
    return static_cast<Record*>(first)->key == static_cast<Record*>(second)->key ? 1 : 0;
}

// The keys at all positions; 0 for an empty one.
std::vector<int> KeysOf(const VELSysSimpleHashTable& table) {
    std::vector<int> keys;
    for (int position = 0; position < table.Size(); ++position) {
        const auto* record = static_cast<const Record*>(table.Get(position));
        keys.push_back(record != nullptr ? record->key : 0);
    }
    return keys;
}

// Keeps the records of a table alive.
class Records {
public:
    Record* Make(int key) { return &records_.emplace_back(Record{key}); }

private:
    std::deque<Record> records_;
};

} // namespace

TEST(VELSysSimpleHashTable, KeepsTheFirstOfEqualRecords) {
    VELSysSimpleHashTable table(50, HashOf, Compare);
    Record first{5, 1};
    Record second{5, 2};
    EXPECT_EQ(1, table.Insert(&first));
    EXPECT_EQ(0, table.Insert(&second));
    EXPECT_EQ(1, table.Size());
    Record probe{5};
    EXPECT_EQ(&first, table.Locate(&probe));
}

TEST(VELSysSimpleHashTable, ListsRecordsInOrderOfInsertion) {
    Records records;
    VELSysSimpleHashTable table(0, HashOf, Compare);
    std::vector<int> expected;
    for (int key = 1000; key > 0; --key) {
        ASSERT_EQ(1, table.Insert(records.Make(key)));
        expected.push_back(key);
    }
    EXPECT_EQ(expected, KeysOf(table));
}

TEST(VELSysSimpleHashTable, RemovesByAnEqualProbe) {
    Records records;
    VELSysSimpleHashTable table(50, HashOf, Compare);
    Record* one = records.Make(1);
    table.Insert(one);
    table.Insert(records.Make(2));
    Record probe{1};
    EXPECT_EQ(one, table.Remove(&probe));
    EXPECT_EQ(nullptr, table.Remove(&probe));
    EXPECT_EQ(nullptr, table.Locate(&probe));
    EXPECT_EQ(1, table.Insert(one));
    EXPECT_EQ(one, table.Locate(&probe));
}

TEST(VELSysSimpleHashTable, RemovedRecordsLeaveGapsUntilHalfAreGone) {
    Records records;
    VELSysSimpleHashTable table(50, HashOf, Compare);
    for (int key = 1; key <= 6; ++key)
        table.Insert(records.Make(key));
    Record probe{2};
    table.Remove(&probe);
    EXPECT_EQ((std::vector<int>{1, 0, 3, 4, 5, 6}), KeysOf(table));
    for (const int key : {1, 5, 6}) {
        probe.key = key;
        table.Remove(&probe);
    }
    EXPECT_EQ((std::vector<int>{3, 4}), KeysOf(table));
    table.Insert(records.Make(9));
    EXPECT_EQ((std::vector<int>{3, 4, 9}), KeysOf(table));
}

TEST(VELSysSimpleHashTable, IsEmptyAfterTheLastRemoval) {
    Records records;
    VELSysSimpleHashTable table(50, HashOf, Compare);
    Record* only = records.Make(1);
    table.Insert(only);
    EXPECT_EQ(only, table.Remove(only));
    EXPECT_EQ(0, table.Size());
    EXPECT_EQ(nullptr, table.Get(0));
}

TEST(VELSysSimpleHashTable, PositionsOutsideAreEmpty) {
    Records records;
    VELSysSimpleHashTable table(50, HashOf, Compare);
    table.Insert(records.Make(1));
    for (const int position : {-1, 1, 2, 1000000})
        EXPECT_EQ(nullptr, table.Get(position));
}

TEST(VELSysSimpleHashTable, NullIsNeitherTakenNorFound) {
    Records records;
    VELSysSimpleHashTable table(50, HashOf, Compare);
    EXPECT_EQ(0, table.Insert(nullptr));
    table.Insert(records.Make(0));
    EXPECT_EQ(nullptr, table.Locate(nullptr));
    EXPECT_EQ(nullptr, table.Remove(nullptr));
    EXPECT_EQ(1, table.Size());
}

TEST(VELSysSimpleHashTable, EqualHashesAreToldApartByComparison) {
    Records records;
    VELSysSimpleHashTable table(50, SameHash, Compare);
    for (int key = 1; key <= 200; ++key)
        ASSERT_EQ(1, table.Insert(records.Make(key)));
    for (int key = 1; key <= 200; ++key) {
        Record probe{key};
        auto* found = static_cast<Record*>(table.Locate(&probe));
        ASSERT_NE(nullptr, found);
        EXPECT_EQ(key, found->key);
    }
}

TEST(VELSysSimpleHashTable, HashesOncePerOperationAndComparesOnlyEqualHashes) {
    Records records;
    VELSysSimpleHashTable table(1, HashOf, Compare);
    hashCalls = 0;
    compareCalls = 0;
    for (int key = 1; key <= 1000; ++key)
        table.Insert(records.Make(key));
    EXPECT_EQ(1000, hashCalls);
    EXPECT_EQ(0, compareCalls);
    Record probe{500};
    table.Locate(&probe);
    table.Remove(&probe);
    EXPECT_EQ(1002, hashCalls);
    EXPECT_EQ(2, compareCalls);
}

TEST(VELSysSimpleHashTable, AgreesWithASetOverManyChanges) {
    Records records;
    VELSysSimpleHashTable table(50, HashOf, Compare);
    std::set<int> model;
    unsigned int state = 12345;
    for (int step = 0; step < 20000; ++step) {
        state = state * 1103515245U + 12345U;
        Record probe{static_cast<int>(state >> 16U) % 300 + 1};
        if ((state >> 8U) % 2 == 0) {
            ASSERT_EQ(model.insert(probe.key).second ? 1 : 0,
                      table.Insert(records.Make(probe.key)));
        } else {
            ASSERT_EQ(model.erase(probe.key) == 1, table.Remove(&probe) != nullptr);
        }
        // At most half of the positions are empty.
        ASSERT_LE(table.Size(), 2 * static_cast<int>(model.size()) + 1);
    }
    std::set<int> left;
    for (const int key : KeysOf(table)) {
        if (key != 0)
            left.insert(key);
    }
    EXPECT_EQ(model, left);
}
