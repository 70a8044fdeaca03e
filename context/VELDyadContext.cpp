// SPDX-License-Identifier: MIT
#include "context/VELDyadContext.h"

#include "context/detail/ContextAccess.h"
#include "context/detail/DyadMultiSiteHashTableElement.h"
#include "context/detail/GuardedCall.h"
#include "context/detail/ParameterTypes.h"
#include "context/detail/SiteTables.h"
#include "platform/VELDyadDbProviderServices.h"
#include "platform/detail/HostCode.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/ProcessSettings.h"
#include "trace/detail/TraceLine.h"
#include "trace/detail/UserMessage.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>

using dyadctx::CodeOf;
using dyadctx::ContextAccess;
using dyadctx::SiteTables;

namespace {

std::atomic<std::uint64_t> assignments{0};

// The empty tables of a new context; null when it has none or there is no memory for them.
std::unique_ptr<SiteTables> TablesFor(const VELUnicodeString& parameterType) noexcept {
    if (!dyadctx::MultisiteFlag() || parameterType.AsView() != dyadctx::DatabaseType)
        return nullptr;
    try {
        auto tables = std::make_unique<SiteTables>();
        tables->current = SiteTables::NewTable();
        return tables;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

using Record = DyadMultiSiteHashTableElement;

// The table in use; null when there is none.
VELSysSimpleHashTable* TableIn(const std::unique_ptr<SiteTables>& tables) noexcept {
    return tables == nullptr ? nullptr : tables->current.get();
}

bool HasFriendAt(const VELDyadContext& context, int index) noexcept {
    return index >= 1 && index <= ContextAccess::Friends(context).Size();
}

// Visits the records of a table in its order. E_FAIL without a table and when a visit throws.
template<class Visit>
VELResult ForEachRecord(const VELSysSimpleHashTable* table, Visit visit) noexcept {
    if (table == nullptr)
        return E_FAIL;
    return CodeOf([&] {
        for (int position = 0; position < table->Size(); ++position) {
            const auto* record = static_cast<const Record*>(table->Get(position));
            if (record != nullptr)
                visit(*record);
        }
        return S_OK;
    });
}

// The key of a parameter type's label; null for one that is none of the four.
const char* LabelKeyOf(const VELUnicodeString& parameterType) noexcept {
    struct Label {
        const char* type;
        const char* key;
    };
    static constexpr Label labels[] = {
        {dyadctx::DefaultType, dyadctx::key::ParameterTypeDefault},
        {dyadctx::PathType, dyadctx::key::ParameterTypePath},
        {dyadctx::FileType, dyadctx::key::ParameterTypeFile},
        {dyadctx::DatabaseType, dyadctx::key::ParameterTypeDatabase}};
    for (const Label& label : labels) {
        if (parameterType.AsView() == label.type)
            return label.key;
    }
    return nullptr;
}

} // namespace

VELDyadContext::VELDyadContext(const VELUnicodeString& name, const VELUnicodeString& parameter,
                               const VELUnicodeString& parameterType)
    : VELDyadContext(dyadctx::ContextTexts{name, parameter, parameterType}) {}

VELDyadContext::VELDyadContext(dyadctx::ContextTexts&& texts)
    : name_(std::move(texts.name)), parameter_(std::move(texts.parameter)),
      parameterType_(std::move(texts.parameterType)) {
    TRACE_ENTER("VELDyadContext:Constructor Ctx with Name=%s of Type %s-%s", name_.ConvertToChar(),
                parameter_.ConvertToChar(), parameterType_.ConvertToChar());
    sites_ = TablesFor(parameterType_);
    TRACE_LEAVE("VELDyadContext:Constructor");
}

VELDyadContext::VELDyadContext(const VELDyadContext& src)
    : name_(src.name_), parameter_(src.parameter_), parameterType_(src.parameterType_),
      provider_(src.provider_), associated_(src.associated_),
      friends_(dyadctx::FriendList::CopyOf(src.friends_)) {
    if (TableIn(src.sites_) != nullptr) {
        sites_ = std::make_unique<SiteTables>();
        sites_->current = src.sites_->current;
    }
}

VELDyadContext& VELDyadContext::operator=(const VELDyadContext& src) {
    // First everything that may fail, then everything that changes.
    VELUnicodeString name(src.name_);
    VELUnicodeString parameter(src.parameter_);
    VELUnicodeString parameterType(src.parameterType_);
    auto friends = dyadctx::FriendList::CopyOf(src.friends_);
    const SiteTables::Table table = src.sites_ == nullptr ? nullptr : src.sites_->current;
    if (sites_ == nullptr && table != nullptr)
        sites_ = std::make_unique<SiteTables>();
    if (sites_ != nullptr)
        sites_->Replace(table);

    name_ = std::move(name);
    parameter_ = std::move(parameter);
    parameterType_ = std::move(parameterType);
    friends_ = std::move(friends);
    associated_ = src.associated_;
    assignments.fetch_add(1, std::memory_order_relaxed);
    // Last, as releasing the old one may run a host's code.
    provider_ = src.provider_;
    return *this;
}

VELDyadContext::~VELDyadContext() {
    TRACE_ENTER("VELDyadContext:Destructor <%s>", name_.ConvertToChar());
    provider_.Reset();
    associated_ = nullptr;
    if (sites_ != nullptr)
        sites_->current.reset();
    sites_.reset();
    TRACE_LEAVE("VELDyadContext:Destructor");
}

VELUnicodeString VELDyadContext::GetNLSParameterType() const {
    const char* key = LabelKeyOf(parameterType_);
    if (key == nullptr) {
        TRACE_WARNING("VELDyadContext:GetNLSParameterType <%s> emtpy or unkonwn ",
                      parameterType_.ConvertToChar());
        return {};
    }
    VELUnicodeString label;
    CodeOf([&] {
        label = dyadctx::CatalogText(key);
        return S_OK;
    });
    return label;
}

// ---- Friends and the associated context ---------------------------------------------------------

VELResult VELDyadContext::AddFriend(VELDyadContext* ctx) {
    if (ctx == nullptr || !ContextAccess::AppendFriend(*this, ctx))
        return E_FAIL;
    TRACE_LOG("VELDyadContext:AddFriendCtx <%s> had friend-Name=%s", name_.ConvertToChar(),
              ctx->name_.ConvertToChar());
    return S_OK;
}

VELResult VELDyadContext::SetFriend(int index, VELDyadContext* ctx) {
    if (ctx == nullptr || !HasFriendAt(*this, index))
        return E_FAIL;
    friends_->Set(index, ctx);
    TRACE_LOG("VELDyadContext:SetFriends[%d]= %s", index, ctx->name_.ConvertToChar());
    return S_OK;
}

VELResult VELDyadContext::RemoveFriend(int index) {
    if (!HasFriendAt(*this, index))
        return E_FAIL;
    friends_->RemovePosition(index);
    TRACE_LOG("VELDyadContext:RemoveFriend[%d]", index);
    return S_OK;
}

int VELDyadContext::GetFriends(VELListPtrVELDyadContext& out) const {
    const int count = ContextAccess::Friends(*this).Size();
    ContextAccess::TraceFriends(*this);
    if (count == 0)
        return 0;
    // A host's sink may have changed the list.
    const dyadctx::FriendView friends = ContextAccess::Friends(*this);
    VELListPtrVELDyadContext copy;
    for (int pos = 1; pos <= std::min(count, friends.Size()); ++pos) {
        if (copy.Append(friends[pos]) == 0)
            return 0;
    }
    out = std::move(copy);
    return out.Size();
}

VELResult VELDyadContext::AddAssociatedContext(VELDyadContext* ctx) {
    if (ctx == nullptr)
        return E_FAIL;
    associated_ = ctx;
    TRACE_LOG("VELDyadContext:AddAssociatedContext-Name=%s", ctx->name_.ConvertToChar());
    return S_OK;
}

VELResult VELDyadContext::SetAssociated(VELDyadContext* ctx) {
    if (ctx == nullptr || associated_ == nullptr)
        return E_FAIL;
    TRACE_LOG("VELDyadContext:SetAssociated Name=%s", ctx->name_.ConvertToChar());
    associated_ = ctx;
    return S_OK;
}

VELResult VELDyadContext::GetAssociatedContext(VELDyadContext*& out) {
    out = nullptr;
    if (associated_ == nullptr)
        return S_FALSE;
    ContextAccess::TraceAssociated(*this);
    // A host's sink may have removed it.
    out = associated_;
    return out == nullptr ? S_FALSE : S_OK;
}

VELResult VELDyadContext::RemoveAssociatedContext() {
    TRACE_LOG("VELDyadContext:RemoveAssociatedContext");
    if (associated_ == nullptr)
        return E_FAIL;
    associated_ = nullptr;
    return S_OK;
}

// ---- The provider -------------------------------------------------------------------------------

VELResult VELDyadContext::SetDyadDbProvider(const VELIDyadDbProvider_var& provider) {
    if (parameterType_.AsView() != dyadctx::DatabaseType || provider.IsNull())
        return E_FAIL;
    TRACE_ENTER("VELDyadContext:SetDyadDbProvider");
    const VELResult result =
        VELDyadDbProviderServices::CreateDyadDbProviderFromDbProvider(provider, provider_);
    TRACE_LEAVE("VELDyadContext:SetDyadDbProvider");
    return result;
}

VELResult VELDyadContext::GetDyadDbProvider(VELIDyadDbProvider_var& out) const {
    out.Reset();
    if (provider_.IsNull())
        return S_OK;
    if (!dyadctx::HostCodeCanRun())
        return VELDyadDbProviderServices::CreateDyadDbProviderFromDbProvider(provider_, out);
    // A host may release the provider the context keeps, and delete the context.
    const VELIDyadDbProvider_var kept = provider_;
    TRACE_ENTER("VELDyadContext:GetDyadDbProvider");
    const VELResult result =
        VELDyadDbProviderServices::CreateDyadDbProviderFromDbProvider(kept, out);
    TRACE_LEAVE("VELDyadContext:GetDyadDbProvider");
    return result;
}

// ---- The table of sites -------------------------------------------------------------------------

VELResult VELDyadContext::AddRecordInMultiSiteHash(const VELUnicodeString& serverDetails,
                                                   const VELIDyadDbProvider_var& provider) {
    TRACE_LOG("VELDyadContext:AddRecordInMultiSiteHash");
    VELSysSimpleHashTable* sites = TableIn(sites_);
    if (sites == nullptr)
        return E_FAIL;
    // A record added, one already present and lack of memory are all the same here.
    CodeOf([&] {
        auto record = std::make_unique<Record>(serverDetails, provider);
        if (sites->Insert(record.get()) == 1)
            static_cast<void>(record.release());
        return S_OK;
    });
    return S_OK;
}

VELResult VELDyadContext::RemoveRecordFromMultiSiteHash(const VELUnicodeString& serverDetails) {
    TRACE_LOG("VELDyadContext:RemoveRecordFromMultiSiteHash");
    VELSysSimpleHashTable* sites = TableIn(sites_);
    if (sites == nullptr)
        return E_FAIL;
    return CodeOf([&] {
        Record probe;
        probe.SetServerDetails(serverDetails);
        const std::unique_ptr<Record> removed(static_cast<Record*>(sites->Remove(&probe)));
        return removed == nullptr ? E_FAIL : S_OK;
    });
}

VELResult VELDyadContext::LocateInMultisiteHash(const VELUnicodeString& serverDetails,
                                                VELIDyadDbProvider_var& provider) {
    TRACE_LOG("VELDyadContext:LocateInMultisiteHash");
    const VELSysSimpleHashTable* sites = TableIn(sites_);
    if (sites == nullptr)
        return E_FAIL;
    return CodeOf([&] {
        Record probe;
        probe.SetServerDetails(serverDetails);
        const void* found = sites->Locate(&probe);
        if (found != nullptr)
            static_cast<const Record*>(found)->GetDyadDBProvider(provider);
        return provider.IsNull() ? E_FAIL : S_OK;
    });
}

void VELDyadContext::GetListOfSites(VELListValVELUnicodeString& sites) {
    TRACE_LOG("VELDyadContext:GetListOfSites");
    const int sizeBefore = sites.Size();
    const VELResult listed = ForEachRecord(TableIn(sites_), [&](const Record& record) {
        VELUnicodeString serverDetails;
        record.GetServerDetails(serverDetails);
        sites.Append(std::move(serverDetails));
    });
    if (listed != S_OK)
        dyadctx::CutTo(sites, sizeBefore);
}

VELResult
VELDyadContext::GetListOfMultisiteDbProvider(VELListValVELIDyadDbProvider_var& providers) {
    TRACE_LOG("VELDyadContext:GetListOfMultisiteDbProvider");
    const int sizeBefore = providers.Size();
    const VELResult listed = ForEachRecord(TableIn(sites_), [&](const Record& record) {
        VELIDyadDbProvider_var provider;
        if (record.GetDyadDBProvider(provider) == 0)
            providers.Append(provider);
    });
    if (listed != S_OK)
        dyadctx::CutTo(providers, sizeBefore);
    return listed;
}

unsigned char VELDyadContext::isContainsMultisites() {
    VELListValVELUnicodeString sites;
    GetListOfSites(sites);
    // The list is only for its trace: without memory it is empty.
    return ContextAccess::SiteCount(*this) > 1 ? 1 : 0;
}

// ---- What the library itself may do -------------------------------------------------------------

namespace dyadctx {

void ContextAccess::TraceFriends(const VELDyadContext& context) {
    TRACE_LOG("VELDyadContext:GetFriends Ctx <%s> has %d Friends", context.name_.ConvertToChar(),
              Friends(context).Size());
}

void ContextAccess::TraceAssociated(const VELDyadContext& context) {
    if (context.associated_ != nullptr)
        TRACE_LOG("VELDyadContext:GetAssociatedContext <%s>",
                  context.associated_->name_.ConvertToChar());
}

FriendView ContextAccess::Friends(const VELDyadContext& context) noexcept {
    return context.friends_ == nullptr ? FriendView() : context.friends_->View();
}

bool ContextAccess::AppendFriend(VELDyadContext& context, VELDyadContext* added) noexcept {
    return FriendList::Append(context.friends_, added);
}

VELDyadContext* ContextAccess::Associated(const VELDyadContext& context) noexcept {
    return context.associated_;
}

void ContextAccess::ClearAssociated(VELDyadContext& context) noexcept {
    context.associated_ = nullptr;
}

const VELIDyadDbProvider_var& ContextAccess::KeptProvider(const VELDyadContext& context) noexcept {
    return context.provider_;
}

int ContextAccess::SiteCount(const VELDyadContext& context) noexcept {
    int count = 0;
    ForEachRecord(TableIn(context.sites_), [&count](const Record&) { ++count; });
    return count;
}

bool ContextAccess::HasSiteProvider(const VELDyadContext& context,
                                    const VELUnicodeString& site) noexcept {
    bool found = false;
    ForEachRecord(TableIn(context.sites_),
                  [&](const Record& record) { found = found || record.HasProviderOf(site); });
    return found;
}

void ContextAccess::RemoveLinksTo(VELDyadContext& context, const VELDyadContext* target) noexcept {
    if (context.associated_ == target)
        context.associated_ = nullptr;
    if (context.friends_ != nullptr)
        context.friends_->RemoveAll(target);
}

std::uint64_t ContextAccess::AssignmentCount() noexcept {
    return assignments.load(std::memory_order_relaxed);
}

bool ContextAccess::WasRegistered(const VELDyadContext& context) noexcept {
    return context.wasRegistered_;
}

void ContextAccess::MarkRegistered(VELDyadContext& context) noexcept {
    context.wasRegistered_ = true;
}

} // namespace dyadctx
