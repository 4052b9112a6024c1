// The criteria that the search hands to the recordset, by kind of column, option and value.
#include <forms/strings.h>

#include "list_program.h"
#include "memory_rows.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

/// Writes down what is searched for.
class SearchedRows : public forms::test::MemoryRows {
 public:
    using MemoryRows::MemoryRows;
    QStringList searches;
    bool found = true;

    [[nodiscard]] bool NoMatch() const override { return !found; }
    void FindFirst(dao::TextView condition) override { Note(QStringLiteral("first"), condition); }
    void FindNext(dao::TextView condition) override { Note(QStringLiteral("next"), condition); }

 private:
    void Note(const QString& method, dao::TextView condition) {
        searches.append(method + QStringLiteral(": ") + forms::ToQString(condition));
    }
};

enum Option { WholeField, StartOfField, Anywhere, NoOption };

struct Case {
    const char* name;
    const char* kind;  ///< of the column, as the layout names it
    int option;
    const char* value;
    const char* criterion;  ///< empty where nothing is searched
};

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases{
        {"text, whole field", "text", WholeField, "AB", "TVEH_MARQUE ='AB'"},
        {"text, start", "text", StartOfField, "AB", "Left(TVEH_MARQUE,2) ='AB'"},
        {"text, anywhere", "text", Anywhere, "AB", "inStr(1,TVEH_MARQUE,'AB') <> 0"},
        {"text, no option", "text", NoOption, "AB", ""},
        {"text, blanks stay", "text", StartOfField, " A ", "Left(TVEH_MARQUE,3) =' A '"},
        {"text, quotes stay", "text", WholeField, "L'OREE", "TVEH_MARQUE ='L'OREE'"},
        {"text NULL is a text", "text", WholeField, "NULL", "TVEH_MARQUE ='NULL'"},
        {"number is a text", "number", WholeField, "12", "TVEH_MARQUE ='12'"},
        {"number, start", "number", StartOfField, "12", "Left(TVEH_MARQUE,2) ='12'"},
        {"button is a text", "button", Anywhere, "12", "inStr(1,TVEH_MARQUE,'12') <> 0"},
        {"float", "float", WholeField, "12", "TVEH_MARQUE =12 "},
        {"float, option does not count", "float", Anywhere, "1,5", "TVEH_MARQUE =1,5 "},
        {"integer", "integer", WholeField, "-3", "TVEH_MARQUE =-3 "},
        {"integer, start", "integer", StartOfField, "3", "TVEH_MARQUE =3 "},
        {"date", "date", WholeField, "31/12/2020", "TVEH_MARQUE =#12/31/2020# "},
        {"date, short year", "date", Anywhere, "1-2-24", "TVEH_MARQUE =#02/01/2024# "},
        {"tick oui", "check", WholeField, "oui", "TVEH_MARQUE =True"},
        {"tick vrai", "check", StartOfField, "Vrai", "TVEH_MARQUE =True"},
        {"tick true", "check", Anywhere, "TRUE", "TVEH_MARQUE =True"},
        {"tick non", "check", WholeField, "non", "TVEH_MARQUE =False"},
        {"tick faux", "check", WholeField, "faux", "TVEH_MARQUE =False"},
        {"tick false", "check", WholeField, "False", "TVEH_MARQUE =False"},
        {"tick, another word", "check", WholeField, "peut-être", ""},
    };
    return cases;
}

constexpr int kMake = 2;

}  // namespace

class CriteriaTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void cleanupTestCase() { program_.reset(); }
    void Criteria_data();
    void Criteria();
    void TheButtonSaysWhichSearchIsDue();

 private:
    std::shared_ptr<SearchedRows> Rows() {
        auto rows = std::make_shared<SearchedRows>(fields_);
        rows->madeUpRows = 3;
        Vehicles().data->SetRecordset(rows);
        GoToColumn(*Vehicles().grid, kMake);
        return rows;
    }

    std::unique_ptr<ListProgram> program_;
    std::vector<dao::Field> fields_;
};

void CriteriaTest::initTestCase() {
    PrepareVehicleTests();
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
    fields_ = Vehicles().data->Recordset()->Fields();
}

void CriteriaTest::Criteria_data() {
    QTest::addColumn<int>("number");
    int number = 0;
    for (const Case& row : Cases()) {
        QTest::newRow(row.name) << number++;
    }
}

void CriteriaTest::Criteria() {
    QFETCH(int, number);
    const Case& row = Cases()[static_cast<std::size_t>(number)];
    const List list = Vehicles();
    ReplaceColumn(*list.grid, kMake,
                  QStringLiteral("Marque|TVEH_MARQUE|8|%1|locked").arg(QLatin1String(row.kind)));
    const std::shared_ptr<SearchedRows> rows = Rows();
    QVERIFY(InDialog([&] { listtools::GridToolAction(kSearchTool, *list.grid, list.data); },
                     [&] {
                         listtools::FCHERCHE& dialog = SearchDialog();
                         for (int option = 0; option < 3; ++option) {
                             dialog.FND3_OPTRECH(option)->SetValue(option == row.option);
                         }
                         SearchFor(QString::fromUtf8(row.value));
                         QCOMPARE(forms::Screen::MousePointer(), 0);
                     }));
    if (*row.criterion == '\0') {
        QCOMPARE(rows->searches, QStringList());
    } else {
        QCOMPARE(rows->searches, QStringList{QStringLiteral("first: ") + QString::fromUtf8(row.criterion)});
    }
    QVERIFY(program_->boxes.Shown().empty());
}

void CriteriaTest::TheButtonSaysWhichSearchIsDue() {
    const List list = Vehicles();
    ReplaceColumn(*list.grid, kMake, QStringLiteral("Marque|TVEH_MARQUE|8|text|locked"));
    const std::shared_ptr<SearchedRows> rows = Rows();
    QVERIFY(InDialog([&] { listtools::GridToolAction(kSearchTool, *list.grid, list.data); },
                     [&] {
                         SearchFor(QStringLiteral("A"));
                         Click(SearchDialog().Cmd_GoCherche);
                         Click(SearchDialog().FND3_OPTRECH(1));
                         rows->found = false;
                         Click(SearchDialog().Cmd_GoCherche);
                         Click(SearchDialog().Cmd_GoCherche);
                     }));
    QCOMPARE(rows->searches,
             (QStringList{QStringLiteral("first: TVEH_MARQUE ='A'"), QStringLiteral("next: TVEH_MARQUE ='A'"),
                          QStringLiteral("next: Left(TVEH_MARQUE,1) ='A'"),
                          QStringLiteral("first: Left(TVEH_MARQUE,1) ='A'")}));
    QCOMPARE(program_->boxes.TakeTexts().size(), std::size_t{2});
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    CriteriaTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "criteria_test.moc"
