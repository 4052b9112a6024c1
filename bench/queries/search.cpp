#include "search.h"

#include <stdexcept>

#include <dao/dao.h>

namespace quardele::bench {

namespace {

/// A criterion as the search dialog writes it, in our dialect and in SQLite's.
struct Criterion {
    std::string what;  ///< in French
    std::string ours;
    std::string theirs;
};

const std::vector<Criterion>& Criteria() {
    static const std::vector<Criterion> criteria{
        {"champ entier", "TVEH_MARQUE ='DACIA'", "TVEH_MARQUE = 'DACIA'"},
        {"début de champ", "Left(TVEH_USER4,2) ='AB'", "Substr(TVEH_USER4, 1, 2) = 'AB'"},
        {"n'importe où dans le champ", "inStr(1,TVEH_MARQUE,'REN') <> 0", "InStr(TVEH_MARQUE, 'REN') <> 0"},
        {"rien à trouver", "TVEH_USER4 ='###'", "TVEH_USER4 = '###'"}};
    return criteria;
}

std::shared_ptr<dao::Recordset> OpenList(const std::filesystem::path& file) {
    return dao::DBEngine::Instance()
        .Workspaces(0)
        .OpenDatabase(basic::FromUtf8(file.string()))
        ->OpenRecordset(u"select * from TVEH", dao::RecordsetType::Dynaset);
}

/// From the first row that is found to the last one.
std::size_t FindAll(dao::Recordset& list, const basic::Text& criterion) {
    std::size_t found = 0;
    for (list.FindFirst(criterion); !list.NoMatch(); list.FindNext(criterion)) {
        ++found;
    }
    return found;
}

Statement SearchOf(const Criterion& criterion, std::size_t rowsRead) {
    return {criterion.what, {}, "SELECT TVEH_IMMAT FROM TVEH WHERE " + criterion.theirs, rowsRead};
}

/// Each time on a list that is opened anew: a second search in the same one reads what the first has kept.
RaceTimes RaceOnNewLists(int runs, const std::filesystem::path& file, BothSides& sides,
                         const Statement& theirs, const std::function<void(dao::Recordset&)>& search) {
    return RaceTimed(
        runs,
        [&] {
            const auto list = OpenList(file);
            return TimeOf([&] { search(*list); });
        },
        Side([&] { return TimeOf([&] { (void)sides.RunTheirs(theirs); }); }));
}

}  // namespace

void MeasureSearch(Report& report, int runs, BothSides& sides, const std::filesystem::path& file) {
    report.Section("Recherche dans la liste des véhicules", "SQLite");
    for (const Criterion& criterion : Criteria()) {
        const basic::Text ours = basic::FromUtf8(criterion.ours);
        const Statement all = SearchOf(criterion, 0);
        const std::size_t found = FindAll(*OpenList(file), ours);
        if (found != sides.RunTheirs(all)) {
            throw std::runtime_error("les deux côtés ne trouvent pas les mêmes lignes : " + criterion.what);
        }
        report.Compare(criterion.what + ", FindFirst",
                       RaceOnNewLists(runs, file, sides, SearchOf(criterion, 1),
                                      [&](dao::Recordset& list) { list.FindFirst(ours); }));
        report.Compare(
            criterion.what + ", FindNext jusqu'à la fin, " + std::to_string(found) + " lignes",
            RaceOnNewLists(runs, file, sides, all, [&](dao::Recordset& list) { (void)FindAll(list, ours); }));
    }
}

}  // namespace quardele::bench
