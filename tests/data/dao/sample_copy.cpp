#include "sample_copy.h"

namespace quardele::dao {

namespace fs = std::filesystem;

SampleCopy::SampleCopy() : drivesBefore_(basic::DriveTable::Session()) {
    fs::copy(fs::path(QUARDELE_INSTALLATION_DIR) / "QUARDELE", File(""), fs::copy_options::recursive);
    basic::DriveTable::Session().Set(u'C', Drive());
}

SampleCopy::~SampleCopy() {
    basic::DriveTable::Session() = drivesBefore_;
}

}  // namespace quardele::dao
