// SPDX-License-Identifier: MIT
#include "xml/detail/ContextEntry.h"

#include "collector/detail/CollectorAccess.h"
#include "context/detail/ContextAccess.h"
#include "context/detail/ParameterTypes.h"
#include "platform/detail/InMemoryDbProvider.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/FindingIds.h"
#include "trace/detail/ProcessSettings.h"
#include "trace/detail/TraceLine.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/VELDyadCtxXml.h"

#include <new>
#include <utility>

namespace dyadctx {

namespace {

bool HasOwner(ContextLevels levels) {
    return levels.friendLevel > 0 || (levels.associatedLevel > 0 && IsDbEnvironmentOn());
}

constexpr const char* AddMethod = "VELDyadCtxXml::AddContext";
constexpr const char* ValuesMethod = "VELDyadCtxXml::GetXMLValuesContext";
constexpr const char* DatabaseValuesMethod = "VELDyadCtxXml::GetXMLDbValuesContext";

// Traces the message alone, before it is added to the caller's text.
void LogAlone(const ReadState& state, const char* method, const char* key,
              const VELIDOMElement& element, const VELUnicodeString* parameters = nullptr,
              int count = 0) {
    LogReaderError(state, method, key, element, parameters, count, LogText::Alone);
}

void LogNoName(const ReadState& state, const VELIDOMElement& element, ContextLevels levels,
               const VELUnicodeString& ownerName) {
    if (levels.friendLevel > 0)
        LogAlone(state, ValuesMethod, key::CtxFriendNoName, element, &ownerName, 1);
    else if (levels.associatedLevel > 0 && IsDbEnvironmentOn())
        LogAlone(state, ValuesMethod, key::CtxAssocNoName, element, &ownerName, 1);
    else
        LogAlone(state, ValuesMethod, key::CtxNoName, element);
}

// A friend or associated context may have only a name.
bool IsNameEnough(ContextLevels levels) {
    return levels.friendLevel > 0 || (levels.associatedLevel > 0 && IsDbEnvironmentOn());
}

bool IsFriendAndAssociated(ContextLevels levels) {
    return levels.friendLevel > 0 && levels.associatedLevel > 0;
}

bool MayLackConnector(ContextLevels levels) {
    return IsDbEnvironmentOn() ? IsFriendAndAssociated(levels) : levels.friendLevel > 0;
}

bool MayGoOn(const ContextValues& values, const ReadState& state) {
    return values.missing == 0 || state.ContinuesAfterFault();
}

VELResult GetXMLDbValuesContext(const VELIDOMElement& element, ContextLevels levels,
                                const ReadState& state, ContextValues& values) {
    if (!ReadAttribute(element, state.ids->connector, values.connector) &&
        !MayLackConnector(levels)) {
        values.missing |= MissingConnector;
        LogAlone(state, DatabaseValuesMethod, key::CtxNoConnector, element);
        return E_FAIL;
    }
    for (const std::uint32_t detail : state.ids->serverDetails)
        values.detailValues.Append(AttributeOrEmpty(element, detail));
    return S_OK;
}

// Reads the attributes into `values`, which is empty. E_FAIL and a message for the first missing
// required attribute, or for each if reading continues after a fault. `ownerName` is the context a
// friend or associated context belongs to.
VELResult GetXMLValuesContext(const VELIDOMElement& element, ContextLevels levels,
                              const VELUnicodeString& ownerName, const ReadState& state,
                              ContextValues& values) {
    const FormatIds& ids = *state.ids;
    if (!ReadAttribute(element, ids.name, values.texts.name)) {
        values.missing |= MissingName;
        LogNoName(state, element, levels, ownerName);
    }
    if (MayGoOn(values, state) && !ReadAttribute(element, ids.parameter, values.texts.parameter) &&
        !IsNameEnough(levels)) {
        values.missing |= MissingParameter;
        LogReaderError(state, ValuesMethod, key::CtxNoParam, element, &values.texts.name, 1);
    }
    if (MayGoOn(values, state) &&
        !ReadAttribute(element, ids.parameterType, values.texts.parameterType) &&
        !IsNameEnough(levels)) {
        values.missing |= MissingParameterType;
        LogReaderError(state, ValuesMethod, key::CtxNoParamType, element, &values.texts.name, 1);
    }
    const bool isDatabase =
        MayGoOn(values, state) && values.texts.parameterType == Names().databaseType;
    if (isDatabase && IsDbEnvironmentOn() &&
        GetXMLDbValuesContext(element, levels, state, values) < 0 && !IsFriendAndAssociated(levels))
        LogReaderError(state, ValuesMethod, key::CtxNoDatabase, element, &values.texts.name, 1);
    return values.missing == 0 ? S_OK : E_FAIL;
}

} // namespace

// A host may switch the DB context environment on after the values were read.
const VELListValVELUnicodeString& ContextValues::DetailKeys() const noexcept {
    return detailValues.Size() > 0 ? Names().serverDetails : detailValues;
}

void ContextValues::Clear() {
    texts = ContextTexts();
    connector = VELUnicodeString();
    detailValues.RemoveAll();
    missing = 0;
}

VELResult ContextEntry::AddContext(const VELIDOMElement& element, ContextLevels levels,
                                   bool associated) {
    TRACE_LOG("VELDyadCtxXml:AddContext");
    VELDyadContext* owner = nullptr;
    VELResult result = FindOwner(element, levels, owner);
    if (result < 0)
        return result;
    values_.Clear();
    const VELUnicodeString noOwner;
    const VELUnicodeString& ownerName = owner != nullptr ? owner->GetName() : noOwner;
    result = GetXMLValuesContext(element, levels, ownerName, state_, values_);
    if (result < 0 && !MayStandIn(owner))
        return result;
    if (owner == nullptr)
        CollectorAccess::PrefetchName(state_.collector, values_.texts.name);
    if (++made_ > state_.contextLimit)
        return RefuseMore(element);
    auto context = ContextAccess::Make(std::move(values_.texts));
    if (context->GetParameterType() == Names().databaseType)
        return AddDatabaseContext(element, std::move(context), owner, associated);
    const bool asAssociated = associated && IsDbEnvironmentOn();
    return Enter(element, std::move(context), owner, asAssociated ? 1 : 0);
}

// The owner is the context declared last, wherever the element is in the file.
VELResult ContextEntry::FindOwner(const VELIDOMElement& element, ContextLevels levels,
                                  VELDyadContext*& owner) {
    if (!HasOwner(levels))
        return S_OK;
    VELDyadCtxCollector& collector = state_.collector;
    if (collector.GetCtxAtIndex(collector.GetNbCtxs(), owner) >= 0 && owner != nullptr)
        return S_OK;
    LogReaderError(state_, AddMethod, key::InternalError, element);
    return E_FAIL;
}

VELResult ContextEntry::RefuseMore(const VELIDOMElement& element) {
    if (state_.observer != nullptr)
        state_.observer->OnTooManyContexts();
    LogReaderError(state_, AddMethod, key::InternalError, element);
    return E_FAIL;
}

// An incomplete declared context is entered all the same if reading continues after faults.
bool ContextEntry::MayStandIn(const VELDyadContext* owner) const noexcept {
    return state_.ContinuesAfterFault() &&
           (owner == nullptr || (values_.missing & MissingName) == 0);
}

VELResult ContextEntry::AddDatabaseContext(const VELIDOMElement& element, ContextPtr context,
                                           VELDyadContext* owner, bool associated) {
    if (!IsDbEnvironmentOn()) {
        if (state_.observer != nullptr)
            state_.observer->OnLeftOut(*context, element, owner == nullptr);
        return S_OK;
    }
    VELIDyadDbProvider_var provider;
    VELResult result = S_OK;
    if ((values_.missing & MissingConnector) == 0)
        result = SetProvider(*context, provider);
    if (result < 0) {
        if (!state_.ContinuesAfterFault())
            return result;
        // The library has no message for it.
        LogReaderError(state_, AddMethod, id::ProviderFailed, element, &context->GetName(), 1);
    }
    if (associated && IsDbEnvironmentOn())
        return Enter(element, std::move(context), owner, 1);
    if (provider.IsNull() || (!MultisiteFlag() && !VELIsTraceActive()))
        return EnterDatabaseContext(element, std::move(context), owner);
    const VELUnicodeString name = context->GetName();
    result = EnterDatabaseContext(element, std::move(context), owner);
    RegisterSite(name, provider);
    return result;
}

VELResult ContextEntry::SetProvider(VELDyadContext& context,
                                    VELIDyadDbProvider_var& provider) const {
    const VELResult result = MakeConfiguredProvider(values_.connector, values_.DetailKeys(),
                                                    values_.detailValues, provider);
    return result < 0 ? result : context.SetDyadDbProvider(provider);
}

VELResult ContextEntry::EnterDatabaseContext(const VELIDOMElement& element, ContextPtr context,
                                             VELDyadContext* owner) {
    VELDyadContext* match = nullptr;
    if (owner == nullptr && state_.collector.FindMatchingCtx(0, context.get(), &match) != 0 &&
        match != nullptr) {
        if (state_.observer != nullptr)
            state_.observer->OnRepeated(*match, element);
        return S_OK;
    }
    return Enter(element, std::move(context), owner, 0);
}

// The collector owns the context as soon as it knows it, whatever it returns; without memory it may
// not take it.
VELResult ContextEntry::Enter(const VELIDOMElement& element, ContextPtr context,
                              VELDyadContext* owner, int associated) {
    if (state_.observer != nullptr)
        state_.observer->OnContext(*context, element, values_.missing);
    VELDyadContext* entered = context.get();
    const VELResult result = state_.collector.AddContext(entered, owner, associated);
    if (ContextAccess::WasRegistered(*entered))
        static_cast<void>(context.release());
    // Fails only without memory: later faults would not be the file's.
    if (result < 0 && state_.ContinuesAfterFault())
        throw std::bad_alloc();
    return result;
}

// Adds the site to the declared context of that name, which may not be the one just made. A context
// without a table of sites refuses it, which is no failure.
void ContextEntry::RegisterSite(const VELUnicodeString& name,
                                const VELIDyadDbProvider_var& provider) {
    VELDyadContext* declared = nullptr;
    if (state_.collector.GetCtxFromName(name, declared) < 0 || declared == nullptr)
        return;
    VELUnicodeString site;
    VELDyadCtxXml::GetServerdetailsForHashTable(site, values_.connector, values_.DetailKeys(),
                                                values_.detailValues);
    declared->AddRecordInMultiSiteHash(site, provider);
}

} // namespace dyadctx
