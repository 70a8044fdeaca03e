// SPDX-License-Identifier: MIT
// Every operation with one of its allocations failing: it refuses and leaves things as they were.
#include "collector/detail/CollectorInternals.h"
#include "context/detail/ContextAccess.h"
#include "support/ContextFile.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>
#include <memory>
#include <new>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;
using CollectorPtr = std::unique_ptr<VELDyadCtxCollector>;

const VELUnicodeString Target("Target, a name of some length");

// Whether the operation met the failing allocation.
template<class Operation>
bool FailsAt(int number, Operation operation) {
    FailingAllocation failing(number);
    operation();
    return failing.HasFailed();
}

void Declare(VELDyadCtxCollector& collector, const VELUnicodeString& name, const char* type) {
    auto* context = new VELDyadContext(name, "parameter", type);
    ASSERT_EQ(collector.AddContext(context, nullptr, 0), S_OK);
}

// A Path, a Default and a File context, with their views, and two scenarios.
CollectorPtr SmallCollector() {
    CollectorPtr collector(VELDyadCtxCollector::CreateCollectorFromScratch());
    Declare(*collector, Target, "Path");
    Declare(*collector, "Default", "Default");
    Declare(*collector, "File", "File");
    collector->SetCtxTypeList();
    collector->AddScenario("A channel of some length", "A context of some length",
                           "A profile of some length", "An identifier of some length", "o", "v");
    collector->AddScenario("Channel", "Context", "Profile", "Id", "o", "v");
    return collector;
}

TEST(CollectorMemory, FromScratchReturnsNull) {
    // What a thread has of its own is noted for its end, which may go without memory.
    const CollectorPtr first(VELDyadCtxCollector::CreateCollectorFromScratch());
    const int failures = ForEachAllocation([](int number) {
        CollectorPtr collector;
        const bool failed = FailsAt(
            number, [&] { collector.reset(VELDyadCtxCollector::CreateCollectorFromScratch()); });
        EXPECT_EQ(collector == nullptr, failed);
        return failed;
    });
    EXPECT_GE(failures, 2);
}

TEST(CollectorMemory, AddContextRefusesADeclaredContextAndLeavesItToTheCaller) {
    const int failures = ForEachAllocation([](int number) {
        CollectorPtr collector(VELDyadCtxCollector::CreateCollectorFromScratch());
        auto context = std::make_unique<VELDyadContext>(Target, "", "Path");
        VELResult added = S_OK;
        const bool failed =
            FailsAt(number, [&] { added = collector->AddContext(context.get(), nullptr, 0); });
        EXPECT_EQ(added, failed ? E_FAIL : S_OK);
        EXPECT_EQ(collector->GetAllNbCtxs(), failed ? 0 : 1);
        EXPECT_EQ(CollectorInternals::MainContexts(*collector).Size(), failed ? 0 : 1);
        EXPECT_EQ(CollectorInternals::Contexts(*collector).Size(), failed ? 0 : 1);
        EXPECT_EQ(ContextAccess::WasRegistered(*context), !failed);
        if (!failed)
            static_cast<void>(context.release());
        return failed;
    });
    EXPECT_GE(failures, 2);
}

TEST(CollectorMemory, AddContextKnowsARegisteredContextAlsoWithoutMemory) {
    ForEachAllocation([](int number) {
        CollectorPtr collector = SmallCollector();
        VELDyadContext* context = CollectorInternals::MainContexts(*collector)[1];
        const bool failed = FailsAt(number, [&] { collector->AddContext(context, nullptr, 0); });
        EXPECT_EQ(CollectorInternals::Contexts(*collector).Size(), 3);
        EXPECT_EQ(collector->GetAllNbCtxs(), CollectorInternals::MainContexts(*collector).Size());
        return failed;
    });
}

