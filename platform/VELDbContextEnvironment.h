// The switch that says whether database contexts take part.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELUnicodeString.h"

// "1" while the switch is on, "0" while it is off. Asked at every decision, so it is cheap.
VELDYADCTX_EXPORT VELUnicodeString IsDbContextEnvironmentActivated();

// Turns the built-in switch. At load it is on when the environment variable VELDbContextEnvironment
// is "1", else off. Without effect on the answer while a host's own source is in place.
VELDYADCTX_EXPORT void SetDbContextEnvironment(bool active);

// What a host implements to answer the question itself.
class VELDYADCTX_EXPORT VELDbContextEnvironmentSource {
public:
    virtual ~VELDbContextEnvironmentSource();
    virtual bool IsActive() noexcept = 0;
};

// Puts a host's source in place of the built-in switch and gives the one it replaces (null for the
// built-in switch). Null puts the switch back. The source stays the host's.
VELDYADCTX_EXPORT VELDbContextEnvironmentSource*
SetDbContextEnvironmentSource(VELDbContextEnvironmentSource* source) noexcept;
