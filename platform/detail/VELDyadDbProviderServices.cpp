// SPDX-License-Identifier: MIT
#include "platform/VELDyadDbProviderServices.h"

#include "platform/detail/HostCode.h"
#include "platform/detail/InMemoryDbProvider.h"

#include <atomic>
#include <new>
#include <utility>

namespace {

std::atomic<VELDyadDbProviderFactory*> hostFactory{nullptr};

VELResult Give(dyadctx::InMemoryDbProvider* made, VELIDyadDbProvider_var& provider) {
    if (made == nullptr)
        return E_FAIL;
    provider = VELIDyadDbProvider_var(made);
    return S_OK;
}

VELResult MakeBuiltIn(VELIDyadDbProvider_var& provider) {
    return Give(new (std::nothrow) dyadctx::InMemoryDbProvider(), provider);
}

// Copies the name and details of a host's provider.
VELResult CopyHostProvider(const VELIDyadDbProvider_var& from, VELIDyadDbProvider_var& provider) {
    VELUnicodeString name;
    VELListValVELUnicodeString keys;
    VELListValVELUnicodeString values;
    VELResult rc = from->GetName(name);
    if (rc >= 0)
        rc = from->GetServerDetails(keys, values);
    if (rc >= 0)
        rc = MakeBuiltIn(provider);
    if (rc >= 0)
        rc = provider->SetConnectorName(name);
    return rc >= 0 ? provider->SetServerDetails(keys, values) : rc;
}

VELResult CopyToBuiltIn(const VELIDyadDbProvider_var& from, VELIDyadDbProvider_var& provider) {
    const auto* builtIn = dyadctx::InMemoryDbProvider::From(from);
    return builtIn != nullptr ? Give(builtIn->Clone(), provider) : CopyHostProvider(from, provider);
}

// Runs `make(factory, provider)`, possibly a host's code; `out` changes only on success.
template<class Make>
VELResult MakeProvider(VELIDyadDbProvider_var& out, const Make& make) noexcept {
    try {
        VELIDyadDbProvider_var provider;
        const VELResult rc = make(hostFactory.load(std::memory_order_acquire), provider);
        if (rc >= 0)
            out = std::move(provider);
        return rc;
    } catch (...) {
        return E_FAIL;
    }
}

} // namespace

VELDyadDbProviderFactory::~VELDyadDbProviderFactory() = default;

VELResult VELDyadDbProviderServices::CreateDyadDbProvider(VELIDyadDbProvider_var& out) {
    return MakeProvider(
        out, [](VELDyadDbProviderFactory* factory, VELIDyadDbProvider_var& provider) {
            return factory != nullptr ? factory->Create(provider) : MakeBuiltIn(provider);
        });
}

VELResult
VELDyadDbProviderServices::CreateDyadDbProviderFromDbProvider(const VELIDyadDbProvider_var& from,
                                                              VELIDyadDbProvider_var& out) {
    if (from.IsNull())
        return E_FAIL;
    return MakeProvider(
        out, [&from](VELDyadDbProviderFactory* factory, VELIDyadDbProvider_var& provider) {
            return factory != nullptr ? factory->CreateFrom(from, provider)
                                      : CopyToBuiltIn(from, provider);
        });
}

VELDyadDbProviderFactory*
VELDyadDbProviderServices::SetFactory(VELDyadDbProviderFactory* factory) noexcept {
    dyadctx::NoteHostService(dyadctx::HostService::Providers, factory != nullptr);
    return hostFactory.exchange(factory, std::memory_order_acq_rel);
}

namespace dyadctx {

VELResult MakeConfiguredProvider(const VELUnicodeString& connectorName,
                                 const VELListValVELUnicodeString& keys,
                                 const VELListValVELUnicodeString& values,
                                 VELIDyadDbProvider_var& out) {
    if (IsBuiltInFactoryActive())
        return Give(InMemoryDbProvider::New(connectorName, keys, values), out);
    VELResult result = VELDyadDbProviderServices::CreateDyadDbProvider(out);
    if (result >= 0 && out.IsNull())
        result = E_FAIL;
    if (result >= 0)
        result = out->SetConnectorName(connectorName);
    return result >= 0 ? out->SetServerDetails(keys, values) : result;
}

bool IsBuiltInFactoryActive() noexcept {
    return hostFactory.load(std::memory_order_acquire) == nullptr;
}

} // namespace dyadctx
