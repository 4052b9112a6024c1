// The suite's tool that attaches documents to records of any of its modules.
#pragma once

#include <QString>

namespace quardele::shell {

/// Starts the tool for a record, named by the module and the record's key, and does not wait for it. A box
/// tells the operator when the tool's program or its database is not there. The key goes into the command
/// line as it stands, as the tool expects it. Throws RuntimeError when the program cannot be started.
void OpenDocumentLinks(const QString& module, const QString& key);

}  // namespace quardele::shell
