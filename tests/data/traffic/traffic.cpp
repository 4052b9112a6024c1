#include "traffic.h"

#include <jet/table.h>

#include "engine.h"
#include "table_impl.h"

namespace quardele::tests {

using basic::Text;

Traffic TrafficOf(jet::Database& database) {
    const jet::PageCache& cache = database.OpenTable(u"TVEH")->Impl().Owner().Cache();
    return {cache.PagesAsked(), cache.PagesRead()};
}

std::size_t RowPagesOf(jet::Database& database, basic::TextView table) {
    return database.OpenTable(table)->Impl().DataPages()->size();
}

Text HistoryOf(const Text& registration) {
    return u"SELECT IIf([TAFF_DETAIL_DatSortieEff] Is Not "
           u"Null,[TAFF_DETAIL_DatSortieEff],[TAFF_DatLivrPrev]) AS DateVisite, "
           u"TAFF.TAFF_Numaff, TAFF.TAFF_CodCli, TAFF.TAFF_CM, TAFF.TAFF_LibOpe, TAFF.TAFF_DetailOpe "
           u"FROM TAFF LEFT JOIN TAFF_DETAIL ON TAFF.TAFF_Numaff = TAFF_DETAIL.TAFF_DETAIL_Numaff "
           u"WHERE (((TAFF_DETAIL.TAFF_DETAIL_Ident)='" +
           registration + u"')) OR (([TAFF_Immatr]='" + registration +
           u"')) "
           u"ORDER by IIf([TAFF_DETAIL_DatSortieEff] Is Not "
           u"Null,[TAFF_DETAIL_DatSortieEff],[TAFF_DatSortieEff]) DESC;";
}

}  // namespace quardele::tests
