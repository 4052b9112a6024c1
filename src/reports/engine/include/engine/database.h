// Where a report's records come from.
#pragma once

#include <memory>

#include <QString>

#include <dao/dao.h>
#include <engine/collection.h>

namespace quardele::engine {

class Database;

/// A column of a report's table.
class DatabaseField {
 public:
    DatabaseField(QString table, QString name) : table_(std::move(table)), name_(std::move(name)) {}

    /// The column's name.
    [[nodiscard]] const QString& Name() const { return name_; }
    /// The report's name of the table.
    [[nodiscard]] const QString& TableName() const { return table_; }

 private:
    QString table_;
    QString name_;
};

class Table {
 public:
    Table(const Database& database, QString name, QString source);

    /// Its name in the report's formulas.
    [[nodiscard]] const QString& Name() const { return name_; }
    /// Its name in the data file.
    [[nodiscard]] const QString& Source() const { return source_; }
    /// Windows path of the data file; empty for that of the report's first table.
    [[nodiscard]] const QString& Location() const { return location_; }
    void SetLocation(const QString& location) { location_ = location; }
    /// Whether its first record alone counts, which belongs to all records of the report: parameters, say.
    /// Such a table needs no link.
    [[nodiscard]] bool FirstRecordOnly() const { return firstRecordOnly_; }
    void SetFirstRecordOnly(bool only) { firstRecordOnly_ = only; }
    /// Read from the data file. Throws what opening throws (3024, 3044 ...), 3078 for an unknown table.
    [[nodiscard]] Collection<DatabaseField> Fields() const;

 private:
    const Database& database_;
    QString name_;
    QString source_;
    QString location_;
    bool firstRecordOnly_ = false;
};

class Database {
 public:
    Database() = default;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    [[nodiscard]] engine::Collection<Table>& Tables() { return tables_; }
    [[nodiscard]] const engine::Collection<Table>& Tables() const { return tables_; }
    /// The data file that a table lies in. Throws 3024 when no location is known.
    [[nodiscard]] std::shared_ptr<dao::Database> Open(const Table& table) const;

 private:
    engine::Collection<Table> tables_;
};

}  // namespace quardele::engine
