// What built-in providers share: their keys, and one block of memory per name and details.
#pragma once

#include "platform/VELListVal.h"
#include "platform/detail/SharedRef.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <vector>

namespace dyadctx {

// The keys of server details, for all data that have the same keys in a row. Immutable.
class DetailKeys {
public:
    // The keys as they are in the list; those this thread asked for last are not made again.
    // Throws std::bad_alloc.
    static SharedRef<DetailKeys> Share(const VELListValVELUnicodeString& keys);

    const VELListValVELUnicodeString& List() const noexcept { return list_; }
    std::uint32_t Count() const noexcept { return static_cast<std::uint32_t>(list_.Size()); }
    // The key of a detail, counted from 0.
    std::string_view At(std::uint32_t detail) const noexcept {
        return list_[static_cast<int>(detail) + 1].AsView();
    }
    // The details in the order of their keys' bytes; of equal keys only the first.
    const std::vector<std::uint32_t>& Sorted() const noexcept { return sorted_; }

    void AddRef() const noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void Release() const noexcept;

private:
    explicit DetailKeys(const VELListValVELUnicodeString& keys);
    ~DetailKeys() = default;
    bool HasKeys(const VELListValVELUnicodeString& keys) const noexcept;

    mutable std::atomic<std::uint32_t> references_{1};
    VELListValVELUnicodeString list_;
    std::vector<std::uint32_t> sorted_;
};

// A connector name and details. Immutable, in one block: this header, the offsets at which the name
// and each value end, and their bytes.
class ProviderData {
public:
    // `valueAt(detail)` gives the value of each key as a std::string_view, the same at each call.
    // Null `keys` mean no details. Throws std::bad_alloc, also when the texts do not fit a block.
    template<class ValueGetter>
    static SharedRef<ProviderData> Make(std::string_view name, SharedRef<DetailKeys> keys,
                                        const ValueGetter& valueAt);

    std::string_view Name() const noexcept { return {Bytes(), Ends()[0]}; }
    const DetailKeys* Keys() const noexcept { return keys_.Get(); }
    const SharedRef<DetailKeys>& SharedKeys() const noexcept { return keys_; }
    std::uint32_t Count() const noexcept { return count_; }
    std::string_view ValueAt(std::uint32_t detail) const noexcept {
        const std::uint32_t begin = Ends()[detail];
        return {Bytes() + begin, Ends()[detail + 1] - begin};
    }

    void AddRef() const noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void Release() const noexcept;

private:
    ProviderData(SharedRef<DetailKeys> keys, std::uint32_t count) noexcept
        : count_(count), keys_(std::move(keys)) {}
    ~ProviderData() = default;

    static void* Allocate(std::size_t count, std::size_t bytes);
    void Fill(std::uint32_t index, std::string_view text) noexcept;

    const std::uint32_t* Ends() const noexcept {
        return reinterpret_cast<const std::uint32_t*>(this + 1);
    }
    const char* Bytes() const noexcept {
        return reinterpret_cast<const char*>(Ends() + count_ + 1);
    }

    mutable std::atomic<std::uint32_t> references_{1};
    std::uint32_t count_;
    SharedRef<DetailKeys> keys_;
};

template<class ValueGetter>
SharedRef<ProviderData> ProviderData::Make(std::string_view name, SharedRef<DetailKeys> keys,
                                           const ValueGetter& valueAt) {
    const std::uint32_t count = keys ? keys->Count() : 0;
    std::size_t bytes = name.size();
    for (std::uint32_t detail = 0; detail < count; ++detail)
        bytes += valueAt(detail).size();
    auto* made = new (Allocate(count, bytes)) ProviderData(std::move(keys), count);
    made->Fill(0, name);
    for (std::uint32_t detail = 0; detail < count; ++detail)
        made->Fill(detail + 1, valueAt(detail));
    return SharedRef<ProviderData>(made);
}

} // namespace dyadctx
