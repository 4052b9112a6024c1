#include <QSignalSpy>

#include <basic/date.h>
#include <forms/controls.h>
#include <forms/data_control.h>
#include <forms/events.h>
#include <forms/form.h>
#include <forms/strings.h>
#include <support/installation.h>

#include "forms_test.h"
#include "memory_rows.h"

namespace quardele::forms {
namespace {

using test::FieldOfType;
using test::MemoryRows;
using test::TextField;

/// Two boxes and a tick box on a data control.
class Bound : public test::Stage {
 public:
    Bound() {
        for (BoundControl* control : std::initializer_list<BoundControl*>{&name, &note, &done}) {
            control->SetDataSource(&data);
        }
        name.SetDataField(QStringLiteral("NAME"));
        note.SetDataField(QStringLiteral("NOTE"));
        done.SetDataField(QStringLiteral("DONE"));
    }

    DataControl data{this};
    TextBox name{this};
    MemoBox note{this};
    CheckBox done{this};
};

std::shared_ptr<MemoryRows> ThreeRows() {
    auto rows = std::make_shared<MemoryRows>(std::vector{TextField(u"NAME"),
                                                         FieldOfType(u"NOTE", dao::FieldType::Memo),
                                                         FieldOfType(u"DONE", dao::FieldType::Boolean)});
    rows->Add({u"un", u"ligne 1\r\nligne 2", true});
    rows->Add({u"deux", basic::Null{}, false});
    rows->Add({u"trois", u"", false});
    return rows;
}

void Type(QWidget& box, const QString& text) {
    QTest::keyClicks(&box, text);
}

int NumberOf(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const basic::RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace

class DataControlTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        rows_ = ThreeRows();
        stage_ = std::make_unique<Bound>();
        stage_->data.SetRecordset(rows_);
        rows_->calls.clear();
    }
    void cleanup() { stage_.reset(); }

    // Showing.

    void BoundControlsShowTheCurrentRow() {
        QCOMPARE(stage_->name.Text(), QStringLiteral("un"));
        QCOMPARE(stage_->note.Text(), QStringLiteral("ligne 1\r\nligne 2"));
        QCOMPARE(stage_->done.Value(), 1);
        rows_->MoveNext();
        QCOMPARE(stage_->name.Text(), QStringLiteral("deux"));
        QCOMPARE(stage_->note.Text(), QString());
        QCOMPARE(stage_->done.Value(), 0);
    }

    void FillingIsNoChange() {
        QVERIFY(!stage_->name.DataChanged());
        rows_->MoveNext();
        QVERIFY(!stage_->name.DataChanged());
        QVERIFY(!stage_->note.DataChanged());
        QVERIFY(!stage_->done.DataChanged());
    }

    void TypingAndAssigningAreChanges() {
        Type(stage_->name, QStringLiteral("x"));
        QVERIFY(stage_->name.DataChanged());
        stage_->note.SetText(QStringLiteral("autre"));
        QVERIFY(stage_->note.DataChanged());
        stage_->done.SetValue(0);
        QVERIFY(stage_->done.DataChanged());
    }

    void AssigningTheSameTextIsNoChange() {
        stage_->name.SetText(QStringLiteral("un"));
        QVERIFY(!stage_->name.DataChanged());
    }

    void AnEmptySetAndTheEndShowBlank() {
        rows_->MoveLast();
        rows_->MoveNext();
        QCOMPARE(stage_->name.Text(), QString());
        stage_->data.SetRecordset(std::make_shared<MemoryRows>(rows_->Fields()));
        QCOMPARE(stage_->name.Text(), QString());
        QVERIFY(!stage_->name.DataChanged());
    }

