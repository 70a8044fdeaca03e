// SPDX-License-Identifier: MIT
// The keys of the library's messages, grouped by number of parameters.
#pragma once

namespace dyadctx::key {

// The catalog they belong to.
inline constexpr const char* Catalog = "VELDyadCtxDlgSelection";

// Validation, no parameter.
inline constexpr const char* NoCtxDefined = "Ctx.Check.NoCtxDefined";
inline constexpr const char* CtxEmptyName = "Ctx.Check.CtxEmptyName";
inline constexpr const char* CtxNameWithInvalidChar = "Ctx.Check.CtxNameWithInvalidChar";
// One parameter.
inline constexpr const char* CtxNameTooLong = "Ctx.Check.CtxNameTooLong";
inline constexpr const char* CtxEmptyParam = "Ctx.Check.CtxEmptyParam";
inline constexpr const char* CtxAlreadyDefined = "Ctx.Check.CtxAlreadyDefined";
// Two parameters.
inline constexpr const char* CtxUnknownParamType = "Ctx.Check.CtxUnknownParamType";
inline constexpr const char* CtxDatabaseAlreadyDefined = "Ctx.Check.CtxDatabaseAlreadyDefined";
inline constexpr const char* CtxAndFriendWithSameName = "Ctx.Check.CtxAndFriendWithSameName";
inline constexpr const char* CtxAndFriendWithCyclicity = "Ctx.Check.CtxAndFriendWithCyclicity";
inline constexpr const char* CtxAndAssocWithSameName = "Ctx.Check.CtxAndAssocWithSameName";
inline constexpr const char* CtxAndAssocWithCyclicity = "Ctx.Check.CtxAndAssocWithCyclicity";
inline constexpr const char* CtxDefaultInvalidParam = "Ctx.Check.CtxDefaultInvalidParam";
// Three parameters.
inline constexpr const char* CtxDefaultInvalidParamType = "Ctx.Check.CtxDefaultInvalidParamType";
inline constexpr const char* CtxDefaultInvalidName = "Ctx.Check.CtxDefaultInvalidName";

// Creation, no parameter.
inline constexpr const char* InternalError = "Ctx.Collector.InternalError";
inline constexpr const char* XMLFileNotSet = "Ctx.Collector.XMLFileNotSet";
// One parameter.
inline constexpr const char* XMLFileNotValid = "Ctx.Collector.XMLFileNotValid";

// The heading of a failed step, no parameter: prefix, step name, suffix.
inline constexpr const char* StepPrefix = "Ctx.Collector.";
inline constexpr const char* StepSuffix = "Error";
inline constexpr const char* StepParse = "Parse";
inline constexpr const char* StepSetFriendsAndAssociated = "SetFriendsAndAssociated";
inline constexpr const char* StepCheck = "Check";
inline constexpr const char* StepStream = "Stream";

// Linking, two parameters. The second key contains two consecutive dots.
inline constexpr const char* CtxFriendNoMatchingCtx =
    "Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx";
inline constexpr const char* CtxAssocNoMatchingCtx =
    "Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx";

// Reading, no parameter.
inline constexpr const char* CtxNoName = "Ctx.Parse.CtxNoName";
inline constexpr const char* CtxNoConnector = "Ctx.Parse.CtxNoConnector";
inline constexpr const char* CtxFriendWithFriend = "Ctx.Parse.CtxFriendWithFriend";
inline constexpr const char* CtxAssociatedWithAssociated = "Ctx.Parse.CtxAssociatedWithAssociated";
inline constexpr const char* NoCtxDefinedForFriend = "Ctx.Parse.NoCtxDefinedForFriend";
inline constexpr const char* NoCtxDefinedForAssociated = "Ctx.Parse.NoCtxDefinedForAssociated";
inline constexpr const char* XMLSyntaxError = "Ctx.Parse.XMLSyntaxError";
// One parameter.
inline constexpr const char* CtxNoParam = "Ctx.Parse.CtxNoParam";
inline constexpr const char* CtxNoParamType = "Ctx.Parse.CtxNoParamType";
inline constexpr const char* CtxNoDatabase = "Ctx.Parse.CtxNoDatabase";
inline constexpr const char* CtxFriendNoName = "Ctx.Parse.CtxFriendNoName";
inline constexpr const char* CtxAssocNoName = "Ctx.Parse.CtxAssocNoName";
inline constexpr const char* TagNotFound = "Ctx.Parse.TagNotFound";
inline constexpr const char* NotAValidTag = "Ctx.Parse.NotAValidTag";

// Labels of the parameter types, no parameter.
inline constexpr const char* ParameterTypePrefix = "Ctx.ParameterType.";
inline constexpr const char* ParameterTypeDefault = "Ctx.ParameterType.Default";
inline constexpr const char* ParameterTypePath = "Ctx.ParameterType.Path";
inline constexpr const char* ParameterTypeFile = "Ctx.ParameterType.File";
inline constexpr const char* ParameterTypeDatabase = "Ctx.ParameterType.Database";

} // namespace dyadctx::key
