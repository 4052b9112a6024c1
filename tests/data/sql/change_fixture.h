// What the tests of action statements share: copies of the sample files that may be changed.
#pragma once

#include <gmock/gmock.h>

#include <sql/statement.h>

#include "../jet/csv.h"
#include "../jet/support.h"
#include "sql_error.h"
#include "sql_fixture.h"

namespace quardele::sql {

/// Tests on a copy of the workshop's data.
class ChangeTest : public testing::Test {
 protected:
    /// The copy, opened at the first call.
    [[nodiscard]] const std::shared_ptr<jet::Database>& Data();
    [[nodiscard]] const std::filesystem::path& File() const { return file_; }

    /// Runs an action statement; the number of rows.
    std::size_t Do(const std::string& statement);
    /// The number of the error of an action statement, 0 without one.
    [[nodiscard]] int ErrorOfAction(const std::string& statement);
    /// The description that goes with it.
    [[nodiscard]] std::string DescriptionOfAction(const std::string& statement);
    /// The rows of a SELECT, as Rows.
    [[nodiscard]] Lines Get(const std::string& statement) { return Rows(Data(), statement); }
    /// The same of another opening of the file.
    [[nodiscard]] Lines GetElsewhere(const std::string& statement) const;
    /// Lines of a table as the independent reader shows them, the header first.
    [[nodiscard]] std::vector<jet::test::CsvLine> Exported(const std::string& table) const;

 private:
    jet::test::TempFolder folder_;
    std::filesystem::path file_ = folder_.Copy(SampleFile("DATA/talmeon.mdb"));
    std::shared_ptr<jet::Database> data_;
};

}  // namespace quardele::sql
