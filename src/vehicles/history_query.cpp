#include "history_query.h"

namespace quardele::vehicles {

namespace {

/// When a detail line left, or else another date.
QString DateOfJob(const QString& otherwise) {
    return QStringLiteral("IIf([TAFF_DETAIL_DatSortieEff] Is Not Null,[TAFF_DETAIL_DatSortieEff],[%1])")
        .arg(otherwise);
}

}  // namespace

QString SortedDateOfJob() {
    return DateOfJob(QStringLiteral("TAFF_DatSortieEff"));
}

QString HistoryOf(const QString& registration) {
    return QStringLiteral("SELECT ") + DateOfJob(QStringLiteral("TAFF_DatLivrPrev")) +
           QStringLiteral(
               " AS DateVisite, TAFF.TAFF_Numaff, TAFF.TAFF_CodCli, TAFF.TAFF_CM, TAFF.TAFF_LibOpe, "
               "TAFF.TAFF_DetailOpe "
               "FROM TAFF LEFT JOIN TAFF_DETAIL ON TAFF.TAFF_Numaff = TAFF_DETAIL.TAFF_DETAIL_Numaff "
               "WHERE (((TAFF_DETAIL.TAFF_DETAIL_Ident)='") +
           registration + QStringLiteral("')) OR (([TAFF_Immatr]='") + registration +
           QStringLiteral("')) ORDER by ") + SortedDateOfJob() + QStringLiteral(" DESC;");
}

}  // namespace quardele::vehicles
