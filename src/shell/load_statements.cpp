#include "load_statements.h"

#include <forms/msg_box.h>
#include <forms/strings.h>

namespace quardele::shell {

LoadStatements::LoadStatements()
    : ResumeNext([this](const basic::RuntimeError& error) {
          forms::MsgBox(QStringLiteral("Load: (%1) : ").arg(ETAPE) + forms::ToQString(error.Description()));
      }) {}

}  // namespace quardele::shell
