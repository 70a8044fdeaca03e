// SPDX-License-Identifier: MIT
// The private side of a collector, for its own sources and for tests and benchmarks.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/CollectorAccess.h"

#include <tuple>

namespace dyadctx {

struct CollectorInternals {
    using Collector = VELDyadCtxCollector;
    using Texts = VELListValVELUnicodeString;

    // ---- Fields --------------------------------------------------------------------------------
    static VELListPtrVELDyadContext& Contexts(Collector& c) noexcept { return c._Contexts; }
    static VELListPtrVELDyadContext& MainContexts(Collector& c) noexcept { return c._MainContexts; }
    static VELRawCollint& PathIndexes(Collector& c) noexcept { return c._PathCtxIndexes; }
    static VELRawCollint& DatabaseIndexes(Collector& c) noexcept { return c._DatabaseCtxIndexes; }
    static VELRawCollint& FileIndexes(Collector& c) noexcept { return c._FileCtxIndexes; }
    static VELUnicodeString& XmlFile(Collector& c) noexcept { return c._XMLFile; }
    static int& Type(Collector& c) noexcept { return c._CtxType; }
    static bool& DatabaseFilterDone(Collector& c) noexcept { return c._DatabaseFilterDone; }
    static const Texts& Channels(const Collector& c) noexcept { return c._ScenarioChannels; }
    static const Texts& ChannelContexts(const Collector& c) noexcept {
        return c._ScenarioChannelContexts;
    }
    static const Texts& Profiles(const Collector& c) noexcept { return c._ScenarioProfiles; }
    static const Texts& Ids(const Collector& c) noexcept { return c._ScenarioIds; }
    static const Texts& OptionNames(const Collector& c) noexcept { return c._ScenarioOptionNames; }
    static const Texts& OptionValues(const Collector& c) noexcept {
        return c._ScenarioOptionValues;
    }
    static const Texts& Keys(const Collector& c) noexcept { return c._ScenarioKeys; }
    static CollectorState& State(Collector& c) noexcept { return *c.state_; }

    // All fields that are copied, in declared order.
    template<class AnyCollector>
    static auto CopiedFields(AnyCollector& c) {
        return std::tie(c._Contexts, c._MainContexts, c._PathCtxIndexes, c._DatabaseCtxIndexes,
                        c._XMLFile, c._NbCtxs, c._CtxType, c._IsDefault, c._DatabaseFilterDone,
                        c._FileCtxIndexes, c._ScenarioChannels, c._ScenarioChannelContexts,
                        c._ScenarioProfiles, c._ScenarioIds, c._ScenarioOptionNames,
                        c._ScenarioOptionValues, c._ScenarioKeys);
    }

    // ---- Private operations --------------------------------------------------------------------
    static VELResult Check(Collector& c, VELUnicodeString& message) { return c.Check(message); }
    static unsigned char CheckDefaultContext(Collector& c, const VELUnicodeString& name,
                                             const VELUnicodeString& parameter,
                                             const VELUnicodeString& parameterType,
                                             VELUnicodeString& message) {
        return c.CheckDefaultContext(name, parameter, parameterType, message);
    }
    static unsigned char IsAValidParamType(Collector& c, const VELUnicodeString& parameterType) {
        return c.IsAValidParamType(parameterType);
    }
    static unsigned char FindMatchingDatabase(Collector& c, int index, VELDyadContext* context,
                                              VELDyadContext** match) {
        return c.FindMatchingDatabase(index, context, match);
    }
    static VELResult SetFriendsAndAssociated(Collector& c, VELUnicodeString& message) {
        return c.SetFriendsAndAssociated(message);
    }
    static VELResult CheckXMLFile(const VELUnicodeString& file) {
        return Collector::CheckXMLFile(file);
    }
    static void DeleteCollectorAtCreate(Collector*& collector, const char* step,
                                        VELUnicodeString& message) {
        Collector::DeleteCollectorAtCreate(collector, step, message);
    }
    static unsigned char LogError(const char* method, const char* key, VELUnicodeString& message,
                                  const VELUnicodeString* parameters, int count, int newLine) {
        return Collector::LogError(method, key, message, parameters, count, newLine);
    }
};

} // namespace dyadctx
