// SPDX-License-Identifier: MIT
// What a host's code does to contexts while the library reads, links and writes them. Nothing that
// is gone may be touched, which the address sanitizer sees to where these tests run under it.
#include "collector/HostCallbacks.h"
#include "support/ContextFile.h"
#include "support/FaultyProviders.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <memory>
#include <optional>
#include <random>
#include <set>

namespace dyadctx::test {

namespace {

// ---- Writing, linking, views
// ---------------------------------------------------------------------

TEST_F(HostCallbacks, TheWriterWritesTheFriendsThatAreLeft) {
    const DbEnvironment on(true);
    const TemporaryFolder folder;
    owner.AddFriend(&first);
    owner.AddFriend(&second);
    owner.AddAssociatedContext(&second);
    VELUnicodeString message;
    {
        const CallbackTrace trace("GetAssociatedContext", [&] {
            if (Collector().GetAllNbCtxs() == 3) {
                Delete("first");
                AddFriends(owner, second);
            }
        });
        // One of the three contexts of the view is missing in the end.
        EXPECT_EQ(Collector().Stream(folder.PathOf("out.xml").c_str(), message), E_FAIL);
    }
    EXPECT_EQ(Collector().GetAllNbCtxs(), 2);
}

TEST_F(HostCallbacks, TheWriterWritesTheFriendsThereWereAtItsLine) {
    const DbEnvironment on(true);
    const TemporaryFolder folder;
    owner.AddFriend(&first);
    owner.AddAssociatedContext(&second);
    VELUnicodeString message;
    const std::string path = (folder.Path() / "out.xml").string();
    {
        const CallbackTrace trace("GetAssociatedContext", [&] { AddFriends(owner, second); });
        EXPECT_EQ(Collector().Stream(path.c_str(), message), S_OK);
    }
    const Creation read = CreateFromFile(path);
    ASSERT_NE(read.collector, nullptr) << read.message;
    VELDyadContext* again = nullptr;
    ASSERT_EQ(read.collector->GetCtxAtIndex(1, again), S_OK);
    EXPECT_EQ(FriendsOf(*again), Names{"first"});
}

TEST_F(HostCallbacks, LinkingGoesByTheFriendsThereWere) {
    contexts.NameFriend(owner, "first");
    contexts.NameFriend(owner, "second");
    const CallbackTrace trace("SetFriends[1]", [&] { AddFriends(owner, second); });
    EXPECT_EQ(contexts.Link(), S_OK) << contexts.Message();
    VELListPtrVELDyadContext friends;
    ASSERT_EQ(owner.GetFriends(friends), 22);
    EXPECT_EQ(friends[1], &first);
    EXPECT_EQ(friends[2], &second);
}

TEST_F(HostCallbacks, ViewsAreFilledAlsoWhenTheAnswerAssignsToTheContexts) {
    const ChangingEnvironment environment([&] {
        Rename(owner, "renamed");
        return true;
    });
    EXPECT_EQ(Collector().SetCtxTypeList(), S_OK);
    EXPECT_EQ(Collector().GetNbPathCtxs(), 3);
}

TEST_F(HostCallbacks, ANameIsLookedUpAsItWasWhenTheAnswerAssignsToItsContext) {
    {
        const DbEnvironment on(true);
        Collector().SetCtxTypeList();
        Collector().SetContextFileType();
    }
    const ChangingEnvironment environment([&] {
        Rename(owner, "renamed");
        return true;
    });
    VELDyadContext* found = nullptr;
    EXPECT_EQ(Collector().GetCtxFromName(owner.GetName(), found), E_FAIL);
}

// The number of questions decides what this environment returns.
TEST(ChangingEnvironmentReader, ReadsTheSameWithTraceAndWithout) {
    const std::string text = DocumentWith(
        R"(<Context Name="A" Parameter="p" ParameterType="Path"><Scenario/></Context>
           <Context Name="B" Parameter="q" ParameterType="Database" ConnectorName="KRL"/>
           <Context Name="C" Parameter="r" ParameterType="File">
             <CtxFriends><Context Name="A"/></CtxFriends></Context>
           <Context Name="D" Parameter="s" ParameterType="Path">
             <CtxAssociated><Context Name="A"/></CtxAssociated></Context>)");
    for (unsigned int seed = 0; seed < 200; ++seed) {
        std::array<Names, 2> results;
        for (const bool traced : {false, true}) {
            std::mt19937 random(seed);
            const ChangingEnvironment environment([&] { return random() % 4 != 0; });
            std::optional<RecordingTrace> trace;
            if (traced)
                trace.emplace();
            const Creation created = CreateFromText(text);
            Names& result = results[traced ? 1 : 0];
            result.push_back(created.message);
            if (created.collector != nullptr)
                result.push_back(std::to_string(created.collector->GetAllNbCtxs()));
        }
        EXPECT_EQ(results[0], results[1]) << seed;
    }
}

TEST(ChangingEnvironmentReader, AProviderReceivesAllServerDetailsOrNone) {
    const std::string text =
        DocumentWith(R"(<Context Name="V" Parameter="p" ParameterType="Database"
                                 ConnectorName="KRL" ServerName="s"/>)");
    std::set<std::string> received;
    int asked = 0;
    // On from the n-th question.
    for (int on = 1; on == 1 || asked >= on; ++on) {
        asked = 0;
        FaultyProviders providers;
        const ChangingEnvironment environment([&] { return ++asked >= on; });
        const Creation created = CreateFromText(text);
        for (const std::string& call : providers.TakeCalls()) {
            const std::size_t lists = call.find("SetServerDetails");
            if (lists != std::string::npos)
                received.insert(call.substr(lists));
        }
    }
    EXPECT_EQ(received, (std::set<std::string>{"SetServerDetails 0/0", "SetServerDetails 6/6"}));
}

// ---- Anything at any time
// ------------------------------------------------------------------------

// Contexts of a collector that a sink adds to, links, assigns and deletes at every line, except for
// the one that is under work.
class Disorder {
public:
    explicit Disorder(unsigned int seed) : random_(seed) {
        for (int i = 0; i < 6; ++i)
            Add();
    }

