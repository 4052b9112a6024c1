#include "stored_rows.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace quardele::tests {

namespace {

const QString kProgram = QStringLiteral("mdb-export");

QString Exported(const std::filesystem::path& file, const char* table) {
    QProcess program;
    program.start(kProgram, {QString::fromStdU16String(file.u16string()), QString::fromLatin1(table)});
    if (!program.waitForFinished() || program.exitCode() != 0) {
        qFatal("%s cannot read %s", qPrintable(kProgram), table);
    }
    return QString::fromUtf8(program.readAllStandardOutput());
}

/// Lines of values between commas; a text stands between quotation marks, which are doubled inside it.
std::vector<QStringList> Lines(const QString& exported) {
    std::vector<QStringList> lines;
    QStringList values;
    QString value;
    bool quoted = false;
    for (const QChar unit : exported) {
        if (unit == u'"') {
            // A doubled mark closes the text and opens it again at once.
            if (!quoted && !value.isEmpty()) {
                value += unit;
            }
            quoted = !quoted;
        } else if (quoted || (unit != u',' && unit != u'\n')) {
            value += unit;
        } else {
            values.append(std::exchange(value, QString()));
            if (unit == u'\n') {
                lines.push_back(std::exchange(values, QStringList()));
            }
        }
    }
    return lines;
}

}  // namespace

bool HasIndependentReader() {
    return !QStandardPaths::findExecutable(kProgram).isEmpty();
}

std::vector<StoredRow> StoredRows(const std::filesystem::path& file, const char* table, const QString& column,
                                  const QString& value) {
    const std::vector<QStringList> lines = Lines(Exported(file, table));
    std::vector<StoredRow> rows;
    for (std::size_t line = 1; line < lines.size(); ++line) {
        StoredRow row;
        for (qsizetype at = 0; at < lines.front().size(); ++at) {
            row[lines.front()[at]] = lines[line].value(at);
        }
        if (row.at(column) == value) {
            rows.push_back(row);
        }
    }
    return rows;
}

}  // namespace quardele::tests