    void AddNewShowsTheDefaults() {
        dao::Field withDefault = TextField(u"NAME");
        withDefault.defaultValue = u"défaut";
        auto rows =
            std::make_shared<MemoryRows>(std::vector{withDefault, TextField(u"NOTE"), TextField(u"DONE")});
        rows->Add({u"un", u"", u""});
        stage_->done.SetDataField(QString());
        stage_->data.SetRecordset(rows);
        rows->AddNew();
        QCOMPARE(stage_->name.Text(), QStringLiteral("défaut"));
        QVERIFY(!stage_->name.DataChanged());
        QCOMPARE(stage_->data.EditMode(), dao::EditMode::Add);
    }

    // Leaving a changed row saves it.

    void EveryWayOfLeavingARowSavesItsChanges_data() {
        QTest::addColumn<int>("way");
        QTest::newRow("MoveNext") << 0;
        QTest::newRow("MoveLast") << 1;
        QTest::newRow("AddNew") << 2;
        QTest::newRow("Bookmark") << 3;
        QTest::newRow("AbsolutePosition") << 4;
    }
    void EveryWayOfLeavingARowSavesItsChanges() {
        QFETCH(int, way);
        rows_->MoveLast();
        const dao::Bookmark last = rows_->CurrentBookmark();
        rows_->MoveFirst();
        rows_->calls.clear();
        stage_->name.SetText(QStringLiteral("changé"));
        Leave(way, last);
        QCOMPARE(rows_->Stored(0)[0], dao::Variant(u"changé"));
        QCOMPARE(rows_->calls[0], std::string("edit"));
        QCOMPARE(rows_->calls[1], std::string("update"));
        QCOMPARE(rows_->calls.size(), std::size_t{3});
        QVERIFY(!stage_->name.DataChanged());
    }

    void OnlyChangedControlsAreWritten() {
        stage_->name.SetText(QStringLiteral("changé"));
        rows_->MoveNext();
        QCOMPARE(rows_->Stored(0)[1], dao::Variant(u"ligne 1\r\nligne 2"));
        QCOMPARE(rows_->Stored(0)[2], dao::Variant(true));
    }

    void LeavingAnUnchangedRowWritesNothing() {
        rows_->MoveNext();
        QCOMPARE(rows_->calls, std::vector<std::string>{"move 1"});
    }

    void ARefusalRaisesTheErrorAndTheMoveDoesNotHappen() {
        stage_->name.SetText(QStringLiteral("refusé"));
        rows_->refusal = basic::error::kDuplicateKey;
        QCOMPARE(NumberOf([&] { rows_->MoveNext(); }), basic::error::kDuplicateKey);
        QCOMPARE(rows_->AbsolutePosition(), 0L);
        QCOMPARE(rows_->EditMode(), dao::EditMode::None);
        QCOMPARE(stage_->name.Text(), QStringLiteral("refusé"));
        QVERIFY(stage_->name.DataChanged());
    }

    void AValueThatTheFieldDoesNotTakeRefusesTheMove() {
        stage_->name.SetText(QStringLiteral("beaucoup plus long que vingt caractères"));
        QCOMPARE(NumberOf([&] { rows_->MoveNext(); }), basic::error::kTextTooLong);
        QCOMPARE(rows_->AbsolutePosition(), 0L);
    }

    void LeavingANewRecordSavesItToo() {
        rows_->AddNew();
        stage_->name.SetText(QStringLiteral("quatre"));
        rows_->MoveFirst();
        QCOMPARE(rows_->RowCount(), std::size_t{4});
        QCOMPARE(rows_->Stored(3)[0], dao::Variant(u"quatre"));
        QCOMPARE(rows_->Stored(3)[1], dao::Variant(basic::Null{}));
    }

    // Saving and cancelling.

    void EditAndUpdateWriteTheChangedControlsToo() {
        stage_->note.SetText(QStringLiteral("autre"));
        rows_->Edit();
        rows_->Update();
        QCOMPARE(rows_->Stored(0)[1], dao::Variant(u"autre"));
        QVERIFY(!stage_->note.DataChanged());
    }

    void UpdateRecordWritesIntoTheCurrentRecord() {
        stage_->name.SetText(QStringLiteral("changé"));
        stage_->data.UpdateRecord();
        QCOMPARE(rows_->Stored(0)[0], dao::Variant(u"changé"));
        QCOMPARE(rows_->calls, (std::vector<std::string>{"edit", "update"}));
    }

