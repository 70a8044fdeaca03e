#include "xml/detail/ContextEntry.h"

#include "context/detail/ContextAccess.h"
#include "context/detail/DbEnvironment.h"
#include "platform/VELDyadDbProviderServices.h"
#include "trace/detail/MessageKeys.h"
#include "trace/detail/ProcessSettings.h"
#include "trace/detail/TraceLine.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/VELDyadCtxXml.h"

#include <utility>

namespace dyadctx {

namespace {

bool HasOwner(ContextLevels levels) {
    return levels.friendLevel > 0 || (levels.associatedLevel > 0 && IsDbEnvironmentOn());
}

} // namespace

VELResult ContextEntry::AddContext(const VELIDOMElement& element, ContextLevels levels,
                                   bool associated) {
    TRACE_LOG("VELDyadCtxXml:AddContext");
    VELDyadContext* owner = nullptr;
    VELResult result = FindOwner(levels, owner);
    if (result < 0)
        return result;
    values_.Clear();
    const VELUnicodeString noOwner;
    const VELUnicodeString& ownerName = owner != nullptr ? owner->GetName() : noOwner;
    result = GetXMLValuesContext(element, levels, ownerName, state_.message, values_);
    if (result < 0)
        return result;
    if (state_.places != nullptr)
        place_ = PlaceOf(element);
    auto context =
        std::make_unique<VELDyadContext>(values_.name, values_.parameter, values_.parameterType);
    if (values_.parameterType == Names().databaseType)
        return AddDatabaseContext(std::move(context), owner, associated);
    const bool asAssociated = associated && IsDbEnvironmentOn();
    return Enter(std::move(context), owner, asAssociated ? 1 : 0);
}

// The owner is the context declared last, wherever the element stands in the file.
VELResult ContextEntry::FindOwner(ContextLevels levels, VELDyadContext*& owner) {
    if (!HasOwner(levels))
        return S_OK;
    VELDyadCtxCollector& collector = state_.collector;
    if (collector.GetCtxAtIndex(collector.GetNbCtxs(), owner) >= 0 && owner != nullptr)
        return S_OK;
    LogReaderError("VELDyadCtxXml::AddContext", key::InternalError, state_.message);
    return E_FAIL;
}

VELResult ContextEntry::AddDatabaseContext(std::unique_ptr<VELDyadContext> context,
                                           VELDyadContext* owner, bool associated) {
    if (!IsDbEnvironmentOn())
        return S_OK;
    VELIDyadDbProvider_var provider;
    VELResult result = SetProvider(*context, provider);
    if (result < 0)
        return result;
    if (associated && IsDbEnvironmentOn())
        return Enter(std::move(context), owner, 1);
    result = EnterDatabaseContext(std::move(context), owner);
    FileSite(provider);
    return result;
}

VELResult ContextEntry::SetProvider(VELDyadContext& context,
                                    VELIDyadDbProvider_var& provider) const {
    VELResult result = VELDyadDbProviderServices::CreateDyadDbProvider(provider);
    if (result < 0)
        return result;
    if (provider.IsNull())
        return E_FAIL;
    result = provider->SetConnectorName(values_.connector);
    if (result < 0)
        return result;
    result = provider->SetServerDetails(Names().serverDetails, values_.detailValues);
    if (result < 0)
        return result;
    return context.SetDyadDbProvider(provider);
}

VELResult ContextEntry::EnterDatabaseContext(std::unique_ptr<VELDyadContext> context,
                                             VELDyadContext* owner) {
    VELDyadContext* match = nullptr;
    if (owner == nullptr && state_.collector.FindMatchingCtx(0, context.get(), &match) != 0 &&
        match != nullptr)
        return S_OK;
    return Enter(std::move(context), owner, 0);
}

// The context is the collector's as soon as that knows it, whatever it answers; without memory it
// may refuse to.
VELResult ContextEntry::Enter(std::unique_ptr<VELDyadContext> context, VELDyadContext* owner,
                              int associated) {
    if (state_.places != nullptr)
        state_.places->contexts.emplace(context.get(), place_);
    VELDyadContext* entered = context.get();
    const VELResult result = state_.collector.AddContext(entered, owner, associated);
    if (ContextAccess::WasRegistered(*entered))
        static_cast<void>(context.release());
    return result;
}

// The site goes to the declared context of that name, which may be another one than was just made.
// A context that keeps no sites refuses it, which is no failure.
void ContextEntry::FileSite(const VELIDyadDbProvider_var& provider) {
    if (!MultisiteFlag() && !VELIsTraceActive())
        return;
    VELDyadContext* declared = nullptr;
    if (state_.collector.GetCtxFromName(values_.name, declared) < 0 || declared == nullptr)
        return;
    VELUnicodeString site;
    VELDyadCtxXml::GetServerdetailsForHashTable(site, values_.connector, Names().serverDetails,
                                                values_.detailValues);
    declared->AddRecordInMultiSiteHash(site, provider);
}

} // namespace dyadctx
