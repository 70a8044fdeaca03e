// SPDX-License-Identifier: MIT
// The names of the context file format, for reader and writer alike.
#pragma once

#include <array>

namespace dyadctx::format {

inline constexpr const char* RootTag = "DyAdDescription";
inline constexpr const char* DataTag = "CtxData";
inline constexpr const char* ContextTag = "Context";
inline constexpr const char* FriendsTag = "CtxFriends";
inline constexpr const char* AssociatedTag = "CtxAssociated";
inline constexpr const char* ScenarioTag = "Scenario";
inline constexpr const char* ScenarioIdTag = "ScenarioID";
inline constexpr const char* OptionTag = "Option";

inline constexpr const char* NameAttribute = "Name";
inline constexpr const char* ParameterAttribute = "Parameter";
inline constexpr const char* ParameterTypeAttribute = "ParameterType";
inline constexpr const char* ConnectorAttribute = "ConnectorName";

inline constexpr const char* HttpDetail = "http";
inline constexpr const char* RoleDetail = "Role";
inline constexpr const char* ServerNameDetail = "ServerName";
inline constexpr const char* ServerPortDetail = "ServerPort";
inline constexpr const char* UriDetail = "URI";
inline constexpr const char* SiteIdDetail = "SiteId";
// The server details in the order in which a provider receives them.
inline constexpr std::array ServerDetails{HttpDetail,       RoleDetail, ServerNameDetail,
                                          ServerPortDetail, UriDetail,  SiteIdDetail};

inline constexpr const char* ScenarioIdentAttribute = "Ident";
inline constexpr const char* ScenarioNameAttribute = "name";
inline constexpr const char* OptionNameAttribute = "name";
inline constexpr const char* OptionValueAttribute = "value";

inline constexpr const char* ValidationOption = "VELDoValidation";
inline constexpr const char* ValidationOff = "false";
inline constexpr const char* EncodingOption = "VELEncoding";
inline constexpr const char* EncodingUtf8 = "UTF-8";
inline constexpr const char* IndentationOption = "VELIndentation";
inline constexpr const char* IndentationOn = "1";

} // namespace dyadctx::format
