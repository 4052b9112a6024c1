// The command in little memory.

#include <fstream>

#include "child_process.h"
#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

class FlatMemoryTest : public MdbTest {
 protected:
    /// Runs mdb with a limit of its memory, all that the system maps for it included.
    [[nodiscard]] static int MdbWithin(std::size_t kilobytes, const std::string& command) {
        quardele::test::Process process(
            "sh", {"-c", "ulimit -v " + std::to_string(kilobytes) + " && exec " QUARDELE_MDB " " + command});
        process.CloseInput();
        return process.Wait();
    }
};

TEST_F(FlatMemoryTest, ADumpOfATableThatIsLargerThanItsMemoryIsWhole) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer maps memory of its own";
#endif
    constexpr std::size_t kMemory = 40'000;  // kilobytes
    constexpr int kRows = 60'000;
    Exec("CREATE TABLE T (id LONG PRIMARY KEY, t TEXT(255), u TEXT(255))");
    std::string csv = "id,t,u\n";
    for (int i = 0; i < kRows; ++i) {
        const std::string text = std::to_string(i) + std::string(230, static_cast<char>('a' + i % 26));
        csv += std::to_string(i) + ',' + text + ",\xCE\xA9" + text + '\n';
    }
    ASSERT_EQ(Mdb({"import", file_, "T", "-", "--chunk", "2000"}, csv).exitCode, 0);
    ASSERT_GT(std::filesystem::file_size(file_), kMemory * 1024);
    const std::string dump = PathOf("dump.csv");
    EXPECT_EQ(MdbWithin(kMemory, "dump '" + file_ + "' T > '" + dump + "'"), 0);
    EXPECT_EQ(std::filesystem::file_size(dump), csv.size());
    EXPECT_NE(MdbWithin(1000, "dump '" + file_ + "' T > /dev/null"), 0) << "the limit does not hold";
}

}  // namespace
}  // namespace quardele::mdb::test
