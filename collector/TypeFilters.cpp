// SPDX-License-Identifier: MIT
#include "collector/VELDyadCtxCollector.h"

#include "collector/detail/CollectorAccess.h"
#include "context/detail/ContextAccess.h"
#include "context/detail/GuardedCall.h"
#include "context/detail/ParameterTypes.h"
#include "context/detail/TextHash.h"
#include "platform/detail/HostCode.h"
#include "trace/detail/TraceLine.h"

#include <exception>
#include <new>
#include <string_view>
#include <utility>

using dyadctx::CodeOf;
using dyadctx::ContextWatch;
using dyadctx::IsDbEnvironmentOn;

namespace {

void AppendTo(VELRawCollint& positions, int pos) {
    if (positions.Append(pos) == 0)
        throw std::bad_alloc();
}

void CutTo(VELRawCollint& positions, int size) noexcept {
    positions.RemovePosition(size + 1, static_cast<unsigned int>(positions.Size() - size));
}

// The views a context enters, by its parameter type.
struct Views {
    VELRawCollint& path;
    VELRawCollint& database;
    VELRawCollint& file;

    void Enter(int pos, std::string_view type);
};

void Views::Enter(int pos, std::string_view type) {
    const bool isDefault = type == dyadctx::DefaultType;
    const bool isPath = type == dyadctx::PathType;
    const bool isFile = type == dyadctx::FileType;
    if (type == dyadctx::DatabaseType || isDefault)
        AppendTo(database, pos);
    if (isPath || isDefault)
        AppendTo(path, pos);
    // The host that is asked may delete the type's text.
    if (!IsDbEnvironmentOn())
        return;
    if (isFile || isPath || isDefault)
        AppendTo(file, pos);
    if (isPath)
        AppendTo(database, pos);
}

// The contexts of a view; a host's providers may run while they are walked.
struct ServedContexts {
    const VELListPtrVELDyadContext& declared;
    const VELRawCollint& positions;
    dyadctx::ContextWatches& watches;
};

// Passes each context of a view and what its provider is called to `take`, up to the first failure.
// The name is null for a context without provider, the context null once it is deleted.
template<class Take>
VELResult ForEachServed(const ServedContexts& served, Take take) {
    VELResult result = S_OK;
    const int count = served.positions.Size();
    for (int place = 1; result >= 0 && place <= count; ++place) {
        const int pos = served.positions[place];
        VELDyadContext* context = served.declared[pos];
        const ContextWatch watch(served.watches, context);
        if (context == nullptr)
            continue;
        VELIDyadDbProvider_var provider;
        result = context->GetDyadDbProvider(provider);
        VELUnicodeString name;
        if (result >= 0 && !provider.IsNull())
            result = CodeOf([&] { return provider->GetName(name); });
        if (result >= 0)
            take(pos, context, provider.IsNull() ? nullptr : &name);
    }
    return result;
}

// Adds to `narrowed` the positions of the contexts of these providers and of the Path contexts.
VELResult Narrow(const ServedContexts& served, const VELListValVELUnicodeString& providerNames,
                 VELRawCollint& narrowed) {
    const dyadctx::TextSet wanted = dyadctx::SetOf(providerNames);
    return ForEachServed(
        served, [&](int pos, VELDyadContext*& context, const VELUnicodeString* name) {
            if (name != nullptr && name->IsEmpty())
                return;
            if (name != nullptr && wanted.contains(name->AsView()))
                AppendTo(narrowed, pos);
            const bool isPath =
                context != nullptr && context->GetParameterType().AsView() == dyadctx::PathType;
            if (isPath && IsDbEnvironmentOn())
                AppendTo(narrowed, pos);
        });
}

VELResult FindByProviderName(const ServedContexts& served, const VELUnicodeString& providerName,
                             VELListPtrVELDyadContext& contexts) {
    return ForEachServed(served, [&](int, VELDyadContext*& context, const VELUnicodeString* name) {
        if (context != nullptr && name != nullptr && *name == providerName &&
            contexts.Append(context) == 0)
            throw std::bad_alloc();
    });
}

} // namespace

// ---- Views --------------------------------------------------------------------------------------

VELResult VELDyadCtxCollector::SetCtxTypeList() {
    const int pathSize = _PathCtxIndexes.Size();
    const int databaseSize = _DatabaseCtxIndexes.Size();
    const int fileSize = _FileCtxIndexes.Size();
    const VELListPtrVELDyadContext& declared = _MainContexts;
    Views views{_PathCtxIndexes, _DatabaseCtxIndexes, _FileCtxIndexes};
    try {
        for (int pos = 1; pos <= _NbCtxs; ++pos) {
            const VELDyadContext* context = declared[pos];
            if (context != nullptr)
                views.Enter(pos, context->GetParameterType().AsView());
        }
    } catch (const std::exception&) {
        CutTo(_PathCtxIndexes, pathSize);
        CutTo(_DatabaseCtxIndexes, databaseSize);
        CutTo(_FileCtxIndexes, fileSize);
        return E_FAIL;
    }
    return S_OK;
}

