// The keys of the library's messages, each with its number of parameters.
#pragma once

namespace dyadctx::key {

// Validation.
inline constexpr const char* NoCtxDefined = "Ctx.Check.NoCtxDefined";                           // 0
inline constexpr const char* CtxEmptyName = "Ctx.Check.CtxEmptyName";                           // 0
inline constexpr const char* CtxNameTooLong = "Ctx.Check.CtxNameTooLong";                       // 1
inline constexpr const char* CtxNameWithInvalidChar = "Ctx.Check.CtxNameWithInvalidChar";       // 0
inline constexpr const char* CtxEmptyParam = "Ctx.Check.CtxEmptyParam";                         // 1
inline constexpr const char* CtxUnknownParamType = "Ctx.Check.CtxUnknownParamType";             // 2
inline constexpr const char* CtxAlreadyDefined = "Ctx.Check.CtxAlreadyDefined";                 // 1
inline constexpr const char* CtxDatabaseAlreadyDefined = "Ctx.Check.CtxDatabaseAlreadyDefined"; // 2
inline constexpr const char* CtxAndFriendWithSameName = "Ctx.Check.CtxAndFriendWithSameName";   // 2
inline constexpr const char* CtxAndFriendWithCyclicity = "Ctx.Check.CtxAndFriendWithCyclicity"; // 2
inline constexpr const char* CtxAndAssocWithSameName = "Ctx.Check.CtxAndAssocWithSameName";     // 2
inline constexpr const char* CtxAndAssocWithCyclicity = "Ctx.Check.CtxAndAssocWithCyclicity";   // 2
inline constexpr const char* CtxDefaultInvalidParamType =
    "Ctx.Check.CtxDefaultInvalidParamType";                                               // 3
inline constexpr const char* CtxDefaultInvalidName = "Ctx.Check.CtxDefaultInvalidName";   // 3
inline constexpr const char* CtxDefaultInvalidParam = "Ctx.Check.CtxDefaultInvalidParam"; // 2

// Creation.
inline constexpr const char* InternalError = "Ctx.Collector.InternalError";     // 0
inline constexpr const char* XMLFileNotSet = "Ctx.Collector.XMLFileNotSet";     // 0
inline constexpr const char* XMLFileNotValid = "Ctx.Collector.XMLFileNotValid"; // 1
// The heading of a failed step is "Ctx.Collector.", the step's name and "Error": no parameter.
inline constexpr const char* StepPrefix = "Ctx.Collector.";
inline constexpr const char* StepSuffix = "Error";
inline constexpr const char* StepParse = "Parse";
inline constexpr const char* StepSetFriendsAndAssociated = "SetFriendsAndAssociated";
inline constexpr const char* StepCheck = "Check";
inline constexpr const char* StepStream = "Stream";

// Linking. The second key has two dots in a row.
inline constexpr const char* CtxFriendNoMatchingCtx =
    "Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx"; // 2
inline constexpr const char* CtxAssocNoMatchingCtx =
    "Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx"; // 2

// Reading.
inline constexpr const char* CtxNoName = "Ctx.Parse.CtxNoName";                     // 0
inline constexpr const char* CtxNoParam = "Ctx.Parse.CtxNoParam";                   // 1
inline constexpr const char* CtxNoParamType = "Ctx.Parse.CtxNoParamType";           // 1
inline constexpr const char* CtxNoDatabase = "Ctx.Parse.CtxNoDatabase";             // 1
inline constexpr const char* CtxFriendNoName = "Ctx.Parse.CtxFriendNoName";         // 1
inline constexpr const char* CtxAssocNoName = "Ctx.Parse.CtxAssocNoName";           // 1
inline constexpr const char* CtxNoConnector = "Ctx.Parse.CtxNoConnector";           // 0
inline constexpr const char* CtxFriendWithFriend = "Ctx.Parse.CtxFriendWithFriend"; // 0
inline constexpr const char* CtxAssociatedWithAssociated =
    "Ctx.Parse.CtxAssociatedWithAssociated";                                                    // 0
inline constexpr const char* NoCtxDefinedForFriend = "Ctx.Parse.NoCtxDefinedForFriend";         // 0
inline constexpr const char* NoCtxDefinedForAssociated = "Ctx.Parse.NoCtxDefinedForAssociated"; // 0
inline constexpr const char* TagNotFound = "Ctx.Parse.TagNotFound";                             // 1
inline constexpr const char* NotAValidTag = "Ctx.Parse.NotAValidTag";                           // 1
inline constexpr const char* XMLSyntaxError = "Ctx.Parse.XMLSyntaxError";                       // 0

// Labels of the parameter types.
inline constexpr const char* ParameterTypeDefault = "Ctx.ParameterType.Default";   // 0
inline constexpr const char* ParameterTypePath = "Ctx.ParameterType.Path";         // 0
inline constexpr const char* ParameterTypeFile = "Ctx.ParameterType.File";         // 0
inline constexpr const char* ParameterTypeDatabase = "Ctx.ParameterType.Database"; // 0

} // namespace dyadctx::key
