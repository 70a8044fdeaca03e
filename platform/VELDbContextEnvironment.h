// SPDX-License-Identifier: MIT
// The switch that enables database contexts.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELUnicodeString.h"

// "1" while the switch is on, "0" while it is off. Called at every decision, so it is cheap.
VELDYADCTX_EXPORT VELUnicodeString IsDbContextEnvironmentActivated();

// Sets the built-in switch. At load it is on if the environment variable VELDbContextEnvironment is
// "1". While a host's source is set, that source decides instead.
VELDYADCTX_EXPORT void SetDbContextEnvironment(bool active);

// Implemented by a host to decide itself.
class VELDYADCTX_EXPORT VELDbContextEnvironmentSource {
public:
    virtual ~VELDbContextEnvironmentSource();
    virtual bool IsActive() noexcept = 0;
};

// Replaces the built-in switch with a host's source and returns the previous one (null for the
// built-in switch). Null restores the switch. The host keeps ownership.
VELDYADCTX_EXPORT VELDbContextEnvironmentSource*
SetDbContextEnvironmentSource(VELDbContextEnvironmentSource* source) noexcept;
