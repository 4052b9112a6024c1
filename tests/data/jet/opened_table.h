// A table of a copy of a data file, to be changed by tests.
#pragma once

#include "csv.h"
#include "support.h"

namespace quardele::jet::test {

[[nodiscard]] int Ordinal(const Table& table, const Text& column);
void Set(Table& table, RowId row, const Text& column, Variant value);
[[nodiscard]] Variant Get(const Table& table, RowId row, const Text& column);
[[nodiscard]] std::vector<RowId> AllRows(const Table& table);

/// One value of a new row.
struct Named {
    Text column;
    Variant value;
};
RowId Add(Table& table, const std::vector<Named>& values);

/// A copy of a file with one table opened for writing.
class Opened {
 public:
    Opened(const std::filesystem::path& original, const Text& name)
        : file_(folder_.Copy(original)), name_(name) {
        Reopen();
    }

    Table& operator*() const { return *table_; }
    Table* operator->() const { return table_.get(); }
    [[nodiscard]] const std::filesystem::path& File() const { return file_; }
    [[nodiscard]] Database& Data() const { return *database_; }
    void Reopen() {
        table_.reset();
        database_.reset();
        database_ = Database::Open(file_);
        table_ = database_->OpenTable(name_);
    }
    /// As the independent reader shows it.
    [[nodiscard]] std::vector<CsvLine> Dump() const {
        return ParseCsv(MdbExport(file_, basic::ToUtf8(name_)));
    }

 private:
    TempFolder folder_;
    std::filesystem::path file_;
    Text name_;
    std::shared_ptr<Database> database_;
    std::shared_ptr<Table> table_;
};

}  // namespace quardele::jet::test
