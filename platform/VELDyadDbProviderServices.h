// Where providers come from, and how a host supplies its own.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELIDyadDbProvider.h"
#include "platform/VELResult.h"

// What a host implements to bring its own providers. The library calls it from whatever thread uses
// a collector; exceptions it lets out count as failure.
class VELDYADCTX_EXPORT VELDyadDbProviderFactory {
public:
    virtual ~VELDyadDbProviderFactory();

    // Gives a new provider without connector name and details.
    virtual VELResult Create(VELIDyadDbProvider_var& provider) = 0;
    // Gives a provider made from another one; the library expects it to mean the same database.
    virtual VELResult CreateFrom(const VELIDyadDbProvider_var& from,
                                 VELIDyadDbProvider_var& provider) = 0;
};

class VELDYADCTX_EXPORT VELDyadDbProviderServices {
public:
    // A new provider. On failure the code is negative and `out` as before.
    static VELResult CreateDyadDbProvider(VELIDyadDbProvider_var& out);

    // A provider equal in value to `from`, as an object of its own. A null `from` is refused with
    // E_FAIL; on failure `out` is as before.
    static VELResult CreateDyadDbProviderFromDbProvider(const VELIDyadDbProvider_var& from,
                                                        VELIDyadDbProvider_var& out);

    // Puts a host's factory in the place of the built-in one, for the whole process, and gives the
    // factory it replaces (null for the built-in one). Null puts the built-in one back. The factory
    // stays the host's and must outlive its use; set it before other threads use the library.
    static VELDyadDbProviderFactory* SetFactory(VELDyadDbProviderFactory* factory) noexcept;
};
