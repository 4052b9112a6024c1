// What an independent program (mdb-export) reads in a data file.
#pragma once

#include <filesystem>
#include <map>
#include <vector>

#include <QString>

namespace quardele::tests {

/// Values by column; dates as mm/dd/yy hh:mm:ss, Null as the empty text.
using StoredRow = std::map<QString, QString>;

/// Whether that program is installed.
[[nodiscard]] bool HasIndependentReader();
/// The rows of a table where a column has a value, in the order of the file.
[[nodiscard]] std::vector<StoredRow> StoredRows(const std::filesystem::path& file, const char* table,
                                                const QString& column, const QString& value);

}  // namespace quardele::tests

/// For the start of a test that looks into a file.
#define SKIP_WITHOUT_INDEPENDENT_READER()                            \
    do {                                                             \
        if (!quardele::tests::HasIndependentReader()) {              \
            QSKIP("mdb-export (package mdbtools) is not installed"); \
        }                                                            \
    } while (false)
