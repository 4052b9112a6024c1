// A change that its writer has died in, as mdb recover shows and ends it.

#include <algorithm>
#include <map>
#include <sstream>

#include <jet/database.h>

#include "child_action.h"
#include "commit/journal.h"
#include "dying.h"
#include "file/one_name.h"
#include "locks/lock_file.h"
#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

namespace fs = std::filesystem;
using jet::test::kKilled;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;
using testing::HasSubstr;

constexpr int kRows = 400;

/// The text of a row before the change; after it, it begins with another letter.
std::string NameOf(int row) {
    return "a name long enough for rows to fill several pages of the file " + std::to_string(row);
}

/// Gives every row of a file another text as one step, and dies before a page of it: file, number.
const ChildAction kDieInChange("die in the change", [](const ChildAction::Arguments& arguments) {
    const fs::path file = PathOf(arguments[0]);
    const auto database = jet::Database::Open(file);
    const auto table = database->OpenTable(u"NAMES");
    jet::CurrentWriteHook() = jet::test::DieAtPage(file, std::stoi(arguments[1]));
    jet::Step step = database->Begin();
    for (jet::RowScan scan = table->Scan(); const auto row = scan.Next();) {
        basic::Text name;
        row->TextAt(1, name);
        name.front() = u'A';
        const jet::ColumnChange change{1, name};
        table->Update(row->Id(), {&change, 1});
    }
    step.Commit();
});

/// What stands under the heading of a page: which page it is, and the lines of each side by their positions.
struct ShownPage {
    std::string state;
    std::map<std::string, std::map<std::string, std::string>> sides;
};

/// Takes the output of mdb recover apart. The word for the state follows ": ".
std::vector<ShownPage> PagesShown(const std::string& output) {
    std::vector<ShownPage> pages;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("page ")) {
            pages.push_back({line.substr(line.find(':') + 2), {}});
        } else if (line.starts_with("  ") && !pages.empty()) {
            std::istringstream words(line);
            std::string position, side, bytes;
            words >> position >> side >> bytes;
            pages.back().sides[side][position] = bytes;
        }
    }
    return pages;
}

class InterruptedChangeTest : public MdbTest {
 protected:
    void SetUp() override {
        MdbTest::SetUp();
        std::string script = "CREATE TABLE NAMES (ID LONG, NAME TEXT(100));\n";
        for (int row = 0; row < kRows; ++row) {
            script += "INSERT INTO NAMES VALUES (" + std::to_string(row) + ", '" + NameOf(row) + "');\n";
        }
        Exec(script);
        before_ = Dump("NAMES");
        ASSERT_THAT(before_, HasSubstr(NameOf(kRows - 1)));
    }

    /// Lets a process die before it writes the n-th page of the change.
    void DieAtPage(int page) const {
        ASSERT_EQ(kDieInChange.Run({file_, std::to_string(page)}), kKilled);
        ASSERT_TRUE(HasJournal());
    }
    [[nodiscard]] fs::path Path() const { return quardele::test::PathOf(file_); }
    [[nodiscard]] bool HasJournal() const { return jet::HasJournal(Path()); }

    /// Overwrites a byte of the first page of the change, as a program would that knows of no journal.
    void WriteAsSomebodyElse() const {
        const std::string output = Mdb({"recover", file_}).out;
        const auto page = std::stoul(output.substr(output.find("\npage ") + 6));
        auto bytes = jet::test::ReadBytes(Path());
        std::uint8_t& last = bytes.at((page + 1) * 4096 - 1);
        last = static_cast<std::uint8_t>(~last);
        jet::test::WriteBytes(Path(), bytes);
    }

