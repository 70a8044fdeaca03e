// The built-in database provider: a connector name and server details, held in memory.
//
// A provider's data are immutable once set and shared by all its clones; a setter gives its own
// provider new data and leaves the others alone. Providers with the same keys in a row share these.
#pragma once

#include "platform/VELIDyadDbProvider.h"
#include "platform/detail/Prefetch.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

namespace dyadctx {

struct ProviderData;

class InMemoryDbProvider final : public VELIDyadDbProvider {
public:
    // Empty name, no details.
    InMemoryDbProvider() noexcept = default;
    // Both setters in one; null for lists of different sizes and without memory.
    static InMemoryDbProvider* New(const VELUnicodeString& connectorName,
                                   const VELListValVELUnicodeString& keys,
                                   const VELListValVELUnicodeString& values) noexcept;
    // A provider equal to this one, without reference yet; null without memory.
    InMemoryDbProvider* Clone() const noexcept;

    // The built-in provider behind a handle; null for a null handle and for a host's provider.
    static const InMemoryDbProvider* From(const VELIDyadDbProvider_var& provider) noexcept;

    // All operations answer E_FAIL without the memory they need; nothing has then changed.
    VELResult GetName(VELUnicodeString& name) override;
    // The same: equal names, and equal details key by key. A missing key counts as an empty value,
    // and of two details with one key the first counts. No provider of another type is the same.
    VELResult IsSame(const VELIDyadDbProvider_var& other, bool& same) override;
    VELResult SetConnectorName(const VELUnicodeString& name) override;
    // E_FAIL for lists of different sizes.
    VELResult SetServerDetails(const VELListValVELUnicodeString& keys,
                               const VELListValVELUnicodeString& values) override;
    VELResult GetServerDetails(VELListValVELUnicodeString& keys,
                               VELListValVELUnicodeString& values) override;

    // What IsSame answers of two built-in providers.
    bool IsSameAs(const InMemoryDbProvider& other) const noexcept;
    // Equal for built-in providers that are the same. `hashOf` is applied to the texts that tell
    // providers apart.
    using HashOfBytes = std::uint64_t(std::string_view bytes) noexcept;
    std::uint64_t IdentityHash(HashOfBytes* hashOf) const noexcept;
    std::string_view Name() const noexcept;
    void PrefetchData() const noexcept { Prefetch(data_.get()); }

private:
    explicit InMemoryDbProvider(std::shared_ptr<const ProviderData> data) noexcept
        : data_(std::move(data)) {}
    ~InMemoryDbProvider() override = default;

    // Null stands for an empty name and no details.
    std::shared_ptr<const ProviderData> data_;
};

// A context file may bring a million of them.
static_assert(sizeof(InMemoryDbProvider) <= 32);

// A new provider of VELDyadDbProviderServices with that connector name and these server details. A
// host's provider is given them by its own operations; the first one that fails ends the matter.
VELResult MakeConfiguredProvider(const VELUnicodeString& connectorName,
                                 const VELListValVELUnicodeString& keys,
                                 const VELListValVELUnicodeString& values,
                                 VELIDyadDbProvider_var& out);

// Whether VELDyadDbProviderServices makes built-in providers, so that no host code takes part.
bool IsBuiltInFactoryActive() noexcept;

} // namespace dyadctx