TEST(CollectorMemory, AddContextOwnsAFriendAsSoonAsItIsRegistered) {
    ForEachAllocation([](int number) {
        CollectorPtr collector = SmallCollector();
        VELDyadContext* parent = CollectorInternals::MainContexts(*collector)[1];
        auto context = std::make_unique<VELDyadContext>("Friend", "", "Path");
        VELResult added = S_OK;
        const bool failed =
            FailsAt(number, [&] { added = collector->AddContext(context.get(), parent, 0); });
        EXPECT_EQ(added, failed ? E_FAIL : S_OK);
        EXPECT_EQ(ContextAccess::Friends(*parent).Size(), failed ? 0 : 1);
        const bool isOwned = ContextAccess::WasRegistered(*context);
        EXPECT_EQ(CollectorInternals::Contexts(*collector).Size(), isOwned ? 4 : 3);
        if (isOwned)
            static_cast<void>(context.release());
        return failed;
    });
}

TEST(CollectorMemory, DeleteContextNeedsNone) {
    const int failures = ForEachAllocation([](int number) {
        CollectorPtr collector = SmallCollector();
        VELDyadContext* target = CollectorInternals::MainContexts(*collector)[1];
        VELDyadContext* holder = CollectorInternals::MainContexts(*collector)[2];
        for (int i = 0; i < 3; ++i)
            holder->AddFriend(target);
        holder->AddAssociatedContext(target);
        VELResult deleted = E_FAIL;
        const bool failed = FailsAt(number, [&] { deleted = collector->DeleteContext(Target); });
        EXPECT_EQ(deleted, S_OK);
        EXPECT_EQ(ViewOf(*collector), (Lines{"Default", "File"}));
        EXPECT_EQ(ContextAccess::Friends(*holder).Size(), 0);
        EXPECT_EQ(ContextAccess::Associated(*holder), nullptr);
        return failed;
    });
    EXPECT_GE(failures, 1);
}

TEST(CollectorMemory, NamesAreFoundWithoutMemory) {
    const DbEnvironment on(true);
    for (const int type : {AllContexts, PathContexts, DatabaseContexts, FileContexts}) {
        const int failures = ForEachAllocation([type](int number) {
            CollectorPtr collector = SmallCollector();
            CollectorInternals::Type(*collector) = type;
            VELDyadContext* found = nullptr;
            VELDyadContext* none = nullptr;
            VELResult code = E_FAIL;
            VELResult missing = S_OK;
            const VELUnicodeString absent("Absent");
            const bool failed = FailsAt(number, [&] {
                code = collector->GetCtxFromName(Target, found);
                missing = collector->GetCtxFromName(absent, none);
            });
            EXPECT_EQ(code, S_OK);
            EXPECT_EQ(found, CollectorInternals::MainContexts(*collector)[1]);
            EXPECT_EQ(missing, E_FAIL);
            EXPECT_EQ(collector->GetCtxFromName(Target, found), S_OK);
            return failed;
        });
        EXPECT_GE(failures, 1) << type;
    }
}

TEST(CollectorMemory, AScenarioIsKeptWholeOrNotAtAll) {
    const VELUnicodeString text("A text that does not fit into a short one");
    const int failures = ForEachAllocation([&](int number) {
        CollectorPtr collector = SmallCollector();
        VELResult added = S_FALSE;
        const bool failed = FailsAt(
            number, [&] { added = collector->AddScenario(text, text, text, text, text, text); });
        EXPECT_EQ(added, S_OK);
        const int rows = failed ? 2 : 3;
        EXPECT_EQ(collector->GetNbScenarios(), rows);
        for (const auto& list :
             {CollectorInternals::Channels(*collector),
              CollectorInternals::ChannelContexts(*collector),
              CollectorInternals::Profiles(*collector), CollectorInternals::Ids(*collector),
              CollectorInternals::OptionNames(*collector),
              CollectorInternals::OptionValues(*collector), CollectorInternals::Keys(*collector)})
            EXPECT_EQ(list.Size(), rows);
        return failed;
    });
    EXPECT_GE(failures, 7);
}

// Runs a query with each of its allocations failing. It returns E_FAIL with both lists empty or as
// they were, or what it returns otherwise.
template<class Query>
int ForEachFailingQuery(const Lines& expected, Query query) {
    return ForEachAllocation([&](int number) {
        CollectorPtr collector = SmallCollector();
        VELListValVELUnicodeString first = ListOf({"before"});
        VELListValVELUnicodeString second = ListOf({"before"});
        VELResult code = S_OK;
        const bool failed = FailsAt(number, [&] { code = query(*collector, first, second); });
        EXPECT_EQ(code, failed ? E_FAIL : S_OK);
        EXPECT_EQ(first.Size(), second.Size());
        if (!failed)
            EXPECT_EQ(Texts(first), expected);
        else
            EXPECT_TRUE(first.Size() == 0 || Texts(first) == Lines{"before"});
        EXPECT_EQ(query(*collector, first, second), S_OK);
        EXPECT_EQ(Texts(first), expected);
        return failed;
    });
}

