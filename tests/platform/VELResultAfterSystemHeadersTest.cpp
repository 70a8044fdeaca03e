// SPDX-License-Identifier: MIT
// A client's source that includes the Windows headers first sees these macros, with a type of its
// own; the codes have to mean the same.
using SystemResult = int;
#define S_OK (static_cast<SystemResult>(0L))
#define S_FALSE (static_cast<SystemResult>(1L))
#define E_FAIL (static_cast<SystemResult>(0x80004005L))

#include "platform/VELResult.h"

#include "platform/VELDyadDbProviderServices.h"

#include <gtest/gtest.h>

TEST(VELResult, AgreesWithTheMacrosOfTheSystemHeaders) {
    VELIDyadDbProvider_var provider;
    const VELResult refused =
        VELDyadDbProviderServices::CreateDyadDbProviderFromDbProvider(provider, provider);
    EXPECT_EQ(E_FAIL, refused);
    EXPECT_LT(refused, 0);
    EXPECT_EQ(S_OK, VELDyadDbProviderServices::CreateDyadDbProvider(provider));
    EXPECT_EQ(1, S_FALSE);
}
