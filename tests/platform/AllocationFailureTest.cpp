// SPDX-License-Identifier: MIT
// When an allocation fails, the platform types and services leave everything as it was.

#include "platform/VELDyadDbProviderServices.h"
#include "platform/VELFileSystem.h"
#include "platform/VELListVal.h"
#include "platform/VELRawColl.h"
#include "platform/VELSysSettingRepository.h"
#include "platform/VELSysSimpleHashTable.h"
#include "platform/detail/InMemoryDbProvider.h"
#include "support/EnvironmentVariable.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <new>
#include <string>

using dyadctx::InMemoryDbProvider;
using dyadctx::test::FailingAllocation;
using dyadctx::test::ForEachAllocation;
using dyadctx::test::TemporaryFolder;

namespace {

const char* const longText = "a text of more than fifteen bytes";

// Runs `operation` with one allocation failing; whether that allocation was asked for. The
// operation must throw std::bad_alloc exactly then.
template<class Operation>
bool ThrowsWithout(int number, const Operation& operation) {
    bool thrown = false;
    bool failed = false;
    {
        const FailingAllocation failing(number);
        try {
            operation();
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        failed = failing.HasFailed();
    }
    EXPECT_EQ(failed, thrown) << "allocation " << number;
    return failed;
}

// The same for an operation that returns a code.
template<class Operation>
bool RefusesWithout(int number, const Operation& operation) {
    bool failed = false;
    VELResult result = S_OK;
    {
        const FailingAllocation failing(number);
        result = operation();
        failed = failing.HasFailed();
    }
    EXPECT_EQ(failed ? E_FAIL : S_OK, result) << "allocation " << number;
    return failed;
}

unsigned int HashOf(void* record) {
    return static_cast<unsigned int>(*static_cast<int*>(record));
}

int Compare(void* first, void* second) {
    return *static_cast<int*>(first) == *static_cast<int*>(second) ? 1 : 0;
}

VELIDyadDbProvider_var ProviderNamed(const char* name) {
    VELIDyadDbProvider_var provider(new InMemoryDbProvider);
    EXPECT_EQ(S_OK, provider->SetConnectorName(name));
    return provider;
}

std::string NameOf(const VELIDyadDbProvider_var& provider) {
    VELUnicodeString name;
    EXPECT_EQ(S_OK, provider->GetName(name));
    return name.ConvertToChar();
}

} // namespace

TEST(AllocationFailure, TextsStayAsTheyWere) {
    const VELUnicodeString source(longText);
    const int allocations = ForEachAllocation([&source](int number) {
        VELUnicodeString appended("fifteen bytes..");
        VELUnicodeString assigned("former");
        const bool failed = ThrowsWithout(number, [&] {
            assigned = source;
            appended.Append(source);
        });
        if (failed) {
            EXPECT_STREQ("fifteen bytes..", appended.ConvertToChar());
        }
        if (number == 1) {
            EXPECT_STREQ("former", assigned.ConvertToChar());
        }
        return failed;
    });
    EXPECT_EQ(2, allocations);
}

TEST(AllocationFailure, ShortTextsNeedNoMemory) {
    const FailingAllocation failing(1);
    VELUnicodeString text("fifteen");
    text.Append(VELUnicodeString(" bytes."));
    const VELUnicodeString copy(text.ExtractSubString(0, 15));
    EXPECT_FALSE(failing.HasFailed());
}

TEST(AllocationFailure, TextsBeyondEverySizeAreRefused) {
    const VELUnicodeString former(longText);
    VELUnicodeString text(former);
    const std::string_view huge(former.AsView().data(), std::size_t{1} << 31);
    EXPECT_THROW(text.Append(huge), std::bad_alloc);
    EXPECT_THROW(VELUnicodeString(former.AsView().data(), SIZE_MAX), std::bad_alloc);
    EXPECT_STREQ(longText, text.ConvertToChar());
}

TEST(AllocationFailure, ValueListsStayAsTheyWere) {
    const VELUnicodeString value(longText);
    const int allocations = ForEachAllocation([&value](int number) {
        VELListValVELUnicodeString list;
        const bool failed = ThrowsWithout(number, [&] { list.Append(value); });
        EXPECT_EQ(failed ? 0 : 1, list.Size());
        return failed;
    });
    EXPECT_EQ(2, allocations);
}

TEST(AllocationFailure, PlainListsAnswerZero) {
    VELRawCollint list;
    {
        const FailingAllocation failing(1);
        EXPECT_EQ(0, list.Append(5));
    }
    {
        const FailingAllocation failing(1);
        EXPECT_EQ(0, list.InsertAt(1, 5));
    }
    EXPECT_EQ(0, list.Size());
    const FailingAllocation failing(1);
    const VELRawCollint prepared(100);
    EXPECT_TRUE(failing.HasFailed());
    EXPECT_EQ(0, prepared.Size());
}

TEST(AllocationFailure, TheHashTableDoesNotTakeTheRecord) {
    int records[40];
    for (int i = 0; i < 40; ++i)
        records[i] = i;
    for (const int held : {0, 4, 8, 16, 32}) {
        const int allocations = ForEachAllocation([&records, held](int number) {
            VELSysSimpleHashTable table(50, HashOf, Compare);
            for (int i = 0; i < held; ++i)
                table.Insert(&records[i]);
            const bool failed = ThrowsWithout(number, [&] { table.Insert(&records[held]); });
            EXPECT_EQ(failed ? held : held + 1, table.Size());
            EXPECT_EQ(failed ? nullptr : &records[held], table.Locate(&records[held]));
            for (int i = 0; i < held; ++i)
                EXPECT_EQ(&records[i], table.Locate(&records[i]));
            EXPECT_EQ(failed ? 1 : 0, table.Insert(&records[held]));
            return failed;
        });
        EXPECT_GT(allocations, 0) << held;
    }
}

TEST(AllocationFailure, ProvidersRefuseAndStayAsTheyWere) {
    VELListValVELUnicodeString keys;
    VELListValVELUnicodeString values;
    keys.Append("a key that no other test of this program uses");
    values.Append(longText);
    const int setting = ForEachAllocation([&](int number) {
        const VELIDyadDbProvider_var provider = ProviderNamed("KRL");
        const bool failed =
            RefusesWithout(number, [&] { return provider->SetServerDetails(keys, values); });
        VELListValVELUnicodeString found;
        VELListValVELUnicodeString details;
        EXPECT_EQ(S_OK, provider->GetServerDetails(found, details));
        EXPECT_EQ(failed ? 0 : 1, found.Size());
        EXPECT_EQ("KRL", NameOf(provider));
        return failed;
    });
    EXPECT_GT(setting, 2);
    const int naming = ForEachAllocation([](int number) {
        const VELIDyadDbProvider_var provider = ProviderNamed("KRL");
        const bool failed =
            RefusesWithout(number, [&] { return provider->SetConnectorName("HWB"); });
        EXPECT_EQ(failed ? "KRL" : "HWB", NameOf(provider));
        return failed;
    });
    EXPECT_EQ(1, naming);
}

TEST(AllocationFailure, ProviderQueriesLeaveTheOutputsAlone) {
    const VELIDyadDbProvider_var provider = ProviderNamed(longText);
    VELListValVELUnicodeString details;
    details.Append(longText);
    ASSERT_EQ(S_OK, provider->SetServerDetails(details, details));
    EXPECT_GT(ForEachAllocation([&](int number) {
                  VELListValVELUnicodeString keys;
                  VELListValVELUnicodeString values;
                  keys.Append("former");
                  const bool failed = RefusesWithout(
                      number, [&] { return provider->GetServerDetails(keys, values); });
                  EXPECT_STREQ(failed ? "former" : longText, keys[1].ConvertToChar());
                  EXPECT_EQ(failed ? 0 : 1, values.Size());
                  return failed;
              }),
              2);
}

TEST(AllocationFailure, TheProviderServicesRefuse) {
    const VELIDyadDbProvider_var former = ProviderNamed("former");
    using Services = VELDyadDbProviderServices;
    const int creating = ForEachAllocation([&](int number) {
        VELIDyadDbProvider_var out = former;
        const bool failed =
            RefusesWithout(number, [&] { return Services::CreateDyadDbProvider(out); });
        EXPECT_EQ(failed, out == former);
        return failed;
    });
    const int cloning = ForEachAllocation([&](int number) {
        VELIDyadDbProvider_var out = former;
        const bool failed = RefusesWithout(
            number, [&] { return Services::CreateDyadDbProviderFromDbProvider(former, out); });
        EXPECT_EQ(failed, out == former);
        return failed;
    });
    EXPECT_EQ(1, creating);
    EXPECT_EQ(1, cloning);
}

TEST(AllocationFailure, FileQuestionsAnswerNo) {
    const TemporaryFolder folder;
    const VELUnicodeString path(folder.Write("a.xml", "former"));
    ForEachAllocation([&path](int number) {
        const FailingAllocation failing(number);
        VELFileInfo info;
        const bool known = VELGetFileInfo(path, info) == 0;
        EXPECT_NE(failing.HasFailed(), known);
        return failing.HasFailed();
    });
    ForEachAllocation([&path](int number) {
        const FailingAllocation failing(number);
        const bool readable = VELFileAccess(path, 4) == 0;
        EXPECT_NE(failing.HasFailed(), readable);
        return failing.HasFailed();
    });
    ForEachAllocation([&path](int number) {
        VELUnicodeString parent("former");
        VELUnicodeString name("former");
        const FailingAllocation failing(number);
        VELSplitPath(path, parent, name);
        EXPECT_EQ(failing.HasFailed(), name.IsEmpty());
        return failing.HasFailed();
    });
}

TEST(AllocationFailure, AFileIsReplacedWhollyOrNot) {
    const TemporaryFolder folder;
    const VELUnicodeString path(folder.Write("a.xml", "former"));
    const int allocations = ForEachAllocation([&](int number) {
        const bool failed = RefusesWithout(number, [&] { return VELReplaceFile(path, "new"); });
        EXPECT_EQ(failed ? "former" : "new", folder.Read("a.xml"));
        return failed;
    });
    EXPECT_GT(allocations, 1);
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder.Path()),
                               std::filesystem::directory_iterator()));
}

TEST(AllocationFailure, ARepositoryIsAbsentOrRefuses) {
    const TemporaryFolder folder;
    const dyadctx::test::EnvironmentVariable variable("VELSettingPath", folder.Path().string());
    folder.Write("R.toml", "file = \"a text of more than fifteen bytes\"\n");
    // The first one of a thread is also noted for its end, which may go without memory.
    ASSERT_NE(nullptr, VELSysSettingRepository::GetRepository("R", 0));
    const int allocations = ForEachAllocation([](int number) {
        VELUnicodeString value("former");
        VELResult result = E_FAIL;
        bool failed = false;
        {
            const FailingAllocation failing(number);
            auto* settings = VELSysSettingRepository::GetRepository("R", 0);
            if (settings != nullptr)
                result = settings->ReadAttr("file", value);
            failed = failing.HasFailed();
        }
        EXPECT_EQ(failed ? E_FAIL : S_OK, result);
        EXPECT_STREQ(failed ? "former" : longText, value.ConvertToChar());
        return failed;
    });
    EXPECT_GT(allocations, 5);
}
