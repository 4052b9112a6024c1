// What the tests of the data objects share.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <child_process.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/runtime_error.h>
#include <dao/dao.h>

#include "sample_copy.h"

namespace quardele::basic {

/// How a failed comparison shows a value.
inline void PrintTo(const Variant& value, std::ostream* out) {
    if (value.IsNull()) {
        *out << "Null";
    } else if (value.Is<Binary>() || value.Is<Guid>()) {
        *out << "bytes";
    } else {
        *out << ToUtf8(CStr(value)) << " (type " << value.Stored().index() << ")";
    }
}

}  // namespace quardele::basic

namespace quardele::dao {

using basic::Date;
using basic::Null;
using basic::RuntimeError;

namespace error = basic::error;

/// The number of the error that an action raises, 0 for none.
template <class Action>
int ErrorOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeError& raised) {
        return raised.Number();
    }
    return 0;
}

/// The description of the error that an action raises, empty for none.
template <class Action>
Text DescriptionOfErrorOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeError& raised) {
        return raised.Description();
    }
    return {};
}

inline std::shared_ptr<Database> OpenDatabase(TextView windowsPath, bool readOnly = false) {
    return DBEngine::Instance().Workspaces(0).OpenDatabase(windowsPath, false, readOnly);
}

/// The values of one field, from the current record to the last.
inline std::vector<Variant> Rest(Recordset& rows, TextView field) {
    std::vector<Variant> values;
    for (; !rows.Eof(); rows.MoveNext()) {
        values.push_back(rows.Value(field));
    }
    return values;
}

/// Visits that fall due before a date (mm/dd/yyyy), with what is known of their vehicles.
inline Text DueBefore(TextView date) {
    return u"SELECT DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]) AS DatePrev, "
           u"TVEH_DETAIL.TVEH_DETAIL_PERIOD, TVEH_DETAIL.TVEH_DETAIL_DATVIS, "
           u"TVEH.TVEH_MARQUE,TVEH.TVEH_IMMAT, TVEH.TVEH_EDIT, TVEH.TVEH_CODCLI, "
           u"TVEH_DETAIL.TVEH_DETAIL_TypTrav "
           u"FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
           u"WHERE (((DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]))<#" +
           Text(date) +
           u"#)) AND [TVEH_DETAIL_PERIOD]<> 0 "
           u"ORDER BY TVEH.TVEH_CODCLI, TVEH.TVEH_IMMAT, TVEH_DETAIL.TVEH_DETAIL_TypTrav;";
}

/// Tests on a copy of the installation.
class DaoTest : public testing::Test {
 protected:
    // Files of the installation.
    static constexpr const char* kData = "DATA/talmeon.mdb";
    static constexpr const char* kPaths = "dbpath.mdb";
    static constexpr const char* kBookmarks = "SIGNETS.MDB";

    [[nodiscard]] const SampleCopy& Installed() const { return installation_; }
    [[nodiscard]] std::shared_ptr<Database> OpenAnew(const std::string& file, bool readOnly = false) const {
        return OpenDatabase(Installed().WindowsFile(file), readOnly);
    }
    /// The data database, opened at the first call.
    [[nodiscard]] Database& Data() {
        if (data_ == nullptr) {
            data_ = OpenAnew(kData);
        }
        return *data_;
    }
    [[nodiscard]] std::shared_ptr<Recordset> OpenTable(TextView name) {
        return Data().OpenRecordset(name, RecordsetType::Table);
    }
    [[nodiscard]] std::shared_ptr<Recordset> OpenDynaset(TextView source) {
        return Data().OpenRecordset(source, RecordsetType::Dynaset);
    }
    /// Another workstation: a process of its own that gets the file and these arguments.
    [[nodiscard]] test::Process StartElsewhere(const std::vector<std::string>& arguments,
                                               const std::string& file = kData) const;
    /// Another workstation changes a file of the installation by an action statement.
    void ExecuteElsewhere(const std::string& statement, const std::string& file = kData) const;

 private:
    SampleCopy installation_;
    std::shared_ptr<Database> data_;
};

}  // namespace quardele::dao
