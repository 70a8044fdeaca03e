// SPDX-License-Identifier: MIT
#include "platform/detail/InMemoryDbProvider.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <new>
#include <numeric>
#include <typeinfo>
#include <utility>
#include <vector>

namespace dyadctx {

namespace {

// The keys of server details, shared by consecutive providers with the same keys.
struct DetailKeys {
    explicit DetailKeys(const VELListValVELUnicodeString& keys);
    bool AreThose(const VELListValVELUnicodeString& keys) const noexcept;

    VELListValVELUnicodeString list;
    // Positions sorted by their keys' bytes; of equal keys only the first.
    std::vector<int> sorted;
};

DetailKeys::DetailKeys(const VELListValVELUnicodeString& keys)
    : list(keys), sorted(static_cast<std::size_t>(keys.Size())) {
    std::iota(sorted.begin(), sorted.end(), 1);
    std::sort(sorted.begin(), sorted.end(), [this](int one, int other) {
        const int order = list[one].AsView().compare(list[other].AsView());
        return order != 0 ? order < 0 : one < other;
    });
    const auto end = std::unique(sorted.begin(), sorted.end(),
                                 [this](int one, int other) { return list[one] == list[other]; });
    sorted.erase(end, sorted.end());
}

bool DetailKeys::AreThose(const VELListValVELUnicodeString& keys) const noexcept {
    if (keys.Size() != list.Size())
        return false;
    for (int pos = 1; pos <= keys.Size(); ++pos) {
        if (keys[pos] != list[pos])
            return false;
    }
    return true;
}

using SharedKeys = std::shared_ptr<const DetailKeys>;

// The keys in the list; those this thread last asked for are reused.
SharedKeys KeysOf(const VELListValVELUnicodeString& keys) {
    thread_local SharedKeys last;
    if (last == nullptr || !last->AreThose(keys))
        last = std::make_shared<const DetailKeys>(keys);
    return last;
}

} // namespace

struct ProviderData {
    VELUnicodeString name;
    // Null means no details.
    SharedKeys keys;
    // One per key.
    VELListValVELUnicodeString values;
};

namespace {

// Walks the details that are compared: sorted by key, each key once, without empty values, which
// equal a missing detail.
class DetailWalk {
public:
    explicit DetailWalk(const ProviderData* data) noexcept
        : data_(data),
          left_(data != nullptr && data->keys != nullptr ? data->keys->sorted.size() : 0) {
        SkipEmpty();
    }

    bool AtEnd() const noexcept { return left_ == 0; }
    std::string_view Key() const noexcept { return data_->keys->list[Detail()].AsView(); }
    std::string_view Value() const noexcept { return data_->values[Detail()].AsView(); }
    void Next() noexcept {
        --left_;
        SkipEmpty();
    }

private:
    int Detail() const noexcept {
        const auto& sorted = data_->keys->sorted;
        return sorted[sorted.size() - left_];
    }
    void SkipEmpty() noexcept {
        while (left_ > 0 && Value().empty())
            --left_;
    }

    const ProviderData* data_;
    std::size_t left_;
};

bool HaveSameDetails(const ProviderData* one, const ProviderData* other) noexcept {
    DetailWalk first(one);
    DetailWalk second(other);
    while (!first.AtEnd() && !second.AtEnd()) {
        if (first.Key() != second.Key() || first.Value() != second.Value())
            return false;
        first.Next();
        second.Next();
    }
    return first.AtEnd() && second.AtEnd();
}

} // namespace

const InMemoryDbProvider*
InMemoryDbProvider::From(const VELIDyadDbProvider_var& provider) noexcept {
    const VELIDyadDbProvider* object = provider.Get();
    // The class is final, so comparing the exact type is enough.
    if (object == nullptr || typeid(*object) != typeid(InMemoryDbProvider))
        return nullptr;
    return static_cast<const InMemoryDbProvider*>(object);
}

InMemoryDbProvider* InMemoryDbProvider::Clone() const noexcept {
    return new (std::nothrow) InMemoryDbProvider(data_);
}

std::string_view InMemoryDbProvider::Name() const noexcept {
    return data_ != nullptr ? data_->name.AsView() : std::string_view();
}

VELResult InMemoryDbProvider::GetName(VELUnicodeString& name) {
    try {
        name = VELUnicodeString(Name());
        return S_OK;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

VELResult InMemoryDbProvider::IsSame(const VELIDyadDbProvider_var& other, bool& same) {
    const InMemoryDbProvider* provider = From(other);
    same = provider != nullptr && IsSameAs(*provider);
    return S_OK;
}

bool InMemoryDbProvider::IsSameAs(const InMemoryDbProvider& other) const noexcept {
    return Name() == other.Name() && HaveSameDetails(data_.get(), other.data_.get());
}

InMemoryDbProvider* InMemoryDbProvider::New(const VELUnicodeString& connectorName,
                                            const VELListValVELUnicodeString& keys,
                                            const VELListValVELUnicodeString& values) noexcept {
    if (keys.Size() != values.Size())
        return nullptr;
    try {
        return new InMemoryDbProvider(std::make_shared<const ProviderData>(
            ProviderData{connectorName, KeysOf(keys), values}));
    } catch (const std::exception&) {
        return nullptr;
    }
}

VELResult InMemoryDbProvider::SetConnectorName(const VELUnicodeString& name) {
    try {
        ProviderData data = data_ != nullptr ? *data_ : ProviderData();
        data.name = name;
        data_ = std::make_shared<const ProviderData>(std::move(data));
        return S_OK;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

VELResult InMemoryDbProvider::SetServerDetails(const VELListValVELUnicodeString& keys,
                                               const VELListValVELUnicodeString& values) {
    if (keys.Size() != values.Size())
        return E_FAIL;
    try {
        data_ = std::make_shared<const ProviderData>(
            ProviderData{VELUnicodeString(Name()), KeysOf(keys), values});
        return S_OK;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

VELResult InMemoryDbProvider::GetServerDetails(VELListValVELUnicodeString& keys,
                                               VELListValVELUnicodeString& values) {
    try {
        VELListValVELUnicodeString newKeys;
        VELListValVELUnicodeString newValues;
        if (data_ != nullptr && data_->keys != nullptr) {
            newKeys = data_->keys->list;
            newValues = data_->values;
        }
        keys = std::move(newKeys);
        values = std::move(newValues);
        return S_OK;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

std::uint64_t InMemoryDbProvider::IdentityHash(HashOfBytes* hashOf) const noexcept {
    // Odd, so that the order of the texts matters and no bits are lost.
    constexpr std::uint64_t Factor = 0x9E3779B97F4A7C15;
    std::uint64_t hash = hashOf(Name());
    for (DetailWalk details(data_.get()); !details.AtEnd(); details.Next()) {
        hash = hash * Factor + hashOf(details.Key());
        hash = hash * Factor + hashOf(details.Value());
    }
    return hash;
}

} // namespace dyadctx
