// Rows of tables and of queries.

#include <sql/query.h>

#include "commands.h"
#include "failure.h"
#include "progress.h"
#include "row_writer.h"
#include "utf8_text.h"

namespace quardele::mdb {

namespace {

RowFormat FormatOf(const Arguments& arguments) {
    return arguments.Has(kJson) ? RowFormat::Json : RowFormat::Csv;
}

}  // namespace

int RunDump(const Arguments& arguments, Session& session) {
    const auto database = OpenFile(arguments);
    const auto table = OpenTable(*database, arguments);
    RowWriter writer(session.out, FormatOf(arguments), NamesOf(table->Columns()));
    Progress progress(Progress::Beside::Output);
    jet::RowScan scan = table->Scan();
    jet::RowCells cells(*table);
    for (std::size_t done = 0; const auto row = scan.Next(); ++done) {
        writer.Write(*row, cells.Of(*row));
        progress.ShowSometimes(done, [&table] { return table->RowCount(); });
    }
    writer.Finish();
    return kDone;
}

int RunQuery(const Arguments& arguments, Session& session) {
    const auto database = OpenFile(arguments);
    const auto query = sql::Query::Prepare(database, TextOf(arguments.Operand(1)));
    const sql::RowSet rows = query->Run();
    RowWriter writer(session.out, FormatOf(arguments), NamesOf(query->Columns()));
    Progress progress(Progress::Beside::Output);
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        writer.BeginRow();
        for (std::size_t column = 0; column < query->Columns().size(); ++column) {
            writer.WriteCell(rows.Value(row, static_cast<int>(column)));
        }
        writer.EndRow();
        progress.ShowSometimes(row, [&rows] { return rows.Size(); });
    }
    writer.Finish();
    return kDone;
}

}  // namespace quardele::mdb
