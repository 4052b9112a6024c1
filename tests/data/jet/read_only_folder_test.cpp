// A folder in which nothing can be made; in the ways of Unix.

#include <sys/wait.h>
#include <unistd.h>

#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

// Root may write everywhere, so the test becomes somebody else, in a process of its own.
TEST(ReadOnlyFolder, AFileInItIsReadAndNotWritten) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    constexpr auto kReadAndEnter =
        fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec;
    fs::permissions(folder.Path(), fs::perms::owner_all | kReadAndEnter);
    fs::permissions(file, fs::perms::all);
    const auto before = ReadBytes(file);
    if (::geteuid() != 0) {
        fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    }
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t kNobody = 65534;
        if (::geteuid() == 0 && ::seteuid(kNobody) != 0) {
            ::_exit(2);
        }
        bool readOnly = false;
        const int error = ErrorNumber([&] {
            const auto database = Database::Open(file);
            readOnly = database->IsReadOnly();
            const auto table = database->OpenTable(u"TVEH_DETAIL");
            const ColumnChange change{2, basic::Null{}};
            table->Update(table->Scan().NextId().value(), {&change, 1});
        });
        ::_exit(readOnly && error == basic::error::kReadOnly ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    fs::permissions(folder.Path(), fs::perms::owner_all);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadBytes(file), before);
}

}  // namespace
}  // namespace quardele::jet::test
