// Files that the standard library cannot make, and the rights of files.
#pragma once

#include <string>

namespace dyadctx::test {

void MakeFifo(const std::string& path);
void MakeSocket(const std::string& path);

struct FileRights {
    unsigned int mode;
    unsigned int owner;
    unsigned int group;
    bool operator==(const FileRights&) const = default;
};

FileRights RightsOf(const std::string& path);
void SetRights(const std::string& path, const FileRights& rights);

// The super-user may do what the rights of files deny.
bool IsSuperUser();

} // namespace dyadctx::test