    void Disturb() {
        switch (random_() % 8) {
        case 0:
            Add();
            break;
        case 1:
            Delete();
            break;
        case 2:
            Any()->RemoveFriend(static_cast<int>(random_() % 3) + 1);
            break;
        case 3:
            Any()->AddAssociatedContext(Any());
            break;
        case 4:
            *Any() = VELDyadContext(NewName().c_str(), "somewhere", "Path");
            break;
        default:
            Any()->AddFriend(Any());
        }
    }
    void Work() {
        VELUnicodeString message;
        VELListPtrVELDyadContext friends;
        underWork_ = Any();
        switch (random_() % 3) {
        case 0:
            collector_->CheckContext(underWork_, message, 0);
            break;
        case 1:
            underWork_->GetFriends(friends);
            break;
        default:
            mayDeleteAny_ = true;
            collector_->DeleteContext(underWork_->GetName());
            mayDeleteAny_ = false;
        }
        underWork_ = nullptr;
        if (collector_->GetAllNbCtxs() < 3)
            Add();
    }
    VELDyadCtxCollector& Collector() { return *collector_; }

private:
    std::string NewName() { return LongName + std::to_string(random_() % 10); }
    void Add() {
        collector_->AddContext(new VELDyadContext(NewName().c_str(), "somewhere", "Path"), nullptr,
                               0);
    }
    VELDyadContext* Any() {
        VELDyadContext* context = nullptr;
        const auto count = static_cast<unsigned int>(collector_->GetAllNbCtxs());
        collector_->GetCtxAtIndex(static_cast<int>(random_() % count) + 1, context);
        return context;
    }
    void Delete() {
        VELDyadContext* context = nullptr;
        collector_->GetCtxFromName(Any()->GetName(), context);
        if (collector_->GetAllNbCtxs() > 2 && (mayDeleteAny_ || context != underWork_))
            collector_->DeleteContext(context->GetName());
    }

    std::mt19937 random_;
    std::unique_ptr<VELDyadCtxCollector> collector_{
        VELDyadCtxCollector::CreateCollectorFromScratch()};
    VELDyadContext* underWork_ = nullptr;
    bool mayDeleteAny_ = false;
};

TEST(HostCallbacksAtRandom, LeaveTheCollectorWhole) {
    const DbEnvironment on(true);
    const KeyCatalog catalog;
    for (unsigned int seed = 0; seed < 40; ++seed) {
        Disorder disorder(seed);
        {
            const CallbackTrace trace("", [&] { disorder.Disturb(); });
            for (int i = 0; i < 60; ++i)
                disorder.Work();
        }
        EXPECT_EQ(ViewOf(disorder.Collector()).size(),
                  static_cast<std::size_t>(disorder.Collector().GetAllNbCtxs()));
    }
}

} // namespace

} // namespace dyadctx::test
