// An index whose pages were joined as most rows went, and what others make of the file.

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "../data/jet/support.h"
#include "comparison.h"
#include "other_readers.h"

namespace quardele::jet::test {
namespace {

TEST(ShrinkingIndex, LeavesAFileThatReadsTheSameEverywhere) {
    const TempFolder folder;
    const auto file = folder.Path() / "moins.mdb";
    Contents expected;
    TableContents& contents = expected[u"Essai"];
    {
        const auto database = Database::Create(file);
        database->CreateTable(
            {.name = u"Essai",
             .columns = {{.name = u"Numéro", .type = ColumnType::Long, .defaultValue = {}},
                         {.name = u"Texte", .type = ColumnType::Text, .size = 100, .defaultValue = {}}},
             .indexes = {{.name = u"PrimaryKey", .columns = {{u"Numéro"}}, .primary = true},
                         {.name = u"ParTexte", .columns = {{u"Texte", false}, {u"Numéro"}}}}});
        const auto table = database->OpenTable(u"Essai");
        contents.columns = table->Columns();
        Step step = database->Begin();
        std::mt19937 random(20261121);
        std::vector<RowId> going;
        for (std::int32_t i = 0; i < 3000; ++i) {
            const std::vector<ColumnChange> row = {
                {0, i}, {1, Text(70, u'é') + basic::FromUtf8(std::to_string(i * 7919 % 3000))}};
            const RowId id = table->Insert(row);
            if (random() % 8 != 0) {
                going.push_back(id);
            } else {
                contents.rows.push_back({row[0].value, row[1].value});
            }
        }
        std::shuffle(going.begin(), going.end(), random);
        std::for_each(going.begin(), going.end(), [&table](RowId id) { table->Delete(id); });
        step.Commit();
    }
    ExpectAllReadersAgree(file, expected);
    ExpectSound(file, true);
    SKIP_WITHOUT_OTHER_READERS();
}

}  // namespace
}  // namespace quardele::jet::test
