// What is typed into selections and searches reaches recordsets as it is: rows or an error with a number, and
// nothing in the file changes.
#include <array>

#include "dao_test.h"

namespace quardele::dao {
namespace {

using namespace std::string_view_literals;

/// The longest text that a field of a dialog lets through, by far.
constexpr std::size_t kLong = 65536;
constexpr std::size_t kDeep = 10000;
/// Enough to tell rows apart.
constexpr int kFields = 5;

Text Repeated(TextView part, std::size_t times) {
    Text text;
    for (std::size_t i = 0; i < times; ++i) {
        text += part;
    }
    return text;
}

std::vector<Text> TypedTexts() {
    std::vector<Text> texts = {
        u"L'AVION",
        u"''",
        u"'",
        u"\"",
        u"[",
        u"]",
        u"]]",
        u"[TVEH_IMMAT",
        u"#",
        u"#99/99/9999#",
        u";",
        u"x'; DELETE FROM TVEH; --",
        u"x' OR 1=1; DROP TABLE TVEH",
        u"x' OR '1'='1",
        u"x') OR (SELECT 1; DELETE FROM TVEH)=1",
        u"x' UNION SELECT * FROM TCLI WHERE '1'='1",
        u"x'; UPDATE TVEH SET TVEH_MARQUE = 'X'; SELECT '",
        u"x' INTO COPIE FROM TVEH WHERE '1'='1",
        u"x /* y */",
        u"x -- y",
        u"*?#[!a-z]",
        u"%s%n%x",
        u"é à ç Œ €",
    };
    texts.emplace_back(u"a\0b' OR 1=1"sv);
    texts.emplace_back(1, u'\0');
    texts.emplace_back(1, char16_t{0xD800});
    texts.emplace_back(Text{u'x', 0xDC00, u'\'', 0xD800});
    texts.emplace_back(kLong, u'x');
    texts.emplace_back(kLong, u'\'');
    texts.emplace_back(kLong, u'[');
    texts.emplace_back(kLong, u'\0');
    texts.push_back(Repeated(u"x' AND '", kLong / 8));
    return texts;
}

std::vector<Text> DeepConditions() {
    return {
        Text(kDeep, u'(') + u"1=1" + Text(kDeep, u')'),
        Text(kDeep, u'('),
        Repeated(u"NOT ", kDeep) + u"True",
        Text(kDeep, u'-') + u"1=1",
        Repeated(u"1+", kDeep) + u"1=1",
        Repeated(u"1^", kDeep) + u"1=1",
        Repeated(u"Left(", kDeep),
        Repeated(u"TVEH_IMMAT LIKE ", kDeep) + u"'x'",
        Repeated(u"TVEH_IMMAT BETWEEN ", kDeep) + u"'x'",
        Repeated(u"TVEH_IMMAT IN (SELECT TVEH_IMMAT FROM TVEH WHERE ", kDeep / 8) + u"1=1" +
            Text(kDeep / 8, u')'),
        Repeated(u"EXISTS (", kDeep),
    };
}

/// Conditions as the dialogs make them around a text, and the text alone.
std::vector<Text> ConditionsAround(const Text& typed) {
    return {typed,
            u" TVEH_IMMAT = '" + typed + u"' ",
            u" left(TVEH_IMMAT," + basic::FromUtf8(std::to_string(typed.size())) + u") = '" + typed + u"' ",
            u" InStr(1, TVEH_IMMAT, '" + typed + u"') <> 0 ",
            u" TVEH_USER1 <" + typed + u" ",
            u" TVEH_IMMAT Is Not Null and  TVEH_MARQUE = '" + typed + u"' "};
}

bool IsNumbered(int error) {
    return error == 0 || (error > 3000 && error < 3500) || error == error::kTypeMismatch || error == 93;
}

class HostileTextTest : public DaoTest {
 protected:
    /// Every row of the tables that the texts name, and that there are no others.
    [[nodiscard]] std::string Everything() {
        std::string all = std::to_string(Data().TableNames().size());
        for (const TextView table : {u"TVEH"sv, u"TCLI"sv}) {
            const auto rows = Data().OpenRecordset(table, RecordsetType::Snapshot);
            for (std::size_t row = 0; row < rows->RowCount(); ++row) {
                for (int field = 0; field < kFields; ++field) {
                    const Variant value = rows->ValueAt(row, field);
                    all += value.IsNull() ? "|" : basic::ToUtf8(basic::CStr(value)) + "|";
                }
            }
        }
        return all;
    }

