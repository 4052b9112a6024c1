#include <sql/statement.h>

#include <utility>

#include <basic/conversion.h>
#include <basic/runtime_error.h>

#include "rows/row_change.h"
#include "syntax/action_parser.h"
#include "syntax/definition.h"

namespace quardele::sql {
namespace {

struct ActionRunner {
    ActionPlace place;

    std::size_t operator()(InsertAction& insert) const { return RunInsert(place, std::move(insert)); }
    std::size_t operator()(UpdateAction& update) const { return RunUpdate(place, std::move(update)); }
    std::size_t operator()(DeleteAction& remove) const { return RunDelete(place, std::move(remove)); }
    template <class Definition>
    std::size_t operator()(const Definition& definition) const {
        RunDefinition(place.database, definition);
        return 0;
    }
};

}  // namespace

ExecuteResult Execute(jet::Database& database, TextView statement) {
    Action action = ParseAction(statement);
    const ActionPlace place{database, database.IsInStep()};
    jet::Step step = database.Begin();
    const ExecuteResult result{std::visit(ActionRunner{place}, action)};
    step.Commit();
    return result;
}

}  // namespace quardele::sql
