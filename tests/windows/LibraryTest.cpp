// SPDX-License-Identifier: MIT
// The DLL in a client's program.
#include "collector/VELDyadCtxCollector.h"
#include "platform/VELBaseUnknown_var.h"
#include "platform/VELDyadDbProviderServices.h"
#include "platform/VELFileSystem.h"
#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <string>

#include <windows.h>

#include <psapi.h>

using namespace dyadctx::test;

namespace {

const char* const OneContext = R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)";

DWORD HandlesOfThisProcess() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

std::size_t MemoryOfThisProcess() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

} // namespace

TEST(WindowsLibrary, ItsExceptionIsCaughtInAClient) {
    const Creation creation = CreateFromContexts(OneContext);
    ASSERT_NE(creation.collector, nullptr) << creation.message;
    VELListValVELUnicodeString names;
    EXPECT_THROW(creation.collector->GetContextNamesFromDbProvider(VELIDyadDbProvider_var(), names),
                 VELNullHandleError);
    EXPECT_THROW(VELBaseUnknown_var::ThrowErrorNullVar(), VELNullHandleError);
}

TEST(WindowsLibrary, LackOfMemoryInItIsCaughtInAClient) {
    EXPECT_THROW(VELUnicodeString("", static_cast<std::size_t>(-1) / 2), std::exception);
}

TEST(WindowsLibrary, DeletesWhatTheClientMade) {
    const std::unique_ptr<VELDyadCtxCollector> collector(
        VELDyadCtxCollector::CreateCollectorFromScratch());
    ASSERT_NE(collector, nullptr);
    auto context = std::make_unique<VELDyadContext>("A", "/a", "Path");
    ASSERT_EQ(collector->AddContext(context.get(), nullptr, 0), S_OK);
    context.release();
}

TEST(WindowsLibrary, TheClientDeletesWhatItMade) {
    Creation creation = CreateFromContexts(OneContext);
    ASSERT_NE(creation.collector, nullptr) << creation.message;
    EXPECT_EQ(ViewOf(*creation.collector), std::vector<std::string>{"A"});
    delete creation.collector.release();
}

// This program has it loaded already, so a copy under another name is loaded and freed.
TEST(WindowsLibrary, LoadedAndFreedAThousandTimesLeaksNothing) {
    const TemporaryFolder folder;
    const std::string copy = folder.PathOf("copy.dll");
    ASSERT_TRUE(CopyFileA(DYADCTX_LIBRARY_FILE, copy.c_str(), FALSE));
    const auto turn = [&copy] {
        const HMODULE library = LoadLibraryA(copy.c_str());
        ASSERT_NE(library, nullptr);
        const auto answer =
            reinterpret_cast<void (*)()>(GetProcAddress(library, "_Z10BatchStackv"));
        ASSERT_NE(answer, nullptr);
        answer();
        ASSERT_TRUE(FreeLibrary(library));
        ASSERT_EQ(GetModuleHandleA("copy.dll"), nullptr);
    };
    for (int i = 0; i < 100; ++i)
        turn();
    const DWORD handles = HandlesOfThisProcess();
    const std::size_t memory = MemoryOfThisProcess();
    for (int i = 0; i < 900; ++i)
        turn();
    EXPECT_LE(HandlesOfThisProcess(), handles);
    // The system's own lists may grow; an allocation of a hundred bytes each time would be 90,000.
    EXPECT_LT(MemoryOfThisProcess(), memory + 65536);
}
