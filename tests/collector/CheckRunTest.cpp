// SPDX-License-Identifier: MIT
#include "collector/detail/CheckRun.h"
#include "collector/DeclaredContexts.h"
#include "collector/detail/CollectorInternals.h"
#include "support/ContextFile.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace dyadctx::test {
namespace {

// What a finding says, with the contexts by name ("-" for none).
struct Said {
    std::string key;
    std::vector<std::string> parameters;
    std::string context;
    std::string other;
    std::string method;

    bool operator==(const Said&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Said& said) {
    out << said.key << "(";
    for (const std::string& parameter : said.parameters)
        out << parameter << "|";
    return out << ") of " << said.context << " and " << said.other << " by " << said.method;
}

class CollectingReporter final : public FaultReporter {
public:
    void Report(const Fault& fault) override {
        Said said{fault.key, {}, NameOf(fault.context), NameOf(fault.other), fault.method};
        for (int i = 0; i < fault.parameterCount; ++i)
            said.parameters.push_back(Text(fault.parameters[static_cast<std::size_t>(i)]));
        said_.insert(said_.end(), static_cast<std::size_t>(fault.times), said);
    }

    const std::vector<Said>& All() const { return said_; }

private:
    static std::string NameOf(const VELDyadContext* context) {
        return context == nullptr ? "-" : Text(context->GetName());
    }

    std::vector<Said> said_;
};

class CheckRunFindings : public testing::Test {
protected:
    // Checks every declared context, also after one that is not valid.
    std::vector<Said> CheckAll() {
        VELDyadCtxCollector& collector = contexts_.Collector();
        CollectingReporter reporter;
        CheckRun run(collector, CheckExtent::AllContexts, reporter);
        for (int pos = 1; pos <= collector.GetAllNbCtxs(); ++pos)
            run.CheckContext(CollectorInternals::MainContexts(collector)[pos], pos);
        return reporter.All();
    }

    static constexpr const char* Check = "VELDyadCtxCollector::Check";
    DbEnvironment environment_{true};
    DeclaredContexts contexts_;
};

TEST_F(CheckRunFindings, GoBeyondTheFirstInvalidContextAndNameBothParties) {
    contexts_.Declare("A!", "p");
    contexts_.Declare("Twice", "p");
    contexts_.DeclareDatabase("One", "ORB1", "s");
    contexts_.Declare("Twice", "");
    contexts_.DeclareDatabase("Two", "ORB1", "s");

    EXPECT_EQ(CheckAll(),
              (std::vector<Said>{
                  {"Ctx.Check.CtxNameWithInvalidChar", {}, "A!", "-", Check},
                  {"Ctx.Check.CtxAlreadyDefined", {"Twice"}, "Twice", "Twice", Check},
                  {"Ctx.Check.CtxDatabaseAlreadyDefined", {"One", "Two"}, "One", "Two", Check},
                  {"Ctx.Check.CtxEmptyParam", {"Twice"}, "Twice", "-", Check},
              }));
}

TEST_F(CheckRunFindings, NameFriendsAndAssociatedContexts) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    a.AddFriend(&b);
    contexts_.NameFriend(a, "");
    b.AddFriend(&a);
    b.AddAssociatedContext(&b);
    DeclaredContexts::AddNullFriend(b);

    EXPECT_EQ(CheckAll(), (std::vector<Said>{
                              {"Ctx.Check.CtxAndFriendWithCyclicity", {"A", "B"}, "A", "B", Check},
                              {"Ctx.Parse.CtxFriendNoName", {"A"}, "A", "", Check},
                              {"Ctx.Check.CtxAndFriendWithCyclicity", {"B", "A"}, "B", "A", Check},
                              {"Ctx.Collector.InternalError", {}, "B", "-", Check},
                              {"Ctx.Check.CtxAndAssocWithSameName", {"B", "B"}, "B", "B", Check},
                              {"Ctx.Check.CtxAndAssocWithCyclicity", {"B", "B"}, "B", "B", Check},
                          }));
}

TEST_F(CheckRunFindings, OfTheDefaultContextCarryTheirOwnMethod) {
    contexts_.Declare("DYADIC", "x", "Path");

    const char* method = "VELDyadCtxCollector::CheckDefaultContext";
    EXPECT_EQ(CheckAll(),
              (std::vector<Said>{
                  {"Ctx.Check.CtxDefaultInvalidParamType",
                   {"DYADIC", "Path", "Default"},
                   "DYADIC",
                   "-",
                   method},
                  {"Ctx.Check.CtxDefaultInvalidParam", {"DYADIC", "x"}, "DYADIC", "-", method},
              }));
}

} // namespace
} // namespace dyadctx::test
