#include "statements.h"

namespace quardele::bench {

namespace {

/// What a list shows before anybody scrolls.
constexpr std::size_t kFirstPage = 40;

std::string DueList(const std::string& due, const std::string& limit) {
    return "SELECT " + due +
           " AS DatePrev, TVEH_DETAIL.TVEH_DETAIL_PERIOD, TVEH_DETAIL.TVEH_DETAIL_DATVIS, "
           "TVEH.TVEH_MARQUE,TVEH.TVEH_IMMAT, TVEH.TVEH_EDIT, TVEH.TVEH_CODCLI, "
           "TVEH_DETAIL.TVEH_DETAIL_TypTrav "
           "FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
           "WHERE (((" +
           due + ")<" + limit +
           ")) AND [TVEH_DETAIL_PERIOD]<> 0 "
           "ORDER BY TVEH.TVEH_CODCLI, TVEH.TVEH_IMMAT, TVEH_DETAIL.TVEH_DETAIL_TypTrav;";
}

constexpr const char* kSites =
    "SELECT Trim([TAFF_Immatr] & '') AS IMMAT, Trim([TAFF_Site] & '') AS SITE "
    "From TAFF "
    "GROUP BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '') "
    "Having (((Trim([TAFF_Immatr] & '')) <> '') And ((Trim([TAFF_Site] & '')) <> '')) "
    "ORDER BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '');";
constexpr const char* kTheirSites =
    "SELECT Trim(Coalesce(TAFF_Immatr, '')) AS IMMAT, Trim(Coalesce(TAFF_Site, '')) AS SITE "
    "FROM TAFF GROUP BY 1, 2 HAVING IMMAT <> '' AND SITE <> '' ORDER BY 1, 2";

StatementGroup Lists() {
    const std::string sorted = "SELECT * FROM TVEH ORDER BY ";
    return {
        "Listes",
        {{"échéances, triées",
          DueList("DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS])", "#11/24/2026#"),
          DueList(std::string(kAddMonths) + "([TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS])", "46350"), 0},
         {"sites des véhicules", kSites, kTheirSites, 0},
         {"tri sans index, première page", sorted + "TVEH_USER4", sorted + "TVEH_USER4", kFirstPage},
         {"tri sans index, toutes les valeurs", sorted + "TVEH_USER4", sorted + "TVEH_USER4", 0},
         {"« Contient », première page", "SELECT * FROM TVEH Where InStr(1, TVEH_MARQUE, 'REN') <> 0",
          "SELECT * FROM TVEH WHERE InStr(TVEH_MARQUE, 'REN') <> 0 ORDER BY TVEH_IMMAT", kFirstPage},
         {"« Contient », toutes les valeurs", "SELECT * FROM TVEH Where InStr(1, TVEH_MARQUE, 'REN') <> 0",
          "SELECT * FROM TVEH WHERE InStr(TVEH_MARQUE, 'REN') <> 0 ORDER BY TVEH_IMMAT", 0},
         {"« Contient » qui ne trouve rien", "SELECT * FROM TVEH Where InStr(1, TVEH_USER4, '###') <> 0",
          "SELECT * FROM TVEH WHERE InStr(TVEH_USER4, '###') <> 0 ORDER BY TVEH_IMMAT", 0},
         {"« Commençant par », clé primaire", "SELECT * FROM TVEH Where left(TVEH_IMMAT,4) = 'AB-1'",
          "SELECT * FROM TVEH WHERE Substr(TVEH_IMMAT, 1, 4) = 'AB-1' ORDER BY TVEH_IMMAT", 0}}};
}

std::string History(const std::string& vehicle) {
    return "SELECT IIf([TAFF_DETAIL_DatSortieEff] Is Not Null,[TAFF_DETAIL_DatSortieEff],[TAFF_DatLivrPrev]) "
           "AS DateVisite, "
           "TAFF.TAFF_Numaff, TAFF.TAFF_CodCli, TAFF.TAFF_CM, TAFF.TAFF_LibOpe, TAFF.TAFF_DetailOpe "
           "FROM TAFF LEFT JOIN TAFF_DETAIL ON TAFF.TAFF_Numaff = TAFF_DETAIL.TAFF_DETAIL_Numaff "
           "WHERE (((TAFF_DETAIL.TAFF_DETAIL_Ident)='" +
           vehicle + "')) OR (([TAFF_Immatr]='" + vehicle +
           "')) "
           "ORDER by IIf([TAFF_DETAIL_DatSortieEff] Is Not "
           "Null,[TAFF_DETAIL_DatSortieEff],[TAFF_DatSortieEff]) DESC;";
}

StatementGroup Searches(const std::string& vehicle) {
    const std::string visits = "SELECT * FROM TVEH_DETAIL WHERE TVEH_DETAIL_Immat ='" + vehicle + "'";
    return {"Recherches",
            {{"visites d'un véhicule", visits, visits, 0},
             // SQLite does not cut trailing blanks when it compares.
             {"historique d'un véhicule", History(vehicle), History(vehicle), 0},
             {"véhicules d'une plage d'immatriculations",
              "SELECT * FROM TVEH WHERE TVEH_IMMAT BETWEEN 'FA' AND 'FB'",
              "SELECT * FROM TVEH WHERE TVEH_IMMAT BETWEEN 'FA' AND 'FB'", 0}}};
}

StatementGroup Shapes() {
    const std::string first = "SELECT TVEH_IMMAT, TVEH_USER3 FROM TVEH ORDER BY TVEH_USER3 DESC, TVEH_IMMAT";
    const std::string joined =
        "SELECT TVEH_IMMAT, TCLI_RS FROM TVEH INNER JOIN TCLI ON TVEH.TVEH_CODCLI = TCLI.TCLI_CODCLI";
    const std::string grouped =
        "SELECT TVEH_DETAIL_TypTrav, Count(*) AS Nombre, Max(TVEH_DETAIL_DATVIS) AS Dernier FROM TVEH_DETAIL "
        "GROUP BY TVEH_DETAIL_TypTrav";
    const std::string distinct = "SELECT DISTINCT TVEH_MARQUE, TVEH_ComplIdent FROM TVEH";
    return {"Autres formes",
            {{"les 10 premiers d'un tri", "SELECT TOP 10" + first.substr(6), first + " LIMIT 10", 0},
             {"jointure avec les clients", joined, joined, 0},
             {"regroupement de toutes les visites", grouped, grouped, 0},
             {"valeurs distinctes", distinct, distinct, 0}}};
}

}  // namespace

std::vector<StatementGroup> Statements(const std::string& vehicle) {
    return {Lists(), Searches(vehicle), Shapes()};
}

}  // namespace quardele::bench
