#include "table_changes.h"

#include <basic/runtime_error.h>

namespace quardele::dao {
namespace {

[[noreturn]] void Refuse(TextView what, const jet::Table& table) {
    throw basic::RuntimeError(
        basic::error::kOperationNotSupported,
        Text(what) + u" n'est pas possible dans la table « " + table.Name() +
            u" » : cette version du programme modifie seulement les enregistrements existants.");
}

}  // namespace

void InsertRow(jet::Table& table, std::span<const jet::ColumnChange> /*values*/) {
    Refuse(u"L'ajout d'un enregistrement", table);
}

void DeleteRow(jet::Table& table, jet::RowId /*row*/) {
    Refuse(u"La suppression d'un enregistrement", table);
}

void AppendColumn(jet::Table& table, const Field& /*field*/) {
    Refuse(u"L'ajout d'un champ", table);
}

}  // namespace quardele::dao
