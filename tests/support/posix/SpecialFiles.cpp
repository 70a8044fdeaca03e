#include "support/SpecialFiles.h"

#include <cstring>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace dyadctx::test {

namespace {

constexpr unsigned int ModeBits = 07777;

void Require(bool done, const std::string& path) {
    if (!done)
        throw std::runtime_error("cannot prepare " + path);
}

} // namespace

void MakeFifo(const std::string& path) {
    Require(mkfifo(path.c_str(), 0666) == 0, path);
}

void MakeSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    Require(path.size() < sizeof address.sun_path, path);
    std::memcpy(address.sun_path, path.c_str(), path.size());
    const int made = socket(AF_UNIX, SOCK_STREAM, 0);
    const int bound = bind(made, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    close(made);
    Require(bound == 0, path);
}

FileRights RightsOf(const std::string& path) {
    struct stat status {};
    Require(stat(path.c_str(), &status) == 0, path);
    return {status.st_mode & ModeBits, status.st_uid, status.st_gid};
}

void SetRights(const std::string& path, const FileRights& rights) {
    Require(chown(path.c_str(), rights.owner, rights.group) == 0, path);
    Require(chmod(path.c_str(), rights.mode) == 0, path);
}

bool IsSuperUser() {
    return geteuid() == 0;
}

} // namespace dyadctx::test
