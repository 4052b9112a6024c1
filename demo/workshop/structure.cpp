#include "structure.h"

#include <string>

namespace quardele::workshop {

namespace {

using jet::Column;
using jet::ColumnType;
using jet::IndexDesign;
using jet::IndexPart;
using jet::TableDesign;
using jet::Text;
using jet::TextView;

constexpr int kParameterFields = 15;
constexpr int kVehicleFields = 22;

Column Of(TextView name, ColumnType type) {
    Column column;
    column.name = name;
    column.type = type;
    return column;
}

Column TextOf(TextView name, int size) {
    Column column = Of(name, ColumnType::Text);
    column.size = size;
    return column;
}

Column Note(TextView name) {
    constexpr int kSize = 100;
    Column column = TextOf(name, kSize);
    column.allowZeroLength = true;
    column.defaultValue = u"\"\"";
    return column;
}

Column Counter(TextView name) {
    Column column = Of(name, ColumnType::Long);
    column.autoNumber = true;
    return column;
}

IndexDesign PrimaryKey(std::vector<IndexPart> columns) {
    IndexDesign index;
    index.name = u"PrimaryKey";
    index.columns = std::move(columns);
    index.primary = true;
    return index;
}

IndexDesign IndexNamed(TextView name, TextView column) {
    IndexDesign index;
    index.name = name;
    index.columns = {{Text(column)}};
    return index;
}

Text Numbered(TextView prefix, int number, TextView suffix = {}) {
    return Text(prefix) + basic::FromUtf8(std::to_string(number)) + Text(suffix);
}

TableDesign Parameters() {
    constexpr TextView kField = u"TPAR_AFFUSER";
    TableDesign table{u"TPAR", {TextOf(u"TPAR_Ver", 10)}, {}};
    for (int field = 1; field <= kParameterFields; ++field) {
        table.columns.push_back(TextOf(Numbered(kField, field, u"_LIB"), 30));
        table.columns.push_back(TextOf(Numbered(kField, field, u"_TYP"), 1));
        table.columns.push_back(Of(Numbered(kField, field, u"_LNG"), ColumnType::Integer));
        table.columns.push_back(Of(Numbered(kField, field, u"_DEC"), ColumnType::Integer));
        table.columns.push_back(TextOf(Numbered(kField, field, u"_TAB"), 50));
    }
    return table;
}

TableDesign Countries() {
    return {
        u"TPAYS", {TextOf(u"TPAYS_CODE", 3), TextOf(u"TPAYS_LIBELLE", 40)}, {PrimaryKey({{u"TPAYS_CODE"}})}};
}

TableDesign WorkTypes() {
    return {u"TTYP", {TextOf(u"TTYP_CODE", 5), TextOf(u"TTYP_LIBELLE", 40)}, {PrimaryKey({{u"TTYP_CODE"}})}};
}

TableDesign Customers() {
    return {u"TCLI",
            {TextOf(u"TCLI_CODCLI", 10), TextOf(u"TCLI_RS", 50), TextOf(u"TCLI_ADRFACT1", 50),
             TextOf(u"TCLI_ADRFACT2", 50), TextOf(u"TCLI_ADRFACT3", 50), TextOf(u"TCLI_CODPFACT", 10),
             TextOf(u"TCLI_VILLEFACT", 40), TextOf(u"TCLI_PAYSFACT", 3), TextOf(u"TCLI_CONTACT1", 40),
             TextOf(u"TCLI_TEL1", 20), TextOf(u"TCLI_FAX1", 20), Of(u"TCLI_REMARQUES", ColumnType::Memo),
             Of(u"TCLI_ENCOURS", ColumnType::Currency)},
            {PrimaryKey({{u"TCLI_CODCLI"}}), IndexNamed(u"RS", u"TCLI_RS")}};
}

TableDesign Vehicles(Notes notes) {
    TableDesign table{u"TVEH",
                      {TextOf(u"TVEH_IMMAT", 15), TextOf(u"TVEH_CODCLI", 10), TextOf(u"TVEH_MARQUE", 30),
                       TextOf(u"TVEH_ComplIdent", 40)},
                      {PrimaryKey({{u"TVEH_IMMAT"}}), IndexNamed(u"CODCLI", u"TVEH_CODCLI")}};
    for (int field = 1; field <= kVehicleFields; ++field) {
        table.columns.push_back(TextOf(Numbered(u"TVEH_USER", field), 30));
    }
    table.columns.push_back(Of(u"TVEH_EDIT", ColumnType::Boolean));
    if (notes == Notes::With) {
        table.columns.push_back(Note(u"TVEH_Note1"));
        table.columns.push_back(Note(u"TVEH_Note2"));
    }
    return table;
}

TableDesign Visits() {
    return {u"TVEH_DETAIL",
            {TextOf(u"TVEH_DETAIL_Immat", 15), TextOf(u"TVEH_DETAIL_TypTrav", 5),
             Of(u"TVEH_DETAIL_DATVIS", ColumnType::Date), Of(u"TVEH_DETAIL_PERIOD", ColumnType::Integer)},
            {PrimaryKey({{u"TVEH_DETAIL_Immat"}, {u"TVEH_DETAIL_TypTrav"}})}};
}

TableDesign Jobs() {
    return {u"TAFF",
            {Of(u"TAFF_Numaff", ColumnType::Long), TextOf(u"TAFF_CodCli", 10), TextOf(u"TAFF_CM", 3),
             TextOf(u"TAFF_LibOpe", 60), Of(u"TAFF_DetailOpe", ColumnType::Memo), TextOf(u"TAFF_Immatr", 20),
             TextOf(u"TAFF_Site", 10), Of(u"TAFF_DatLivrPrev", ColumnType::Date),
             Of(u"TAFF_DatSortieEff", ColumnType::Date)},
            {PrimaryKey({{u"TAFF_Numaff"}}), IndexNamed(u"IMMATR", u"TAFF_Immatr")}};
}

TableDesign JobDetails() {
    return {u"TAFF_DETAIL",
            {Counter(u"TAFF_DETAIL_Id"), Of(u"TAFF_DETAIL_Numaff", ColumnType::Long),
             TextOf(u"TAFF_DETAIL_Ident", 20), Of(u"TAFF_DETAIL_DatSortieEff", ColumnType::Date)},
            {PrimaryKey({{u"TAFF_DETAIL_Id"}}), IndexNamed(u"NUMAFF", u"TAFF_DETAIL_Numaff")}};
}

}  // namespace

Tables DataTables(Notes notes) {
    return {Parameters(),    Countries(), WorkTypes(), Customers(),
            Vehicles(notes), Visits(),    Jobs(),      JobDetails()};
}

Tables StockTables() {
    return {
        {u"TSITE",
         {TextOf(u"TSITE_CODE", 10), TextOf(u"TSITE_LIBELLE", 40), Of(u"TSITE_Inactif", ColumnType::Boolean)},
         {PrimaryKey({{u"TSITE_CODE"}})}}};
}

Tables PathTables() {
    return {{u"TPATH",
             {Of(u"TPATH_NUM", ColumnType::Integer), TextOf(u"TPATH_PATH", 255), TextOf(u"TPATH_NOMMDB", 50)},
             {PrimaryKey({{u"TPATH_NUM"}})}}};
}

Tables ChangeTables() {
    return {{u"TNUMAPPLI",
             {Of(u"NUMAPPLI", ColumnType::Integer), TextOf(u"MODULE", 40)},
             {PrimaryKey({{u"NUMAPPLI"}})}},
            {u"TEVOLUTION",
             {Of(u"NUMAPPLI", ColumnType::Integer), Of(u"REVISION", ColumnType::Integer),
              Of(u"DATE", ColumnType::Date), Of(u"DETAIL", ColumnType::Memo)},
             {}}};
}

Tables BookmarkTables() {
    return {{u"TSIGNETS",
             {Of(u"SIGNETS_Appli", ColumnType::Integer), TextOf(u"SIGNETS_nomdot", 50),
              TextOf(u"SIGNETS_nomsignet", 50)},
             {PrimaryKey({{u"SIGNETS_Appli"}, {u"SIGNETS_nomdot"}, {u"SIGNETS_nomsignet"}})}}};
}

Tables TranslationTables() {
    return {{u"TTRAD",
             {TextOf(u"T_ABREGE", 20), TextOf(u"T_VALEUR", 255), TextOf(u"t_trad", 255)},
             {IndexNamed(u"T_ABREGE", u"T_ABREGE")}}};
}

}  // namespace quardele::workshop
