#include "sample_copy.h"

#include <system_error>

#include <unistd.h>

namespace quardele::dao {

namespace fs = std::filesystem;

SampleCopy::SampleCopy() : drivesBefore_(basic::DriveTable::Session()) {
    static int count = 0;
    driveC_ = fs::temp_directory_path() /
              ("quardele-dao-" + std::to_string(getpid()) + "-" + std::to_string(++count));
    fs::remove_all(driveC_);
    fs::create_directories(driveC_);
    fs::copy(fs::path(QUARDELE_INSTALLATION_DIR) / "QUARDELE", driveC_ / "QUARDELE",
             fs::copy_options::recursive);
    basic::DriveTable::Session().Set(u'C', driveC_);
}

SampleCopy::~SampleCopy() {
    basic::DriveTable::Session() = drivesBefore_;
    std::error_code ignored;
    fs::remove_all(driveC_, ignored);
}

}  // namespace quardele::dao
