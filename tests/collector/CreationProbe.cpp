// Asks CreateCollector once and tells on standard output what it answered, for what is fixed when
// the library is loaded.
//
//   trace            the lines of the platform trace come first, without those of reading and
//                    of single contexts
//   message TEXT     the message text holds that before the call
//   set NAME VALUE   changes the environment before the call, but after the library was loaded

#include "collector/VELDyadCtxCollector.h"
#include "support/ContextFile.h"
#include "support/EnvironmentVariable.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"

#include <cstdio>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace test = dyadctx::test;

namespace {

struct Question {
    bool traced = false;
    std::string message;
    std::list<test::EnvironmentVariable> changes;
};

void Read(const std::vector<std::string>& words, Question& question) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "trace")
            question.traced = true;
        else if (words[i] == "message")
            question.message = words.at(++i);
        else if (words[i] == "set") {
            question.changes.emplace_back(words.at(i + 1), words.at(i + 2));
            i += 2;
        }
    }
}

bool IsOfInterest(const std::string& line) {
    for (const char* part : {" VELDyadCtxXml:", " VELDyadContext:", ":CheckContext ", ":Check",
                             ":SetFriendsAndAssociated"}) {
        if (line.find(part) != std::string::npos)
            return false;
    }
    return true;
}

void Tell(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        if (IsOfInterest(line))
            std::printf("%s\n", line.c_str());
    }
}

void Tell(VELDyadCtxCollector& collector) {
    unsigned char isDefault = 2;
    const std::string file = test::Text(collector.GetXMLFile(isDefault));
    std::printf("file=%s\ndefault=%d\ncontexts=", file.c_str(), isDefault);
    for (const std::string& name : test::ViewOf(collector))
        std::printf("<%s>", name.c_str());
    std::printf("\n");
}

void Ask(const Question& question) {
    const test::KeyCatalog catalog;
    VELUnicodeString message(question.message.c_str());
    auto trace = question.traced ? std::make_unique<test::RecordingTrace>() : nullptr;
    const std::unique_ptr<VELDyadCtxCollector> collector(
        VELDyadCtxCollector::CreateCollector(message));
    if (trace != nullptr)
        Tell(trace->TakeLines());
    trace.reset();
    if (collector != nullptr)
        Tell(*collector);
    std::printf("message=%s\n", message.ConvertToChar());
}

} // namespace

int main(int count, char** words) {
    Question question;
    Read(std::vector<std::string>(words + 1, words + count), question);
    Ask(question);
    return 0;
}