    /// What a call of mdb recover with these options prints; fails the test when it fails.
    [[nodiscard]] std::string Recover(std::vector<std::string> options) const {
        options.insert(options.begin(), {"recover", file_});
        const Outcome done = Mdb(options);
        EXPECT_EQ(done.exitCode, 0) << done.err;
        return done.out;
    }
    void ExpectRefused(const std::string& option) const {
        const auto bytes = jet::test::ReadBytes(Path());
        const Outcome refused = Mdb({"recover", file_, option});
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_EQ(refused.out, "");
        EXPECT_THAT(refused.err, HasSubstr("mdb: error 3219: this cannot be done in this state"));
        EXPECT_EQ(jet::test::ReadBytes(Path()), bytes);
        EXPECT_TRUE(HasJournal());
    }
    void ExpectSound() const {
        const Outcome check = Mdb({"check", file_});
        EXPECT_EQ(check.exitCode, 0) << check.out << check.err;
        EXPECT_EQ(Mdb({"recover", file_}).out, "no interrupted write\n");
    }
    void ExpectAsBefore() const {
        EXPECT_FALSE(HasJournal());
        EXPECT_EQ(Dump("NAMES"), before_);
        ExpectSound();
    }

    std::string before_;
};

TEST_F(InterruptedChangeTest, BothSidesOfEachPageAreShownAndTheFileItself) {
    DieAtPage(3);
    const auto bytes = jet::test::ReadBytes(Path());
    const std::string output = Recover({});
    EXPECT_THAT(output, testing::StartsWith(
                            "some pages are old, some are new: opening the file will put the old ones back\n"
                            "journal: " +
                            Argument(jet::JournalPath(jet::OneName(Path()))) + "\n"));
    const std::string count = std::to_string(bytes.size() / 4096);
    EXPECT_THAT(output, HasSubstr("pages of the file before: " + count + ", now: " + count + "\n"));
    const auto pages = PagesShown(output);
    ASSERT_GT(pages.size(), 4U);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        SCOPED_TRACE(i);
        const bool isWritten = i < 2;
        EXPECT_EQ(pages[i].state, isWritten ? "as after" : "as before");
        auto sides = pages[i].sides;
        EXPECT_FALSE(sides["now"].empty());
        EXPECT_NE(sides["before"], sides["after"]);
        EXPECT_EQ(sides["now"], isWritten ? sides["after"] : sides["before"]);
    }
    // Looking changes nothing.
    EXPECT_EQ(jet::test::ReadBytes(Path()), bytes);
    EXPECT_TRUE(HasJournal());
}

TEST_F(InterruptedChangeTest, IsShownInFrenchAsWell) {
    DieAtPage(3);
    const std::string output = MdbInFrench({"recover", file_}).out;
    EXPECT_THAT(output, testing::StartsWith("des pages sont anciennes, d'autres nouvelles : l'ouverture "
                                            "remettra les anciennes\njournal : "));
    auto pages = PagesShown(output);
    ASSERT_GT(pages.size(), 4U);
    EXPECT_EQ(pages[0].state, "comme après");
    EXPECT_EQ(pages[0].sides["maintenant"], pages[0].sides["après"]);
    EXPECT_EQ(pages[2].state, "comme avant");
    EXPECT_EQ(pages[2].sides["maintenant"], pages[2].sides["avant"]);
}

TEST_F(InterruptedChangeTest, RollbackPutsTheOldPagesBack) {
    DieAtPage(3);
    EXPECT_EQ(Recover({"--rollback"}), "the old pages are back\n");
    ExpectAsBefore();
}

TEST_F(InterruptedChangeTest, OneThatHasNotWrittenAPageYetIsRolledBackAsWell) {
    DieAtPage(1);
    EXPECT_THAT(Recover({}),
                testing::StartsWith("the journal is complete, the file is as before the change"));
    EXPECT_EQ(MdbInFrench({"recover", file_, "--rollback"}).out, "les anciennes pages sont remises\n");
    ExpectAsBefore();
}

TEST_F(InterruptedChangeTest, WhatSomebodyElseHasWrittenIsLostOnlyByForce) {
    DieAtPage(3);
    WriteAsSomebodyElse();
    const std::string output = Recover({});
    EXPECT_THAT(output,
                testing::StartsWith("somebody has written to the file since: choose --rollback --force "
                                    "or --keep\n"));
    EXPECT_EQ(PagesShown(output).at(0).state, "written by somebody else");
    EXPECT_THAT(MdbInFrench({"recover", file_}).out, HasSubstr("écrite par quelqu'un d'autre"));
    ExpectRefused("--rollback");
    EXPECT_EQ(Recover({"--rollback", "--force"}), "the old pages are back\n");
    ExpectAsBefore();
}

