// SPDX-License-Identifier: MIT
#include "bench/peers/PeerOperations.h"

#include <expat.h>

#include <cstdio>
#include <stdexcept>

namespace dyadctx::bench {

namespace {

constexpr int BufferSize = 256 * 1024;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
struct FreeParser {
    void operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }
};

class ExpatPass : public Operation {
public:
    explicit ExpatPass(const Workplace& place) : file_(place.file) {}

    std::size_t Run() override {
        const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(file_.c_str(), "rb"));
        const std::unique_ptr<XML_ParserStruct, FreeParser> parser(XML_ParserCreate(nullptr));
        if (!file || !parser)
            throw std::runtime_error("expat: cannot read " + file_);
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
        std::size_t bytes = 0;
        for (bool last = false; !last;) {
            void* buffer = XML_GetBuffer(parser.get(), BufferSize);
            if (!buffer)
                throw std::runtime_error("expat: no memory");
            const std::size_t length = std::fread(buffer, 1, BufferSize, file.get());
            last = length < static_cast<std::size_t>(BufferSize);
            const auto status = XML_ParseBuffer(parser.get(), static_cast<int>(length), last);
            if (status != XML_STATUS_OK || std::ferror(file.get()))
                throw std::runtime_error("expat: cannot parse " + file_);
            bytes += length;
        }
        return bytes;
    }

private:
    std::string file_;
};

} // namespace

void AddExpatOperations(OperationList& list) {
    list.push_back({"expat", "one pass of Expat without handlers", Make<ExpatPass>});
}

} // namespace dyadctx::bench
