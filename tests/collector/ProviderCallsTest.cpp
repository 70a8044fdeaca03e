// SPDX-License-Identifier: MIT
// Every call that a host's providers receive while collectors are made from generated files,
// compared with those that a plain walk through the contexts calls for.
#include "support/ContextFile.h"
#include "support/FaultyProviders.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace dyadctx::test {
namespace {

using Lines = std::vector<std::string>;

// The connector name of the one kind of provider that is never compared.
constexpr const char* Uncompared = "STEP";

// A context as it is in the file; a path context has no connector.
struct Element {
    std::string name;
    std::optional<std::string> connector;
};

class ElementGenerator {
public:
    explicit ElementGenerator(unsigned int seed) : random_(seed) {}

    std::vector<Element> Elements() {
        // In some files names and databases hardly ever meet, so that the last context is reached.
        const int range = Below(2) == 0 ? 12 : 400;
        std::vector<Element> elements;
        for (int left = 1 + Below(24); left > 0; --left) {
            Element element{"N" + std::to_string(Below(range)), std::nullopt};
            if (Below(3) != 0)
                element.connector = Below(6) == 0 ? Uncompared : "P" + std::to_string(Below(range));
            elements.push_back(element);
        }
        return elements;
    }

private:
    int Below(int bound) { return static_cast<int>(random_() % static_cast<unsigned int>(bound)); }

    std::mt19937 random_;
};

std::string FileOf(const std::vector<Element>& elements) {
    std::string contexts;
    for (const Element& element : elements) {
        contexts += "<Context Name='" + element.name + "' Parameter='p' ParameterType='";
        contexts += element.connector
                        ? "Database' ConnectorName='" + *element.connector + "' Role='r'/>"
                        : "Path'/>";
    }
    return DocumentWith(contexts);
}

// The calls, one after the other, without any index, and whether the file is accepted.
class PlainCalls {
public:
    explicit PlainCalls(const std::vector<Element>& elements) {
        for (const Element& element : elements)
            Read(element);
        for (std::size_t at = 0; accepted_ && at < declared_.size(); ++at)
            accepted_ = Check(at);
    }

    const Lines& Calls() const { return calls_; }
    bool IsAccepted() const { return accepted_; }

private:
    struct Declared {
        std::string name;
        std::string connector;
        // The number of the provider it keeps; 0 without one.
        int provider = 0;
    };

    static std::string Label(int provider) { return "#" + std::to_string(provider); }

    int CreateFrom(int source) {
        calls_.push_back("CreateFrom " + Label(source) + " -> " + Label(++made_));
        return made_;
    }

    // A database context that is declared again adds no context.
    void Read(const Element& element) {
        Declared context{element.name, "", 0};
        if (element.connector) {
            const int made = ++made_;
            calls_.push_back("Create -> " + Label(made));
            calls_.push_back(Label(made) + " SetConnectorName " + *element.connector);
            calls_.push_back(Label(made) + " SetServerDetails 6/6");
            context.connector = *element.connector;
            context.provider = CreateFrom(made);
            if (IsDeclared(element.name))
                return;
        }
        declared_.push_back(context);
    }

    bool IsDeclared(const std::string& name) const {
        for (const Declared& context : declared_) {
            if (context.name == name)
                return true;
        }
        return false;
    }

    // Both rules are looked at, also when the first is broken.
    bool Check(std::size_t at) {
        const bool hasNamesake = HasLaterNamesake(at);
        return !HasLaterTwin(at) && !hasNamesake;
    }

    bool HasLaterNamesake(std::size_t at) const {
        for (std::size_t later = at + 1; later < declared_.size(); ++later) {
            if (declared_[later].name == declared_[at].name)
                return true;
        }
        return false;
    }

    bool HasLaterTwin(std::size_t at) {
        if (declared_[at].provider == 0 || at + 1 == declared_.size())
            return false;
        const int asked = CreateFrom(declared_[at].provider);
        calls_.push_back(Label(asked) + " GetName");
        if (declared_[at].connector == Uncompared)
            return false;
        for (std::size_t later = at + 1; later < declared_.size(); ++later) {
            if (declared_[later].provider == 0)
                continue;
            const int other = CreateFrom(declared_[later].provider);
            calls_.push_back(Label(asked) + " IsSame " + Label(other));
            if (declared_[later].connector == declared_[at].connector)
                return true;
        }
        return false;
    }

    std::vector<Declared> declared_;
    Lines calls_;
    int made_ = 0;
    bool accepted_ = true;
};

// Whether the file is accepted.
bool CompareFile(unsigned int seed) {
    const std::vector<Element> elements = ElementGenerator(seed).Elements();
    const PlainCalls expected(elements);
    FaultyProviders providers;
    std::optional<RecordingTrace> trace;
    if (seed % 5 == 0)
        trace.emplace();
    const Creation creation = CreateFromText(FileOf(elements));
    EXPECT_EQ(creation.collector != nullptr, expected.IsAccepted()) << creation.message;
    EXPECT_EQ(providers.TakeCalls(), expected.Calls());
    return expected.IsAccepted();
}

TEST(ProviderCalls, AreThoseOfAPlainWalkOnGeneratedFiles) {
    const KeyCatalog catalog;
    const DbEnvironment environment(true);
    int accepted = 0;
    for (unsigned int seed = 1; seed <= 3000 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        accepted += CompareFile(seed) ? 1 : 0;
    }
    // Both outcomes must be among them in number.
    EXPECT_GT(accepted, 600);
    EXPECT_LT(accepted, 2400);
}

} // namespace
} // namespace dyadctx::test
