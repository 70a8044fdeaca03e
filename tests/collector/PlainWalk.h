// SPDX-License-Identifier: MIT
// Linking and checking once more, step by step over plain values, without any index or cache. What
// the library returns is compared with it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace dyadctx::test {

// A friend or associated context: a declared one, or just a name.
struct PlainLink {
    std::string name;
    // Position from 1; 0 while it is only a name.
    int target = 0;
};

struct PlainProvider {
    std::string connector;
    std::string server;
};

struct PlainContext {
    std::string name;
    std::string parameter;
    std::string type;
    std::optional<PlainProvider> provider;
    std::vector<PlainLink> friends;
    std::optional<PlainLink> associated;
};

// The declared contexts; a position without value is empty.
using PlainContexts = std::vector<std::optional<PlainContext>>;

class PlainWalk {
public:
    PlainWalk(PlainContexts contexts, bool environment)
        : contexts_(std::move(contexts)), environment_(environment) {}

    // Each returns whether all is well; messages go to Message() as the key catalog writes them.
    bool Link();
    bool Check();
    bool CheckOne(int pos);

    const std::string& Message() const { return message_; }
    void ClearMessage() { message_.clear(); }
    const PlainContexts& Contexts() const { return contexts_; }

private:
    bool LinkFriends(PlainContext& context);
    int FirstNamed(const std::string& name) const;
    void CheckOwn(const PlainContext& context);
    void CheckDefault(const PlainContext& context);
    void CheckDuplicates(const PlainContext& context, int pos);
    void CheckFriends(const PlainContext& context);
    void CheckAssociated(const PlainContext& context);
    const PlainContext* Declared(const PlainLink& link) const;
    void Say(const std::string& message);

    PlainContexts contexts_;
    bool environment_;
    std::string message_;
    bool valid_ = true;
};

} // namespace dyadctx::test
