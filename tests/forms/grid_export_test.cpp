// A grid in a file of Excel, as programs that others wrote read it.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTemporaryDir>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/paths.h>
#include <forms/data_control.h>
#include <forms/grid.h>
#include <forms/strings.h>

#include "../workbook/workbook_readers.h"
#include "forms_test.h"
#include "memory_rows.h"

namespace quardele::forms {
namespace {

using test::FieldOfType;
using test::MemoryRows;
using test::TextField;
using workbook::test::CellInWords;
using workbook::test::SheetInWords;
using workbook::test::WorkbookReader;

std::shared_ptr<MemoryRows> Vehicles(int count) {
    auto rows = std::make_shared<MemoryRows>(std::vector{
        TextField(u"IMMAT"), FieldOfType(u"DATVIS", dao::FieldType::Date),
        FieldOfType(u"KM", dao::FieldType::Double), FieldOfType(u"ATELIER", dao::FieldType::Boolean),
        TextField(u"CP"), FieldOfType(u"PRIX", dao::FieldType::Currency)});
    for (int row = 0; row < count; ++row) {
        rows->Add({basic::Text(u"1E") + basic::NumberText(row),
                   basic::Date{basic::DateOf(2026, 1, 1).days + row}, row + 0.5, row % 2 == 0,
                   basic::Text(u"01000"), basic::Variant(basic::Null{})});
    }
    return rows;
}

}  // namespace

class GridExportTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        start_ = QDir::currentPath();
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(folder_->path()));
        stage_ = std::make_unique<test::Stage>();
        data_ = new DataControl(stage_.get());
        grid_ = new Grid(stage_.get());
        grid_->setGeometry(10, 10, 700, 200);
        grid_->SetColumnLines({QStringLiteral("Immatriculation|IMMAT|10"),
                               QStringLiteral("Dernière\\nvisite|DATVIS|10|date"),
                               QStringLiteral("Km|KM|8|number"), QStringLiteral("Atelier ?|ATELIER|5|check"),
                               QStringLiteral("Code postal|CP|6"), QStringLiteral("Prix|PRIX|6"),
                               QStringLiteral("Calculé||6"), QStringLiteral("Ouvrir||4|button")});
        grid_->SetDataSource(data_);
        stage_->Open();
    }
    void cleanup() {
        stage_.reset();
        QDir::setCurrent(start_);
    }

    void ReadersSeeTheCellsInTheirKinds() {
        data_->SetRecordset(Vehicles(3));
        grid_->SetRow(2);
        grid_->SetCol(7);
        grid_->SetText(QStringLiteral("=A1"));
        QVERIFY(Export());
        const SheetInWords wanted{
            {"s:Immatriculation", "s:Dernière visite", "s:Km", "s:Atelier ?", "s:Code postal", "s:Prix",
             "s:Calculé", "s:Ouvrir"},
            {"s:1E0", "d:2026-01-01 00:00:00", "n:0.5", "s:Oui", "s:01000"},
            {"s:1E1", "d:2026-01-02 00:00:00", "n:1.5", "s:Non", "s:01000", CellInWords(), "s:=A1"},
            {"s:1E2", "d:2026-01-03 00:00:00", "n:2.5", "s:Oui", "s:01000"}};
        for (const WorkbookReader* reader : workbook::test::WorkbookReaders()) {
            if (reader->IsHere() && reader->KnowsMoments()) {
                QVERIFY2(Read(*reader) == reader->AsItTells(wanted), reader->Name().c_str());
            }
        }
    }

    void TextsInColumnsOfNumbersAndDatesKeepWhatTheySay() {
        auto rows = std::make_shared<MemoryRows>(std::vector{TextField(u"CP"), TextField(u"JOUR")});
        for (const auto& [code, day] :
             std::initializer_list<std::pair<const char16_t*, const char16_t*>>{{u"01000", u"12/03"},
                                                                                {u"1E5", u"1/2/26"},
                                                                                {u"+12", u"10:30"},
                                                                                {u"1 000", u"mars 2026"},
                                                                                {u"12,5", u"12/03/2026"}}) {
            rows->Add({basic::Text(code), basic::Text(day)});
        }
        grid_->SetColumnLines({QStringLiteral("Code|CP|10|number"), QStringLiteral("Jour|JOUR|10|date")});
        data_->SetRecordset(rows);
        QVERIFY(Export());
        const SheetInWords wanted{{"s:Code", "s:Jour"},       {"s:01000", "s:12/03"},
                                  {"s:1E5", "s:1/2/26"},      {"s:+12", "s:10:30"},
                                  {"s:1 000", "s:mars 2026"}, {"n:12.5", "d:2026-03-12 00:00:00"}};
        QVERIFY(ReadByXlrd() == wanted);
    }

    void HiddenColumnsAndRowsAndColumnsWithoutWidthAreLeftOut() {
        data_->SetRecordset(Vehicles(4));
        grid_->SetRow(2);
        grid_->SetRowHidden(true);
        grid_->SetCol(1);
        grid_->SetColHidden(true);
        grid_->SetCol(3);
        grid_->SetColWidth(0);
        for (const int column : {4, 6, 7, 8}) {
            grid_->SetCol(column);
            grid_->SetColHidden(true);
        }
        QVERIFY(Export());
        const SheetInWords wanted{{"s:Dernière visite", "s:Code postal"},
                                  {"d:2026-01-01 00:00:00", "s:01000"},
                                  {"d:2026-01-03 00:00:00", "s:01000"},
                                  {"d:2026-01-04 00:00:00", "s:01000"}};
        QVERIFY(ReadByXlrd() == wanted);
    }

    void RowsThatNobodyHasLookedAtAreWrittenToo() {
        const auto rows = Vehicles(3000);
        rows->findsInSteps = true;
        data_->SetRecordset(rows);
        QVERIFY(rows->found < 3000);
        QVERIFY(Export());
        const SheetInWords read = ReadByXlrd();
        QCOMPARE(read.size(), std::size_t{3001});
        QVERIFY(read.back().front() == CellInWords("s:1E2999"));
    }

    void AnEventOfARowHasItsSayBeforeTheRowIsWritten() {
        data_->SetRecordset(Vehicles(500));
        grid_->SetMaxRows(0);
        connect(grid_, &Grid::DataFill, this, [this](int col, int row, int, bool, bool& cancel) {
            if (col == 5) {
                grid_->SetRow(row);
                grid_->SetCol(col);
                grid_->SetText(QStringLiteral("calculé"));
                cancel = true;
            }
        });
        data_->SetRecordset(Vehicles(500));
        QVERIFY(Export());
        QVERIFY(ReadByXlrd().back().at(4) == CellInWords("s:calculé"));
    }

    void TheAddressedCellAndTheCurrentRecordStayWhereTheyWere() {
        data_->SetRecordset(Vehicles(50));
        grid_->SetActiveCell(2, 7);
        grid_->SetRow(3);
        grid_->SetCol(4);
        QVERIFY(Export());
        QCOMPARE(grid_->Row(), 3);
        QCOMPARE(grid_->Col(), 4);
        QCOMPARE(grid_->ActiveRow(), 7);
        QCOMPARE(data_->Recordset()->AbsolutePosition(), 6L);
    }

    void AnEmptyGridIsItsHeadings() {
        data_->SetRecordset(Vehicles(0));
        QVERIFY(Export());
        QCOMPARE(ReadByXlrd().size(), std::size_t{1});
    }

    void MoreRowsThanASheetHoldsLeaveTheFileAsItWas() {
        WriteOld();
        grid_->SetDataSource(nullptr);
        grid_->SetMaxRows(65536);
        QVERIFY(!Export());
        QVERIFY(grid_->ExportFailure().contains(QStringLiteral("65 535 lignes")));
        QCOMPARE(Old(), QByteArray("ancien"));
        QCOMPARE(Files(), QStringList{QStringLiteral("LISTE.XLS")});
        QVERIFY(Notice().isVisible());
        QCOMPARE(Notice().text(), grid_->ExportFailure());
    }

    /// No box may say so: the caller has its own, whatever became of the file.
    void AFailureIsToldInAStripOverTheRowsUntilTheNextExport() {
        data_->SetRecordset(Vehicles(3));
        QVERIFY(!Notice().isVisible());
        QVERIFY(!grid_->ExportToExcel(QStringLiteral("ABSENT\\LISTE.XLS"), QStringLiteral("F"), QString()));
        QVERIFY(Notice().isVisible());
        QVERIFY(Notice().text().contains(QStringLiteral("le dossier n'existe pas")));
        QCOMPARE(Notice().geometry().bottom(), grid_->viewport()->rect().bottom());
        QVERIFY(Notice().height() >= Notice().fontMetrics().height());
        QVERIFY(!Notice().hasFocus());
        QVERIFY(Export());
        QVERIFY(!Notice().isVisible());
    }

    void TheStripOfAFailureIsClosedByAClickOrByEscape() {
        data_->SetRecordset(Vehicles(3));
        grid_->setFocus();
        const auto fail = [this] {
            grid_->ExportToExcel(QStringLiteral("ABSENT\\LISTE.XLS"), QStringLiteral("F"), QString());
            return Notice().isVisible();
        };
        QVERIFY(fail());
        QTest::mouseClick(&Notice(), Qt::LeftButton);
        QVERIFY(!Notice().isVisible());
        QVERIFY(fail());
        QTest::keyClick(grid_, Qt::Key_Down);
        QVERIFY(Notice().isVisible());
        QTest::keyClick(grid_, Qt::Key_Escape);
        QVERIFY(!Notice().isVisible());
    }

    void TheStripOfAFailureFollowsTheSizeOfTheGrid() {
        data_->SetRecordset(Vehicles(3));
        grid_->ExportToExcel(QStringLiteral("ABSENT\\LISTE.XLS"), QStringLiteral("F"), QString());
        grid_->resize(300, 150);
        QCoreApplication::processEvents();
        QCOMPARE(Notice().geometry().bottomRight(), grid_->viewport()->rect().bottomRight());
    }

    void AFullSheetIsWritten() {
        grid_->SetDataSource(nullptr);
        grid_->SetMaxRows(65535);
        grid_->SetRow(65535);
        grid_->SetCol(1);
        grid_->SetText(QStringLiteral("dernier"));
        QVERIFY(Export());
        QCOMPARE(ReadByXlrd().size(), std::size_t{65536});
    }

    void AFileThatIsOpenInACalcSheetIsLeftAsItWas() {
        WriteOld();
        QFile lock(folder_->filePath(QStringLiteral(".~lock.LISTE.XLS#")));
        QVERIFY(lock.open(QIODevice::WriteOnly));
        lock.close();
        QVERIFY(!Export());
        QVERIFY(grid_->ExportFailure().contains(QStringLiteral("ouvert dans un autre programme")));
        QCOMPARE(Old(), QByteArray("ancien"));
    }

    void AFolderThatIsMissingIsNamedInTheLogOfTheExport() {
        data_->SetRecordset(Vehicles(1));
        QVERIFY(!grid_->ExportToExcel(QStringLiteral("ABSENT\\LISTE.XLS"), QStringLiteral("Feuille1"),
                                      QStringLiteral("EXPORT.LOG")));
        QFile log(folder_->filePath(QStringLiteral("EXPORT.LOG")));
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(log.readAll());
        QVERIFY2(text.contains(QStringLiteral("ABSENT\\LISTE.XLS")), qUtf8Printable(text));
        QVERIFY(text.contains(grid_->ExportFailure()));
        QCOMPARE(Files(), QStringList{QStringLiteral("EXPORT.LOG")});
    }

    void AnExportThatSucceedsForgetsTheFailureBefore() {
        data_->SetRecordset(Vehicles(1));
        QVERIFY(!grid_->ExportToExcel(QStringLiteral("ABSENT\\LISTE.XLS"), QStringLiteral("F"), QString()));
        QVERIFY(Export());
        QCOMPARE(grid_->ExportFailure(), QString());
    }

    void ASheetNameThatExcelRefusesIsAFailure() {
        QVERIFY(!grid_->ExportToExcel(QStringLiteral("LISTE.XLS"), QStringLiteral("a/b"), QString()));
        QVERIFY(Files().isEmpty());
    }

    void AnExistingFileIsFoundWithoutRegardToCase() {
        QFile old(folder_->filePath(QStringLiteral("liste.xls")));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.close();
        QVERIFY(Export());
        QCOMPARE(Files(), QStringList{QStringLiteral("liste.xls")});
    }

    void WhileTheGridIsNotProtectedLockedCellsTakeText() {
        grid_->SetColumnLines({QStringLiteral("Site||6|text|locked")});
        grid_->SetDataSource(nullptr);
        grid_->SetMaxRows(1);
        const QModelIndex cell = grid_->model()->index(0, 0);
        QVERIFY(grid_->Protect());
        QVERIFY(!grid_->model()->flags(cell).testFlag(Qt::ItemIsEditable));
        grid_->SetProtect(false);
        QVERIFY(grid_->model()->flags(cell).testFlag(Qt::ItemIsEditable));
        grid_->SetProtect(true);
        QVERIFY(!grid_->model()->flags(cell).testFlag(Qt::ItemIsEditable));
    }

 private:
    bool Export() {
        return grid_->ExportToExcel(QStringLiteral("LISTE.XLS"), QStringLiteral("Feuille1"), QString());
    }
    [[nodiscard]] QLabel& Notice() const { return *grid_->findChild<QLabel*>(QStringLiteral("GridNotice")); }
    [[nodiscard]] SheetInWords Read(const WorkbookReader& reader) const {
        const std::filesystem::path folder = folder_->path().toStdString();
        return reader.Read(folder / "LISTE.XLS", folder);
    }
    [[nodiscard]] SheetInWords ReadByXlrd() const {
        const WorkbookReader& xlrd = *workbook::test::WorkbookReaders().front();
        return xlrd.IsHere() ? Read(xlrd) : SheetInWords();
    }
    void WriteOld() const {
        QFile old(folder_->filePath(QStringLiteral("LISTE.XLS")));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("ancien");
    }
    [[nodiscard]] QByteArray Old() const {
        QFile old(folder_->filePath(QStringLiteral("LISTE.XLS")));
        return old.open(QIODevice::ReadOnly) ? old.readAll() : QByteArray();
    }
    [[nodiscard]] QStringList Files() const { return QDir(folder_->path()).entryList(QDir::Files); }

    QString start_;
    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<test::Stage> stage_;
    DataControl* data_ = nullptr;
    Grid* grid_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::GridExportTest>(argc, argv);
}

#include "grid_export_test.moc"
