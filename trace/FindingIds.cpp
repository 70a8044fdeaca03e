#include "trace/detail/FindingIds.h"

#include <algorithm>
#include <array>

namespace dyadctx {

namespace {

using enum VELDyadCtxSeverity;

constexpr std::array Kinds{
    FindingKind{id::OptionWithoutName, Error,
                "An Option of the context \"{0}\" has no name. The library gives up such a file "
                "without a message; write the name."},
    FindingKind{id::ProviderFailed, Error,
                "The database services refused the connector or the server details of the context "
                "\"{0}\". The library gives up such a file without a message."},
    FindingKind{id::UnknownAttribute, Warning,
                "The attribute \"{0}\" of {1} means nothing and is not read."},
    FindingKind{id::UnusedAttribute, Warning,
                "The attribute \"{0}\" is read for contexts of type \"Database\" only; the type of "
                "this one is \"{1}\"."},
    FindingKind{id::UnknownElement, Warning,
                "The element {0} means nothing; it is skipped with all that is in it."},
    FindingKind{id::MisplacedElement, Warning, "The element {0} has no effect inside {1}."},
    FindingKind{id::NestedData, Warning,
                "CtxData is found here, but belongs directly into DyAdDescription; the element "
                "{0} around it means nothing."},
    FindingKind{id::RepeatedFriend, Warning,
                "The context \"{0}\" names the friend \"{1}\" more than once."},
    FindingKind{
        id::SeveralAssociated, Warning,
        "The context \"{0}\" has several associated contexts; only the last one counts, and "
        "\"{1}\" does not."},
    FindingKind{
        id::RepeatedScenario, Warning,
        "The context \"{0}\" has the scenario \"{1}\" of the profile \"{2}\" more than once; "
        "the options of all count."},
    FindingKind{id::RepeatedOption, Warning,
                "The option \"{0}\" is given more than once in one scenario; all of its values "
                "count."},
    FindingKind{id::MissingPath, Warning,
                "The path \"{1}\" of the context \"{0}\" does not exist."},
    FindingKind{id::MissingFile, Warning,
                "The file \"{1}\" of the context \"{0}\" does not exist."},
    FindingKind{id::FriendRing, Warning, "Friends lead back to where they began: {0}."},
    FindingKind{id::FriendsOfLeftOut, Warning,
                "The context \"{0}\" is left out while the DB context environment is off; what is "
                "written as its friends becomes friends of \"{1}\", the context before it."},
    FindingKind{id::FriendsOfRepeated, Warning,
                "This adds a server to the context \"{0}\"; what is written as its friends becomes "
                "friends of \"{1}\", the context before it."},
    FindingKind{id::NearestName, Note, "Did you mean \"{1}\" instead of \"{0}\"?"},
    FindingKind{id::NoDefaultContext, Note,
                "The file declares no default context, which is named \"DYADIC\"."},
    FindingKind{id::DatabaseLeftOut, Note,
                "Contexts of type Database are left out while the DB context environment is off: "
                "{0} in this file, the first is \"{1}\"."},
    FindingKind{id::AssociatedLeftOut, Note,
                "CtxAssociated is not read while the DB context environment is off: {0} in this "
                "file, this is the first."},
};

} // namespace

std::span<const FindingKind> OwnFindingKinds() noexcept {
    return Kinds;
}

const FindingKind* FindOwnKind(std::string_view id) noexcept {
    const auto* found = std::find_if(Kinds.begin(), Kinds.end(),
                                     [id](const FindingKind& kind) { return kind.id == id; });
    return found != Kinds.end() ? found : nullptr;
}

} // namespace dyadctx
