// SPDX-License-Identifier: MIT
// A database provider: how a context reaches its database.
//
// A host can implement this interface (see VELDyadDbProviderServices.h). Operations return codes:
// negative means failure, and outputs are then ignored.
#pragma once

#include "platform/VELBaseUnknown_var.h"
#include "platform/VELExport.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

class VELDYADCTX_EXPORT VELIDyadDbProvider : public VELBaseUnknown {
public:
    // The provider's name: also its type's name, and the connector name in a context file.
    virtual VELResult GetName(VELUnicodeString& name) = 0;

    // Whether `other` reaches the same database.
    virtual VELResult IsSame(const VELIDyadDbProvider_var& other, bool& same) = 0;

    virtual VELResult SetConnectorName(const VELUnicodeString& name) = 0;

    // Two parallel lists, replacing the current details.
    virtual VELResult SetServerDetails(const VELListValVELUnicodeString& keys,
                                       const VELListValVELUnicodeString& values) = 0;
    // The same two lists, cleared first.
    virtual VELResult GetServerDetails(VELListValVELUnicodeString& keys,
                                       VELListValVELUnicodeString& values) = 0;

protected:
    ~VELIDyadDbProvider() override;
};

// A counted handle to a provider. Using a null handle throws VELNullHandleError.
class VELDYADCTX_EXPORT VELIDyadDbProvider_var : public VELBaseUnknown_var {
public:
    VELIDyadDbProvider_var() noexcept = default;
    // Adds its own reference; null gives the null handle.
    VELIDyadDbProvider_var(VELIDyadDbProvider* provider) noexcept : VELBaseUnknown_var(provider) {}

    // The provider, owned by the handle; null for the null handle.
    VELIDyadDbProvider* Get() const noexcept { return static_cast<VELIDyadDbProvider*>(Object()); }
    VELIDyadDbProvider* operator->() const {
        if (IsNull())
            ThrowErrorNullVar();
        return Get();
    }

    // Equal when both hold the same object.
    bool operator==(const VELIDyadDbProvider_var& other) const noexcept {
        return Object() == other.Object();
    }
    bool operator!=(const VELIDyadDbProvider_var& other) const noexcept {
        return !(*this == other);
    }
};
