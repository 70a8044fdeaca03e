// SPDX-License-Identifier: MIT
#include "collector/VELDyadCtxCollector.h"

#include "platform/VELDbContextEnvironment.h"
#include "support/ContextFile.h"
#include "support/FaultyProviders.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>
#include <memory>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

class TypeFiltersTest : public testing::Test {
protected:
    VELDyadContext* Declare(const char* name, const char* type) {
        auto* context = new VELDyadContext(name, "parameter", type);
        collector->AddContext(context, nullptr, 0);
        return context;
    }
    VELDyadContext* DeclareDatabase(const char* name, const char* connector) {
        VELDyadContext* context = Declare(name, "Database");
        EXPECT_EQ(context->SetDyadDbProvider(providers.Make(connector)), S_OK);
        providers.TakeCalls();
        return context;
    }
    void DeclareOneOfEach() {
        Declare("Default", "Default");
        Declare("File", "File");
        Declare("Path", "Path");
        Declare("Database", "Database");
        Declare("Other", "path");
    }
    int Type() {
        int type = -1;
        EXPECT_EQ(collector->GetContextType(type), S_OK);
        return type;
    }
    Lines PathView() {
        collector->SetContextPathType();
        return ViewOf(*collector);
    }
    Lines DatabaseView() {
        collector->SetContextDatabaseType({});
        return ViewOf(*collector);
    }
    Lines FileView() {
        collector->SetContextFileType();
        return ViewOf(*collector);
    }
    Lines NamesFromName(const char* provider) {
        VELListValVELUnicodeString names;
        EXPECT_EQ(collector->GetContextNamesFromDbProviderName(provider, names), S_OK);
        return Texts(names);
    }

    FaultyProviders providers;
    std::unique_ptr<VELDyadCtxCollector> collector{
        VELDyadCtxCollector::CreateCollectorFromScratch()};
};

// ---- Views --------------------------------------------------------------------------------------

TEST_F(TypeFiltersTest, OutsideTheDbEnvironmentThereAreTwoViews) {
    DeclareOneOfEach();
    EXPECT_EQ(collector->SetCtxTypeList(), S_OK);
    EXPECT_EQ(collector->GetNbPathCtxs(), 2);
    const DbEnvironment on(true);
    EXPECT_EQ(PathView(), (Lines{"Default", "Path"}));
    EXPECT_EQ(DatabaseView(), (Lines{"Default", "Database"}));
    EXPECT_EQ(FileView(), Lines{});
}

TEST_F(TypeFiltersTest, InTheDbEnvironmentPathContextsAreInAllThreeViews) {
    const DbEnvironment on(true);
    DeclareOneOfEach();
    EXPECT_EQ(collector->SetCtxTypeList(), S_OK);
    EXPECT_EQ(PathView(), (Lines{"Default", "Path"}));
    EXPECT_EQ(DatabaseView(), (Lines{"Default", "Path", "Database"}));
    EXPECT_EQ(FileView(), (Lines{"Default", "File", "Path"}));
    collector->SetContextAllType();
    EXPECT_EQ(collector->GetNbCtxs(), 5);
}

TEST_F(TypeFiltersTest, RunningTheListsAgainAddsEverythingOnceMore) {
    const DbEnvironment on(true);
    Declare("Path", "Path");
    collector->SetCtxTypeList();
    collector->SetCtxTypeList();
    EXPECT_EQ(PathView(), (Lines{"Path", "Path"}));
    EXPECT_EQ(DatabaseView(), (Lines{"Path", "Path"}));
    VELDyadContext* found = nullptr;
    int index = 0;
    EXPECT_EQ(collector->GetCtxFromName("Path", found, &index), S_OK);
    EXPECT_EQ(index, 1);
}

TEST_F(TypeFiltersTest, NullContextsKeepTheirPosition) {
    const DbEnvironment on(true);
    collector->AddContext(nullptr, nullptr, 0);
    VELDyadContext* path = Declare("Path", "Path");
    EXPECT_EQ(collector->SetCtxTypeList(), S_OK);
    collector->SetContextPathType();
    VELDyadContext* found = nullptr;
    EXPECT_EQ(collector->GetCtxAtIndex(1, found), S_OK);
    EXPECT_EQ(found, path);
}

