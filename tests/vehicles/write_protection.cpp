#include "write_protection.h"

#include <cstdlib>

#include <unistd.h>

namespace quardele::tests {

namespace fs = std::filesystem;

namespace {

constexpr uid_t kNobody = 65534;
constexpr fs::perms kWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
constexpr fs::perms kLook =
    fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec;

/// For root nothing is read-only: act as somebody else.
void BecomeUser(uid_t user) {
    if (seteuid(user) != 0) {
        std::abort();
    }
}

}  // namespace

WriteProtection::WriteProtection(fs::path folder) : folder_(std::move(folder)), wasRoot_(geteuid() == 0) {
    for (fs::path above = folder_; above != fs::temp_directory_path() && above != above.root_path();
         above = above.parent_path()) {
        fs::permissions(above, kLook, fs::perm_options::add);
    }
    fs::permissions(folder_, kWrite, fs::perm_options::remove);
    if (wasRoot_) {
        BecomeUser(kNobody);
    }
}

WriteProtection::~WriteProtection() {
    if (wasRoot_) {
        BecomeUser(0);
    }
    fs::permissions(folder_, fs::perms::owner_write, fs::perm_options::add);
}

}  // namespace quardele::tests
