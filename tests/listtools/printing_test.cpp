// The two lists of the program on paper, as another program reads the pages.
#include <algorithm>

#include <QFileDialog>
#include <QFontMetrics>
#include <QLineEdit>
#include <QMap>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

/// The font draws some pairs of letters as one, which is how they are read back.
QStringList WordsOf(const QString& text) {
    return text.normalized(QString::NormalizationForm_KC).simplified().split(u' ', Qt::SkipEmptyParts);
}

/// Text columns that are seen on the screen.
QList<int> TextColumns(forms::Grid& grid) {
    QList<int> columns;
    for (int column = 1; column <= grid.MaxCols(); ++column) {
        grid.SetCol(column);
        grid.SetRow(-1);
        if (!grid.isColumnHidden(column - 1) && grid.columnWidth(column - 1) > 0 &&
            grid.CellType() != forms::CellType::CheckBox && grid.CellType() != forms::CellType::Button) {
            columns.append(column);
        }
    }
    return columns;
}

QStringList WordsOfCells(forms::Grid& grid) {
    QStringList words;
    for (const int column : TextColumns(grid)) {
        for (const QString& text : CellsOf(grid, column)) {
            words.append(WordsOf(text));
        }
    }
    return words;
}

/// Whether the screen cuts one of the texts.
bool CutsOne(forms::Grid& grid) {
    constexpr int kMargins = 5;
    const QFontMetrics metrics(grid.CellFont());
    const QList<int> columns = TextColumns(grid);
    return std::any_of(columns.begin(), columns.end(), [&](int column) {
        const QStringList texts = CellsOf(grid, column);
        return std::any_of(texts.begin(), texts.end(), [&](const QString& text) {
            return metrics.horizontalAdvance(text) > grid.columnWidth(column - 1) - kMargins;
        });
    });
}

QMap<QString, int> Counted(const QStringList& words) {
    QMap<QString, int> counts;
    for (const QString& word : words) {
        ++counts[word];
    }
    return counts;
}

}  // namespace

class PrintingTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() {
        PrepareVehicleTests();
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
            QSKIP("pdftotext is not installed");
        }
    }
    void init();
    void cleanup() { program_.reset(); }

    void TheRemindersArePrintedWhole();
    void TheVehiclesArePrintedWholeWhereTheScreenCutsThem();

 private:
    void Print(const List& list);
    void CheckEveryTextIsWhole(const List& list) const;
    [[nodiscard]] QString Path() const { return folder_->filePath(QStringLiteral("liste.pdf")); }
    [[nodiscard]] QString Text() const {
        QProcess process;
        process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), Path(), QStringLiteral("-")});
        return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<ListProgram> program_;
};

void PrintingTest::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

void PrintingTest::Print(const List& list) {
    QVERIFY(InDialog([&] { PressTool(list, kPrintTool); },
                     [this] {
                         auto* const name = QApplication::activeModalWidget()->findChild<QLineEdit*>(
                             QStringLiteral("fileNameEdit"));
                         name->setText(Path());
                         QTest::keyClick(name, Qt::Key_Return);
                     }));
}

/// The pages have room for every text, also for those that the screen cuts.
void PrintingTest::CheckEveryTextIsWhole(const List& list) const {
    const QString text = Text();
    const QMap<QString, int> wanted = Counted(WordsOfCells(*list.grid));
    const QMap<QString, int> printed = Counted(WordsOf(text));
    QCOMPARE(text.count(u'…'), 0);
    for (auto word = wanted.begin(); word != wanted.end(); ++word) {
        QVERIFY2(printed.value(word.key()) >= word.value(), qPrintable(word.key()));
    }
    for (const int column : TextColumns(*list.grid)) {
        for (const QString& word : WordsOf(CellOf(*list.grid, column, 0))) {
            QVERIFY2(printed.contains(word), qPrintable(word));
        }
    }
}

void PrintingTest::TheRemindersArePrintedWhole() {
    program_->OpenReminders();
    const List list = Reminders();
    QVERIFY(list.grid->MaxRows() > 100);
    Print(list);
    CheckEveryTextIsWhole(list);
    const QMap<QString, int> printed = Counted(WordsOf(Text()));
    for (const char16_t* word : {u"prévue", u"Travaux", u"Dernière", u"visite", u"Périodicité", u"(mois)",
                                 u"Editer", u"?", u"Suppr"}) {
        QVERIFY2(printed.contains(QString::fromUtf16(word)), qPrintable(QString::fromUtf16(word)));
    }
    constexpr int kLastVisit = 6;
    for (const QString& date : CellsOf(*list.grid, kLastVisit)) {
        QVERIFY2(printed.contains(date), qPrintable(date));
    }
}

void PrintingTest::TheVehiclesArePrintedWholeWhereTheScreenCutsThem() {
    QVERIFY(CutsOne(*Vehicles().grid));
    Print(Vehicles());
    CheckEveryTextIsWhole(Vehicles());
}

int main(int argc, char* argv[]) {
    // Printers of this machine are none of the tests' business: nobody answers there.
    qputenv("CUPS_SERVER", "127.0.0.1:9");
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    PrintingTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "printing_test.moc"
