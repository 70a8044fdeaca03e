// SPDX-License-Identifier: MIT
#include "platform/detail/DomNames.h"

namespace dyadctx {

DomNames::DomNames() : names_(1) {}

std::uint32_t DomNames::Intern(std::string_view name) {
    if (const std::uint32_t known = Find(name); known != None)
        return known;
    const auto id = static_cast<std::uint32_t>(names_.size());
    const std::string_view text(bytes_.CopyBytes(name), name.size());
    names_.push_back({text});
    try {
        index_.emplace(text, id);
    } catch (...) {
        names_.pop_back();
        throw;
    }
    recent_[RecentSlot(text)] = id;
    return id;
}

std::uint32_t DomNames::Find(std::string_view name) const noexcept {
    if (name.empty())
        return None;
    std::uint32_t& recent = recent_[RecentSlot(name)];
    if (names_[recent].text == name)
        return recent;
    const auto found = index_.find(name);
    if (found == index_.end())
        return None;
    recent = found->second;
    return recent;
}

std::uint64_t DomNames::AllElements() const noexcept {
    std::uint64_t all = 0;
    for (const Name& name : names_)
        all += name.elements;
    return all;
}

std::size_t DomNames::RecentSlot(std::string_view name) noexcept {
    const auto first = static_cast<unsigned char>(name.front());
    const auto last = static_cast<unsigned char>(name.back());
    return (name.size() * 37U + first * std::size_t{5} + last) % RecentCount;
}

} // namespace dyadctx
