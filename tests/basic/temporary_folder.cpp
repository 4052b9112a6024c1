#include <fstream>
#include <random>

#include "support.h"

namespace quardele::basic {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        path_ = fs::canonical(fs::temp_directory_path()) / ("quardele-test-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path TemporaryFolder::Write(const std::string& name, const std::string& content) const {
    fs::path file = path_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file;
}

}  // namespace quardele::basic