    void ExpectHarmlessAsStatement(const Text& statement) {
        for (const RecordsetType type :
             {RecordsetType::Dynaset, RecordsetType::Snapshot, RecordsetType::Table}) {
            const int number = ErrorOf([&] { static_cast<void>(Data().OpenRecordset(statement, type)); });
            EXPECT_TRUE(IsNumbered(number)) << number << ": " << Start(statement);
        }
    }

    void ExpectHarmlessAsCriterion(const Text& condition) {
        const std::array searches = {&Recordset::FindFirst, &Recordset::FindNext, &Recordset::FindLast,
                                     &Recordset::FindPrevious};
        for (const auto search : searches) {
            const int number = ErrorOf([&] { ((*vehicles_).*search)(condition); });
            EXPECT_TRUE(IsNumbered(number)) << number << ": " << Start(condition);
        }
    }

    static std::string Start(const Text& text) { return basic::ToUtf8(text.substr(0, 100)); }

 private:
    std::shared_ptr<Recordset> vehicles_ = OpenDynaset(u"TVEH");
};

TEST_F(HostileTextTest, TypedTextsChangeNothing) {
    const std::string before = Everything();
    for (const Text& typed : TypedTexts()) {
        for (const Text& condition : ConditionsAround(typed)) {
            ExpectHarmlessAsStatement(u"SELECT * FROM TVEH Where " + condition + u";");
            ExpectHarmlessAsCriterion(condition);
        }
        ExpectHarmlessAsStatement(typed);
    }
    EXPECT_EQ(Everything(), before);
}

TEST_F(HostileTextTest, DeepConditionsAreErrors) {
    for (const Text& condition : DeepConditions()) {
        SCOPED_TRACE(Start(condition));
        EXPECT_NE(ErrorOf([&] { static_cast<void>(OpenDynaset(u"SELECT * FROM TVEH WHERE " + condition)); }),
                  0);
        ExpectHarmlessAsStatement(u"SELECT * FROM TVEH WHERE " + condition);
        ExpectHarmlessAsCriterion(condition);
    }
}

TEST_F(HostileTextTest, AnApostropheIsASyntaxErrorThatNamesThePlace) {
    const auto open = [this] {
        static_cast<void>(OpenDynaset(u"SELECT * FROM TVEH Where  TVEH_MARQUE = 'L'AVION' ;"));
    };
    EXPECT_EQ(ErrorOf(open), 3075);
    EXPECT_NE(DescriptionOfErrorOf(open).find(u"AVION"), Text::npos);
}

TEST_F(HostileTextTest, ActionsAreNoRecordsets) {
    const std::string before = Everything();
    for (const TextView action : {u"DELETE FROM TVEH"sv, u"UPDATE TVEH SET TVEH_MARQUE = 'X'"sv,
                                  u"INSERT INTO TVEH (TVEH_IMMAT) VALUES ('X')"sv, u"DROP TABLE TVEH"sv,
                                  u"CREATE TABLE COPIE (a LONG)"sv, u"ALTER TABLE TVEH ADD x LONG"sv,
                                  u"SELECT * INTO COPIE FROM TVEH"sv, u"SELECT 1; DELETE FROM TVEH"sv,
                                  u"SELECT * FROM TVEH WHERE TVEH_IMMAT IN (DELETE FROM TVEH)"sv}) {
        EXPECT_NE(ErrorOf([&] { static_cast<void>(OpenDynaset(action)); }), 0) << basic::ToUtf8(action);
    }
    EXPECT_EQ(Everything(), before);
}

}  // namespace
}  // namespace quardele::dao
