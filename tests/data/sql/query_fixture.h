// A small file of their own for tests of whole queries.
#pragma once

#include "change_fixture.h"

namespace quardele::sql {

/// Four vehicles and their visits: V (Immat, Marque, Km) and D (Immat, Typ, Mois). One make and one kind of
/// visit are Null; BB-2 has no visits.
class SmallFileTest : public ChangeTest {
 protected:
    SmallFileTest();
};

}  // namespace quardele::sql
