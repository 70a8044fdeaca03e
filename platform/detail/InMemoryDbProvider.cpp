#include "platform/detail/InMemoryDbProvider.h"

#include <cstdint>
#include <exception>
#include <typeinfo>

namespace dyadctx {

namespace {

// Walks the details that count for sameness: in the order of their keys, each key once, and without
// empty values, as those are the same as no detail.
class DetailWalk {
public:
    explicit DetailWalk(const ProviderData* data) noexcept
        : data_(data),
          left_(data != nullptr && data->Keys() != nullptr ? data->Keys()->Sorted().size() : 0) {
        SkipEmpty();
    }

    bool AtEnd() const noexcept { return left_ == 0; }
    std::string_view Key() const noexcept { return data_->Keys()->At(Detail()); }
    std::string_view Value() const noexcept { return data_->ValueAt(Detail()); }
    void Next() noexcept {
        --left_;
        SkipEmpty();
    }

private:
    std::uint32_t Detail() const noexcept {
        const auto& sorted = data_->Keys()->Sorted();
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
    // The class is final, so the exact type is all there is to ask for.
    if (object == nullptr || typeid(*object) != typeid(InMemoryDbProvider))
        return nullptr;
    return static_cast<const InMemoryDbProvider*>(object);
}

InMemoryDbProvider* InMemoryDbProvider::Clone() const noexcept {
    return new (std::nothrow) InMemoryDbProvider(data_);
}

std::string_view InMemoryDbProvider::Name() const noexcept {
    return data_ ? data_->Name() : std::string_view();
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
    return Name() == other.Name() && HaveSameDetails(data_.Get(), other.data_.Get());
}

SharedRef<ProviderData> InMemoryDbProvider::MakeData(std::string_view name,
                                                     const VELListValVELUnicodeString& keys,
                                                     const VELListValVELUnicodeString& values) {
    return ProviderData::Make(name, DetailKeys::Share(keys), [&values](std::uint32_t detail) {
        return values[static_cast<int>(detail) + 1].AsView();
    });
}

InMemoryDbProvider* InMemoryDbProvider::New(const VELUnicodeString& connectorName,
                                            const VELListValVELUnicodeString& keys,
                                            const VELListValVELUnicodeString& values) noexcept {
    if (keys.Size() != values.Size())
        return nullptr;
    try {
        return new InMemoryDbProvider(MakeData(connectorName.AsView(), keys, values));
    } catch (const std::exception&) {
        return nullptr;
    }
}

VELResult InMemoryDbProvider::SetConnectorName(const VELUnicodeString& name) {
    try {
        data_ =
            ProviderData::Make(name.AsView(), data_ ? data_->SharedKeys() : SharedRef<DetailKeys>(),
                               [this](std::uint32_t detail) { return data_->ValueAt(detail); });
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
        data_ = MakeData(Name(), keys, values);
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
        if (data_ && data_->Keys() != nullptr) {
            newKeys = data_->Keys()->List();
            newValues.Reserve(newKeys.Size());
            for (std::uint32_t detail = 0; detail < data_->Count(); ++detail)
                newValues.Append(VELUnicodeString(data_->ValueAt(detail)));
        }
        keys = std::move(newKeys);
        values = std::move(newValues);
        return S_OK;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

std::uint64_t InMemoryDbProvider::IdentityHash(HashOfBytes* hashOf) const noexcept {
    // An odd factor, so that the order of the texts counts and nothing is lost.
    constexpr std::uint64_t Factor = 0x9E3779B97F4A7C15;
    std::uint64_t hash = hashOf(Name());
    for (DetailWalk details(data_.Get()); !details.AtEnd(); details.Next()) {
        hash = hash * Factor + hashOf(details.Key());
        hash = hash * Factor + hashOf(details.Value());
    }
    return hash;
}

} // namespace dyadctx
