#include "records.h"

#include <algorithm>
#include <map>

#include <forms/strings.h>

#include "evaluator.h"
#include "statement_text.h"

namespace quardele::engine {

namespace error = basic::error;

namespace {

CompiledFormula CompiledSelection(const ReportDefinition& report, FormulaSet& formulas) {
    CompiledFormula selection = formulas.Compile(report.selection, QStringLiteral("formule de sélection"));
    if (selection.onPage || selection.onTotal || selection.summing) {
        throw basic::RuntimeError(
            error::kInvalidArgument,
            u"La formule de sélection ne peut dépendre ni d'un total ni d'un numéro de page.");
    }
    return selection;
}

std::shared_ptr<dao::Database> OpenOneFile(const engine::Database& database) {
    std::shared_ptr<dao::Database> file = database.Open(database.Tables().Item(1));
    for (const std::shared_ptr<Table>& table : database.Tables()) {
        if (!basic::EqualNoCase(database.Open(*table)->Name(), file->Name())) {
            throw basic::RuntimeError(
                error::kInvalidArgument,
                forms::ToText(
                    QStringLiteral("Les tables d'un état se trouvent dans une seule base de données ; la "
                                   "table « %1 » est dans une autre.")
                        .arg(table->Name())));
        }
    }
    return file;
}

/// By column; of tables that give their first record only. Null where there is none.
std::vector<Variant> FirstValues(const dao::Database& file, const FormulaSet& formulas) {
    std::vector<Variant> values(formulas.Columns().size(), basic::Null());
    std::map<const Table*, std::shared_ptr<dao::Recordset>> tables;
    for (std::size_t column = 0; column < values.size(); ++column) {
        const Column& asked = formulas.Columns()[column];
        if (!asked.table->FirstRecordOnly()) {
            continue;
        }
        std::shared_ptr<dao::Recordset>& rows = tables[asked.table];
        if (rows == nullptr) {
            rows = file.OpenRecordset(forms::ToText(asked.table->Source()), dao::RecordsetType::Table);
        }
        if (!rows->Eof()) {
            values[column] = rows->Value(asked.field);
        }
    }
    return values;
}

Records AllOf(const dao::Recordset& rows, const FormulaSet& formulas, const std::vector<Variant>& firsts) {
    Records records{.columns = firsts.size(), .count = rows.RowCount(), .values = {}};
    records.values.reserve(records.count * records.columns);
    for (std::size_t row = 0; row < records.count; ++row) {
        int field = 0;
        for (std::size_t column = 0; column < records.columns; ++column) {
            const bool isFirst = formulas.Columns()[column].table->FirstRecordOnly();
            records.values.push_back(isFirst ? firsts[column] : rows.ValueAt(row, field++));
        }
    }
    return records;
}

bool HasRecords(const Collection<Table>& tables) {
    return std::any_of(tables.begin(), tables.end(),
                       [](const std::shared_ptr<Table>& table) { return !table->FirstRecordOnly(); });
}

Records Selected(const Records& all, const CompiledFormula& selection, const FormulaSet& formulas) {
    const Evaluator evaluator(formulas, all);
    Records records{.columns = all.columns, .count = 0, .values = {}};
    for (std::size_t row = 0; row < all.count; ++row) {
        if (!evaluator.Holds(selection, {.record = row})) {
            continue;
        }
        for (std::size_t column = 0; column < all.columns; ++column) {
            records.values.push_back(all.At(row, column));
        }
        ++records.count;
    }
    return records;
}

}  // namespace

Records ReadRecords(const ReportDefinition& report, FormulaSet& formulas) {
    const CompiledFormula selection = CompiledSelection(report, formulas);
    if (!HasRecords(report.database.Tables())) {
        return {};
    }
    const std::shared_ptr<dao::Database> file = OpenOneFile(report.database);
    const Text statement = StatementText(report, formulas, selection);
    const std::shared_ptr<dao::Recordset> rows = file->OpenRecordset(statement, dao::RecordsetType::Snapshot);
    Records records = AllOf(*rows, formulas, FirstValues(*file, formulas));
    rows->Close();
    return report.selection.trimmed().isEmpty() ? records : Selected(records, selection, formulas);
}

}  // namespace quardele::engine
