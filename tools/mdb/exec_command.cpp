#include <optional>

#include <sql/statement.h>

#include "commands.h"
#include "error_text.h"
#include "failure.h"
#include "progress.h"
#include "rows_text.h"
#include "standard_input.h"
#include "utf8_text.h"

namespace quardele::mdb {

namespace {

// Of several statements the line tells which one failed.
std::size_t ExecuteAll(jet::Database& database, basic::TextView script) {
    constexpr Message kLine{"ligne |1 : ", "line |1: "};
    const auto statements = sql::SplitScript(script);
    Progress progress(Progress::Beside::Nothing);
    std::size_t rows = 0;
    for (std::size_t done = 0; done < statements.size(); ++done) {
        const sql::ScriptStatement& statement = statements[done];
        progress.Show(done, statements.size());
        try {
            rows += sql::Execute(database, statement.text).rows;
        } catch (const basic::RuntimeError& error) {
            if (statements.size() == 1) {
                throw;
            }
            throw FailureAt(kLine, {std::to_string(statement.line)}, error);
        }
    }
    return rows;
}

}  // namespace

int RunExec(const Arguments& arguments, Session& session) {
    const auto database = OpenFile(arguments, WritingMode(arguments));
    const std::string& operand = arguments.Operand(1);
    const basic::Text script = TextOf(operand == "-" ? ReadStandardInput() : operand);
    std::optional<jet::Step> step;
    if (arguments.Has(kAtomic)) {
        step.emplace(database->Begin());
    }
    const std::size_t rows = ExecuteAll(*database, script);
    if (step) {
        step->Commit();
    }
    session.out << RowsText(rows, session.language) << "\n";
    return kDone;
}

}  // namespace quardele::mdb
