#include "load_statements.h"

#include <forms/msg_box.h>
#include <forms/strings.h>

namespace quardele::shell {

basic::ResumeNext LoadStatements(const int& step) {
    return basic::ResumeNext([&step](const basic::RuntimeError& error) {
        forms::MsgBox(QStringLiteral("Load: (%1) : ").arg(step) + forms::ToQString(error.Description()));
    });
}

}  // namespace quardele::shell
