// The properties beside a table's definition: read, changed, and kept where they are not ours.

#include "definitions/property_blob.h"
#include "opened_table.h"
#include "structure_support.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

/// Calls use(blob) for the properties of every object of a file.
template <class Use>
void ForEachBlob(const fs::path& file, const Use& use) {
    const auto objects = Database::Open(file, OpenMode::ReadOnly)->OpenTable(u"MSysObjects");
    const int column = objects->FindColumn(u"LvProp");
    ASSERT_GE(column, 0);
    RowScan scan = objects->Scan();
    while (const auto row = scan.Next()) {
        const Variant value = row->Value(column);
        if (value.Is<basic::Binary>() && !value.As<basic::Binary>().empty()) {
            use(value.As<basic::Binary>());
        }
    }
}

TEST(PropertyBlob, EveryBlobOfTheCorpusComesBackByteForByte) {
    SKIP_WITHOUT_CORPUS();
    std::size_t blobs = 0;
    for (const fs::path& file : CorpusFiles()) {
        const std::string name = file.filename().string();
        if (name == "password.mdb" || name == "nwind.mdb" || name == "common1V1997.mdb") {
            continue;  // a password, and two of Access 97
        }
        ForEachBlob(file, [&](const basic::Binary& blob) {
            EXPECT_EQ(PropertyBlob({blob, 0}, kJet4).Bytes(), blob) << name;
            ++blobs;
        });
    }
    EXPECT_GT(blobs, 50U);
}

TEST(PropertyBlob, ChangingOnePropertyKeepsAllOthers) {
    SKIP_WITHOUT_CORPUS();
    std::size_t columns = 0;
    ForEachBlob(CorpusFile("common1V2000.mdb"), [&](const basic::Binary& blob) {
        const PropertyBlob before({blob, 0}, kJet4);
        Text owner;
        before.ForEachOfColumns([&](const Text& column, const Text&, const ByteView&) { owner = column; });
        if (owner.empty()) {
            return;
        }
        PropertyBlob after({blob, 0}, kJet4);
        after.SetOfColumn(owner, u"Required", ColumnType::Boolean, {1});
        after.SetOfColumn(owner, u"Tout neuf", ColumnType::Text, {u'x', 0});
        const ByteString changed = after.Bytes();
        const PropertyBlob again({changed, 0}, kJet4);
        std::vector<std::string> kept;
        std::vector<std::string> was;
        const auto list = [&owner](const PropertyBlob& properties, std::vector<std::string>& names) {
            properties.ForEachOfColumns([&](const Text& column, const Text& name, const ByteView& value) {
                if (column != owner || (name != u"Required" && name != u"Tout neuf")) {
                    names.push_back(basic::ToUtf8(column) + "." + basic::ToUtf8(name) + "=" +
                                    std::string(value.Span().begin(), value.Span().end()));
                }
            });
        };
        list(before, was);
        list(again, kept);
        EXPECT_EQ(kept, was);
        ++columns;
    });
    EXPECT_GT(columns, 3U);
}

TEST(PropertyBlob, PartsThatDoNotHoldTogetherAreDamage) {
    PropertyBlob properties;
    properties.SetOfColumn(u"a", u"Required", ColumnType::Boolean, {1});
    const ByteString whole = properties.Bytes();
    for (std::size_t length = 5; length < whole.size(); ++length) {
        const ByteString cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        const int error = ErrorNumber([&] { static_cast<void>(PropertyBlob({cut, 0}, kJet4)); });
        EXPECT_TRUE(error == basic::error::kNotADatabase || length == 4 + 6 + 2 + 16) << length;
    }
}

TEST(SetColumnRules, TheRulesAreKeptAndEnforced) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    const auto database = Database::Create(file);
    database->CreateTable(EveryType());
    Column rules;
    rules.required = true;
    rules.allowZeroLength = false;
    rules.defaultValue = u"\"vide\"";
    database->SetColumnRules(u"tout", u"notes", rules);
    const auto table = database->OpenTable(u"Tout");
    const Column& column = table->Columns()[4];
    EXPECT_TRUE(column.required);
    EXPECT_FALSE(column.allowZeroLength);
    EXPECT_EQ(column.defaultValue, rules.defaultValue);
    EXPECT_EQ(table->Columns()[10].defaultValue, u"\"x\"");
    auto values = RowOfEveryType(1);
    values[3].value = basic::Null{};
    EXPECT_EQ(ErrorNumber([&] { table->Insert(values); }), basic::error::kNullRequired);
    values[3].value = u"";
    EXPECT_EQ(ErrorNumber([&] { table->Insert(values); }), basic::error::kEmptyText);
    database->SetColumnRules(u"Tout", u"Notes", {.name = {}, .defaultValue = {}});
    EXPECT_TRUE(database->OpenTable(u"Tout")->Columns()[4].defaultValue.empty());
    EXPECT_EQ(ErrorNumber([&] { database->OpenTable(u"Tout")->Insert(values); }), 0);
    EXPECT_EQ(ErrorNumber([&] { database->SetColumnRules(u"Tout", u"Absente", rules); }),
              basic::error::kNoSuchField);
    EXPECT_EQ(Findings(file), "");
}

TEST(SetColumnRules, TheIndependentReaderSeesThem) {
    SKIP_WITHOUT_MDB_EXPORT();
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    Database::Create(file)->CreateTable(EveryType());
    Column rules;
    rules.required = true;
    Database::Open(file)->SetColumnRules(u"Tout", u"Prix", rules);
    const std::string schema = Output({"mdb-schema", file.string(), "access"});
    EXPECT_NE(schema.find("[Prix]\t\t\tCurrency NOT NULL"), std::string::npos) << schema;
}

TEST(SetColumnRules, PropertiesOfAccessStay) {
    SKIP_WITHOUT_CORPUS();
    const TempFolder folder;
    const fs::path file = folder.Copy(CorpusFile("common1V2000.mdb"));
    const auto count = [&file] {
        std::size_t properties = 0;
        ForEachBlob(file, [&](const basic::Binary& blob) {
            PropertyBlob({blob, 0}, kJet4)
                .ForEachOfColumns([&](const Text&, const Text& name, const ByteView&) {
                    properties += name != u"DefaultValue" ? 1 : 0;
                });
        });
        return properties;
    };
    const std::size_t before = count();
    Column rules;
    rules.defaultValue = u"\"neuf\"";
    Database::Open(file)->SetColumnRules(u"Table1", u"A", rules);
    EXPECT_EQ(count(), before);
    EXPECT_EQ(Database::Open(file)->OpenTable(u"Table1")->Columns()[0].defaultValue, rules.defaultValue);
    EXPECT_EQ(Findings(file, false), "");
}

}  // namespace
}  // namespace quardele::jet::test
