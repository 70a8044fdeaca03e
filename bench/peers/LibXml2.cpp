// SPDX-License-Identifier: MIT
#include "bench/peers/PeerOperations.h"

#include <libxml/parser.h>

#include <stdexcept>

namespace dyadctx::bench {

namespace {

struct FreeDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};

class LibXml2Tree : public Operation {
public:
    explicit LibXml2Tree(const Workplace& place) : file_(place.file) { xmlInitParser(); }

    std::size_t Run() override {
        document_.reset(xmlReadFile(file_.c_str(), nullptr,
                                    XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_COMPACT));
        if (!document_)
            throw std::runtime_error("libxml2: cannot read " + file_);
        return xmlChildElementCount(xmlDocGetRootElement(document_.get()));
    }
    void Finish() override { document_.reset(); }

private:
    std::string file_;
    std::unique_ptr<xmlDoc, FreeDocument> document_;
};

} // namespace

void AddLibXml2Operations(OperationList& list) {
    list.push_back({"libxml2", "the tree of libxml2", Make<LibXml2Tree>});
}

} // namespace dyadctx::bench
