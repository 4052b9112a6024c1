// Thousands of random changes of a table with every kind of index, against a model in memory.

#include <algorithm>
#include <map>
#include <random>

#include <basic/date.h>
#include <jet/check.h>

#include "index_check.h"
#include "opened_table.h"

namespace quardele::jet::test {
namespace {

using basic::Null;

using Values = std::vector<Variant>;
using Model = std::map<RowId, Values>;

enum Place { kId, kCode, kGroup, kNumber, kAmount, kDay, kFlag, kNote, kPicture, kPlaces };

TableDesign Design() {
    const auto column = [](const Text& name, ColumnType type, int size = 0) {
        Column made;
        made.name = name;
        made.type = type;
        made.size = size;
        return made;
    };
    TableDesign design;
    design.name = u"Modèle";
    design.columns = {column(u"Id", ColumnType::Long),          column(u"Code", ColumnType::Text, 30),
                      column(u"Groupe", ColumnType::Text, 9),   column(u"Nombre", ColumnType::Integer),
                      column(u"Montant", ColumnType::Currency), column(u"Jour", ColumnType::Date),
                      column(u"Vu", ColumnType::Boolean),       column(u"Note", ColumnType::Memo),
                      column(u"Image", ColumnType::Ole)};
    design.columns[kId].autoNumber = true;
    design.indexes = {
        {.name = u"PrimaryKey", .columns = {{u"Id"}}, .primary = true, .unique = true, .required = true},
        {.name = u"ParCode", .columns = {{u"Code"}}, .unique = true},
        {.name = u"ParGroupe", .columns = {{u"Groupe", false}, {u"Nombre"}}},
        {.name = u"ParJour", .columns = {{u"Jour"}}, .ignoreNulls = true},
        {.name = u"ParNote", .columns = {{u"Note"}}},
    };
    return design;
}

class RowModel : public testing::Test {
 protected:
    RowModel() {
        database_ = Database::Create(file_);
        database_->CreateTable(Design());
        table_ = database_->OpenTable(u"Modèle");
    }

    std::uint32_t Random(std::uint32_t below) { return static_cast<std::uint32_t>(random_() % below); }

    Text RandomText(std::size_t longest) {
        static const Text kLetters = u"abcABCéÉèçàœß'- .0123456789XYZ";
        Text text;
        for (std::size_t length = 1 + Random(static_cast<std::uint32_t>(longest)); text.size() < length;) {
            text += kLetters[Random(static_cast<std::uint32_t>(kLetters.size()))];
        }
        return text;
    }

    Variant RandomValue(int place) {
        if (Random(6) == 0 && place != kFlag) {
            return Null{};
        }
        switch (place) {
            case kCode:
                return RandomText(Random(3) == 0 ? 2 : 30);
            case kGroup:
                return RandomText(2);
            case kNumber:
                return static_cast<std::int16_t>(static_cast<int>(Random(2000)) - 1000);
            case kAmount:
                return basic::Currency{static_cast<std::int64_t>(Random(1000000)) - 500000};
            case kDay:
                return basic::DateOf(1950 + static_cast<int>(Random(100)), 1 + static_cast<int>(Random(12)),
                                     3);
            case kFlag:
                return Random(2) == 0;
            case kNote: {
                static constexpr std::uint32_t kLengths[] = {5, 40, 300, 2100, 9000};
                return RandomText(kLengths[Random(5)]);
            }
            default:
                return basic::Binary(Random(Random(20) == 0 ? 20000 : 200),
                                     static_cast<std::uint8_t>(Random(256)));
        }
    }

    std::vector<ColumnChange> RandomChanges(bool all) {
        std::vector<ColumnChange> changes;
        for (int place = kCode; place < kPlaces; ++place) {
            if (all || Random(4) == 0) {
                changes.push_back({place, RandomValue(place)});
            }
        }
        return changes;
    }

    // Whether a change went through; a duplicate is the only thing that may refuse it.
    template <class Change>
    bool Went(const Change& change) {
        const int error = ErrorNumber(change);
        EXPECT_TRUE(error == 0 || error == basic::error::kDuplicateKey) << error;
        refused_ += error == 0 ? 0 : 1;
        return error == 0;
    }