    void UpdateRecordWritesIntoTheNewRecordInAddMode() {
        rows_->MoveLast();
        rows_->AddNew();
        stage_->name.SetText(QStringLiteral("quatre"));
        stage_->data.UpdateRecord();
        QCOMPARE(rows_->Stored(3)[0], dao::Variant(u"quatre"));
        // The record before is current again and unchanged.
        QCOMPARE(stage_->name.Text(), QStringLiteral("trois"));
        QVERIFY(!stage_->name.DataChanged());
        rows_->SetBookmark(rows_->LastModified());
        QCOMPARE(stage_->name.Text(), QStringLiteral("quatre"));
        QCOMPARE(rows_->Stored(2)[0], dao::Variant(u"trois"));
    }

    void CancelUpdateShowsTheStoredValuesAgain() {
        stage_->name.SetText(QStringLiteral("changé"));
        rows_->Edit();
        rows_->CancelUpdate();
        QCOMPARE(stage_->name.Text(), QStringLiteral("un"));
        QVERIFY(!stage_->name.DataChanged());
    }

    void CancelUpdateOfANewRecordComesBackToTheOneBefore() {
        rows_->MoveNext();
        rows_->AddNew();
        stage_->name.SetText(QStringLiteral("abandonné"));
        rows_->CancelUpdate();
        QCOMPARE(stage_->name.Text(), QStringLiteral("deux"));
        QCOMPARE(rows_->RowCount(), std::size_t{3});
    }

    void AFailedUpdateLeavesTheRecordInItsEditState() {
        stage_->name.SetText(QStringLiteral("refusé"));
        rows_->Edit();
        rows_->refusal = basic::error::kDuplicateKey;
        QCOMPARE(NumberOf([&] { rows_->Update(); }), basic::error::kDuplicateKey);
        QCOMPARE(stage_->data.EditMode(), dao::EditMode::Edit);
        QVERIFY(stage_->name.DataChanged());
    }

    void ADeletedRowStaysOnScreenUntilTheNextMove() {
        rows_->Delete();
        QCOMPARE(stage_->name.Text(), QStringLiteral("un"));
        rows_->MoveNext();
        QCOMPARE(stage_->name.Text(), QStringLiteral("deux"));
        rows_->MoveFirst();
        QCOMPARE(stage_->name.Text(), QString());
    }

    void UpdateControlsDropsTheChanges() {
        stage_->name.SetText(QStringLiteral("changé"));
        stage_->data.UpdateControls();
        QCOMPARE(stage_->name.Text(), QStringLiteral("un"));
        QVERIFY(!stage_->name.DataChanged());
    }

    void WhatIsTypedBecomesAValueOfTheField_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isNull");
        QTest::addColumn<int>("error");
        const int text = static_cast<int>(dao::FieldType::Text);
        const int date = static_cast<int>(dao::FieldType::Date);
        const int number = static_cast<int>(dao::FieldType::Long);
        QTest::newRow("a blank text is Null") << text << QString() << true << 0;
        QTest::newRow("blanks are a text") << text << QStringLiteral(" ") << false << 0;
        QTest::newRow("a blank date is Null") << date << QStringLiteral(" ") << true << 0;
        QTest::newRow("a date") << date << QStringLiteral("31/12/2026") << false << 0;
        QTest::newRow("no date") << date << QStringLiteral("demain") << false << 13;
        QTest::newRow("a number") << number << QStringLiteral("12,5") << false << 0;
        QTest::newRow("no number") << number << QStringLiteral("douze") << false << 13;
    }
    void WhatIsTypedBecomesAValueOfTheField() {
        QFETCH(int, type);
        QFETCH(QString, text);
        QFETCH(bool, isNull);
        QFETCH(int, error);
        auto rows = std::make_shared<MemoryRows>(
            std::vector{FieldOfType(u"NAME", static_cast<dao::FieldType>(type))});
        rows->Add({basic::Null{}});
        stage_->note.SetDataField(QString());
        stage_->done.SetDataField(QString());
        stage_->data.SetRecordset(rows);
        stage_->name.SetText(QStringLiteral("?"));
        stage_->name.SetText(text);
        QCOMPARE(NumberOf([&] { stage_->data.UpdateRecord(); }), error);
        if (error == 0) {
            QCOMPARE(rows->Stored(0)[0].IsNull(), isNull);
        }
    }

