// Sheets printed to PDF, as other programs read them back.
#include <gtest/gtest.h>

#include <QFile>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <print/print.h>

namespace quardele::print {

namespace {

constexpr int kWide = 2400;

class PdfTest : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "print_test";
        static char* argv[] = {name, nullptr};
        static const QGuiApplication application(argc, argv);
    }
    void SetUp() override {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
            GTEST_SKIP() << "pdftotext is not installed";
        }
    }

    static Sheet SheetOf(int columns, int rows, int width = 1400) {
        Sheet sheet;
        sheet.title = QStringLiteral("Liste");
        sheet.orientation = QPageLayout::Landscape;
        for (int column = 0; column < columns; ++column) {
            sheet.columns.push_back({QStringLiteral("Titre%1.").arg(column), width, Qt::AlignLeft});
        }
        sheet.rows = rows;
        sheet.cell = [](int row, int column) {
            SheetCell cell;
            cell.text = QStringLiteral("c%1x%2.").arg(row).arg(column);
            return cell;
        };
        return sheet;
    }

    void Write(const Sheet& sheet) {
        QFile file(Path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        WritePdf(sheet, file);
    }
    [[nodiscard]] QString Path() const { return folder_.filePath(QStringLiteral("liste.pdf")); }

    static QString Output(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished());
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    [[nodiscard]] QString Text() const {
        return Output(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), Path(), QStringLiteral("-")});
    }
    /// One text per page.
    [[nodiscard]] QStringList Pages() const {
        QStringList pages = Text().split(u'\f');
        pages.removeLast();
        return pages;
    }
    [[nodiscard]] QString Info() const { return Output(QStringLiteral("pdfinfo"), {Path()}); }

    QTemporaryDir folder_;
};

TEST_F(PdfTest, EveryCellIsThereOnceAndEveryPageHasItsHeadings) {
    Write(SheetOf(3, 500));
    const QString text = Text();
    for (int row = 0; row < 500; ++row) {
        for (int column = 0; column < 3; ++column) {
            ASSERT_EQ(text.count(QStringLiteral("c%1x%2.").arg(row).arg(column)), 1) << row << ' ' << column;
        }
    }
    const QStringList pages = Pages();
    EXPECT_GT(pages.size(), 5);
    for (const QString& page : pages) {
        for (int column = 0; column < 3; ++column) {
            EXPECT_EQ(page.count(QStringLiteral("Titre%1.").arg(column)), 1);
        }
    }
}

TEST_F(PdfTest, PagesAreNumberedAndCounted) {
    Write(SheetOf(3, 100));
    const QStringList pages = Pages();
    EXPECT_TRUE(Info().contains(QRegularExpression(QStringLiteral("Pages:\\s+%1\n").arg(pages.size()))));
    for (int page = 0; page < pages.size(); ++page) {
        EXPECT_TRUE(pages[page].contains(QStringLiteral("Page %1 / %2").arg(page + 1).arg(pages.size())));
        EXPECT_TRUE(pages[page].contains(QStringLiteral("Liste")));
    }
}

TEST_F(PdfTest, ThePaperIsA4InTheSheetsOrientation) {
    Sheet sheet = SheetOf(3, 3);
    Write(sheet);
    EXPECT_TRUE(Info().contains(QRegularExpression(QStringLiteral("Page size:\\s+842 x 595 pts"))))
        << Info().toStdString();
    sheet.orientation = QPageLayout::Portrait;
    Write(sheet);
    EXPECT_TRUE(Info().contains(QRegularExpression(QStringLiteral("Page size:\\s+595 x 842 pts"))));
}

TEST_F(PdfTest, ColumnsThatDoNotFitAreSharedOutOverPages) {
    Write(SheetOf(19, 40, kWide));
    const QStringList pages = Pages();
    const QString text = Text();
    for (int column = 0; column < 19; ++column) {
        EXPECT_EQ(text.count(QStringLiteral("c39x%1.").arg(column)), 1) << column;
    }
    // The pages of the same rows follow each other.
    EXPECT_TRUE(pages[0].contains(QStringLiteral("c0x0.")));
    EXPECT_FALSE(pages[0].contains(QStringLiteral("c0x18.")));
    EXPECT_TRUE(pages[1].contains(QStringLiteral("c0x6.")));
    EXPECT_EQ(pages.size() % 4, 0);
}

