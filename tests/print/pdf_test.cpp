// Sheets printed to PDF, as other programs read them back.
#include <gtest/gtest.h>

#include <QFile>
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
    struct Word {
        QString text;
        QRectF place;  ///< in points from the top left corner of the paper
    };
    /// The words of a page, from 0.
    [[nodiscard]] QList<Word> Words(int page) const {
        static const QRegularExpression words(
            QStringLiteral("xMin=\"(.+)\" yMin=\"(.+)\" xMax=\"(.+)\" yMax=\"(.+)\">(.*)</word>"));
        const QString all =
            Output(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), Path(), QStringLiteral("-")});
        QList<Word> result;
        for (const QRegularExpressionMatch& word :
             words.globalMatch(all.section(QStringLiteral("<page "), page + 1, page + 1))) {
            const auto at = [&](int part) { return word.captured(part).toDouble(); };
            result.append({word.captured(5), QRectF(QPointF(at(1), at(2)), QPointF(at(3), at(4)))});
        }
        return result;
    }
    [[nodiscard]] QRectF PlaceOf(const QString& text, int page = 0) const {
        for (const Word& word : Words(page)) {
            if (word.text == text) {
                return word.place;
            }
        }
        ADD_FAILURE() << text.toStdString() << " is not on page " << page;
        return {};
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

TEST_F(PdfTest, APageHoldsAsManyRowsAsFitAboveItsFoot) {
    constexpr int kRows = 500;
    constexpr qreal kFootGap = 5;
    Write(SheetOf(3, kRows));
    const QStringList pages = Pages();
    const int perPage = static_cast<int>(pages[0].count(QRegularExpression(QStringLiteral("c\\d+x0\\."))));
    const qreal pitch = PlaceOf(QStringLiteral("c1x0.")).top() - PlaceOf(QStringLiteral("c0x0.")).top();
    const qreal last = PlaceOf(QStringLiteral("c%1x0.").arg(perPage - 1)).bottom();
    const qreal foot = PlaceOf(QStringLiteral("Page")).top() - kFootGap;
    EXPECT_LE(last, foot);
    EXPECT_GT(last + pitch, foot) << "there was room for another row";
    EXPECT_EQ(pages.size(), (kRows + perPage - 1) / perPage);
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
    for (int column = 1; column < 19; ++column) {
        EXPECT_EQ(text.count(QStringLiteral("c39x%1.").arg(column)), 1) << column;
    }
    // 277 mm hold six columns of 2400 twips: the first page those, three more pages the first one and five.
    EXPECT_EQ(text.count(QStringLiteral("c39x0.")), 4);
    EXPECT_TRUE(pages[3].contains(QStringLiteral("Titre0.")));
    EXPECT_TRUE(pages[3].contains(QStringLiteral("c0x0.")));
    // The pages of the same rows follow each other.
    EXPECT_TRUE(pages[0].contains(QStringLiteral("c0x0.")));
    EXPECT_FALSE(pages[0].contains(QStringLiteral("c0x18.")));
    EXPECT_TRUE(pages[1].contains(QStringLiteral("c0x6.")));
    EXPECT_EQ(pages.size(), 2 * 4) << "40 rows need two pages";
}

TEST_F(PdfTest, ATextThatIsCutSaysSo) {
    // As many columns as fill the page: there is little to widen any by.
    Sheet sheet = SheetOf(11, 1);
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

TEST_F(PdfTest, ATextIsWholeWhereItsPageHasRoom) {
    const QString work = QStringLiteral("Remplacement de la courroie de distribution");
    for (const auto& [bold, italic] : {std::pair(false, false), {true, false}, {false, true}, {true, true}}) {
        Sheet sheet = SheetOf(3, 100);
        sheet.cell = [=, bold = bold, italic = italic](int row, int column) {
            SheetCell cell;
            const bool wide = row == 99 && column > 0;
            cell.text = wide ? work : QStringLiteral("CT");
            cell.bold = wide && bold;
            cell.italic = wide && italic;
            return cell;
        };
        Write(sheet);
        const QString text = Text();
        EXPECT_EQ(text.count(work), 2) << text.right(500).toStdString();
        EXPECT_FALSE(text.contains(u'…'));
    }
}

TEST_F(PdfTest, WiderColumnsMakeNoMorePages) {
    Sheet sheet = SheetOf(19, 40, kWide);
    Write(sheet);
    const auto pages = Pages().size();
    sheet.cell = [](int /*row*/, int /*column*/) {
        SheetCell cell;
        cell.text = QStringLiteral("Remplacement de la courroie de distribution");
        return cell;
    };
    Write(sheet);
    EXPECT_EQ(Pages().size(), pages);
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

TEST_F(PdfTest, TheCentreOfAHeaderGivesWayToWhatStandsBesideIt) {
    Sheet sheet = SheetOf(2, 1);
    const QString left = QStringLiteral("gauche ").repeated(12);
    sheet.header = QStringLiteral("/l") + left + QStringLiteral("G/cMilieu du titre de la page/rD");
    Write(sheet);
    EXPECT_LT(PlaceOf(QStringLiteral("G")).right(), PlaceOf(QStringLiteral("Milieu")).left());
    EXPECT_LT(PlaceOf(QStringLiteral("page")).right(), PlaceOf(QStringLiteral("D")).left());
}

TEST_F(PdfTest, AHeaderHigherThanHalfThePageEndsWithASignAndLeavesRoomForTheCells) {
    Sheet sheet = SheetOf(2, 3);
    for (int line = 0; line < 60; ++line) {
        sheet.header += QStringLiteral("ligne%1./n").arg(line);
    }
    Write(sheet);
    const QString text = Pages().value(0);
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("ligne\\d+\\.…"))));
    EXPECT_EQ(text.count(u'…'), 1);
    EXPECT_FALSE(text.contains(QStringLiteral("ligne59.")));
    EXPECT_TRUE(text.contains(QStringLiteral("c2x1.")));
    const auto lines = text.count(QStringLiteral("ligne"));
    EXPECT_LT(PlaceOf(QStringLiteral("ligne%1.…").arg(lines - 1)).bottom(),
              PlaceOf(QStringLiteral("Titre0.")).top());
}

TEST_F(PdfTest, APdfThatCannotBeWrittenIsToldApart) {
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(WritePdf(SheetOf(1, 1), file));
    file.close();
    EXPECT_FALSE(WritePdf(SheetOf(1, 1), file)) << "the file is closed";
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
