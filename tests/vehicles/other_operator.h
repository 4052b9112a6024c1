// Another operator on the same file: processes of their own.
#pragma once

#include <filesystem>

#include <QProcess>
#include <QString>

namespace quardele::tests {

/// Runs a statement that changes rows.
void ExecuteElsewhere(const std::filesystem::path& file, const QString& statement);

/// Edits a row of the session's data file, which is locked as long as this lives.
class RowHeldElsewhere {
 public:
    RowHeldElsewhere(const QString& table, const QString& condition);
    ~RowHeldElsewhere();
    RowHeldElsewhere(const RowHeldElsewhere&) = delete;
    RowHeldElsewhere& operator=(const RowHeldElsewhere&) = delete;

 private:
    QProcess process_;
};

}  // namespace quardele::tests
