#include "context/detail/TextHash.h"

#include <bit>
#include <chrono>
#include <cstring>
#include <exception>
#include <random>

namespace dyadctx {

namespace {

struct Secret {
    std::uint64_t first;
    std::uint64_t second;
};

Secret MakeSecret() noexcept {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    Secret secret{static_cast<std::uint64_t>(now), reinterpret_cast<std::uintptr_t>(&now)};
    try {
        std::random_device random;
        secret.first ^= (std::uint64_t{random()} << 32) | random();
        secret.second ^= (std::uint64_t{random()} << 32) | random();
    } catch (const std::exception&) {
        // Without a source of randomness, time and place have to do.
    }
    return secret;
}

const Secret& ProcessSecret() noexcept {
    static const Secret secret = MakeSecret();
    return secret;
}

// SipHash with one round per word and three at the end.
class SipState {
public:
    explicit SipState(const Secret& secret) noexcept
        : a_(secret.first ^ 0x736f6d6570736575U), b_(secret.second ^ 0x646f72616e646f6dU),
          c_(secret.first ^ 0x6c7967656e657261U), d_(secret.second ^ 0x7465646279746573U) {}

    void Add(std::uint64_t word) noexcept {
        d_ ^= word;
        Round();
        a_ ^= word;
    }

    std::uint64_t Finish() noexcept {
        c_ ^= 0xff;
        Round();
        Round();
        Round();
        return a_ ^ b_ ^ c_ ^ d_;
    }

private:
    void Round() noexcept {
        a_ += b_;
        c_ += d_;
        b_ = std::rotl(b_, 13) ^ a_;
        d_ = std::rotl(d_, 16) ^ c_;
        a_ = std::rotl(a_, 32);
        c_ += b_;
        a_ += d_;
        b_ = std::rotl(b_, 17) ^ c_;
        d_ = std::rotl(d_, 21) ^ a_;
        c_ = std::rotl(c_, 32);
    }

    std::uint64_t a_;
    std::uint64_t b_;
    std::uint64_t c_;
    std::uint64_t d_;
};

} // namespace

std::uint64_t HashOfText(std::string_view text) noexcept {
    constexpr std::size_t wordSize = sizeof(std::uint64_t);
    SipState state(ProcessSecret());
    std::string_view rest = text;
    for (; rest.size() >= wordSize; rest.remove_prefix(wordSize)) {
        std::uint64_t word = 0;
        std::memcpy(&word, rest.data(), wordSize);
        state.Add(word);
    }
    std::uint64_t last = 0;
    if (!rest.empty())
        std::memcpy(&last, rest.data(), rest.size());
    state.Add(last | (static_cast<std::uint64_t>(text.size()) << 56));
    return state.Finish();
}

TextSet SetOf(const VELListValVELUnicodeString& texts) {
    TextSet set;
    for (int pos = 1; pos <= texts.Size(); ++pos)
        set.insert(texts[pos].AsView());
    return set;
}

} // namespace dyadctx
