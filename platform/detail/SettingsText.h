// SPDX-License-Identifier: MIT
// Reads and edits the text of a settings file: a TOML document whose top-level strings are the
// attributes of a repository.
#pragma once

#include "platform/VELListVal.h"
#include "platform/VELSysSettingRepository.h"

#include <string>
#include <string_view>

namespace dyadctx {

// Each returns Kind::None, or why it refuses, with the place in the text; the text is then
// unchanged. All may throw std::bad_alloc.

VELSettingRefusal CheckSettings(std::string_view text);
VELSettingRefusal ReadSetting(std::string_view text, std::string_view name, VELSetting& setting);
// The string attributes, in file order.
VELSettingRefusal ListSettings(std::string_view text, VELListVal<VELSetting>& settings);
// Changes the value in place, or adds a line after the other attributes.
VELSettingRefusal SetSetting(std::string& text, std::string_view name, std::string_view value);
// Removes the lines of the attribute.
VELSettingRefusal RemoveSetting(std::string& text, std::string_view name);

} // namespace dyadctx
