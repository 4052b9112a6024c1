// A folder that turns read-only while the program runs.
#pragma once

#include <filesystem>

namespace quardele::tests {

/// While it lives this process cannot write into a folder, whoever runs the tests.
class WriteProtection {
 public:
    explicit WriteProtection(std::filesystem::path folder);
    ~WriteProtection();
    WriteProtection(const WriteProtection&) = delete;
    WriteProtection& operator=(const WriteProtection&) = delete;

 private:
    std::filesystem::path folder_;
    bool wasRoot_ = false;
};

}  // namespace quardele::tests
