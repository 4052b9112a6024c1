// The two lists of the program on paper, as another program reads the pages.
#include <QFileDialog>
#include <QFontMetrics>
#include <QHeaderView>
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

/// The words of the cells that are whole on the screen, and the number of the others.
QStringList WholeOnTheScreen(forms::Grid& grid, qsizetype& cut) {
    constexpr int kMargins = 5;
    const QFontMetrics metrics(grid.CellFont());
    QStringList whole;
    cut = 0;
    for (const int column : TextColumns(grid)) {
        for (int row = 1; row <= grid.MaxRows(); ++row) {
            const QString text = CellOf(grid, column, row);
            if (metrics.horizontalAdvance(text) <= grid.columnWidth(column - 1) - kMargins) {
                whole.append(WordsOf(text));
            } else {
                ++cut;
            }
        }
    }
    return whole;
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

    void TheRemindersArePrintedAsTheScreenShowsThem();
    void TheVehiclesArePrintedAsTheScreenShowsThem();

 private:
    void Print(const List& list);
    void CheckAgainstTheScreen(const List& list) const;
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

/// What the screen shows whole stands on paper whole; what it cuts may be cut there as well.
void PrintingTest::CheckAgainstTheScreen(const List& list) const {
    qsizetype cut = 0;
    const QMap<QString, int> wanted = Counted(WholeOnTheScreen(*list.grid, cut));
    const QString text = Text();
    const QMap<QString, int> printed = Counted(WordsOf(text));
    QVERIFY2(text.count(u'…') <= cut, qPrintable(QString::number(text.count(u'…'))));
    for (auto word = wanted.begin(); word != wanted.end(); ++word) {
        QVERIFY2(printed.value(word.key()) >= word.value(), qPrintable(word.key()));
    }
    for (const int column : TextColumns(*list.grid)) {
        for (const QString& word : WordsOf(CellOf(*list.grid, column, 0))) {
            QVERIFY2(printed.contains(word), qPrintable(word));
        }
    }
}

void PrintingTest::TheRemindersArePrintedAsTheScreenShowsThem() {
    program_->OpenReminders();
    const List list = Reminders();
    QVERIFY(list.grid->MaxRows() > 100);
    Print(list);
    CheckAgainstTheScreen(list);
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

void PrintingTest::TheVehiclesArePrintedAsTheScreenShowsThem() {
    Print(Vehicles());
    CheckAgainstTheScreen(Vehicles());
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
