// A journal that the user may not read; in the ways of Unix.

#include <jet/recovery.h>

#include <sys/wait.h>
#include <unistd.h>

#include "commit/journal.h"
#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

/// Runs the action as somebody to whom permissions apply, and gives what it ends with. Root becomes that in a
/// process of its own.
template <class Action>
int RunAsNobody(const Action& action) {
    constexpr uid_t kNobody = 65534;
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(::geteuid() != 0 || ::seteuid(kNobody) == 0 ? action() : 2);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class UnreadableJournal : public testing::Test {
 protected:
    UnreadableJournal() {
        fs::permissions(folder_.Path(), fs::perms::all);
        fs::permissions(file_, fs::perms::all);
        WriteBytes(JournalPath(file_), std::vector<std::uint8_t>(5000, 0));
        fs::permissions(JournalPath(file_), fs::perms::none);
    }

    TempFolder folder_;
    fs::path file_ = folder_.Copy(SampleFile("DATA/talmeon.mdb"));
};

TEST_F(UnreadableJournal, IsNotTakenForNone) {
    for (const OpenMode mode : {OpenMode::Shared, OpenMode::Exclusive, OpenMode::ReadOnly}) {
        EXPECT_EQ(RunAsNobody([&] {
                      try {
                          static_cast<void>(Database::Open(file_, mode));
                      } catch (const basic::RuntimeError& error) {
                          const bool named =
                              error.Description().find(u"talmeon.mdb.qjournal") != std::u16string::npos;
                          return error.Number() == basic::error::kCannotOpenFile && named ? 0 : 1;
                      }
                      return 1;
                  }),
                  0);
        EXPECT_TRUE(fs::exists(JournalPath(file_)));
    }
}

TEST_F(UnreadableJournal, IsPutAsideOnDemand) {
    EXPECT_EQ(RunAsNobody([&] {
                  Recovery recovery(file_);
                  if (recovery.State() != JournalState::Unreadable || recovery.PageCount() != 0) {
                      return 1;
                  }
                  return recovery.KeepFile() == fs::path(file_.string() + ".qjournal.autre") ? 0 : 1;
              }),
              0);
    EXPECT_FALSE(fs::exists(JournalPath(file_)));
    EXPECT_TRUE(fs::exists(file_.string() + ".qjournal.autre"));
}

}  // namespace
}  // namespace quardele::jet::test
