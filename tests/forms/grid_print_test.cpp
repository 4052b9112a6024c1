// A grid on paper.
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/runtime_error.h>
#include <forms/data_control.h>
#include <forms/grid.h>

#include "forms_test.h"
#include "memory_rows.h"

namespace quardele::forms {
namespace {

using test::MemoryRows;
using test::TextField;

std::shared_ptr<MemoryRows> Vehicles(int count) {
    auto rows = std::make_shared<MemoryRows>(std::vector{TextField(u"IMMAT"), TextField(u"MARQUE")});
    for (int row = 0; row < count; ++row) {
        rows->Add({basic::Text(u"AB") + basic::NumberText(row) + u"CD", basic::Text(u"RENAULT")});
    }
    return rows;
}

int ErrorOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const basic::RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace

class GridPrintTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() {
        QVERIFY2(QPrinterInfo::availablePrinterNames().isEmpty(), "there is a printer nevertheless");
    }
    void init() {
        start_ = QDir::currentPath();
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(folder_->path()));
        stage_ = std::make_unique<test::Stage>();
        data_ = new DataControl(stage_.get());
        grid_ = new Grid(stage_.get());
        grid_->setGeometry(10, 10, 500, 200);
        grid_->SetColumnLines({QStringLiteral("Immatriculation|IMMAT|20"), QStringLiteral("Marque|MARQUE|20"),
                               QStringLiteral("Atelier||5|check")});
        grid_->SetDataSource(data_);
        grid_->SetToolTipText(QStringLiteral("VEHICULES"));
        grid_->SetPrintOrientation(2);
        stage_->Open();
        data_->SetRecordset(Vehicles(200));
    }
    void cleanup() {
        stage_.reset();
        QDir::setCurrent(start_);
    }

    void WithoutAPrinterTheOperatorIsAskedForAFileNamedAfterTheGrid() {
        if (!HasPdftotext()) {
            QSKIP("pdftotext is not installed");
        }
        QString offered;
        Print([&](QFileDialog& dialog) {
            offered = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
            QCOMPARE(dialog.windowTitle(), QStringLiteral("Enregistrer l'impression dans un fichier PDF"));
            Accept(dialog);
        });
        QCOMPARE(offered, QStringLiteral("VEHICULES.pdf"));
        const QString text = PdfText();
        for (int row = 0; row < 200; ++row) {
            QCOMPARE(text.count(QStringLiteral("AB%1CD").arg(row)), 1);
        }
        QVERIFY(text.contains(QStringLiteral("Immatriculation")));
        QVERIFY(text.contains(QStringLiteral("VEHICULES")));
    }

    void RowsThatNobodyHasComeNearArePrintedToo() {
        if (!HasPdftotext()) {
            QSKIP("pdftotext is not installed");
        }
        const auto rows = Vehicles(600);
        rows->findsInSteps = true;
        data_->SetRecordset(rows);
        QVERIFY(rows->found < 600);
        Print([](QFileDialog& dialog) { Accept(dialog); });
        QVERIFY(PdfText().contains(QStringLiteral("AB599CD")));
    }

    void NothingIsWrittenWhenTheOperatorDeclines() {
        Print([](QFileDialog& dialog) { dialog.reject(); });
        QVERIFY(QDir(folder_->path()).entryList(QDir::Files).isEmpty());
    }

    void HiddenRowsAndColumnsAreNotPrinted() {
        if (!HasPdftotext()) {
            QSKIP("pdftotext is not installed");
        }
        grid_->SetRow(5);
        grid_->SetRowHidden(true);
        grid_->SetCol(2);
        grid_->SetColHidden(true);
        grid_->SetPrintHeader(QStringLiteral("/c/fb1/fz\"14\"Immatriculation : X /n/n"));
        Print([](QFileDialog& dialog) { Accept(dialog); });
        const QString text = PdfText();
        QVERIFY(!text.contains(QStringLiteral("AB4CD")));
        QVERIFY(text.contains(QStringLiteral("AB5CD")));
        QVERIFY(!text.contains(QStringLiteral("RENAULT")));
        QVERIFY(text.contains(QStringLiteral("Immatriculation : X")));
    }

    void SettingsKeepWhatTheyAreGiven() {
        grid_->SetPrintBorder(false);
        grid_->SetPrintColHeaders(false);
        grid_->SetPrintRowHeaders(false);
        grid_->SetPrintGrid(false);
        grid_->SetPrintColor(true);
        grid_->SetPrintShadows(true);
        QVERIFY(!grid_->PrintBorder() && !grid_->PrintColHeaders() && !grid_->PrintRowHeaders() &&
                !grid_->PrintGrid() && grid_->PrintColor() && grid_->PrintShadows());
        QCOMPARE(grid_->PrintOrientation(), 2);
        Grid::SetPrintType(0);
        QCOMPARE(Grid::PrintType(), 0);
    }

    void WhatThePlatformDoesNotHaveIsRefused() {
        QCOMPARE(ErrorOf([this] { grid_->SetPrintOrientation(3); }), basic::error::kInvalidCall);
        QCOMPARE(ErrorOf([] { Grid::SetPrintType(1); }), basic::error::kInvalidCall);
        QCOMPARE(ErrorOf([this] { grid_->PrintSheet(0); }), basic::error::kInvalidCall);
    }

 private:
    static bool HasPdftotext() {
        return !QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty();
    }

    static void Accept(QFileDialog& dialog) {
        QTest::keyClick(dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    }

    void Print(const std::function<void(QFileDialog&)>& answer) {
        bool asked = false;
        QTimer::singleShot(0, stage_.get(), [&] {
            auto* dialog = stage_->findChild<QFileDialog*>(QStringLiteral("PrintToPdf"));
            asked = dialog != nullptr;
            if (asked) {
                answer(*dialog);
            }
        });
        grid_->PrintSheet(1);
        QVERIFY(asked);
    }

    [[nodiscard]] QString PdfText() const {
        QProcess process;
        process.start(QStringLiteral("pdftotext"),
                      {QStringLiteral("-layout"), folder_->filePath(QStringLiteral("VEHICULES.pdf")),
                       QStringLiteral("-")});
        return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
    }

    QString start_;
    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<test::Stage> stage_;
    DataControl* data_ = nullptr;
    Grid* grid_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    // Printers of this machine are none of the tests' business: nobody answers there.
    qputenv("CUPS_SERVER", "127.0.0.1:9");
    return quardele::forms::test::Run<quardele::forms::GridPrintTest>(argc, argv);
}

#include "grid_print_test.moc"