VELResult VELDyadCtxCollector::SetContextAllType() {
    if (IsDbEnvironmentOn())
        _CtxType = dyadctx::AllContexts;
    TRACE_LOG("VELDyadCtxCollector:SetContextAllType _CtxType=<%d>", _CtxType);
    return S_OK;
}

VELResult VELDyadCtxCollector::SetContextPathType() {
    if (IsDbEnvironmentOn())
        _CtxType = dyadctx::PathContexts;
    TRACE_LOG("VELDyadCtxCollector:SetContextPathType _CtxType=<%d>", _CtxType);
    return S_OK;
}

VELResult VELDyadCtxCollector::SetContextFileType() {
    if (IsDbEnvironmentOn())
        _CtxType = dyadctx::FileContexts;
    TRACE_LOG("VELDyadCtxCollector:SetContextFileType _CtxType=<%d>", _CtxType);
    return S_OK;
}

VELResult
VELDyadCtxCollector::SetContextDatabaseType(const VELListValVELUnicodeString& providerNames) {
    TRACE_LOG("VELDyadCtxCollector:SetContextDatabaseType for <%d> Providers",
              providerNames.Size());
    if (!IsDbEnvironmentOn())
        return S_OK;
    const int typeBefore = _CtxType;
    _CtxType = dyadctx::DatabaseContexts;
    if (providerNames.Size() == 0 || _DatabaseFilterDone)
        return S_OK;
    try {
        VELRawCollint narrowed;
        const VELResult result =
            Narrow({_MainContexts, _DatabaseCtxIndexes, state_->watches}, providerNames, narrowed);
        if (result < 0)
            return result;
        _DatabaseCtxIndexes = std::move(narrowed);
        _DatabaseFilterDone = true;
        state_->index.Forget();
        return result;
    } catch (const std::exception&) {
        _CtxType = typeBefore;
        return E_FAIL;
    }
}

VELResult VELDyadCtxCollector::GetContextType(int& type) const noexcept {
    type = _CtxType;
    return S_OK;
}

void VELDyadCtxCollector::GetListOfParamTypes(VELListValVELUnicodeString& types) {
    const int sizeBefore = types.Size();
    const VELResult listed = CodeOf([&] {
        dyadctx::VisitParameterTypes([&types](const char* type) { types.Append(type); });
        return S_OK;
    });
    if (listed != S_OK)
        dyadctx::CutTo(types, sizeBefore);
}

// ---- Provider queries ---------------------------------------------------------------------------

VELResult VELDyadCtxCollector::GetContextNamesFromDbProvider(const VELIDyadDbProvider_var& provider,
                                                             VELListValVELUnicodeString& names) {
    names.RemoveAll();
    VELResult result = S_OK;
    for (int pos = 1; pos <= _NbCtxs; ++pos) {
        VELDyadContext* context = _MainContexts[pos];
        const ContextWatch watch(state_->watches, context);
        if (context == nullptr)
            continue;
        VELIDyadDbProvider_var own;
        result = context->GetDyadDbProvider(own);
        if (result < 0)
            return result;
        // This is the one error that reaches the caller as an exception.
        if (own.IsNull())
            VELBaseUnknown_var::ThrowErrorNullVar();
        bool isSame = false;
        result = CodeOf([&] { return own->IsSame(provider, isSame); });
        if (result < 0)
            return result;
        if (!isSame || context == nullptr || context->GetName().IsEmpty())
            continue;
        const VELResult appended = CodeOf([&] {
            names.Append(context->GetName());
            return S_OK;
        });
        if (appended < 0)
            return appended;
    }
    return result;
}

VELResult VELDyadCtxCollector::GetContextsFromDbProviderName(const VELUnicodeString& providerName,
                                                             VELListPtrVELDyadContext& contexts) {
    contexts.RemoveAll(VELCollec::KeepMemory);
    const ContextWatch watch(state_->watches, contexts);
    const VELResult result = CodeOf([&] {
        // The name may be a context's own text, which an assignment destroys.
        return FindByProviderName({_MainContexts, _DatabaseCtxIndexes, state_->watches},
                                  VELUnicodeString(providerName), contexts);
    });
    // Removes those that a host's provider deleted meanwhile.
    while (dyadctx::HostCodeCanRun() && contexts.RemoveValue(nullptr) != 0) {
    }
    return result;
}

VELResult
VELDyadCtxCollector::GetContextNamesFromDbProviderName(const VELUnicodeString& providerName,
                                                       VELListValVELUnicodeString& names) {
    VELListPtrVELDyadContext contexts;
    const VELResult result = GetContextsFromDbProviderName(providerName, contexts);
    if (result < 0)
        return result;
    const int sizeBefore = names.Size();
    const VELResult appended = CodeOf([&] {
        for (int pos = 1; pos <= contexts.Size(); ++pos)
            names.Append(contexts[pos]->GetName());
        return S_OK;
    });
    if (appended < 0) {
        dyadctx::CutTo(names, sizeBefore);
        return appended;
    }
    return result;
}
