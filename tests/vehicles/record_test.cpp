// The boxes of a vehicle's record and the commands on it.
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

const QString kUnknownCustomer = QStringLiteral("Ce code client est inconnu dans la table des Clients !");

}  // namespace

class RecordTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void EveryBoxShowsItsField();
    void EnterMovesThroughTheRecord();
    void EnterStaysInTheNotes();
    void ABoxIsSelectedWhenItIsEntered();
    void AnUnknownCustomerWarnsOnceAndStays();
    void AKnownCustomerShowsItsName();
    void AnUnchangedOrEmptyCodeIsNotLookedUp();
    void TheCustomersNameIsNotTypedInto();
    void RefreshHoldsBackOnAPendingChange();
    void ALongerTextThanTheFieldIsNotTyped();

 private:
    std::unique_ptr<RunningProgram> program_;
};

void RecordTest::init() {
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
    OpenRecordOf(QStringLiteral("2107 RC 59"));
}

void RecordTest::EveryBoxShowsItsField() {
    const dao::Recordset& vehicle = *Data("DBD_TVEH")->Recordset();
    const auto compare = [&](const forms::BoundControl& box) {
        QVERIFY(!box.DataField().isEmpty());
        const basic::Variant stored = vehicle.Value(box.DataField().toStdU16String());
        const basic::Variant shown = box.Content();
        QCOMPARE(shown.IsText() ? shown.As<basic::Text>() : basic::Text(),
                 stored.IsText() ? stored.As<basic::Text>() : basic::Text());
    };
    for (const char* name : {"CTX_IMMAT", "CTX_CODCLI", "CTX_MARQUE", "CTX_ComplIdent"}) {
        compare(*Box(name));
    }
    compare(*Control<forms::MemoBox>("CTX_Note1"));
    compare(*Control<forms::MemoBox>("CTX_Note2"));
    for (int number = 1; number <= 22; ++number) {
        QCOMPARE(UserBox(number)->DataField(), QStringLiteral("TVEH_USER%1").arg(number));
        compare(*UserBox(number));
    }
}

void RecordTest::EnterMovesThroughTheRecord() {
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_IMMAT"));
    for (const char* next : {"CTX_MARQUE", "CTX_ComplIdent", "CTX_CODCLI", "DBG_DETAIL"}) {
        PressKey(Qt::Key_Return);
        QCOMPARE(forms::Screen::ActiveControl()->objectName(), QString::fromLatin1(next));
    }
    QVERIFY(!Box("CTX_IMMAT")->DataChanged());
    forms::SetFocus(UserBox(1));
    PressKey(Qt::Key_Return);
    QCOMPARE(forms::Screen::ActiveControl(), UserBox(2));
}

void RecordTest::EnterStaysInTheNotes() {
    for (const char* name : {"CTX_Note1", "CTX_Note2"}) {
        auto* const note = Control<forms::MemoBox>(name);
        forms::SetFocus(note);
        QTest::keyClicks(note, QStringLiteral("un"));
        PressKey(Qt::Key_Return);
        QCOMPARE(forms::Screen::ActiveControl(), note);
        // Unlike the other boxes it is not selected when it is entered: what was typed stays.
        forms::SetFocus(Box("CTX_IMMAT"));
        forms::SetFocus(note);
        QVERIFY(!note->textCursor().hasSelection());
        QTest::keyClicks(note, QStringLiteral("deux"));
        QVERIFY(note->toPlainText().contains(QStringLiteral("un")));
        QVERIFY(note->toPlainText().contains(QStringLiteral("deux")));
    }
}

void RecordTest::ABoxIsSelectedWhenItIsEntered() {
    PressKey(Qt::Key_Tab);
    QCOMPARE(Box("CTX_MARQUE")->selectedText(), QStringLiteral("DACIA"));
    forms::SetFocus(UserBox(2));
    QCOMPARE(UserBox(2)->selectedText(), QStringLiteral("40903"));
}

void RecordTest::AnUnknownCustomerWarnsOnceAndStays() {
    const QString name = Box("CTX_RSCLI")->Text();
    QVERIFY(!name.isEmpty());
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("ZZZ"));
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_Tab);
    CompareOnlyBox(boxes, kUnknownCustomer, kExclamation);
    QCOMPARE(Box("CTX_CODCLI")->Text(), QStringLiteral("ZZZ"));
    QCOMPARE(Box("CTX_RSCLI")->Text(), name);
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_DETAIL"));
}

void RecordTest::AKnownCustomerShowsItsName() {
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("C0000"));
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_Tab);
    QVERIFY(boxes.Shown().empty());
    QCOMPARE(Box("CTX_RSCLI")->Text(), QStringLiteral("BOULANGERIE PÂTISSERIE MOREL 1"));
}

void RecordTest::AnUnchangedOrEmptyCodeIsNotLookedUp() {
    support::BoxAnswerer boxes;
    Box("CTX_RSCLI")->SetText(QStringLiteral("avant"));
    forms::SetFocus(Box("CTX_CODCLI"));
    PressKey(Qt::Key_Tab);
    QCOMPARE(Box("CTX_RSCLI")->Text(), QStringLiteral("avant"));

    forms::SetFocus(Box("CTX_CODCLI"));
    Box("CTX_CODCLI")->selectAll();
    PressKey(Qt::Key_Delete);
    PressKey(Qt::Key_Tab);
    QCOMPARE(Box("CTX_RSCLI")->Text(), QStringLiteral("avant"));
    QVERIFY(boxes.Shown().empty());
}

void RecordTest::TheCustomersNameIsNotTypedInto() {
    const QString name = Box("CTX_RSCLI")->Text();
    QTest::mouseClick(Box("CTX_RSCLI"), Qt::LeftButton);
    QTest::keyClicks(Box("CTX_RSCLI"), QStringLiteral("xyz"));
    QCOMPARE(Box("CTX_RSCLI")->Text(), name);
    QVERIFY(Box("CTX_RSCLI")->Locked());
    const auto background = [](forms::TextBox* box) {
        return box->grab().toImage().pixelColor(box->width() - 4, box->height() / 2);
    };
    QCOMPARE(background(Box("CTX_MARQUE")), background(Box("CTX_CODCLI")));
    QVERIFY(background(Box("CTX_RSCLI")) != background(Box("CTX_MARQUE")));
}

void RecordTest::RefreshHoldsBackOnAPendingChange() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    support::BoxAnswerer boxes;
    QTest::mouseClick(Button("CMD_REFRESH"), Qt::LeftButton);
    CompareOnlyBox(boxes, QStringLiteral("Enregistrez ou annulez d'abord votre saisie !"), kExclamation);
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("RENAULT"));
}

void RecordTest::ALongerTextThanTheFieldIsNotTyped() {
    TypeOver(Box("CTX_CODCLI"), QStringLiteral("123456789012345"));
    QCOMPARE(Box("CTX_CODCLI")->Text(), QStringLiteral("1234567890"));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    RecordTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "record_test.moc"
