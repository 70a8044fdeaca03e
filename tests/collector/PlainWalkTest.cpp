// SPDX-License-Identifier: MIT
// The library's results on generated collectors, compared with those of the plain walk.
#include "collector/PlainWalk.h"
#include "collector/DeclaredContexts.h"
#include "collector/detail/CheckRun.h"
#include "collector/detail/CollectorInternals.h"
#include "platform/VELDbContextEnvironment.h"
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace dyadctx::test {
namespace {

// Makes small collectors in which names, databases and links often meet.
class Generator {
public:
    explicit Generator(unsigned int seed) : random_(seed) {}

    PlainContexts Contexts() {
        // Some collectors are free of what breaks a rule at once, so that later rules are reached.
        tidy_ = Chance(50);
        PlainContexts contexts;
        const int count = Chance(10) ? 40 : Number(14);
        for (int i = 0; i < count; ++i) {
            if (!tidy_ && Chance(2))
                contexts.emplace_back();
            else
                contexts.emplace_back(Context(i));
        }
        return contexts;
    }

    bool Chance(int percent) { return Number(100) < percent; }

private:
    int Number(int bound) { return static_cast<int>(random_() % static_cast<unsigned int>(bound)); }

    std::string Name() {
        static const std::string names[] = {"A", "B", "C", "D", "E", "DYADIC", "", "F!"};
        return names[Number(tidy_ ? 5 : 8)];
    }

    PlainContext Context(int i) {
        static const std::string types[] = {"Path", "Database", "Database", "File", "Default", "X"};
        PlainContext context;
        context.name = tidy_ || Chance(60) ? (i < 5 ? std::string(1, static_cast<char>('A' + i))
                                                    : "N" + std::to_string(i))
                                           : Name();
        if (Chance(1))
            context.name = std::string(126, 'n');
        context.type = types[Number(tidy_ ? 4 : 6)];
        context.parameter = tidy_ || Chance(80) ? "p" : "";
        if (context.type == "Database" && Chance(90))
            context.provider = Provider();
        const int friends = Chance(10) ? 30 : Number(4);
        for (int k = 0; k < friends; ++k)
            context.friends.push_back({Name(), 0});
        if (Chance(40))
            context.associated = PlainLink{Name(), 0};
        return context;
    }

    PlainProvider Provider() {
        static const std::string connectors[] = {"ORB1", "TN5", "STEP"};
        static const std::string servers[] = {"s", "t", "u", "v", "w", ""};
        return {connectors[Number(3)], servers[Number(6)]};
    }

    std::mt19937 random_;
    bool tidy_ = false;
};

std::unique_ptr<DeclaredContexts> Enter(const PlainContexts& plain) {
    auto contexts = std::make_unique<DeclaredContexts>();
    for (const std::optional<PlainContext>& place : plain) {
        if (!place) {
            contexts->DeclareNull();
            continue;
        }
        VELDyadContext& context = contexts->Declare(place->name, place->parameter, place->type);
        if (place->provider)
            context.SetDyadDbProvider(
                MakeProvider(place->provider->connector, place->provider->server));
        for (const PlainLink& link : place->friends)
            contexts->NameFriend(context, link.name);
        if (place->associated)
            contexts->NameAssociated(context, place->associated->name);
    }
    return contexts;
}

// Compares every context, also after the first invalid one: alone, and all within one run.
void CompareEachContext(DeclaredContexts& contexts, PlainWalk& plain) {
    VELDyadCtxCollector& collector = contexts.Collector();
    VELUnicodeString message;
    MessageReporter reporter(message);
    CheckRun run(collector, CheckExtent::AllContexts, reporter);
    for (int pos = 1; pos <= collector.GetAllNbCtxs(); ++pos) {
        VELDyadContext* context = CollectorInternals::MainContexts(collector)[pos];
        if (context == nullptr)
            continue;
        plain.ClearMessage();
        contexts.SetMessage("");
        message = VELUnicodeString();
        const bool valid = plain.CheckOne(pos);
        EXPECT_EQ(contexts.CheckOne(*context, pos) == 1, valid) << "position " << pos;
        EXPECT_EQ(contexts.Message(), plain.Message()) << "position " << pos;
        EXPECT_EQ(run.CheckContext(context, pos), valid) << "position " << pos;
        EXPECT_EQ(Text(message), plain.Message()) << "position " << pos;
    }
}

struct Tally {
    int linked = 0;
    int valid = 0;
    int invalid = 0;
};

void CompareCollector(unsigned int seed, Tally& tally) {
    Generator generator(seed);
    const DbEnvironment environment(generator.Chance(70));
    PlainWalk plain(generator.Contexts(),
                    IsDbContextEnvironmentActivated() == VELUnicodeString("1"));
    const std::unique_ptr<DeclaredContexts> contexts = Enter(plain.Contexts());

    const bool linked = plain.Link();
    EXPECT_EQ(contexts->Link() == S_OK, linked);
    EXPECT_EQ(contexts->Message(), plain.Message());

    const bool valid = plain.Check();
    EXPECT_EQ(contexts->Check() == S_OK, valid);
    EXPECT_EQ(contexts->Message(), plain.Message());
    CompareEachContext(*contexts, plain);
    tally.linked += linked ? 1 : 0;
    (valid ? tally.valid : tally.invalid) += 1;
}

TEST(PlainWalkComparison, FindsTheSameMessagesOnGeneratedCollectors) {
    const KeyCatalog catalog;
    Tally tally;
    for (unsigned int seed = 1; seed <= 3000 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        CompareCollector(seed, tally);
    }
    // The generator must reach all kinds of outcome for the comparison to mean anything.
    EXPECT_GT(tally.linked, 300);
    EXPECT_GT(tally.valid, 50);
    EXPECT_GT(tally.invalid, 1000);
}

TEST(PlainWalkComparison, FindsTheSameMessagesWithTheTraceOn) {
    const KeyCatalog catalog;
    const RecordingTrace trace;
    Tally tally;
    for (unsigned int seed = 1; seed <= 300 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        CompareCollector(seed, tally);
    }
    EXPECT_GT(trace.Lines().size(), 10000U);
}

} // namespace
} // namespace dyadctx::test
