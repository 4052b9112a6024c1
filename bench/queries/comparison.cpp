#include "comparison.h"

#include <stdexcept>

#include <dao/dao.h>

namespace quardele::bench {

namespace {

/// A registration of a job in the middle of the table.
std::string SomeVehicle(jet::Database& database) {
    const auto table = database.OpenTable(u"TAFF");
    const int column = table->FindColumn(u"TAFF_Immatr");
    jet::RowScan scan = table->Scan();
    basic::Text found;
    for (std::size_t row = 0; row < table->RowCount() / 2 || found.empty() || found.back() == u' '; ++row) {
        const auto stored = scan.Next();
        if (!stored) {
            break;
        }
        (void)stored->TextAt(column, found);
    }
    return basic::ToUtf8(found);
}

/// Both sides give the same rows; how many.
std::size_t CheckedRows(BothSides& sides, const Statement& statement) {
    const std::vector<std::string> ours = sides.OurLines(statement);
    if (ours != sides.TheirLines(statement)) {
        throw std::runtime_error("les deux côtés ne donnent pas les mêmes lignes : " + statement.what);
    }
    return ours.size();
}

/// A dynaset of all rows with the values of its first page.
std::shared_ptr<dao::Recordset> OpenedList(const dao::Database& database, basic::TextView source) {
    constexpr std::size_t kFirstPage = 40;
    auto list = database.OpenRecordset(source, dao::RecordsetType::Dynaset);
    for (std::size_t row = 0; row < kFirstPage; ++row) {
        for (int field = 0; field < static_cast<int>(list->Fields().size()); ++field) {
            (void)list->ValueAt(row, field);
        }
    }
    return list;
}

std::string Line(const Statement& statement, std::size_t rows) {
    return statement.what + ", " + std::to_string(rows) + " lignes";
}

}  // namespace

void MeasureStatements(Report& report, int runs, BothSides& sides) {
    for (const StatementGroup& group : Statements(SomeVehicle(*sides.Ours()))) {
        report.Section(group.title, "SQLite");
        for (const Statement& statement : group.statements) {
            const std::size_t rows = CheckedRows(sides, statement);
            report.Compare(Line(statement, rows),
                           RaceTimed(
                               runs, [&] { return TimeOf([&] { (void)sides.RunOurs(statement); }); },
                               Side([&] { return TimeOf([&] { (void)sides.RunTheirs(statement); }); })));
        }
    }
}

void MeasureList(Report& report, int runs, const std::filesystem::path& file) {
    const auto database =
        dao::DBEngine::Instance().Workspaces(0).OpenDatabase(basic::FromUtf8(file.string()));
    std::vector<Duration> openings;
    std::vector<Duration> visits;
    std::vector<Duration> firsts;
    std::vector<Duration> others;
    for (int run = 0; run < runs; ++run) {
        std::shared_ptr<dao::Recordset> list;
        visits.push_back(TimeOf([&] { list = OpenedList(*database, u"SELECT * FROM TVEH_DETAIL"); }));
        openings.push_back(TimeOf([&] { list = OpenedList(*database, u"select * from TVEH"); }));
        list->SetAbsolutePosition(static_cast<long>(list->RowCount() / 2));
        const basic::Text sought = u"TVEH_USER3 = '" + list->Value(u"TVEH_USER3").As<basic::Text>() + u"'";
        firsts.push_back(TimeOf([&] { list->FindFirst(sought); }));
        others.push_back(TimeOf([&] { list->FindFirst(sought); }));
    }
    report.Section("Listes comme dynasets", "");
    report.Tell("toutes les visites : ouverture, première page lue", TimeText(Median(visits)));
    report.Tell("tous les véhicules : ouverture, première page lue", TimeText(Median(openings)));
    report.Tell("FindFirst sur une colonne sans index, première fois", TimeText(Median(firsts)));
    report.Tell("à partir de la deuxième", TimeText(Median(others)));
}

}  // namespace quardele::bench