TEST_F(InterruptedChangeTest, ForceIsRefusedWhileSomebodyIsInTheFile) {
    DieAtPage(3);
    WriteAsSomebodyElse();
    const auto bytes = jet::test::ReadBytes(Path());
    jet::LockFile other;
    ASSERT_EQ(other.Enter(Path()), jet::LockFile::Entry::Entered);
    const Outcome refused = Mdb({"recover", file_, "--rollback", "--force"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("mdb: error 3045: the file is in use"));
    EXPECT_EQ(jet::test::ReadBytes(Path()), bytes);
    EXPECT_TRUE(HasJournal());
    other.Leave();
    EXPECT_EQ(Recover({"--rollback", "--force"}), "the old pages are back\n");
    ExpectAsBefore();
}

TEST_F(InterruptedChangeTest, KeepLeavesTheFileAndGivesTheJournalAnotherName) {
    DieAtPage(3);
    const auto bytes = jet::test::ReadBytes(Path());
    const auto journal = jet::test::ReadBytes(jet::JournalPath(Path()));
    const std::string output = Recover({"--keep"});
    const auto quote = output.find('"');
    ASSERT_NE(quote, std::string::npos) << output;
    const fs::path aside = output.substr(quote + 1, output.rfind('"') - quote - 1);
    EXPECT_EQ(output, "the file stays as it is, the journal is now \"" + aside.string() + "\"\n");
    EXPECT_EQ(jet::test::ReadBytes(aside), journal);
    EXPECT_EQ(jet::test::ReadBytes(Path()), bytes);
    EXPECT_FALSE(HasJournal());
    // Some rows are as after the change, the others as before it; rows keep their lengths, so all is sound.
    const std::string rows = Dump("NAMES");
    EXPECT_THAT(rows, HasSubstr(",A name long"));
    EXPECT_THAT(rows, HasSubstr(",a name long"));
    ExpectSound();
}

TEST_F(InterruptedChangeTest, KeepTellsTheNewNameInFrench) {
    DieAtPage(3);
    EXPECT_THAT(MdbInFrench({"recover", file_, "--keep"}).out,
                testing::StartsWith("le fichier reste tel quel, le journal est maintenant « "));
    EXPECT_FALSE(HasJournal());
}

// The letters have no place together in any code page of one byte.
TEST_F(InterruptedChangeTest, PathsAreToldInUtf8WhateverTheirLetters) {
    const fs::path folder = folder_.Path() / u"été Ω";
    fs::create_directory(folder);
    const fs::path file = folder / u"données Ω.mdb";
    fs::rename(Path(), file);
    file_ = Argument(file);
    DieAtPage(3);
    EXPECT_THAT(Mdb({"recover", file_}).out, HasSubstr("\njournal: " + file_ + ".qjournal\n"));
    const Outcome keep = Mdb({"recover", file_, "--keep"});
    EXPECT_EQ(keep.exitCode, 0) << keep.err;
    EXPECT_THAT(keep.out, HasSubstr("the journal is now \"" + file_ + ".qjournal"));
    EXPECT_FALSE(HasJournal());
}

TEST_F(InterruptedChangeTest, OptionsThatExcludeEachOtherTouchNothing) {
    DieAtPage(3);
    EXPECT_EQ(Mdb({"recover", file_, "--rollback", "--keep"}).exitCode, 2);
    EXPECT_EQ(Mdb({"recover", file_, "--force"}).exitCode, 2);
    EXPECT_TRUE(HasJournal());
}

TEST_F(InterruptedChangeTest, WhoeverReadsNextUndoesItFirst) {
    DieAtPage(3);
    EXPECT_EQ(Dump("NAMES"), before_);
    EXPECT_FALSE(HasJournal());
}

TEST_F(InterruptedChangeTest, ASymbolicLinkLeadsToTheSameJournal) {
    DieAtPage(3);
    const fs::path link = Path().parent_path() / "lien.mdb";
    std::error_code failure;
    fs::create_symlink(Path(), link, failure);
    if (failure) {
        GTEST_SKIP() << "no symbolic links here";
    }
    EXPECT_EQ(Mdb({"dump", link.string(), "NAMES"}).out, before_);
    EXPECT_FALSE(HasJournal());
}

}  // namespace
}  // namespace quardele::mdb::test