// Answers the questions one after the other.
class ChangingEnvironment : public VELDbContextEnvironmentSource {
public:
    explicit ChangingEnvironment(std::vector<bool> answers) : answers_(std::move(answers)) {
        SetDbContextEnvironmentSource(this);
    }
    ~ChangingEnvironment() override { SetDbContextEnvironmentSource(nullptr); }
    bool IsActive() noexcept override { return answers_[asked_++ % answers_.size()]; }

private:
    std::vector<bool> answers_;
    std::size_t asked_ = 0;
};

TEST_F(TypeFiltersTest, TheEnvironmentIsAskedForEachContext) {
    for (const char* name : {"One", "Two", "Three", "Four"})
        Declare(name, "Path");
    {
        const ChangingEnvironment changing({true, false});
        collector->SetCtxTypeList();
    }
    const DbEnvironment on(true);
    EXPECT_EQ(FileView(), (Lines{"One", "Three"}));
}

TEST_F(TypeFiltersTest, SwitchingTracesTheTypeThereIsAfterwards) {
    RecordingTrace trace;
    EXPECT_EQ(collector->SetContextPathType(), S_OK);
    EXPECT_EQ(Type(), 0);
    {
        const DbEnvironment on(true);
        EXPECT_EQ(collector->SetContextPathType(), S_OK);
        EXPECT_EQ(Type(), 1);
        EXPECT_EQ(collector->SetContextFileType(), S_OK);
        EXPECT_EQ(Type(), 3);
        EXPECT_EQ(collector->SetContextDatabaseType(ListOf({})), S_OK);
        EXPECT_EQ(Type(), 2);
        EXPECT_EQ(collector->SetContextAllType(), S_OK);
        EXPECT_EQ(Type(), 0);
        EXPECT_EQ(collector->SetContextFileType(), S_OK);
    }
    EXPECT_EQ(collector->SetContextAllType(), S_OK);
    EXPECT_EQ(collector->SetContextDatabaseType(ListOf({"KRL", "HWB"})), S_OK);
    EXPECT_EQ(Type(), 3);
    EXPECT_EQ(trace.TakeLines(),
              (Lines{"LOG VELDyadCtxCollector:SetContextPathType _CtxType=<0>",
                     "LOG VELDyadCtxCollector:SetContextPathType _CtxType=<1>",
                     "LOG VELDyadCtxCollector:SetContextFileType _CtxType=<3>",
                     "LOG VELDyadCtxCollector:SetContextDatabaseType for <0> Providers",
                     "LOG VELDyadCtxCollector:SetContextAllType _CtxType=<0>",
                     "LOG VELDyadCtxCollector:SetContextFileType _CtxType=<3>",
                     "LOG VELDyadCtxCollector:SetContextAllType _CtxType=<3>",
                     "LOG VELDyadCtxCollector:SetContextDatabaseType for <2> Providers"}));
}

// ---- Narrowing the Database view ----------------------------------------------------------------

class NarrowingTest : public TypeFiltersTest {
protected:
    NarrowingTest() {
        DeclareDatabase("Krl", "KRL");
        Declare("Default", "Default");
        Declare("Path", "Path");
        Declare("Bare", "Database");
        DeclareDatabase("Hwb", "HWB");
        DeclareDatabase("Unnamed", "");
        collector->SetCtxTypeList();
    }
    VELResult Narrow(const std::vector<std::string>& names) {
        return collector->SetContextDatabaseType(ListOf(names));
    }

    const DbEnvironment on{true};
};

TEST_F(NarrowingTest, KeepsTheProvidersAskedForAndThePathContexts) {
    EXPECT_EQ(Narrow({"KRL", "none"}), S_OK);
    EXPECT_EQ(ViewOf(*collector), (Lines{"Krl", "Path"}));
    VELDyadContext* found = nullptr;
    EXPECT_EQ(collector->GetCtxFromName("Hwb", found), E_FAIL);
    int index = 0;
    EXPECT_EQ(collector->GetCtxFromName("Path", found, &index), S_OK);
    EXPECT_EQ(index, 2);
}

