// The commands on a file system that has no byte locks; on Linux, where a process may be refused them.

#include <unistd.h>

#include <cstdlib>

#include "../data/jet/refused_calls.h"
#include "child_action.h"
#include "locks/lock_file.h"
#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

using quardele::test::ChildAction;

constexpr int kCannotRefuse = 77;

/// Becomes mdb with these arguments, in a process that gets no locks.
const ChildAction kWithoutLocks("mdb without locks", [](const ChildAction::Arguments& arguments) {
    if (!jet::test::RefuseLocks()) {
        std::_Exit(kCannotRefuse);
    }
    std::vector<std::string> words = {QUARDELE_MDB};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    ::execv(pointers[0], pointers.data());
});

class WithoutLocks : public MdbTest {
 protected:
    void SetUp() override {
        MdbTest::SetUp();
        Exec("CREATE TABLE T (id LONG PRIMARY KEY); INSERT INTO T (id) VALUES (7)");
        before_ = jet::test::ReadBytes(file_);
        quardele::test::SetEnvironment("LC_ALL", "en_US.UTF-8");
        if (kWithoutLocks.Run({"--help"}) == kCannotRefuse) {
            GTEST_SKIP() << "this system cannot refuse locks to a process";
        }
    }
    void TearDown() override {
        EXPECT_EQ(jet::test::ReadBytes(file_), before_);
        EXPECT_FALSE(std::filesystem::exists(jet::LockFile::PathFor(file_)));
    }

    static void ExpectOutput(const std::vector<std::string>& arguments, const std::string& output) {
        SCOPED_TRACE(arguments[0]);
        auto mdb = kWithoutLocks.Start(arguments);
        EXPECT_EQ(mdb.ReadOutput(), output);
        EXPECT_EQ(mdb.Wait(), 0);
    }

    std::vector<std::uint8_t> before_;
};

TEST_F(WithoutLocks, WhatOnlyReadsDoesSo) {
    ExpectOutput({"tables", file_}, "T\n");
    ExpectOutput({"dump", file_, "T"}, "id\n7\n");
    ExpectOutput({"query", file_, "SELECT id + 1 AS n FROM T"}, "n\n8\n");
    ExpectOutput({"check", file_}, "");
    ExpectOutput({"recover", file_}, "no interrupted write\n");
}

TEST_F(WithoutLocks, WhatWritesIsRefused) {
    EXPECT_EQ(kWithoutLocks.Run({"exec", file_, "INSERT INTO T (id) VALUES (8)"}), 1);
    EXPECT_EQ(kWithoutLocks.Run({"exec", file_, "INSERT INTO T (id) VALUES (8)", "--exclusive"}), 1);
    EXPECT_EQ(kWithoutLocks.Run({"recover", file_, "--keep"}), 1);
}

}  // namespace
}  // namespace quardele::mdb::test
