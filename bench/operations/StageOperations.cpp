// SPDX-License-Identifier: MIT
#include "bench/operations/LibraryOperations.h"
#include "bench/operations/LoadedFile.h"
#include "collector/detail/CollectorAccess.h"
#include "collector/detail/CollectorInternals.h"
#include "platform/VELDbContextEnvironment.h"
#include "platform/VELIXMLDOM.h"
#include "platform/detail/DomAccess.h"
#include "xml/detail/VELDyadCtxXml.h"

#include <stdexcept>

namespace dyadctx::bench {

namespace {

enum class Stage { Read, Link, Check, Views };

void Demand(VELResult result, const VELUnicodeString& message) {
    if (result < 0)
        throw std::runtime_error(std::string(message.AsView().substr(0, 200)));
}

void RunStage(VELDyadCtxCollector& collector, Stage stage) {
    VELUnicodeString message;
    switch (stage) {
    case Stage::Read:
        return Demand(VELDyadCtxXml(&collector).Unstream(message), message);
    case Stage::Link:
        return Demand(CollectorInternals::SetFriendsAndAssociated(collector, message), message);
    case Stage::Check:
        return Demand(CollectorInternals::Check(collector, message), message);
    case Stage::Views:
        return Demand(collector.SetCtxTypeList(), message);
    }
}

// One step of creation, after those before it.
template<Stage stage>
class CreationStage : public Operation {
public:
    explicit CreationStage(const Workplace& place) : file_(place.file.c_str()) {}
    void Prepare() override {
        SetDbContextEnvironment(true);
        collector_.reset(CollectorAccess::New(file_, 0));
        for (const Stage before : {Stage::Read, Stage::Link, Stage::Check}) {
            if (before < stage)
                RunStage(*collector_, before);
        }
    }
    std::size_t Run() override {
        RunStage(*collector_, stage);
        return static_cast<std::size_t>(collector_->GetAllNbCtxs());
    }
    void Finish() override { collector_.reset(); }

private:
    VELUnicodeString file_;
    CollectorPtr collector_;
};

// The library's own tree of the file and nothing else. Counts the files that the scanner of plain
// documents has read, so 0 says that it was the parser.
class ParseTree : public Operation {
public:
    explicit ParseTree(const Workplace& place) : file_(place.file.c_str()) {}
    std::size_t Run() override {
        VELIXMLDOMDocumentBuilder builder;
        if (CreateVELIXMLDOMDocumentBuilder(builder, CLSID_XML4C_DOM) < 0 ||
            builder.Parse(file_, nullptr, nullptr, {}, {}, document_) < 0)
            throw std::runtime_error("cannot parse the file");
        return DomAccess::IsFromScanner(document_) ? 1 : 0;
    }
    void Finish() override { document_ = {}; }

private:
    VELUnicodeString file_;
    VELIDOMDocument document_;
};

} // namespace

void AddStageOperations(OperationList& list) {
    list.push_back({"tree", "the library's tree of the file", Make<ParseTree>});
    list.push_back({"read", "reading the file into a collector", Make<CreationStage<Stage::Read>>});
    list.push_back({"link", "linking friends", Make<CreationStage<Stage::Link>>});
    list.push_back({"check", "checking every context", Make<CreationStage<Stage::Check>>});
    list.push_back({"views", "filling the views", Make<CreationStage<Stage::Views>>});
}

} // namespace dyadctx::bench