TEST_F(NarrowingTest, HappensOnceForGood) {
    EXPECT_EQ(Narrow({"KRL"}), S_OK);
    collector->SetContextAllType();
    EXPECT_EQ(Narrow({"HWB"}), S_OK);
    EXPECT_EQ(Type(), 2);
    EXPECT_EQ(ViewOf(*collector), (Lines{"Krl", "Path"}));
}

TEST_F(NarrowingTest, AnEmptyListSwitchesAndStillLeavesItToDo) {
    EXPECT_EQ(Narrow({}), S_OK);
    EXPECT_EQ(ViewOf(*collector), (Lines{"Krl", "Default", "Path", "Bare", "Hwb", "Unnamed"}));
    EXPECT_EQ(Narrow({"HWB"}), S_OK);
    EXPECT_EQ(ViewOf(*collector), (Lines{"Path", "Hwb"}));
}

TEST_F(NarrowingTest, AnEmptyNameAskedForMatchesNoProvider) {
    EXPECT_EQ(Narrow({""}), S_OK);
    EXPECT_EQ(ViewOf(*collector), Lines{"Path"});
}

TEST_F(NarrowingTest, ToNothingIsFinalToo) {
    const std::unique_ptr<VELDyadCtxCollector> other(
        VELDyadCtxCollector::CreateCollectorFromScratch());
    auto* only = new VELDyadContext("Default", "", "Default");
    other->AddContext(only, nullptr, 0);
    other->SetCtxTypeList();
    EXPECT_EQ(other->SetContextDatabaseType(ListOf({"KRL"})), S_OK);
    EXPECT_EQ(ViewOf(*other), Lines{});
    other->SetCtxTypeList();
    EXPECT_EQ(other->SetContextDatabaseType(ListOf({"KRL"})), S_OK);
    EXPECT_EQ(ViewOf(*other), Lines{"Default"});
}

TEST_F(NarrowingTest, FindsNamesInTheViewAlsoAfterASearchInTheWiderOne) {
    Narrow({});
    VELDyadContext* found = nullptr;
    int index = 0;
    EXPECT_EQ(collector->GetCtxFromName("Hwb", found, &index), S_OK);
    EXPECT_EQ(index, 5);
    Narrow({"HWB"});
    EXPECT_EQ(collector->GetCtxFromName("Hwb", found, &index), S_OK);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(collector->GetCtxFromName("Krl", found, &index), E_FAIL);
}

TEST_F(NarrowingTest, AFailingProviderEndsItWithItsCodeAndLeavesTheView) {
    struct Case {
        ProviderCall call;
        Fault fault;
        VELResult code;
    };
    const Case cases[] = {{ProviderCall::CreateFrom, {-5, false, false}, -5},
                          {ProviderCall::GetName, {-6, true, false}, -6},
                          {ProviderCall::GetName, {S_OK, false, true}, E_FAIL}};
    for (const Case& c : cases) {
        collector->SetContextAllType();
        providers.FailAt(c.call, providers.CountOf(c.call) + 2, c.fault);
        EXPECT_EQ(Narrow({"KRL"}), c.code);
        providers.ForgetFaults();
        EXPECT_EQ(Type(), 2);
        EXPECT_EQ(collector->GetNbCtxs(), 6);
    }
    EXPECT_EQ(Narrow({"KRL"}), S_OK);
    EXPECT_EQ(collector->GetNbCtxs(), 2);
}

TEST_F(NarrowingTest, ReturnsTheCodeOfTheLastProviderCall) {
    providers.FailAt(ProviderCall::GetName, 3, {5, true, false});
    EXPECT_EQ(Narrow({"KRL"}), 5);
    EXPECT_EQ(ViewOf(*collector), (Lines{"Krl", "Path"}));
}

TEST_F(NarrowingTest, TakesAProviderThatReturnsNoNameForOneWithoutName) {
    providers.FailAt(ProviderCall::GetName, 2, {S_OK, false, false});
    EXPECT_EQ(Narrow({"KRL", "HWB"}), S_OK);
    EXPECT_EQ(ViewOf(*collector), (Lines{"Krl", "Path"}));
}

