#include <engine/database.h>

#include <forms/strings.h>

namespace quardele::engine {

namespace error = basic::error;
using forms::ToQString;
using forms::ToText;

Table::Table(const Database& database, QString name, QString source)
    : database_(database), name_(std::move(name)), source_(std::move(source)) {}

Collection<DatabaseField> Table::Fields() const {
    const std::shared_ptr<dao::Database> file = database_.Open(*this);
    Collection<DatabaseField> fields;
    try {
        const dao::TableDef definition = file->TableDefNamed(ToText(source_));
        for (const dao::Field& field : definition.Fields()) {
            fields.Add(std::make_shared<DatabaseField>(name_, ToQString(field.Name())));
        }
    } catch (const basic::RuntimeError& failure) {
        if (failure.Number() != error::kNoSuchField) {
            throw;
        }
        throw basic::RuntimeError(error::kNoSuchTable, basic::Describe(error::kNoSuchTable, ToText(source_)));
    }
    return fields;
}

std::shared_ptr<dao::Database> Database::Open(const Table& table) const {
    const QString location =
        table.Location().isEmpty() && tables_.Count() > 0 ? tables_.Item(1).Location() : table.Location();
    if (location.isEmpty()) {
        throw basic::RuntimeError(
            error::kFileMissing,
            ToText(QStringLiteral("L'état ne dit pas dans quelle base de données se trouve la table « %1 ».")
                       .arg(table.Name())));
    }
    return dao::DBEngine::Instance().Workspaces(0).OpenDatabase(ToText(location));
}

}  // namespace quardele::engine
