// SPDX-License-Identifier: MIT
#include "trace/detail/UserMessage.h"

#include "platform/VELMsgCatalog.h"
#include "support/FailingAllocation.h"
#include "support/KeyCatalog.h"
#include "trace/VELDyadMessageKeys.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace dyadctx::test {

TEST(CatalogText, IsTheTextOfTheLibrarysCatalog) {
    VELMsgCatalog::SetLanguage("en");
    EXPECT_EQ(CatalogText("Ctx.ParameterType.Database"), VELUnicodeString("Database"));
    EXPECT_EQ(CatalogText("Ctx.Unknown"), VELUnicodeString());
    VELMsgCatalog::SetLanguage(nullptr);
}

TEST(CatalogText, GetsTheParametersInOrder) {
    const KeyCatalog catalog;
    const VELUnicodeString parameters[] = {"a", "b", "c"};
    EXPECT_EQ(CatalogText("Ctx.Key", parameters, 2), VELUnicodeString("Ctx.Key(a|b)"));
    EXPECT_EQ(CatalogText("Ctx.Key"), VELUnicodeString("Ctx.Key()"));
    EXPECT_EQ(CatalogText("Ctx.Key", nullptr, 2), VELUnicodeString("Ctx.Key()"));
}

TEST(AppendCatalogText, AddsALinePerCall) {
    const KeyCatalog catalog;
    VELUnicodeString message("before ");
    AppendCatalogText(message, key::NoCtxDefined, nullptr, 0, 1);
    const VELUnicodeString name("A");
    AppendCatalogText(message, key::CtxAlreadyDefined, &name, 1, 1);

    EXPECT_EQ(message, VELUnicodeString("before Ctx.Check.NoCtxDefined()\n"
                                        "Ctx.Check.CtxAlreadyDefined(A)\n"));
}

TEST(AppendCatalogText, AddsTheNewLineOnlyWhenAsked) {
    const KeyCatalog catalog;
    VELUnicodeString message;
    AppendCatalogText(message, "Ctx.First", nullptr, 0, 0);
    AppendCatalogText(message, "Ctx.Second", nullptr, 0, -1);

    EXPECT_EQ(message, VELUnicodeString("Ctx.First()Ctx.Second()\n"));
}

TEST(AppendCatalogText, AddsOnlyTheNewLineForAnUnknownKey) {
    VELUnicodeString message("before");
    AppendCatalogText(message, "Ctx.Unknown", nullptr, 0, 1);

    EXPECT_EQ(message, VELUnicodeString("before\n"));
}

TEST(AppendCatalogText, TakesTheMessageItselfAsParameter) {
    const KeyCatalog catalog;
    VELUnicodeString message("a message that is long enough to move when it grows");
    AppendCatalogText(message, "Ctx.Key", &message, 1, 1);

    EXPECT_EQ(message, VELUnicodeString("a message that is long enough to move when it grows"
                                        "Ctx.Key(a message that is long enough to move when it "
                                        "grows)\n"));
}

TEST(AppendCatalogText, LeavesTheMessageAsItWasWithoutMemory) {
    const VELUnicodeString before("a message that is long enough not to be kept inside");
    VELUnicodeString message(before);
    {
        const FailingAllocation failure(1, FailingAllocations::FromThatOneOn);
        EXPECT_THROW(AppendCatalogText(message, "Ctx.Key", nullptr, 0, 1), std::bad_alloc);
    }
    EXPECT_EQ(message, before);
}

TEST(MessageKeys, OfTheAssociatedContextHasTwoDots) {
    EXPECT_STREQ(key::CtxFriendNoMatchingCtx, "Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx");
    EXPECT_STREQ(key::CtxAssocNoMatchingCtx, "Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx");
}

} // namespace dyadctx::test
