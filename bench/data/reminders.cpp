#include "benchmarks.h"

#include <algorithm>
#include <fstream>

#include <basic/conversion.h>
#include <jet/database.h>
#include <sql/query.h>

#include "command.h"
#include "temporary_folder.h"

namespace quardele::bench {

namespace fs = std::filesystem;
using basic::Text;
using basic::TextView;

namespace {

/// What the reminders form asks for 31/12/2026. The text is made by the form's room, which needs the screens.
constexpr TextView kDueQuery =
    u"SELECT DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]) AS DatePrev, "
    u"TVEH_DETAIL.TVEH_DETAIL_PERIOD, TVEH_DETAIL.TVEH_DETAIL_DATVIS, "
    u"TVEH.TVEH_MARQUE,TVEH.TVEH_IMMAT, TVEH.TVEH_EDIT, TVEH.TVEH_CODCLI, "
    u"TVEH_DETAIL.TVEH_DETAIL_TypTrav "
    u"FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
    u"WHERE (((DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]))<#12/31/2026#)) "
    u"AND [TVEH_DETAIL_PERIOD]<> 0 "
    u"ORDER BY TVEH.TVEH_CODCLI, TVEH.TVEH_IMMAT, TVEH_DETAIL.TVEH_DETAIL_TypTrav;";
constexpr const char* kDueDate = "2026-12-31";

constexpr TextView kSitesQuery =
    u"SELECT Trim([TAFF_Immatr] & '') AS IMMAT, Trim([TAFF_Site] & '') AS SITE "
    u"From TAFF "
    u"GROUP BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '') "
    u"Having (((Trim([TAFF_Immatr] & '')) <> '') And ((Trim([TAFF_Site] & '')) <> '')) "
    u"ORDER BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '');";

constexpr std::size_t kLookUps = 1000;

std::shared_ptr<jet::Database> Open(const fs::path& file) {
    return jet::Database::Open(file, jet::OpenMode::ReadOnly);
}

/// Opens the file, runs the query and reads every value. Returns the number of rows.
std::size_t ReadAll(const fs::path& file, TextView statement) {
    const auto query = sql::Query::Prepare(Open(file), statement);
    const sql::RowSet rows = query->Run();
    const auto columns = static_cast<int>(query->Columns().size());
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        for (int column = 0; column < columns; ++column) {
            (void)rows.Value(row, column);
        }
    }
    return rows.Size();
}

/// The registrations of the first vehicles; some have been worked on by no site.
std::vector<Text> Registrations(const fs::path& file) {
    const auto query = sql::Query::Prepare(Open(file), u"SELECT TVEH_IMMAT FROM TVEH");
    const sql::RowSet rows = query->Run();
    std::vector<Text> registrations;
    for (std::size_t row = 0; row < std::min(rows.Size(), kLookUps); ++row) {
        registrations.push_back(basic::CStr(rows.Value(row, 0)));
    }
    return registrations;
}

/// Runs the site query and finds each registration in its rows, by a condition of its own as FindFirst has
/// it.
void LookUp(const fs::path& file, const std::vector<Text>& registrations) {
    const std::shared_ptr<const sql::Query> query = sql::Query::Prepare(Open(file), kSitesQuery);
    const sql::RowSet rows = query->Run();
    for (const Text& registration : registrations) {
        (void)sql::Condition(query, u"IMMAT = '" + registration + u"'").FindForward(rows, 0);
    }
}

/// The same questions for mdb-sql.
void WriteLookUps(const fs::path& script, const std::vector<Text>& registrations) {
    std::ofstream lines(script);
    for (const Text& registration : registrations) {
        lines << "SELECT TAFF_Site FROM TAFF WHERE TAFF_Immatr = '" << basic::ToUtf8(registration)
              << "'\ngo\n";
    }
}

void MeasureDueList(Report& report, int runs, const fs::path& file) {
    const auto readAll = [&file] { ReadAll(file, kDueQuery); };
    const std::string what = "échéances, " + std::to_string(ReadAll(file, kDueQuery)) + " lignes";
    report.Section("Relances : échéances au 31/12/2026", "autrement");
    report.Compare(what + " / export de TVEH, TVEH_DETAIL",
                   Race(runs, readAll, ExportTables(file, {"TVEH", "TVEH_DETAIL"})));
    report.Compare(
        what + " / script Python, sqlite3",
        Race(runs, readAll, {{"python3", QUARDELE_BENCH_DUE_LIST_SCRIPT, file.string(), kDueDate}}));
}

void MeasureSites(Report& report, int runs, const fs::path& file) {
    report.Section("Relances : sites des véhicules", "autrement");
    report.Compare("sites, " + std::to_string(ReadAll(file, kSitesQuery)) + " lignes / export de TAFF",
                   Race(
                       runs, [&] { ReadAll(file, kSitesQuery); }, ExportTables(file, {"TAFF"})));

    const std::vector<Text> registrations = Registrations(file);
    const TemporaryFolder folder;
    const fs::path script = folder.Path() / "recherches.sql";
    WriteLookUps(script, registrations);
    report.Compare(std::to_string(registrations.size()) + " recherches de véhicule / mdb-sql",
                   Race(runs, [&] { LookUp(file, registrations); },
                        {{"mdb-sql", "-H", "-F", "-P", "-i", script.string(), file.string()}}));
}

}  // namespace

void MeasureReminders(Report& report, int runs, const fs::path& file) {
    MeasureDueList(report, runs, file);
    MeasureSites(report, runs, file);
}

}  // namespace quardele::bench