TEST_F(NarrowingTest, SkipsPositionsOfDeletedContexts) {
    collector->DeleteContext("Unnamed");
    EXPECT_EQ(Narrow({"HWB"}), S_OK);
    EXPECT_EQ(ViewOf(*collector), (Lines{"Path", "Hwb"}));
}

// ---- Parameter types ----------------------------------------------------------------------------

TEST_F(TypeFiltersTest, AddsTheParameterTypesToTheList) {
    VELListValVELUnicodeString types = ListOf({"Path"});
    collector->GetListOfParamTypes(types);
    EXPECT_EQ(Texts(types), (Lines{"Path", "Path", "Default"}));
    const DbEnvironment on(true);
    VELListValVELUnicodeString more;
    collector->GetListOfParamTypes(more);
    EXPECT_EQ(Texts(more), (Lines{"File", "Path", "Database", "Default"}));
}

TEST_F(TypeFiltersTest, AsksTheEnvironmentTwiceForTheParameterTypes) {
    const ChangingEnvironment changing({false, true});
    VELListValVELUnicodeString types;
    collector->GetListOfParamTypes(types);
    EXPECT_EQ(Texts(types), (Lines{"Path", "Database", "Default"}));
}

// ---- Contexts of a provider ---------------------------------------------------------------------

TEST_F(TypeFiltersTest, NamesTheContextsOfAProviderWhateverTheView) {
    DeclareDatabase("One", "KRL");
    DeclareDatabase("", "KRL");
    DeclareDatabase("Two", "HWB");
    DeclareDatabase("Three", "KRL");
    VELListValVELUnicodeString names = ListOf({"before"});
    EXPECT_EQ(collector->GetContextNamesFromDbProvider(providers.Make("KRL"), names), S_OK);
    EXPECT_EQ(Texts(names), (Lines{"One", "Three"}));
}

TEST_F(TypeFiltersTest, AsksTheProviderOfTheContextAboutTheGivenOne) {
    DeclareDatabase("One", "KRL");
    providers.AnswerSameness("KRL", "HWB", true);
    providers.AnswerSameness("HWB", "KRL", false);
    VELListValVELUnicodeString names;
    EXPECT_EQ(collector->GetContextNamesFromDbProvider(providers.Make("HWB"), names), S_OK);
    EXPECT_EQ(Texts(names), Lines{"One"});
    EXPECT_EQ(collector->GetContextNamesFromDbProvider({}, names), S_OK);
    EXPECT_EQ(Texts(names), Lines{});
}

TEST_F(TypeFiltersTest, AContextWithoutProviderEndsTheQueryWithTheNullHandleError) {
    DeclareDatabase("One", "KRL");
    Declare("Path", "Path");
    DeclareDatabase("Two", "KRL");
    VELListValVELUnicodeString names = ListOf({"before"});
    const VELIDyadDbProvider_var asked = providers.Make("KRL");
    EXPECT_THROW(collector->GetContextNamesFromDbProvider(asked, names), VELNullHandleError);
    EXPECT_EQ(Texts(names), Lines{"One"});
}

TEST_F(TypeFiltersTest, AFailingProviderEndsTheQueryAndKeepsWhatWasFound) {
    for (const char* name : {"One", "Two", "Three"})
        DeclareDatabase(name, "KRL");
    const VELIDyadDbProvider_var asked = providers.Make("KRL");
    VELListValVELUnicodeString names;
    providers.FailAt(ProviderCall::IsSame, 2, {-4, true, false});
    EXPECT_EQ(collector->GetContextNamesFromDbProvider(asked, names), -4);
    EXPECT_EQ(Texts(names), Lines{"One"});
    providers.ForgetFaults();
    providers.FailAt(ProviderCall::IsSame, 5, {S_OK, false, true});
    EXPECT_EQ(collector->GetContextNamesFromDbProvider(asked, names), E_FAIL);
    EXPECT_EQ(Texts(names), (Lines{"One", "Two"}));
    providers.ForgetFaults();
    providers.FailAt(ProviderCall::CreateFrom, providers.CountOf(ProviderCall::CreateFrom) + 1,
                     {-9, false, false});
    EXPECT_EQ(collector->GetContextNamesFromDbProvider(asked, names), -9);
    EXPECT_EQ(Texts(names), Lines{});
    providers.FailAt(ProviderCall::IsSame, 8, {3, true, false});
    EXPECT_EQ(collector->GetContextNamesFromDbProvider(asked, names), 3);
}

