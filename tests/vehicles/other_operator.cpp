#include "other_operator.h"

namespace quardele::tests {

void ExecuteElsewhere(const std::filesystem::path& file, const QString& statement) {
    QProcess program;
    program.start(QStringLiteral(QUARDELE_MDB),
                  {QStringLiteral("exec"), QString::fromStdU16String(file.u16string()), statement});
    if (!program.waitForFinished() || program.exitCode() != 0) {
        qFatal("%s: %s", qPrintable(statement), program.readAllStandardError().constData());
    }
}

RowHeldElsewhere::RowHeldElsewhere(const QString& table, const QString& condition) {
    process_.start(QStringLiteral(QUARDELE_ROW_HOLDER), {table, condition});
    if (!process_.waitForReadyRead()) {
        qFatal("no row of %s is held: %s", qPrintable(table), process_.readAllStandardError().constData());
    }
}

RowHeldElsewhere::~RowHeldElsewhere() {
    process_.closeWriteChannel();
    process_.waitForFinished();
}

}  // namespace quardele::tests
