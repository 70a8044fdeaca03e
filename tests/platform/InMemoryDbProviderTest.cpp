// SPDX-License-Identifier: MIT
#include "platform/detail/InMemoryDbProvider.h"

#include "platform/VELDyadDbProviderServices.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using dyadctx::InMemoryDbProvider;

namespace {

using Details = std::vector<std::pair<std::string, std::string>>;

void SetDetails(VELIDyadDbProvider& provider, const Details& details) {
    VELListValVELUnicodeString keys;
    VELListValVELUnicodeString values;
    for (const auto& [key, value] : details) {
        keys.Append(VELUnicodeString(key));
        values.Append(VELUnicodeString(value));
    }
    EXPECT_EQ(S_OK, provider.SetServerDetails(keys, values));
}

VELIDyadDbProvider_var Make(const std::string& name, const Details& details = {}) {
    VELIDyadDbProvider_var provider(new InMemoryDbProvider);
    EXPECT_EQ(S_OK, provider->SetConnectorName(VELUnicodeString(name)));
    SetDetails(*provider.Get(), details);
    return provider;
}

Details DetailsOf(const VELIDyadDbProvider_var& provider) {
    VELListValVELUnicodeString keys;
    VELListValVELUnicodeString values;
    keys.Append("stale");
    values.Append("stale");
    EXPECT_EQ(S_OK, provider->GetServerDetails(keys, values));
    EXPECT_EQ(keys.Size(), values.Size());
    Details details;
    for (int pos = 1; pos <= keys.Size(); ++pos)
        details.emplace_back(keys[pos].AsView(), values[pos].AsView());
    return details;
}

std::string NameOf(const VELIDyadDbProvider_var& provider) {
    VELUnicodeString name;
    EXPECT_EQ(S_OK, provider->GetName(name));
    return std::string(name.AsView());
}

bool AreSame(const VELIDyadDbProvider_var& one, const VELIDyadDbProvider_var& other) {
    bool same = false;
    EXPECT_EQ(S_OK, one->IsSame(other, same));
    return same;
}

std::uint64_t HashOf(const VELIDyadDbProvider_var& provider) {
    return InMemoryDbProvider::From(provider)->IdentityHash(
        [](std::string_view bytes) noexcept -> std::uint64_t {
            return std::hash<std::string_view>()(bytes);
        });
}

// Says yes to everything.
class OtherProvider final : public VELIDyadDbProvider {
public:
    VELResult GetName(VELUnicodeString& name) override {
        name = "KRL";
        return S_OK;
    }
    VELResult IsSame(const VELIDyadDbProvider_var&, bool& same) override {
        same = true;
        return S_OK;
    }
    VELResult SetConnectorName(const VELUnicodeString&) override { return S_OK; }
    VELResult SetServerDetails(const VELListValVELUnicodeString&,
                               const VELListValVELUnicodeString&) override {
        return S_OK;
    }
    VELResult GetServerDetails(VELListValVELUnicodeString&, VELListValVELUnicodeString&) override {
        return S_OK;
    }
};

} // namespace

TEST(InMemoryDbProvider, KeepsNameAndDetailsAsGiven) {
    const Details details{{"http", ""},
                          {"Role", "admin"},
                          {"a key of more than fifteen bytes", "a value of more than fifteen"},
                          {"Role", "second"},
                          {std::string("zero\0key", 8), std::string("zero\0value", 10)},
                          {"", "value of the empty key"}};
    const VELIDyadDbProvider_var provider = Make("KRL", details);
    EXPECT_EQ("KRL", NameOf(provider));
    EXPECT_EQ(details, DetailsOf(provider));
}

TEST(InMemoryDbProvider, SettersLeaveTheOtherPartAlone) {
    const VELIDyadDbProvider_var provider(new InMemoryDbProvider);
    SetDetails(*provider.Get(), {{"Role", "admin"}});
    EXPECT_EQ("", NameOf(provider));
    EXPECT_EQ(S_OK, provider->SetConnectorName("KRL"));
    EXPECT_EQ((Details{{"Role", "admin"}}), DetailsOf(provider));
    SetDetails(*provider.Get(), {});
    EXPECT_EQ("KRL", NameOf(provider));
    EXPECT_EQ(Details(), DetailsOf(provider));
}

TEST(InMemoryDbProvider, RefusesListsOfDifferentSizes) {
    const VELIDyadDbProvider_var provider = Make("KRL", {{"Role", "admin"}});
    VELListValVELUnicodeString two;
    two.Append("a");
    two.Append("b");
    VELListValVELUnicodeString one;
    one.Append("c");
    EXPECT_EQ(E_FAIL, provider->SetServerDetails(two, one));
    EXPECT_EQ(E_FAIL, provider->SetServerDetails(one, two));
    EXPECT_EQ((Details{{"Role", "admin"}}), DetailsOf(provider));
}

TEST(InMemoryDbProvider, ClonesShareUntilOneIsSet) {
    const VELIDyadDbProvider_var original = Make("KRL", {{"Role", "admin"}});
    const VELIDyadDbProvider_var clone(InMemoryDbProvider::From(original)->Clone());
    EXPECT_TRUE(original != clone);
    EXPECT_TRUE(AreSame(original, clone));
    SetDetails(*clone.Get(), {{"Role", "guest"}});
    EXPECT_EQ(S_OK, original->SetConnectorName("HWB"));
    EXPECT_EQ("HWB", NameOf(original));
    EXPECT_EQ((Details{{"Role", "admin"}}), DetailsOf(original));
    EXPECT_EQ("KRL", NameOf(clone));
    EXPECT_EQ((Details{{"Role", "guest"}}), DetailsOf(clone));
}

