// A database provider: the object through which a context reaches its database.
//
// A host implements this interface to bring providers of its own (see VELDyadDbProviderServices.h).
// Results are codes: negative means failure, and the outputs are then not looked at.
#pragma once

#include "platform/VELBaseUnknown_var.h"
#include "platform/VELExport.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

class VELDYADCTX_EXPORT VELIDyadDbProvider : public VELBaseUnknown {
public:
    // The provider's name, which is also the name of its type and what a context file calls its
    // connector.
    virtual VELResult GetName(VELUnicodeString& name) = 0;

    // Whether `other` reaches the same database.
    virtual VELResult IsSame(const VELIDyadDbProvider_var& other, bool& same) = 0;

    virtual VELResult SetConnectorName(const VELUnicodeString& name) = 0;

    // Two parallel lists, replacing the details held so far.
    virtual VELResult SetServerDetails(const VELListValVELUnicodeString& keys,
                                       const VELListValVELUnicodeString& values) = 0;
    // The same two lists; what they held before is removed.
    virtual VELResult GetServerDetails(VELListValVELUnicodeString& keys,
                                       VELListValVELUnicodeString& values) = 0;

protected:
    ~VELIDyadDbProvider() override;
};

// A counted handle on a provider. Using a null handle throws VELNullHandleError.
class VELDYADCTX_EXPORT VELIDyadDbProvider_var : public VELBaseUnknown_var {
public:
    VELIDyadDbProvider_var() noexcept = default;
    // Adds a reference of its own; null gives the null handle.
    VELIDyadDbProvider_var(VELIDyadDbProvider* provider) noexcept : VELBaseUnknown_var(provider) {}

    // The provider, still owned by the handle; null for the null handle.
    VELIDyadDbProvider* Get() const noexcept { return static_cast<VELIDyadDbProvider*>(Object()); }
    VELIDyadDbProvider* operator->() const {
        if (IsNull())
            ThrowErrorNullVar();
        return Get();
    }

    // Two handles are equal when they hold the same object.
    bool operator==(const VELIDyadDbProvider_var& other) const noexcept {
        return Object() == other.Object();
    }
    bool operator!=(const VELIDyadDbProvider_var& other) const noexcept {
        return !(*this == other);
    }
};
