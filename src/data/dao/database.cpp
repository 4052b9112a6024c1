#include <dao/database.h>

#include <utility>

#include <basic/characters.h>
#include <basic/runtime_error.h>
#include <jet/table.h>
#include <sql/query.h>

#include "database_impl.h"
#include "keyset_recordset.h"
#include "table_recordset.h"

namespace quardele::dao {
namespace {

namespace error = basic::error;
using basic::RuntimeError;

/// Whether a name goes on with the unit.
bool IsNamePart(char16_t unit) {
    const bool letter = (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
    return letter || basic::IsDigit(unit) || unit == u'_' || unit >= 0x80;
}

/// Whether a text that names no table is meant as a statement.
bool IsSelect(TextView source) {
    const std::size_t start = source.find_first_not_of(u" \t\r\n(");
    if (start == TextView::npos) {
        return false;
    }
    constexpr TextView kSelect = u"SELECT";
    const TextView statement = source.substr(start);
    const bool isWord = statement.size() <= kSelect.size() || !IsNamePart(statement[kSelect.size()]);
    return basic::EqualNoCase(statement.substr(0, kSelect.size()), kSelect) && isWord;
}

std::optional<jet::CatalogEntry> EntryOf(const jet::Database& file, TextView table) {
    for (jet::CatalogEntry& entry : file.Catalog()) {
        if (basic::EqualNoCase(entry.name, table)) {
            return std::move(entry);
        }
    }
    return {};
}

std::shared_ptr<Recordset> OpenKeyset(const std::shared_ptr<DatabaseImpl>& database, TextView source,
                                      TextView statement, RecordsetType type) {
    const auto values = type == RecordsetType::Snapshot ? sql::RowValues::Fixed : sql::RowValues::Live;
    return std::make_shared<KeysetRecordset>(database, Text(source),
                                             sql::Query::Prepare(database->File(), statement, values), type);
}

std::shared_ptr<Recordset> OpenTable(const std::shared_ptr<DatabaseImpl>& database, TextView source,
                                     bool linked, std::optional<RecordsetType> type) {
    const RecordsetType wanted = type.value_or(linked ? RecordsetType::Dynaset : RecordsetType::Table);
    if (wanted != RecordsetType::Table) {
        return OpenKeyset(database, source, u"SELECT * FROM [" + Text(source) + u"]", wanted);
    }
    if (linked) {
        throw RuntimeError(error::kInvalidOperation);
    }
    return std::make_shared<TableRecordset>(database, Text(source), database->File()->OpenTable(source));
}

std::shared_ptr<Recordset> OpenStatement(const std::shared_ptr<DatabaseImpl>& database, TextView source,
                                         std::optional<RecordsetType> type) {
    if (!IsSelect(source)) {
        throw RuntimeError(error::kNoSuchTable, basic::Describe(error::kNoSuchTable, source));
    }
    const RecordsetType wanted = type.value_or(RecordsetType::Dynaset);
    if (wanted == RecordsetType::Table) {
        throw RuntimeError(error::kInvalidOperation);
    }
    return OpenKeyset(database, source, source, wanted);
}

}  // namespace

Database::Database(std::shared_ptr<DatabaseImpl> impl) : impl_(std::move(impl)) {}

const std::shared_ptr<DatabaseImpl>& Database::Open() const {
    if (impl_ == nullptr) {
        throw RuntimeError(error::kObjectClosed);
    }
    return impl_;
}

const Text& Database::Name() const {
    return Open()->Name();
}

std::shared_ptr<Recordset> Database::OpenRecordset(TextView source, std::optional<RecordsetType> type) const {
    const auto& database = Open();
    database->Refresh();
    const auto entry = EntryOf(*database->File(), source);
    return entry ? OpenTable(database, source, entry->linked, type) : OpenStatement(database, source, type);
}

TableDef Database::TableDefNamed(TextView name) const {
    const auto& database = Open();
    auto entry = EntryOf(*database->File(), name);
    if (!entry) {
        throw RuntimeError(error::kNoSuchField, basic::Describe(error::kNoSuchField, name));
    }
    return {database, std::move(entry->name)};
}

std::vector<Text> Database::TableNames() const {
    std::vector<Text> names;
    for (const jet::CatalogEntry& entry : Open()->File()->Catalog()) {
        if (!entry.system) {
            names.push_back(entry.name);
        }
    }
    return names;
}

bool Database::Updatable() const {
    return Open()->Updatable();
}

void Database::Close() {
    Open()->CloseRecordsets();
    impl_.reset();
}

}  // namespace quardele::dao
