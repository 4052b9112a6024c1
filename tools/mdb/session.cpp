#include "session.h"

#include <basic/runtime_error.h>

#include "platform.h"
#include "utf8_text.h"

namespace quardele::mdb {

namespace {

// Who only reads undoes nothing. A change that was interrupted must be undone before anybody reads, by an
// opening that may write; where there is none, what was thrown stands.
std::shared_ptr<jet::Database> OpenAfterUndoing(const std::filesystem::path& file) {
    static_cast<void>(jet::Database::Open(file, jet::OpenMode::Shared));
    return jet::Database::Open(file, jet::OpenMode::ReadOnly);
}

}  // namespace

std::shared_ptr<jet::Database> OpenFile(const Arguments& arguments, jet::OpenMode mode) {
    const std::filesystem::path file = PathOf(arguments.Operand(0));
    try {
        return jet::Database::Open(file, mode);
    } catch (const basic::RuntimeError& error) {
        if (mode != jet::OpenMode::ReadOnly || error.Number() != basic::error::kReadOnly) {
            throw;
        }
        return OpenAfterUndoing(file);
    }
}

jet::OpenMode WritingMode(const Arguments& arguments) {
    return arguments.Has(kExclusive) ? jet::OpenMode::Exclusive : jet::OpenMode::Shared;
}

std::shared_ptr<jet::Table> OpenTable(jet::Database& database, const Arguments& arguments) {
    return database.OpenTable(TextOf(arguments.Operand(1)));
}

}  // namespace quardele::mdb