    void Insert(Model& model) {
        const auto changes = RandomChanges(true);
        RowId row;
        if (!Went([&] { row = table_->Insert(changes); })) {
            return;
        }
        Values values(kPlaces, Null{});
        values[kId] = table_->Fetch(row)->Value(kId);
        for (const ColumnChange& change : changes) {
            values[static_cast<std::size_t>(change.column)] = change.value;
        }
        EXPECT_TRUE(model.emplace(row, std::move(values)).second);
    }

    Model::iterator Any(Model& model) {
        auto row = model.begin();
        std::advance(row, Random(static_cast<std::uint32_t>(model.size())));
        return row;
    }

    void Update(Model& model) {
        const auto row = Any(model);
        const auto changes = RandomChanges(false);
        if (Went([&] { table_->Update(row->first, changes); })) {
            for (const ColumnChange& change : changes) {
                row->second[static_cast<std::size_t>(change.column)] = change.value;
            }
        }
    }

    void Delete(Model& model) {
        const auto row = Any(model);
        table_->Delete(row->first);
        model.erase(row);
    }

    // A step of some changes, which is kept or dropped.
    void Run(std::uint32_t changes, std::uint32_t inserts, std::uint32_t deletes) {
        Model model = model_;
        Step step = database_->Begin();
        for (std::uint32_t i = 0; i < changes; ++i) {
            const std::uint32_t what = Random(10);
            if (what < inserts || model.empty()) {
                Insert(model);
            } else if (what < inserts + deletes) {
                Delete(model);
            } else {
                Update(model);
            }
        }
        if (Random(5) != 0) {
            step.Commit();
            model_ = std::move(model);
        }
    }

    void ExpectModel() {
        Model found;
        RowScan scan = table_->Scan();
        while (const auto row = scan.Next()) {
            Values& values = found[row->Id()];
            for (int place = 0; place < kPlaces; ++place) {
                values.push_back(row->Value(place));
            }
        }
        ASSERT_EQ(found, model_);
        EXPECT_EQ(table_->RowCount(), model_.size());
        EXPECT_EQ(FaultsOf(*table_), "");
    }

    void ExpectSoundFile() {
        table_.reset();
        database_.reset();
        for (const Fault& fault : CheckFile(file_)) {
            ADD_FAILURE() << basic::ToUtf8(Describe(fault, FaultLanguage::English));
        }
        database_ = Database::Open(file_);
        table_ = database_->OpenTable(u"Modèle");
    }

    TempFolder folder_;
    std::filesystem::path file_ = folder_.Path() / "modele.mdb";
    std::shared_ptr<Database> database_;
    std::shared_ptr<Table> table_;
    Model model_;
    std::mt19937 random_{20261121};
    int refused_ = 0;
};

TEST_F(RowModel, RandomChangesLeaveWhatTheModelSays) {
    for (const auto& [inserts, deletes] :
         {std::pair(7u, 1u), std::pair(1u, 6u), std::pair(6u, 2u), std::pair(0u, 9u)}) {
        for (int round = 0; round < 60; ++round) {
            Run(1 + Random(60), inserts, deletes);
            ASSERT_NO_FATAL_FAILURE(ExpectModel());
        }
        ExpectSoundFile();
    }
    EXPECT_GT(refused_, 5);
}

TEST_F(RowModel, RoomThatDeletedRowsLeaveIsUsedAgain) {
    const auto fill = [this] {
        Step step = database_->Begin();
        std::vector<RowId> rows;
        for (int i = 0; i < 600; ++i) {
            const ColumnChange note{kNote, Text(static_cast<std::size_t>(i) * 7, u'n')};
            rows.push_back(table_->Insert({&note, 1}));
        }
        step.Commit();
        return rows;
    };
    std::uintmax_t size = 0;
    for (int round = 0; round < 12; ++round) {
        const auto rows = fill();
        if (round == 0) {
            size = std::filesystem::file_size(file_);
        }
        Step step = database_->Begin();
        for (const RowId row : rows) {
            table_->Delete(row);
        }
        step.Commit();
        EXPECT_EQ(table_->RowCount(), 0u);
    }
    EXPECT_LE(std::filesystem::file_size(file_), size + size / 10);
    ExpectSoundFile();
}

}  // namespace
}  // namespace quardele::jet::test