TEST_F(TypeFiltersTest, FindsContextsByProviderNameInTheDatabaseView) {
    VELDyadContext* one = DeclareDatabase("One", "KRL");
    Declare("Path", "Path");
    DeclareDatabase("Two", "HWB");
    collector->SetCtxTypeList();
    VELListPtrVELDyadContext contexts;
    contexts.Append(nullptr);
    EXPECT_EQ(collector->GetContextsFromDbProviderName("KRL", contexts), S_OK);
    ASSERT_EQ(contexts.Size(), 1);
    EXPECT_EQ(contexts[1], one);
    EXPECT_EQ(collector->GetContextsFromDbProviderName("krl", contexts), S_OK);
    EXPECT_EQ(contexts.Size(), 0);
    // Narrowed to another provider, the context is out of reach, and a repeated one comes twice.
    const DbEnvironment on(true);
    collector->SetContextDatabaseType(ListOf({"HWB"}));
    EXPECT_EQ(NamesFromName("KRL"), Lines{});
    collector->SetCtxTypeList();
    EXPECT_EQ(NamesFromName("HWB"), (Lines{"Two", "Two"}));
}

TEST_F(TypeFiltersTest, TheEmptyNameFindsProvidersWithoutName) {
    DeclareDatabase("Unnamed", "");
    DeclareDatabase("", "");
    Declare("Bare", "Database");
    collector->SetCtxTypeList();
    EXPECT_EQ(NamesFromName(""), (Lines{"Unnamed", ""}));
}

TEST_F(TypeFiltersTest, AddsTheNamesOfAProviderNameWithoutEmptyingTheList) {
    DeclareDatabase("One", "KRL");
    collector->SetCtxTypeList();
    VELListValVELUnicodeString names = ListOf({"KRL"});
    EXPECT_EQ(collector->GetContextNamesFromDbProviderName(names[1], names), S_OK);
    EXPECT_EQ(collector->GetContextNamesFromDbProviderName("KRL", names), S_OK);
    EXPECT_EQ(Texts(names), (Lines{"KRL", "One", "One"}));
}

TEST_F(TypeFiltersTest, AFailureByProviderNameKeepsTheContextsButAddsNoNames) {
    DeclareDatabase("One", "KRL");
    DeclareDatabase("Two", "KRL");
    collector->SetCtxTypeList();
    providers.FailAt(ProviderCall::GetName, 2, {-3, true, false});
    VELListPtrVELDyadContext contexts;
    EXPECT_EQ(collector->GetContextsFromDbProviderName("KRL", contexts), -3);
    EXPECT_EQ(NamesOf(contexts), Lines{"One"});
    providers.ForgetFaults();
    providers.FailAt(ProviderCall::GetName, 4, {-3, true, false});
    VELListValVELUnicodeString names;
    EXPECT_EQ(collector->GetContextNamesFromDbProviderName("KRL", names), -3);
    EXPECT_EQ(names.Size(), 0);
    providers.ForgetFaults();
    providers.FailAt(ProviderCall::GetName, 6, {4, true, false});
    EXPECT_EQ(collector->GetContextNamesFromDbProviderName("KRL", names), 4);
    EXPECT_EQ(Texts(names), (Lines{"One", "Two"}));
}

TEST_F(TypeFiltersTest, ProviderQueriesMakeOneProviderPerEntryAndTraceOnlyThat) {
    DeclareDatabase("One", "KRL");
    collector->SetCtxTypeList();
    RecordingTrace trace;
    EXPECT_EQ(NamesFromName("KRL"), Lines{"One"});
    EXPECT_EQ(providers.TakeCalls(), (Lines{"CreateFrom #2 -> #3", "#3 GetName"}));
    EXPECT_EQ(trace.TakeLines(), (Lines{"ENTER VELDyadContext:GetDyadDbProvider",
                                        "LEAVE VELDyadContext:GetDyadDbProvider"}));
}

} // namespace

} // namespace dyadctx::test
