#include "commands.h"
#include "failure.h"
#include "platform.h"

namespace quardele::mdb {

int RunCreate(const Arguments& arguments, Session&) {
    static_cast<void>(jet::Database::Create(PathOf(arguments.Operand(0))));
    return kDone;
}

}  // namespace quardele::mdb
