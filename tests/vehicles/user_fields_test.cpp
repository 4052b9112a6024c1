// What the site's parameters make of the user fields.
#include "stored_rows.h"
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

constexpr int kColumnsBeforeUserFields = 4;
constexpr int kNamedUserFields = 15;
constexpr int kUserFields = 22;

/// A change of the parameters before the form reads them.
void SetParameter(const QString& field, const basic::Variant& value) {
    SetField(kDataFile, u"TPAR", u"TPAR_Ver = '9.5'",
             QStringLiteral("TPAR_AFFUSER%1").arg(field).toStdU16String(), value);
}

bool ColumnHidden(int number) {
    forms::Grid& list = *Grid("DBG_Liste");
    list.SetCol(kColumnsBeforeUserFields + number);
    list.SetRow(-1);
    return list.ColHidden();
}

forms::TextBox* SearchBox(int number) {
    return forms::ControlArray<forms::TextBox>(Form().Surface(), QStringLiteral("CTX_USERCHER"))(number);
}

forms::Label* SearchLabel(int number) {
    return forms::ControlArray<forms::Label>(Form().Surface(), QStringLiteral("CTL_USERCHER"))(number);
}

/// Opening the form ends the program with this error.
void CompareStopsWith(const QString& error) {
    support::BoxAnswerer boxes;
    const int endsBefore = forms::CatchEndOfProcess(true);
    MainWindow().M_VEHIC->trigger();
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY2(boxes.Shown().front().text.contains(error), qPrintable(boxes.Shown().front().text));
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
}

}  // namespace

class UserFieldsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void LabelledFieldsAreShownOthersHidden();
    void ALabelHeadsItsColumn();
    void ALabelIsNumberedOnTheRecord();
    void FieldsWithoutParametersKeepTheirDesign();
    void WithoutLabelsTheListKeepsItsFourColumns();
    void TheFirstFieldHasNoSearchBox();
    void BlanksAreALabel();
    void ALabelWithAnAmpersandIsShownWhole();
    void TheFirstTwoFieldsAreADateAndANumberInTheList();
    void AFieldOfADateOrANumberTakesAnyText();
    void ALabelledFieldWithoutLengthOrDecimalsStopsTheForm_data();
    void ALabelledFieldWithoutLengthOrDecimalsStopsTheForm();
    void AMissingParameterStopsTheForm();

 private:
    std::unique_ptr<RunningProgram> program_;
};

void UserFieldsTest::init() {
    program_ = std::make_unique<RunningProgram>();
}

void UserFieldsTest::LabelledFieldsAreShownOthersHidden() {
    program_->OpenVehicles();
    const QList<int> labelled{1, 2, 3, 4, 6, 7, 8, 10};
    for (int number = 1; number <= kNamedUserFields; ++number) {
        const bool shown = labelled.contains(number);
        QCOMPARE(ColumnHidden(number), !shown);
        QCOMPARE(UserBox(number)->isHidden(), !shown);
        QCOMPARE(UserLabel(number)->isHidden(), !shown);
        if (number >= 3) {
            QCOMPARE(SearchBox(number)->isHidden(), !shown);
            QCOMPARE(SearchLabel(number)->isHidden(), !shown);
        }
    }
}

void UserFieldsTest::ALabelHeadsItsColumn() {
    program_->OpenVehicles();
    QCOMPARE(Cell("DBG_Liste", 5, 0), QStringLiteral("1er usage"));
    QCOMPARE(Cell("DBG_Liste", 14, 0), QStringLiteral("Conducteur"));
}

void UserFieldsTest::ALabelIsNumberedOnTheRecord() {
    program_->OpenVehicles();
    QCOMPARE(UserLabel(1)->Caption(), QStringLiteral("1 - 1er usage"));
    QCOMPARE(UserLabel(10)->Caption(), QStringLiteral("10 - Conducteur"));
    QCOMPARE(UserLabel(5)->Caption(), QStringLiteral("5 - "));
    QCOMPARE(SearchLabel(10)->Caption(), QStringLiteral("10 - Conducteur"));
}

void UserFieldsTest::FieldsWithoutParametersKeepTheirDesign() {
    program_->OpenVehicles();
    for (int number = kNamedUserFields + 1; number <= kUserFields; ++number) {
        QCOMPARE(UserLabel(number)->Caption(), QString());
        QVERIFY(!UserBox(number)->isHidden());
        QVERIFY(forms::Left(UserBox(number)) < 0);
        QCOMPARE(UserBox(number)->DataField(), QStringLiteral("TVEH_USER%1").arg(number));
        QVERIFY(!SearchBox(number)->isHidden());
    }
}