    void ATextFieldThatAllowsZeroLengthKeepsTheEmptyText() {
        dao::Field field = TextField(u"NAME");
        field.allowZeroLength = true;
        auto rows = std::make_shared<MemoryRows>(std::vector{field});
        rows->Add({u"x"});
        stage_->note.SetDataField(QString());
        stage_->done.SetDataField(QString());
        stage_->data.SetRecordset(rows);
        stage_->name.SetText(QString());
        stage_->data.UpdateRecord();
        QCOMPARE(rows->Stored(0)[0], dao::Variant(u""));
    }

    // Binding.

    void RepositionComesAfterEachMove() {
        const QSignalSpy spy(&stage_->data, &DataControl::Reposition);
        rows_->MoveNext();
        rows_->MoveLast();
        QCOMPARE(spy.count(), 2);
    }

    void AControlThatIsUnboundIsLeftAlone() {
        stage_->name.SetDataSource(nullptr);
        rows_->MoveNext();
        QCOMPARE(stage_->name.Text(), QStringLiteral("un"));
        stage_->name.SetText(QStringLiteral("libre"));
        rows_->MoveNext();
        QCOMPARE(rows_->Stored(1)[0], dao::Variant(u"deux"));
    }

    void ControlsAndDataControlsMayGoInAnyOrder() {
        auto data = std::make_unique<DataControl>();
        auto box = std::make_unique<TextBox>();
        box->SetDataField(QStringLiteral("NAME"));
        box->SetDataSource(data.get());
        data->SetRecordset(ThreeRows());
        box.reset();
        data->Recordset()->MoveNext();
        auto other = std::make_unique<TextBox>();
        other->SetDataSource(data.get());
        data.reset();
        QVERIFY(other->DataSource() == nullptr);
        // A recordset that outlives its data control tells it nothing any more.
        rows_->MoveNext();
    }

    void LayoutsBindByName() {
        QWidget surface;
        auto* data = new DataControl(&surface);
        data->setObjectName(QStringLiteral("DBD_TVEH"));
        auto* box = new TextBox(&surface);
        box->setProperty("dataField", QStringLiteral("NAME"));
        box->setProperty("dataSourceName", QStringLiteral("DBD_TVEH"));
        auto* free = new TextBox(&surface);
        BindControls(&surface);
        QCOMPARE(box->DataSource(), data);
        QVERIFY(free->DataSource() == nullptr);
        data->SetRecordset(ThreeRows());
        QCOMPARE(box->Text(), QStringLiteral("un"));
    }

    // With real files.

    void RefreshOpensTheSourceAndGoesToTheFirstRow() {
        const support::Installation installation;
        UseVehicles();
        stage_->data.Refresh();
        QVERIFY(stage_->data.Recordset() != nullptr);
        QCOMPARE(stage_->data.Recordset()->AbsolutePosition(), 0L);
        QCOMPARE(stage_->name.Text(),
                 ToQString(stage_->data.Recordset()->Value(u"TVEH_IMMAT").As<dao::Text>()));
    }

    void AFailedRefreshRaisesTheEnginesErrorAndKeepsWhatWasOpen() {
        const support::Installation installation;
        UseVehicles();
        stage_->data.Refresh();
        const auto open = stage_->data.Recordset();
        stage_->data.SetRecordSource(QStringLiteral("RIEN"));
        QCOMPARE(NumberOf([&] { stage_->data.Refresh(); }), basic::error::kNoSuchTable);
        QCOMPARE(stage_->data.Recordset(), open);
        stage_->data.SetDatabaseName(QStringLiteral("C:\\QUARDELE\\absent.mdb"));
        QCOMPARE(NumberOf([&] { stage_->data.Refresh(); }), basic::error::kFileMissing);
    }

