// Running mdb as a process.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support.h"

namespace quardele::mdb::test {

struct Outcome {
    int exitCode = -1;
    std::string out;
    std::string err;
};

/// Runs mdb with these arguments, this text as its standard input, and messages in the language of `locale`.
[[nodiscard]] Outcome Mdb(const std::vector<std::string>& arguments, const std::string& input = {},
                          const std::string& locale = "en_US.UTF-8");

/// The same with French messages.
[[nodiscard]] inline Outcome MdbInFrench(const std::vector<std::string>& arguments,
                                         const std::string& input = {}) {
    return Mdb(arguments, input, "fr_FR.UTF-8");
}

/// A folder for a test's files, with an empty data file in it.
class MdbTest : public testing::Test {
 protected:
    /// Makes the file; fails the test when that fails.
    void SetUp() override;
    /// Runs statements of definition and change.
    void Exec(const std::string& script) const;
    [[nodiscard]] std::string Dump(const std::string& table) const;
    [[nodiscard]] std::string PathOf(const std::string& name) const {
        return (folder_.Path() / name).string();
    }

    jet::test::TempFolder folder_;
    std::string file_;
};

}  // namespace quardele::mdb::test
