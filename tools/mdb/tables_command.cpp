#include "commands.h"
#include "failure.h"

namespace quardele::mdb {

int RunTables(const Arguments& arguments, Session& session) {
    const auto database = OpenFile(arguments);
    for (const jet::CatalogEntry& entry : database->Catalog()) {
        if (!entry.system) {
            session.out << basic::ToUtf8(entry.name) << "\n";
        }
    }
    return kDone;
}

}  // namespace quardele::mdb
