// What the rest of the library, and the tests, may do with a collector beyond its public
// operations.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/CollectorState.h"

namespace dyadctx {

struct CollectorAccess {
    using Collector = VELDyadCtxCollector;

    // The caller owns the collector. Throws std::bad_alloc.
    static Collector* New(const VELUnicodeString& file, unsigned char isDefault) {
        return new Collector(file, isDefault);
    }

    // ---- Fields --------------------------------------------------------------------------------
    static VELListPtrVELDyadContext& Contexts(Collector& c) noexcept { return c._Contexts; }
    static VELListPtrVELDyadContext& MainContexts(Collector& c) noexcept { return c._MainContexts; }
    static VELRawCollint& PathIndexes(Collector& c) noexcept { return c._PathCtxIndexes; }
    static VELRawCollint& DatabaseIndexes(Collector& c) noexcept { return c._DatabaseCtxIndexes; }
    static VELRawCollint& FileIndexes(Collector& c) noexcept { return c._FileCtxIndexes; }
    static VELUnicodeString& XmlFile(Collector& c) noexcept { return c._XMLFile; }
    static int& Count(Collector& c) noexcept { return c._NbCtxs; }
    static int& Type(Collector& c) noexcept { return c._CtxType; }
    static bool& IsDefault(Collector& c) noexcept { return c._IsDefault; }
    static bool& DatabaseFilterDone(Collector& c) noexcept { return c._DatabaseFilterDone; }
    using Texts = VELListValVELUnicodeString;
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
    static CollectorIndex& Index(Collector& c) noexcept { return c.state_->index; }
    static ContextWatches& Watches(Collector& c) noexcept { return c.state_->watches; }

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
    static Collector* CreateCollectorFromXMLFile(const VELUnicodeString& file,
                                                 unsigned char isDefault,
                                                 VELUnicodeString& message) {
        return Collector::CreateCollectorFromXMLFile(file, isDefault, message);
    }
    // What a factory makes of a file whose path is known to be that of a context file. Where `text`
    // is not null it is read in place of the file. Defined in Creation.cpp.
    static Collector* CreateCollectorFromContents(const VELUnicodeString& file,
                                                  unsigned char isDefault,
                                                  const VELUnicodeString* text,
                                                  VELUnicodeString& message);
    static VELResult CheckXMLFile(const VELUnicodeString& file) {
        return Collector::CheckXMLFile(file);
    }
    static void DeleteCollectorAtCreate(Collector*& collector, const char* step,
                                        VELUnicodeString& message) {
        Collector::DeleteCollectorAtCreate(collector, step, message);
    }
    static void GetDefaultContextXML(VELUnicodeString& file) {
        Collector::GetDefaultContextXML(file);
    }
    static unsigned char LogError(const char* method, const char* key, VELUnicodeString& message,
                                  const VELUnicodeString* parameters, int count, int newLine) {
        return Collector::LogError(method, key, message, parameters, count, newLine);
    }
};

} // namespace dyadctx