    void AChangedBoxIsOnDiskAfterTheMove() {
        const support::Installation installation;
        UseVehicles();
        stage_->data.Refresh();
        stage_->note.SetText(QStringLiteral("MARQUE NEUVE"));
        const QString registration = stage_->name.Text();
        stage_->data.Recordset()->MoveNext();
        const auto lines = support::Installation::ExportTable(installation.File("DATA/talmeon.mdb"), "TVEH");
        if (lines.empty()) {
            QSKIP("mdb-export is not installed");
        }
        const std::string wanted = '"' + registration.toStdString() + '"';
        const auto line = std::find_if(lines.begin(), lines.end(),
                                       [&](const std::string& text) { return text.starts_with(wanted); });
        QVERIFY(line != lines.end());
        QVERIFY(line->find("MARQUE NEUVE") != std::string::npos);
    }

    void ABoundDataControlIsRefreshedWhenItsFormIsFirstShown();

 private:
    void Leave(int way, const dao::Bookmark& last) {
        switch (way) {
            case 0:
                rows_->MoveNext();
                break;
            case 1:
                rows_->MoveLast();
                break;
            case 2:
                rows_->AddNew();
                break;
            case 3:
                rows_->SetBookmark(last);
                break;
            default:
                rows_->SetAbsolutePosition(1);
        }
    }

    void UseVehicles() {
        stage_->name.SetDataField(QStringLiteral("TVEH_IMMAT"));
        stage_->note.SetDataField(QStringLiteral("TVEH_MARQUE"));
        stage_->done.SetDataField(QString());
        stage_->data.SetDatabaseName(QStringLiteral("C:\\QUARDELE\\DATA\\talmeon.mdb"));
        stage_->data.SetRecordSource(QStringLiteral("select * from TVEH"));
    }

    std::shared_ptr<MemoryRows> rows_;
    std::unique_ptr<Bound> stage_;
};

namespace {

class SITES : public Form {
 public:
    DataControl* bound;
    DataControl* unbound;
    bool hadRowsAtLoad = true;
    bool hadRowsAtActivate = false;

    SITES() : Form(QStringLiteral("SITES"), FormKind::Dialog) {
        bound = AddData(QStringLiteral("DBD_BOUND"));
        unbound = AddData(QStringLiteral("DBD_UNBOUND"));
        auto* box = new TextBox(Surface());
        box->setObjectName(QStringLiteral("CTX_CODE"));
        box->SetDataField(QStringLiteral("TTYP_CODE"));
        box->SetDataSourceName(QStringLiteral("DBD_BOUND"));
    }

 protected:
    void Form_Load() override { hadRowsAtLoad = bound->Recordset() != nullptr; }
    void Form_Activate() override { hadRowsAtActivate = bound->Recordset() != nullptr; }

 private:
    DataControl* AddData(const QString& name) {
        auto* data = new DataControl(Surface());
        data->setObjectName(name);
        data->SetDatabaseName(QStringLiteral("C:\\QUARDELE\\DATA\\talmeon.mdb"));
        data->SetRecordSource(QStringLiteral("TTYP"));
        return data;
    }
};

}  // namespace

void DataControlTest::ABoundDataControlIsRefreshedWhenItsFormIsFirstShown() {
    const support::Installation installation;
    auto& form = Instance<SITES>();
    QVERIFY(!form.hadRowsAtLoad);
    form.Show();
    QVERIFY(form.hadRowsAtActivate);
    QVERIFY(form.unbound->Recordset() == nullptr);
    QVERIFY(!form.bound->isVisible());
    form.Unload();
}

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::DataControlTest>(argc, argv);
}
#include "data_control_test.moc"