TEST(CollectorMemory, ScenarioQueriesRefuse) {
    const VELUnicodeString context("A context of some length");
    const VELUnicodeString profile("A profile of some length");
    const VELListValVELUnicodeString ids = ListOf({"An identifier of some length"});
    EXPECT_GE(ForEachFailingQuery({"A channel of some length"},
                                  [&](VELDyadCtxCollector& collector, auto& first, auto& second) {
                                      return collector.GetExchangeChannelfromScenario(ids, first,
                                                                                      second);
                                  }),
              4);
    EXPECT_GE(ForEachFailingQuery({"An identifier of some length"},
                                  [&](VELDyadCtxCollector& collector, auto& first, auto& second) {
                                      return collector.GetProfilefromExchangeChannel(context, ids,
                                                                                     first, second);
                                  }),
              4);
    EXPECT_GE(ForEachFailingQuery({"o"},
                                  [&](VELDyadCtxCollector& collector, auto& first, auto& second) {
                                      return collector.GetOptionsfromExchangeProfile(
                                          context, profile, first, second);
                                  }),
              3);
}

TEST(CollectorMemory, TheListsOfTheViewsAreFilledWholeOrNotAtAll) {
    const DbEnvironment on(true);
    const int failures = ForEachAllocation([](int number) {
        CollectorPtr collector = SmallCollector();
        VELResult code = S_OK;
        const bool failed = FailsAt(number, [&] { code = collector->SetCtxTypeList(); });
        EXPECT_EQ(code, failed ? E_FAIL : S_OK);
        EXPECT_EQ(CollectorInternals::PathIndexes(*collector).Size(), failed ? 2 : 4);
        EXPECT_EQ(CollectorInternals::DatabaseIndexes(*collector).Size(), failed ? 2 : 4);
        EXPECT_EQ(CollectorInternals::FileIndexes(*collector).Size(), failed ? 3 : 6);
        return failed;
    });
    EXPECT_GE(failures, 3);
}

TEST(CollectorMemory, NarrowingRefusesAndKeepsViewAndType) {
    const DbEnvironment on(true);
    const VELListValVELUnicodeString names = ListOf({"KRL", "HWB"});
    const int failures = ForEachAllocation([&](int number) {
        CollectorPtr collector = SmallCollector();
        VELResult code = S_OK;
        const bool failed =
            FailsAt(number, [&] { code = collector->SetContextDatabaseType(names); });
        EXPECT_EQ(code, failed ? E_FAIL : S_OK);
        EXPECT_EQ(CollectorInternals::Type(*collector), failed ? 0 : 2);
        EXPECT_EQ(CollectorInternals::DatabaseFilterDone(*collector), !failed);
        EXPECT_EQ(CollectorInternals::DatabaseIndexes(*collector).Size(), failed ? 2 : 1);
        return failed;
    });
    EXPECT_GE(failures, 3);
}

TEST(CollectorMemory, TheParameterTypesAreAddedAllOrNone) {
    const DbEnvironment on(true);
    CollectorPtr collector = SmallCollector();
    const int failures = ForEachAllocation([&](int number) {
        VELListValVELUnicodeString types = ListOf({"before"});
        const bool failed = FailsAt(number, [&] { collector->GetListOfParamTypes(types); });
        EXPECT_EQ(types.Size(), failed ? 1 : 5);
        return failed;
    });
    EXPECT_GE(failures, 1);
}

