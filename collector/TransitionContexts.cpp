// SPDX-License-Identifier: MIT
#include "collector/VELDyadCtxCollector.h"

#include "context/detail/ContextAccess.h"
#include "context/detail/GuardedCall.h"
#include "context/detail/ParameterTypes.h"
#include "platform/VELDyadDbProviderServices.h"

#include <exception>
#include <memory>

using dyadctx::CodeOf;
using dyadctx::ContextPtr;
using dyadctx::IsDbEnvironmentOn;

namespace {

constexpr const char* TransitionContextNames[] = {"PostConversionContext", "PCAsNewRevisionContext",
                                                  "PCAsNewBranchContext"};
constexpr const char* PlatformDatabase = "ZENTROVA Platform";
constexpr const char* PlatformConnector = "ORB1";

// A new provider of the platform database; null if it cannot be made.
VELIDyadDbProvider_var NewPlatformProvider() {
    VELIDyadDbProvider_var provider;
    if (VELDyadDbProviderServices::CreateDyadDbProvider(provider) < 0)
        return {};
    return provider;
}

// Deletes the context when the provider refuses any value; sets all of them even so.
void Describe(const VELIDyadDbProvider_var& provider, ContextPtr& context) noexcept {
    if (CodeOf([&] { return provider->SetConnectorName(PlatformConnector); }) < 0)
        context.reset();
    const VELResult detailed = CodeOf([&] {
        return provider->SetServerDetails(VELListValVELUnicodeString(),
                                          VELListValVELUnicodeString());
    });
    if (detailed < 0)
        context.reset();
}

// A context with its own provider; null if that is not possible.
ContextPtr NewTransitionContext(const char* name) {
    auto context = std::make_unique<VELDyadContext>(name, PlatformDatabase, dyadctx::DatabaseType);
    if (!IsDbEnvironmentOn())
        return nullptr;
    const VELIDyadDbProvider_var provider = NewPlatformProvider();
    if (provider.IsNull())
        return nullptr;
    Describe(provider, context);
    if (context == nullptr || context->SetDyadDbProvider(provider) < 0)
        return nullptr;
    return context;
}

} // namespace

VELResult VELDyadCtxCollector::AddCADTransitionContext(VELDyadCtxCollector*& collector,
                                                       VELUnicodeString&) {
    for (const char* name : TransitionContextNames) {
        try {
            ContextPtr context = NewTransitionContext(name);
            if (context == nullptr || !IsDbEnvironmentOn())
                continue;
            if (collector->AddContext(context.get(), nullptr, 0) == S_OK)
                static_cast<void>(context.release());
        } catch (const std::exception&) {
            // No memory for this context: it is not added.
        }
    }
    return collector->SetCtxTypeList();
}
