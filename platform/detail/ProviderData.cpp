#include "platform/detail/ProviderData.h"

#include <algorithm>
#include <numeric>

namespace dyadctx {

SharedRef<DetailKeys> DetailKeys::Share(const VELListValVELUnicodeString& keys) {
    thread_local SharedRef<DetailKeys> last;
    if (!last || !last->HasKeys(keys))
        last = SharedRef<DetailKeys>(new DetailKeys(keys));
    return last;
}

DetailKeys::DetailKeys(const VELListValVELUnicodeString& keys)
    : list_(keys), sorted_(static_cast<std::size_t>(keys.Size())) {
    std::iota(sorted_.begin(), sorted_.end(), 0U);
    std::sort(sorted_.begin(), sorted_.end(), [this](std::uint32_t one, std::uint32_t other) {
        const int order = At(one).compare(At(other));
        return order != 0 ? order < 0 : one < other;
    });
    const auto end =
        std::unique(sorted_.begin(), sorted_.end(), [this](std::uint32_t one, std::uint32_t other) {
            return At(one) == At(other);
        });
    sorted_.erase(end, sorted_.end());
}

bool DetailKeys::HasKeys(const VELListValVELUnicodeString& keys) const noexcept {
    if (keys.Size() != list_.Size())
        return false;
    for (int pos = 1; pos <= keys.Size(); ++pos) {
        if (keys[pos] != list_[pos])
            return false;
    }
    return true;
}

void DetailKeys::Release() const noexcept {
    if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete this;
}

void* ProviderData::Allocate(std::size_t count, std::size_t bytes) {
    // The ends of the texts are kept in 32 bits.
    if (bytes > std::numeric_limits<std::uint32_t>::max())
        throw std::bad_alloc();
    return ::operator new(sizeof(ProviderData) + (count + 1) * sizeof(std::uint32_t) + bytes);
}

void ProviderData::Fill(std::uint32_t index, std::string_view text) noexcept {
    auto* ends = reinterpret_cast<std::uint32_t*>(this + 1);
    auto* bytes = reinterpret_cast<char*>(ends + count_ + 1);
    const std::uint32_t begin = index == 0 ? 0 : ends[index - 1];
    if (!text.empty())
        std::memcpy(bytes + begin, text.data(), text.size());
    ends[index] = begin + static_cast<std::uint32_t>(text.size());
}

void ProviderData::Release() const noexcept {
    if (references_.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    auto* block = const_cast<ProviderData*>(this);
    block->~ProviderData();
    ::operator delete(block);
}

} // namespace dyadctx
