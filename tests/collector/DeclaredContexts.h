// SPDX-License-Identifier: MIT
// A collector from scratch that a test fills context by context.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/CollectorInternals.h"

#include <memory>
#include <string>

namespace dyadctx::test {

class DeclaredContexts {
public:
    DeclaredContexts() : collector_(VELDyadCtxCollector::CreateCollectorFromScratch()) {}

    VELDyadCtxCollector& Collector() { return *collector_; }

    // A declared context, valid unless the texts say otherwise.
    VELDyadContext& Declare(const std::string& name, const std::string& parameter = "somewhere",
                            const std::string& type = "Path");
    // A declared database context with a provider from the current provider services.
    VELDyadContext& DeclareDatabase(const std::string& name, const std::string& connector,
                                    const std::string& server = "");
    // An empty position among the declared contexts.
    void DeclareNull();
    // A friend or associated context that is known by its name only, as the reader enters it.
    VELDyadContext& NameFriend(VELDyadContext& owner, const std::string& name);
    VELDyadContext& NameAssociated(VELDyadContext& owner, const std::string& name);
    // A friend slot without context.
    static void AddNullFriend(VELDyadContext& owner);

    // What the collector's Check and SetFriendsAndAssociated answer; the message is kept.
    VELResult Check();
    VELResult Link();
    // What CheckContext returns.
    int CheckOne(VELDyadContext& context, int index);

    // The messages of the calls so far.
    std::string Message() const { return std::string(message_.AsView()); }
    void SetMessage(const std::string& text) { message_ = VELUnicodeString(text.c_str()); }

private:
    std::unique_ptr<VELDyadCtxCollector> collector_;
    VELUnicodeString message_;
};

// A provider of the current provider services.
VELIDyadDbProvider_var MakeProvider(const std::string& connector, const std::string& server = "");

} // namespace dyadctx::test