TEST_F(PdfTest, ATextThatIsCutSaysSo) {
    Sheet sheet = SheetOf(2, 1);
    sheet.cell = [](int /*row*/, int column) {
        SheetCell cell;
        cell.text = column == 0 ? QStringLiteral("Remplacement de la courroie de distribution")
                                : QStringLiteral("première\nseconde");
        return cell;
    };
    sheet.columns[0].heading = QStringLiteral("Anticonstitutionnellement");
    Write(sheet);
    const QString text = Text();
    EXPECT_FALSE(text.contains(QStringLiteral("distribution")));
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("Rempl[a-z ]*…")))) << text.toStdString();
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("Antic[a-z]*…"))));
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("première( seconde| s?[a-z]*…)"))))
        << text.toStdString();
}

TEST_F(PdfTest, LongHeadingsAreWrappedAndNotCut) {
    Sheet sheet = SheetOf(3, 2);
    sheet.columns[1].heading = QStringLiteral("Date de la prochaine visite\nprévue");
    Write(sheet);
    const QString text = Text();
    for (const char16_t* word : {u"Date", u"prochaine", u"visite", u"prévue"}) {
        EXPECT_TRUE(text.contains(QString::fromUtf16(word))) << text.toStdString();
    }
    EXPECT_TRUE(text.contains(QStringLiteral("c0x0.")));
}

TEST_F(PdfTest, TheHeaderStandsOnEveryPage) {
    Sheet sheet = SheetOf(2, 100);
    sheet.header = QStringLiteral("/c/fb1/fz\"14\"Immatriculation : AB-123-CD /n/rFeuille /p/n");
    Write(sheet);
    const QStringList pages = Pages();
    ASSERT_GT(pages.size(), 1);
    for (int page = 0; page < pages.size(); ++page) {
        EXPECT_TRUE(pages[page].contains(QStringLiteral("Immatriculation : AB-123-CD")));
        EXPECT_TRUE(pages[page].contains(QStringLiteral("Feuille %1").arg(page + 1)));
        EXPECT_FALSE(pages[page].contains(QStringLiteral("Page "))) << "numbered twice";
    }
}

TEST_F(PdfTest, AHeaderTooLongForThePageIsCutWithASign) {
    Sheet sheet = SheetOf(2, 1);
    sheet.header =
        QStringLiteral("/fz\"20\"") + QStringLiteral("Immatriculation ").repeated(30) + QStringLiteral("fin");
    Write(sheet);
    EXPECT_TRUE(Pages().value(0).contains(u'…'));
    EXPECT_FALSE(Text().contains(QStringLiteral("fin")));
}

TEST_F(PdfTest, AnEmptySheetIsAPageOfHeadings) {
    Write(SheetOf(3, 0));
    ASSERT_EQ(Pages().size(), 1);
    EXPECT_TRUE(Text().contains(QStringLiteral("Titre2.")));
}

TEST_F(PdfTest, HeadingsAndRowHeadingsArePrintedAsAsked) {
    Sheet sheet = SheetOf(2, 2);
    sheet.headings = false;
    sheet.rowHeading = [](int row) { return QStringLiteral("ligne%1").arg(row); };
    Write(sheet);
    EXPECT_FALSE(Text().contains(QStringLiteral("Titre")));
    EXPECT_TRUE(Text().contains(QStringLiteral("ligne1")));
}

TEST_F(PdfTest, OnlyTheWantedPagesArePrinted) {
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    {
        QPdfWriter writer(&file);
        writer.setPageLayout(DefaultLayout(SheetOf(2, 500)));
        QPageRanges ranges;
        ranges.addRange(2, 3);
        writer.setPageRanges(ranges);
        ASSERT_TRUE(Print(SheetOf(2, 500), writer));
    }
    file.close();
    const QStringList pages = Pages();
    ASSERT_EQ(pages.size(), 2);
    EXPECT_TRUE(pages[0].contains(QStringLiteral("Page 2 / ")));
    EXPECT_TRUE(pages[1].contains(QStringLiteral("Page 3 / ")));
}

}  // namespace

}  // namespace quardele::print