TEST(CollectorMemory, ProviderQueriesRefuse) {
    const DbEnvironment on(true);
    CollectorPtr collector(VELDyadCtxCollector::CreateCollectorFromScratch());
    VELDyadCtxCollector* pointer = collector.get();
    VELUnicodeString message;
    ASSERT_EQ(VELDyadCtxCollector::AddCADTransitionContext(pointer, message), S_OK);
    VELIDyadDbProvider_var provider;
    ASSERT_EQ(CollectorInternals::MainContexts(*collector)[1]->GetDyadDbProvider(provider), S_OK);
    const int byProvider = ForEachAllocation([&](int number) {
        VELListValVELUnicodeString names;
        VELResult code = S_OK;
        const bool failed = FailsAt(
            number, [&] { code = collector->GetContextNamesFromDbProvider(provider, names); });
        EXPECT_EQ(code, failed ? E_FAIL : S_OK);
        EXPECT_EQ(names.Size() == 3, !failed);
        return failed;
    });
    EXPECT_GE(byProvider, 3);
    const VELUnicodeString connector("ORB1");
    const int byName = ForEachAllocation([&](int number) {
        VELListValVELUnicodeString names;
        VELResult code = S_OK;
        const bool failed = FailsAt(
            number, [&] { code = collector->GetContextNamesFromDbProviderName(connector, names); });
        EXPECT_EQ(code, failed ? E_FAIL : S_OK);
        EXPECT_EQ(names.Size(), failed ? 0 : 3);
        return failed;
    });
    EXPECT_GE(byName, 4);
}

TEST(CollectorMemory, ATransitionContextIsAddedWholeOrNotAtAll) {
    const DbEnvironment on(true);
    const int failures = ForEachAllocation([](int number) {
        CollectorPtr collector = SmallCollector();
        VELDyadCtxCollector* pointer = collector.get();
        VELUnicodeString message;
        VELResult code = S_OK;
        const bool failed = FailsAt(
            number, [&] { code = VELDyadCtxCollector::AddCADTransitionContext(pointer, message); });
        const int added = collector->GetAllNbCtxs() - 3;
        EXPECT_EQ(added == 3 && code == S_OK, !failed);
        EXPECT_GE(added, 2);
        for (int pos = 4; pos <= collector->GetAllNbCtxs(); ++pos)
            EXPECT_FALSE(
                ContextAccess::KeptProvider(*CollectorInternals::MainContexts(*collector)[pos])
                    .IsNull());
        return failed;
    });
    EXPECT_GE(failures, 10);
}

TEST(CollectorMemory, ACopyIsWholeOrItsConstructorThrows) {
    CollectorPtr source = SmallCollector();
    const CollectorPtr empty(VELDyadCtxCollector::CreateCollectorFromScratch());
    const int failures = ForEachAllocation([&](int number) {
        CollectorPtr copy;
        bool threw = false;
        const bool failed = FailsAt(number, [&] {
            try {
                copy = std::make_unique<VELDyadCtxCollector>(*source);
            } catch (const std::bad_alloc&) {
                threw = true;
            }
        });
        EXPECT_EQ(threw, failed);
        EXPECT_EQ(copy == nullptr, failed);
        if (copy != nullptr) {
            EXPECT_EQ(copy->GetNbCtxs(), 3);
            *copy = *empty;
        }
        return failed;
    });
    EXPECT_GE(failures, 10);
}

TEST(CollectorMemory, AnAssignmentIsWholeOrThrows) {
    CollectorPtr source = SmallCollector();
    const CollectorPtr empty(VELDyadCtxCollector::CreateCollectorFromScratch());
    const int failures = ForEachAllocation([&](int number) {
        CollectorPtr target(VELDyadCtxCollector::CreateCollectorFromScratch());
        target->AddScenario("c", "c", "p", "i", "o", "v");
        bool threw = false;
        const bool failed = FailsAt(number, [&] {
            try {
                *target = *source;
            } catch (const std::bad_alloc&) {
                threw = true;
            }
        });
        EXPECT_EQ(threw, failed);
        EXPECT_EQ(target->GetNbCtxs(), failed ? 0 : 3);
        EXPECT_EQ(CollectorInternals::Channels(*target).Size(), failed ? 1 : 2);
        EXPECT_EQ(CollectorInternals::Keys(*target).Size(), failed ? 1 : 2);
        *target = *empty;
        return failed;
    });
    EXPECT_GE(failures, 10);
}

} // namespace

} // namespace dyadctx::test
