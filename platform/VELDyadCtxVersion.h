// SPDX-License-Identifier: MIT
// The version of the library that a program is compiled with; the build takes it from here.
// Below 1.0 a change of MINOR may break compiled programs, from then on a change of MAJOR
// (docs/abi.md).
#pragma once

#define DYADCTX_VERSION_MAJOR 0
#define DYADCTX_VERSION_MINOR 1
#define DYADCTX_VERSION_PATCH 0

// As a text: "0.1.0".
#define DYADCTX_VERSION_TEXT_OF(number) #number
#define DYADCTX_VERSION_JOIN(major, minor, patch)                                                  \
    DYADCTX_VERSION_TEXT_OF(major)                                                                 \
    "." DYADCTX_VERSION_TEXT_OF(minor) "." DYADCTX_VERSION_TEXT_OF(patch)
#define DYADCTX_VERSION                                                                            \
    DYADCTX_VERSION_JOIN(DYADCTX_VERSION_MAJOR, DYADCTX_VERSION_MINOR, DYADCTX_VERSION_PATCH)
