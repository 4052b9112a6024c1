#include "session.h"

#include "platform.h"
#include "utf8_text.h"

namespace quardele::mdb {

std::shared_ptr<jet::Database> OpenFile(const Arguments& arguments, jet::OpenMode mode) {
    return jet::Database::Open(PathOf(arguments.Operand(0)), mode);
}

jet::OpenMode WritingMode(const Arguments& arguments) {
    return arguments.Has(kExclusive) ? jet::OpenMode::Exclusive : jet::OpenMode::Shared;
}

std::shared_ptr<jet::Table> OpenTable(jet::Database& database, const Arguments& arguments) {
    return database.OpenTable(TextOf(arguments.Operand(1)));
}

}  // namespace quardele::mdb
