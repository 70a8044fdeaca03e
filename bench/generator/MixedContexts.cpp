// SPDX-License-Identifier: MIT
#include "bench/generator/MixedContexts.h"

#include "bench/generator/Names.h"

#include <vector>

namespace dyadctx::bench {

namespace {

enum Purpose : std::uint64_t {
    KindChoice = 1,
    LinkChoice,
    FriendTarget,
    SecondFriendTarget,
    ForwardTarget,
    AssociatedTarget,
    ScenarioChoice,
    ParameterChoice
};

// Of a hundred contexts.
constexpr std::uint64_t PathShare = 45;
constexpr std::uint64_t FileShare = 15;
constexpr std::uint64_t FriendShare = 28;
constexpr std::uint64_t ForwardShare = 4;
constexpr std::uint64_t AssociatedShare = 6;
constexpr std::uint64_t ScenarioShare = 10;

// Links cannot close a circle of two: they lead to earlier contexts, or from a context with friends
// to a later one without.
class MixedContext {
public:
    MixedContext(const ContextFilePlan& plan, std::uint64_t position)
        : plan_(plan), position_(position) {}

    void Write(ContextText& text) const;

private:
    std::uint64_t Of(std::uint64_t range, Purpose purpose) const {
        return Chance(plan_.seed, position_, purpose) % range;
    }
    bool HasFriends() const { return Of(100, LinkChoice) < FriendShare; }
    bool HasAssociated() const {
        const std::uint64_t choice = Of(100, LinkChoice);
        return choice >= FriendShare && choice < FriendShare + AssociatedShare;
    }
    bool HasScenario() const { return Of(100, ScenarioChoice) < ScenarioShare; }

    std::uint64_t EarlierContext(Purpose purpose) const { return 1 + Of(position_ - 1, purpose); }
    std::uint64_t LaterContextWithoutFriends() const;
    std::vector<std::uint64_t> Friends() const;

    void WriteAttributes(ContextText& text) const;
    void WritePathAttributes(ContextText& text) const;
    void WriteDatabaseAttributes(ContextText& text) const;
    void WriteLinks(ContextText& text) const;
    void WriteScenario(ContextText& text) const;

    const ContextFilePlan& plan_;
    std::uint64_t position_;
};

std::uint64_t MixedContext::LaterContextWithoutFriends() const {
    for (std::uint64_t p = position_ + 1 + Of(50, ForwardTarget); p <= plan_.count; ++p) {
        if (!MixedContext(plan_, p).HasFriends())
            return p;
    }
    return 0;
}

std::vector<std::uint64_t> MixedContext::Friends() const {
    std::vector<std::uint64_t> friends;
    const std::uint64_t choice = Of(100, LinkChoice);
    if (position_ > 1)
        friends.push_back(EarlierContext(FriendTarget));
    if (position_ > 1 && choice % 2 == 0)
        friends.push_back(EarlierContext(SecondFriendTarget));
    if (choice < ForwardShare) {
        if (const std::uint64_t later = LaterContextWithoutFriends())
            friends.push_back(later);
    }
    return friends;
}

void MixedContext::WritePathAttributes(ContextText& text) const {
    const bool isPath = Of(100, KindChoice) < PathShare;
    const std::uint64_t choice = Of(50, ParameterChoice);
    std::string parameter = choice == 0   ? "D:\\work\\R&D\\"
                            : choice == 1 ? "/srv/données/"
                            : choice % 2  ? "D:\\projects\\"
                                          : "/srv/projects/";
    parameter += std::to_string(position_);
    if (!isPath)
        parameter += ".prd";
    text.Attribute("Parameter", parameter).Attribute("ParameterType", isPath ? "Path" : "File");
}

void MixedContext::WriteDatabaseAttributes(ContextText& text) const {
    text.Attribute("Parameter", "Main")
        .Attribute("ParameterType", "Database")
        .Attribute("ConnectorName", ConnectorAt(plan_.seed, position_))
        .Attribute("Role", Of(3, ParameterChoice) == 0 ? "Archive" : "Main")
        .Attribute("ServerName", Numbered("srv", position_));
    if (Of(2, ParameterChoice) == 0)
        text.Attribute("ServerPort", "4711");
}

void MixedContext::WriteAttributes(ContextText& text) const {
    text.Attribute("Name", NameAt(plan_.seed, position_));
    if (Of(100, KindChoice) < PathShare + FileShare)
        WritePathAttributes(text);
    else
        WriteDatabaseAttributes(text);
}

void MixedContext::WriteLinks(ContextText& text) const {
    if (HasAssociated() && position_ > 1) {
        text.Open("CtxAssociated").EndOpen();
        text.Open("Context")
            .Attribute("Name", NameAt(plan_.seed, EarlierContext(AssociatedTarget)))
            .EndEmpty();
        text.Close("CtxAssociated");
    }
    if (!HasFriends())
        return;
    text.Open("CtxFriends").EndOpen();
    for (const std::uint64_t target : Friends())
        text.Open("Context").Attribute("Name", NameAt(plan_.seed, target)).EndEmpty();
    text.Close("CtxFriends");
}

void MixedContext::WriteScenario(ContextText& text) const {
    text.Open("Scenario").EndOpen();
    text.Open("ScenarioID")
        .Attribute("Ident", Numbered("EX", position_ % 1000))
        .Attribute("name", "Export")
        .EndOpen();
    text.Open("Option").Attribute("name", "Format").Attribute("value", "STEP").EndEmpty();
    text.Close("ScenarioID");
    text.Close("Scenario");
}

void MixedContext::Write(ContextText& text) const {
    text.Open("Context");
    WriteAttributes(text);
    if (!HasFriends() && !HasAssociated() && !HasScenario())
        return text.EndEmpty();
    text.EndOpen();
    WriteLinks(text);
    if (HasScenario())
        WriteScenario(text);
    text.Close("Context");
}

} // namespace

void WriteMixedContexts(const ContextFilePlan& plan, ContextText& text) {
    for (std::uint64_t position = 1; position <= plan.count; ++position)
        MixedContext(plan, position).Write(text);
}

} // namespace dyadctx::bench
