// Statements that SQLite understands as well, made up over made-up tables: our result is SQLite's, whichever
// way indexes offer. QUARDELE_DIFFERENTIAL_STATEMENTS says how many (20000), QUARDELE_DIFFERENTIAL_SEED
// which.
#include <gtest/gtest.h>

#include <cstdlib>

#include "../../jet/support.h"
#include "reducer.h"
#include "results.h"
#include "statement_maker.h"
#include "tables.h"

namespace quardele::sql::differential {
namespace {

constexpr unsigned kStatements = 20000;
constexpr unsigned kSeed = 20260406;
constexpr unsigned kStatementsPerTables = 250;
/// Enough to see what they have in common.
constexpr int kMostFailures = 5;

unsigned Setting(const char* name, unsigned otherwise) {
    const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): the only thread
    return value == nullptr ? otherwise : static_cast<unsigned>(std::stoul(value));
}

/// What tells our sides from the other one; empty when nothing does.
std::string Failure(Tables& tables, const Select& select, const Result& theirs) {
    const std::string plain =
        Difference(select, RunOurs(tables.Ours(), select, Side::Plain, RowValues::Live), theirs);
    return plain.empty()
               ? Difference(select, RunOurs(tables.Ours(), select, Side::Indexed, RowValues::Fixed), theirs)
               : plain;
}

std::string Failure(Tables& tables, const Select& select) {
    return Failure(tables, select, RunTheirs(tables.Theirs(), select));
}

/// Whether a statement fails with less in it than it was made with, and makes sense at all.
bool StillFails(Tables& tables, const Select& select) {
    const Result theirs = RunTheirs(tables.Theirs(), select);
    return theirs.error.empty() && !Failure(tables, select, theirs).empty();
}

std::string Report(Tables& tables, const Select& select) {
    const Select reduced =
        Reduced(select, [&tables](const Select& smaller) { return StillFails(tables, smaller); });
    return Write(reduced, Side::Indexed) + "\n" + Write(reduced, Side::SQLite) + "\n" +
           Failure(tables, reduced) + "made from: " + Write(select, Side::Indexed) + "\n" +
           Failure(tables, select);
}

TEST(DifferentialTest, RowsAreThoseOfSQLite) {
    const jet::test::TempFolder folder;
    const unsigned statements = Setting("QUARDELE_DIFFERENTIAL_STATEMENTS", kStatements);
    unsigned seed = Setting("QUARDELE_DIFFERENTIAL_SEED", kSeed);
    int failures = 0;
    unsigned withRows = 0;
    for (unsigned done = 0; done < statements && failures < kMostFailures; ++seed) {
        Tables tables(folder.Path(), seed);
        Random random(seed);
        StatementMaker maker(random);
        const int failuresBefore = failures;
        for (unsigned i = 0; i < kStatementsPerTables && failures < kMostFailures; ++i, ++done) {
            const Select select = maker.Make();
            const Result theirs = RunTheirs(tables.Theirs(), select);
            withRows += theirs.rows.empty() ? 0 : 1;
            if (!Failure(tables, select, theirs).empty()) {
                ++failures;
                ADD_FAILURE() << "seed " << seed << ", statement " << i << "\n" << Report(tables, select);
            }
        }
        if (failures > failuresBefore) {
            ADD_FAILURE() << "tables of seed " << seed << "\n" << tables.Script();
        }
    }
    // Nothing is learnt from results that are empty everywhere.
    EXPECT_GT(withRows, statements / 2);
    RecordProperty("StatementsWithRows", static_cast<int>(withRows));
}

}  // namespace
}  // namespace quardele::sql::differential
