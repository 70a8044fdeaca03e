// SPDX-License-Identifier: MIT
#include "bench/peers/PeerOperations.h"

#include <pugixml.hpp>

#include <stdexcept>

namespace dyadctx::bench {

namespace {

class PugiXmlTree : public Operation {
public:
    explicit PugiXmlTree(const Workplace& place) : file_(place.file) {}

    std::size_t Run() override {
        document_ = std::make_unique<pugi::xml_document>();
        if (!document_->load_file(file_.c_str()))
            throw std::runtime_error("pugixml: cannot read " + file_);
        return document_->document_element() ? 1 : 0;
    }
    void Finish() override { document_.reset(); }

private:
    std::string file_;
    std::unique_ptr<pugi::xml_document> document_;
};

} // namespace

void AddPugiXmlOperations(OperationList& list) {
    list.push_back({"pugixml", "the tree of pugixml", Make<PugiXmlTree>});
}

} // namespace dyadctx::bench
