// What the text of a settings file says, and how it changes: a TOML document whose top-level texts
// are the attributes of a repository.
#pragma once

#include "platform/VELListVal.h"
#include "platform/VELSysSettingRepository.h"

#include <string>
#include <string_view>

namespace dyadctx {

// Each returns why it refuses, with the place in the text; Kind::None when it is done. Nothing is
// changed by a refusal. All may throw std::bad_alloc.

VELSettingRefusal CheckSettings(std::string_view text);
VELSettingRefusal ReadSetting(std::string_view text, std::string_view name, VELSetting& setting);
// The attributes that are texts, in the order of the file.
VELSettingRefusal ListSettings(std::string_view text, VELListVal<VELSetting>& settings);
// Changes the value where it is, or adds a line after the other attributes. All else stays.
VELSettingRefusal SetSetting(std::string& text, std::string_view name, std::string_view value);
// Removes the lines of the attribute.
VELSettingRefusal RemoveSetting(std::string& text, std::string_view name);

} // namespace dyadctx