void UserFieldsTest::WithoutLabelsTheListKeepsItsFourColumns() {
    for (int number = 1; number <= kNamedUserFields; ++number) {
        const basic::Variant none = number % 2 == 0 ? basic::Variant(basic::Null{}) : basic::Variant(u"");
        SetParameter(QStringLiteral("%1_LIB").arg(number), none);
    }
    program_->OpenVehicles();
    for (int number = 1; number <= kNamedUserFields; ++number) {
        QVERIFY(ColumnHidden(number));
        QVERIFY(UserBox(number)->isHidden());
        QVERIFY(UserLabel(number)->isHidden());
        if (number >= 3) {
            QVERIFY(SearchBox(number)->isHidden());
            QVERIFY(SearchLabel(number)->isHidden());
        }
    }
    for (int number = kNamedUserFields + 1; number <= kUserFields; ++number) {
        QVERIFY(!UserBox(number)->isHidden());
        QVERIFY(!UserLabel(number)->isHidden());
        QVERIFY(!SearchBox(number)->isHidden());
        QVERIFY(!SearchLabel(number)->isHidden());
        QCOMPARE(SearchLabel(number)->Caption(), QString());
    }
    for (int column = 1; column <= kColumnsBeforeUserFields; ++column) {
        QVERIFY(!Grid("DBG_Liste")->isColumnHidden(column - 1));
    }
}

void UserFieldsTest::TheFirstFieldHasNoSearchBox() {
    program_->OpenVehicles();
    QVERIFY(!ColumnHidden(1));
    QVERIFY(!UserBox(1)->isHidden());
    const forms::ControlArray<forms::TextBox> searchBoxes(Form().Surface(), QStringLiteral("CTX_USERCHER"));
    QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, static_cast<void>(searchBoxes(1)));
}

void UserFieldsTest::BlanksAreALabel() {
    SetParameter(QStringLiteral("9_LIB"), u"  ");
    SetParameter(QStringLiteral("9_LNG"), std::int16_t{10});
    SetParameter(QStringLiteral("9_DEC"), std::int16_t{0});
    program_->OpenVehicles();
    QVERIFY(!ColumnHidden(9));
    QVERIFY(!UserBox(9)->isHidden());
}

void UserFieldsTest::ALabelWithAnAmpersandIsShownWhole() {
    SetParameter(QStringLiteral("4_LIB"), u"Pneus & jantes");
    program_->OpenVehicles();
    QCOMPARE(UserLabel(4)->Caption(), QStringLiteral("4 - Pneus & jantes"));
    QCOMPARE(Cell("DBG_Liste", 8, 0), QStringLiteral("Pneus & jantes"));
}

void UserFieldsTest::TheFirstTwoFieldsAreADateAndANumberInTheList() {
    program_->OpenVehicles();
    forms::Grid& list = *Grid("DBG_Liste");
    const auto kind = [&list](int column) {
        list.SetCol(column);
        return list.CellType();
    };
    QCOMPARE(kind(5), forms::CellType::Date);
    QCOMPARE(kind(6), forms::CellType::Number);
    for (int column = 7; column <= list.MaxCols(); ++column) {
        QCOMPARE(kind(column), forms::CellType::Edit);
    }
}

/// What the parameters say of a field's kind holds for the search alone.
void UserFieldsTest::AFieldOfADateOrANumberTakesAnyText() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    SetParameter(QStringLiteral("1_TYP"), u"D");
    SetParameter(QStringLiteral("2_TYP"), u"N");
    SetParameter(QStringLiteral("2_LNG"), std::int16_t{3});
    program_->OpenVehicles();
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    support::BoxAnswerer boxes;
    for (int number = 1; number <= 2; ++number) {
        TypeOver(UserBox(number), QStringLiteral("un texte quelconque"));
        PressKey(Qt::Key_Return);
        QCOMPARE(forms::Screen::ActiveControl(), UserBox(number + 1));
    }
    PressKey(Qt::Key_S, Qt::ControlModifier);
    CompareBoxes(boxes, {});
    const auto stored =
        StoredRows(program_->DataFile(), "TVEH", QStringLiteral("TVEH_IMMAT"), QStringLiteral("KG-361-VP"));
    QCOMPARE(stored.size(), std::size_t{1});
    QCOMPARE(stored[0].at(QStringLiteral("TVEH_USER1")), QStringLiteral("un texte quelconque"));
    QCOMPARE(stored[0].at(QStringLiteral("TVEH_USER2")), QStringLiteral("un texte quelconque"));
}

void UserFieldsTest::ALabelledFieldWithoutLengthOrDecimalsStopsTheForm_data() {
    QTest::addColumn<QString>("parameter");
    QTest::newRow("length") << QStringLiteral("3_LNG");
    QTest::newRow("decimals") << QStringLiteral("3_DEC");
}

void UserFieldsTest::ALabelledFieldWithoutLengthOrDecimalsStopsTheForm() {
    QFETCH(const QString, parameter);
    SetParameter(parameter, basic::Null{});
    CompareStopsWith(QStringLiteral("94"));
}

void UserFieldsTest::AMissingParameterStopsTheForm() {
    program_.reset();
    // The program reads the structure when it opens the file.
    const support::Installation installation;
    ReplaceInFile(installation.File("DATA/talmeon.mdb"), u"TPAR_AFFUSER7_LIB", u"TPAR_AFFUSER7_XXX");
    QVERIFY(!StartProgram().ended);
    CompareStopsWith(QStringLiteral("3265"));
    StopProgram();
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    UserFieldsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "user_fields_test.moc"
