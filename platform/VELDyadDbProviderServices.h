// SPDX-License-Identifier: MIT
// Creates providers, with the host's factory if there is one.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELIDyadDbProvider.h"
#include "platform/VELResult.h"

// Implemented by a host to bring its own providers. Called on whatever thread uses a collector; an
// exception counts as failure.
class VELDYADCTX_EXPORT VELDyadDbProviderFactory {
public:
    virtual ~VELDyadDbProviderFactory();

    // Returns a new provider without connector name and details.
    virtual VELResult Create(VELIDyadDbProvider_var& provider) = 0;
    // Returns a copy of a provider, expected to mean the same database.
    virtual VELResult CreateFrom(const VELIDyadDbProvider_var& from,
                                 VELIDyadDbProvider_var& provider) = 0;
};

class VELDYADCTX_EXPORT VELDyadDbProviderServices {
public:
    // Creates a provider. On failure the code is negative and `out` unchanged.
    static VELResult CreateDyadDbProvider(VELIDyadDbProvider_var& out);

    // Creates a separate provider equal to `from`; E_FAIL when that is null. On failure `out` is
    // unchanged.
    static VELResult CreateDyadDbProviderFromDbProvider(const VELIDyadDbProvider_var& from,
                                                        VELIDyadDbProvider_var& out);

    // Replaces the built-in factory for the whole process and returns the previous one (null for
    // the built-in one). Null restores it. The host keeps ownership, and the factory must outlive
    // its use; set it before other threads use the library.
    static VELDyadDbProviderFactory* SetFactory(VELDyadDbProviderFactory* factory) noexcept;
};