TEST(InMemoryDbProvider, SamenessAndIdentityAgree) {
    const struct {
        VELIDyadDbProvider_var one;
        VELIDyadDbProvider_var other;
        bool same;
    } cases[] = {
        {Make("KRL"), Make("KRL"), true},
        {Make("KRL"), Make("krl"), false},
        {Make(""), VELIDyadDbProvider_var(new InMemoryDbProvider), true},
        {Make("K", {{"a", "1"}}), Make("K", {{"a", "1"}}), true},
        {Make("K", {{"a", "1"}}), Make("K", {{"a", "2"}}), false},
        {Make("K", {{"a", "1"}}), Make("L", {{"a", "1"}}), false},
        {Make("K", {{"a", "1"}}), Make("K", {{"A", "1"}}), false},
        // The order of the details does not matter.
        {Make("K", {{"a", "1"}, {"b", "2"}}), Make("K", {{"b", "2"}, {"a", "1"}}), true},
        {Make("K", {{"a", "1"}, {"b", "2"}}), Make("K", {{"a", "2"}, {"b", "1"}}), false},
        // A missing key is an empty value.
        {Make("K", {{"a", "1"}, {"b", ""}}), Make("K", {{"a", "1"}}), true},
        {Make("K", {{"a", ""}}), Make("K"), true},
        {Make("K", {{"a", "1"}, {"b", "2"}}), Make("K", {{"a", "1"}}), false},
        // Of two details with one key the first counts.
        {Make("K", {{"a", "1"}, {"a", "2"}}), Make("K", {{"a", "1"}}), true},
        {Make("K", {{"a", ""}, {"a", "2"}}), Make("K"), true},
        {Make("K", {{"a", "2"}, {"a", "1"}}), Make("K", {{"a", "1"}}), false},
        // Texts that read alike when put in a row.
        {Make("K", {{"ab", "c"}}), Make("K", {{"a", "bc"}}), false},
        {Make("Ka", {{"b", "c"}}), Make("K", {{"ab", "c"}}), false},
        {Make("K", {{"a", std::string("1\0", 2)}}), Make("K", {{"a", "1"}}), false},
    };
    int row = 0;
    for (const auto& [one, other, same] : cases) {
        EXPECT_EQ(same, AreSame(one, other)) << row;
        EXPECT_EQ(same, AreSame(other, one)) << row;
        EXPECT_EQ(same, HashOf(one) == HashOf(other)) << row;
        EXPECT_TRUE(AreSame(one, one)) << row;
        ++row;
    }
}

TEST(InMemoryDbProvider, NoProviderOfAnotherTypeIsTheSame) {
    const VELIDyadDbProvider_var provider = Make("KRL");
    bool same = true;
    EXPECT_EQ(S_OK, provider->IsSame(VELIDyadDbProvider_var(new OtherProvider), same));
    EXPECT_FALSE(same);
    same = true;
    EXPECT_EQ(S_OK, provider->IsSame(VELIDyadDbProvider_var(), same));
    EXPECT_FALSE(same);
}

TEST(InMemoryDbProvider, IsToldFromOtherTypes) {
    const VELIDyadDbProvider_var provider = Make("KRL");
    EXPECT_EQ(provider.Get(), InMemoryDbProvider::From(provider));
    EXPECT_EQ(nullptr, InMemoryDbProvider::From(VELIDyadDbProvider_var(new OtherProvider)));
    EXPECT_EQ(nullptr, InMemoryDbProvider::From(VELIDyadDbProvider_var()));
}

TEST(InMemoryDbProvider, KeysInARowAreSharedAndFreed) {
    const VELIDyadDbProvider_var one = Make("K", {{"a", "1"}});
    const VELIDyadDbProvider_var other = Make("K", {{"b", "2"}});
    const VELIDyadDbProvider_var third = Make("K", {{"b", "3"}, {"c", "4"}});
    EXPECT_EQ((Details{{"a", "1"}}), DetailsOf(one));
    EXPECT_EQ((Details{{"b", "2"}}), DetailsOf(other));
    EXPECT_EQ((Details{{"b", "3"}, {"c", "4"}}), DetailsOf(third));
}

TEST(InMemoryDbProvider, TheBuiltInFactoryIsActiveUntilAHostSetsItsOwn) {
    class NoFactory final : public VELDyadDbProviderFactory {
        VELResult Create(VELIDyadDbProvider_var&) override { return E_FAIL; }
        VELResult CreateFrom(const VELIDyadDbProvider_var&, VELIDyadDbProvider_var&) override {
            return E_FAIL;
        }
    } factory;
    EXPECT_TRUE(dyadctx::IsBuiltInFactoryActive());
    VELDyadDbProviderServices::SetFactory(&factory);
    EXPECT_FALSE(dyadctx::IsBuiltInFactoryActive());
    VELDyadDbProviderServices::SetFactory(nullptr);
    EXPECT_TRUE(dyadctx::IsBuiltInFactoryActive());
}
