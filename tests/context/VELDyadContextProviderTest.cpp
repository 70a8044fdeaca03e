// SPDX-License-Identifier: MIT
#include "context/VELDyadContext.h"

#include "support/ContextFile.h"
#include "support/FaultyProviders.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>
#include <optional>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

VELDyadContext DatabaseContext() {
    return VELDyadContext("Parts", "Parts database", "Database");
}

std::string NameOf(const VELIDyadDbProvider_var& provider) {
    VELUnicodeString name;
    EXPECT_EQ(provider->GetName(name), S_OK);
    return Text(name);
}

TEST(VELDyadContextProvider, KeepsAndReturnsOnlyProvidersMadeByTheService) {
    FaultyProviders providers;
    VELDyadContext context = DatabaseContext();
    RecordingTrace trace;
    const VELIDyadDbProvider_var given = providers.Make("KRL");
    EXPECT_EQ(context.SetDyadDbProvider(given), S_OK);
    VELIDyadDbProvider_var got;
    EXPECT_EQ(context.GetDyadDbProvider(got), S_OK);
    EXPECT_EQ(trace.TakeLines(), (Lines{"ENTER VELDyadContext:SetDyadDbProvider",
                                        "LEAVE VELDyadContext:SetDyadDbProvider",
                                        "ENTER VELDyadContext:GetDyadDbProvider",
                                        "LEAVE VELDyadContext:GetDyadDbProvider"}));
    EXPECT_EQ(providers.TakeCalls(), (Lines{"CreateFrom #1 -> #2", "CreateFrom #2 -> #3"}));
    EXPECT_NE(got, given);
    EXPECT_EQ(NameOf(got), "KRL");
}

TEST(VELDyadContextProvider, WithoutProviderTheHandleBecomesNullWithoutTrace) {
    FaultyProviders providers;
    const VELDyadContext context = DatabaseContext();
    RecordingTrace trace;
    VELIDyadDbProvider_var handle = providers.Make("KRL");
    EXPECT_EQ(context.GetDyadDbProvider(handle), S_OK);
    EXPECT_TRUE(handle.IsNull());
    EXPECT_EQ(trace.TakeLines(), Lines{});
    EXPECT_EQ(providers.Alive(), 0);
}

TEST(VELDyadContextProvider, RefusesOtherParameterTypesAndTheNullHandleWithoutTrace) {
    FaultyProviders providers;
    RecordingTrace trace;
    for (const char* type : {"Path", "File", "Default", "database", "Database "}) {
        VELDyadContext context("A", "b", type);
        trace.TakeLines();
        EXPECT_EQ(context.SetDyadDbProvider(providers.Make("KRL")), E_FAIL) << type;
        EXPECT_EQ(trace.TakeLines(), Lines{}) << type;
    }
    VELDyadContext context = DatabaseContext();
    trace.TakeLines();
    EXPECT_EQ(context.SetDyadDbProvider(VELIDyadDbProvider_var()), E_FAIL);
    EXPECT_EQ(trace.TakeLines(), Lines{});
    EXPECT_EQ(providers.TakeCalls(), Lines{});
}

TEST(VELDyadContextProvider, HandsOnEveryCodeOfTheServiceUnchanged) {
    for (const VELResult code : {VELResult{7}, VELResult{-7}}) {
        FaultyProviders providers;
        VELDyadContext context = DatabaseContext();
        providers.FailAt(ProviderCall::CreateFrom, 1, {code, true, false});
        providers.FailAt(ProviderCall::CreateFrom, 2, {code, true, false});
        EXPECT_EQ(context.SetDyadDbProvider(providers.Make("KRL")), code);
        VELIDyadDbProvider_var handle;
        context.SetDyadDbProvider(providers.Make("KRL"));
        providers.ForgetFaults();
        EXPECT_EQ(context.SetDyadDbProvider(providers.Make("KRL")), S_OK);
        providers.FailAt(ProviderCall::CreateFrom, 4, {code, true, false});
        EXPECT_EQ(context.GetDyadDbProvider(handle), code);
    }
}

TEST(VELDyadContextProvider, AFailingServiceLeavesTheFormerProviderAndStillTracesTheLeave) {
    FaultyProviders providers;
    VELDyadContext context = DatabaseContext();
    context.SetDyadDbProvider(providers.Make("KRL"));
    providers.FailAt(ProviderCall::CreateFrom, 2);
    RecordingTrace trace;
    EXPECT_EQ(context.SetDyadDbProvider(providers.Make("HWB")), E_FAIL);
    EXPECT_EQ(trace.TakeLines(), (Lines{"ENTER VELDyadContext:SetDyadDbProvider",
                                        "LEAVE VELDyadContext:SetDyadDbProvider"}));
    VELIDyadDbProvider_var handle;
    EXPECT_EQ(context.GetDyadDbProvider(handle), S_OK);
    EXPECT_EQ(NameOf(handle), "KRL");
}

TEST(VELDyadContextProvider, AThrowingServiceCountsAsAFailure) {
    FaultyProviders providers;
    VELDyadContext context = DatabaseContext();
    providers.FailAt(ProviderCall::CreateFrom, 1, {S_OK, false, true});
    EXPECT_EQ(context.SetDyadDbProvider(providers.Make("KRL")), E_FAIL);
}

TEST(VELDyadContextProvider, AServiceThatMakesNoProviderLeavesTheContextWithoutOne) {
    FaultyProviders providers;
    VELDyadContext context = DatabaseContext();
    providers.GiveNullAt(ProviderCall::CreateFrom, 1);
    EXPECT_EQ(context.SetDyadDbProvider(providers.Make("KRL")), S_OK);
    VELIDyadDbProvider_var handle;
    EXPECT_EQ(context.GetDyadDbProvider(handle), S_OK);
    EXPECT_TRUE(handle.IsNull());
}

TEST(VELDyadContextProvider, CopiesShareTheVeryProviderAndReleaseItTogether) {
    FaultyProviders providers;
    {
        VELDyadContext source = DatabaseContext();
        source.SetDyadDbProvider(providers.Make("KRL"));
        std::optional<VELDyadContext> copy(source);
        VELDyadContext assigned("Other", "b", "Path");
        assigned = source;
        EXPECT_EQ(providers.TakeCalls(), Lines{"CreateFrom #1 -> #2"});
        EXPECT_EQ(providers.Alive(), 1);
        copy.reset();
        EXPECT_EQ(providers.Alive(), 1);
        // The provider came with the assignment, whatever the type was before.
        VELIDyadDbProvider_var handle;
        EXPECT_EQ(assigned.GetDyadDbProvider(handle), S_OK);
        EXPECT_EQ(NameOf(handle), "KRL");
    }
    EXPECT_EQ(providers.Alive(), 0);
}

} // namespace

} // namespace dyadctx::test
