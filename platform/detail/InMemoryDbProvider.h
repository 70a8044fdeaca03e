// SPDX-License-Identifier: MIT
// The built-in database provider: a connector name and server details, in memory.
//
// Its data are immutable and shared by all its clones; a setter gives its own provider new data.
// Consecutive providers with the same keys share these keys.
#pragma once

#include "platform/VELIDyadDbProvider.h"

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
    // Both setters in one; null for lists of different sizes or without memory.
    static InMemoryDbProvider* New(const VELUnicodeString& connectorName,
                                   const VELListValVELUnicodeString& keys,
                                   const VELListValVELUnicodeString& values) noexcept;
    // An equal provider without references; null without memory.
    InMemoryDbProvider* Clone() const noexcept;

    // The built-in provider of a handle; null for a null handle or a host's provider.
    static const InMemoryDbProvider* From(const VELIDyadDbProvider_var& provider) noexcept;

    // Without memory, all operations return E_FAIL and change nothing.
    VELResult GetName(VELUnicodeString& name) override;
    // The same: equal names, and equal details key by key. A missing key counts as an empty value,
    // and of duplicate keys the first counts. Providers of other types are never the same.
    VELResult IsSame(const VELIDyadDbProvider_var& other, bool& same) override;
    VELResult SetConnectorName(const VELUnicodeString& name) override;
    // E_FAIL for lists of different sizes.
    VELResult SetServerDetails(const VELListValVELUnicodeString& keys,
                               const VELListValVELUnicodeString& values) override;
    VELResult GetServerDetails(VELListValVELUnicodeString& keys,
                               VELListValVELUnicodeString& values) override;

    // The result of IsSame for two built-in providers.
    bool IsSameAs(const InMemoryDbProvider& other) const noexcept;
    // Equal for built-in providers that are the same. `hashOf` hashes the texts that distinguish
    // providers.
    using HashOfBytes = std::uint64_t(std::string_view bytes) noexcept;
    std::uint64_t IdentityHash(HashOfBytes* hashOf) const noexcept;
    std::string_view Name() const noexcept;

private:
    explicit InMemoryDbProvider(std::shared_ptr<const ProviderData> data) noexcept
        : data_(std::move(data)) {}
    ~InMemoryDbProvider() override = default;

    // Null means an empty name and no details.
    std::shared_ptr<const ProviderData> data_;
};

// A context file may define a million of them.
static_assert(sizeof(InMemoryDbProvider) <= 32);

// Creates a provider with VELDyadDbProviderServices and sets its connector name and server details.
// A host's provider gets them through its own operations, up to the first that fails.
VELResult MakeConfiguredProvider(const VELUnicodeString& connectorName,
                                 const VELListValVELUnicodeString& keys,
                                 const VELListValVELUnicodeString& values,
                                 VELIDyadDbProvider_var& out);

// Whether VELDyadDbProviderServices creates built-in providers, so that no host code runs.
bool IsBuiltInFactoryActive() noexcept;

} // namespace dyadctx
