#include "query_fixture.h"

namespace quardele::sql {

SmallFileTest::SmallFileTest() {
    Do("CREATE TABLE V (Immat TEXT(10) PRIMARY KEY, Marque TEXT(20), Km LONG)");
    Do("CREATE TABLE D (Immat TEXT(10), Typ TEXT(5), Mois LONG)");
    Do("CREATE INDEX ParImmat ON D (Immat)");
    for (const char* row : {"'AA-1', 'RENAULT', 1000", "'BB-2', 'FIAT', 2000", "'CC-3', 'RENAULT', 3000",
                            "'DD-4', Null, 4000"}) {
        Do(std::string("INSERT INTO V VALUES (") + row + ")");
    }
    for (const char* row :
         {"'AA-1', 'VID', 12", "'AA-1', 'CT', 24", "'CC-3', 'VID', 6", "'DD-4', Null, 12"}) {
        Do(std::string("INSERT INTO D VALUES (") + row + ")");
    }
}

}  // namespace quardele::sql
