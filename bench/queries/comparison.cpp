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

std::string Line(const Statement& statement, std::size_t rows) {
    return statement.what + ", " + std::to_string(rows) + " lignes";
}

}  // namespace

void MeasureStatements(Report& report, int runs, BothSides& sides) {
    for (const StatementGroup& group : Statements(SomeVehicle(*sides.Ours()))) {
        report.Section(group.title, "SQLite");
        for (const Statement& statement : group.statements) {
            if (sides.OurLines(statement) != sides.TheirLines(statement)) {
                throw std::runtime_error("les deux côtés ne donnent pas les mêmes lignes : " +
                                         statement.what);
            }
            const std::size_t rows = sides.RunOurs(statement);
            report.Compare(Line(statement, rows),
                           RaceTimed(
                               runs, [&] { return TimeOf([&] { (void)sides.RunOurs(statement); }); },
                               Side([&] { return TimeOf([&] { (void)sides.RunTheirs(statement); }); })));
        }
    }
}

void MeasureList(Report& report, int runs, const std::filesystem::path& file) {
    constexpr std::size_t kFirstPage = 40;
    const auto database =
        dao::DBEngine::Instance().Workspaces(0).OpenDatabase(basic::FromUtf8(file.string()));
    std::vector<Duration> openings;
    std::vector<Duration> firsts;
    std::vector<Duration> others;
    for (int run = 0; run < runs; ++run) {
        std::shared_ptr<dao::Recordset> list;
        openings.push_back(TimeOf([&] {
            list = database->OpenRecordset(u"select * from TVEH", dao::RecordsetType::Dynaset);
            for (std::size_t row = 0; row < kFirstPage; ++row) {
                for (int field = 0; field < static_cast<int>(list->Fields().size()); ++field) {
                    (void)list->ValueAt(row, field);
                }
            }
        }));
        list->SetAbsolutePosition(static_cast<long>(list->RowCount() / 2));
        const basic::Text sought = u"TVEH_USER3 = '" + list->Value(u"TVEH_USER3").As<basic::Text>() + u"'";
        firsts.push_back(TimeOf([&] { list->FindFirst(sought); }));
        others.push_back(TimeOf([&] { list->FindFirst(sought); }));
    }
    report.Section("La liste des véhicules comme dynaset", "");
    report.Tell("ouverture, première page lue", TimeText(Median(openings)));
    report.Tell("FindFirst sur une colonne sans index, première fois", TimeText(Median(firsts)));
    report.Tell("à partir de la deuxième", TimeText(Median(others)));
}

}  // namespace quardele::bench
