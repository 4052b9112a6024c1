// The painted pages: the same on screen, printer and in PDF files, as other programs read them back.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include "report_folder.h"

namespace quardele::engine {

namespace {

const QString kList = QStringLiteral(
    "<page width=\"6000\" height=\"3200\" left=\"100\" top=\"100\" right=\"100\" bottom=\"100\"/>"
    "<sort><by field=\"{TVEH.IMMAT}\"/></sort>"
    "<pageHeader><section height=\"300\"><text width=\"3000\" height=\"300\" bold=\"true\">Éléments du "
    "parc</text></section></pageHeader>"
    "<details><section height=\"900\"><field width=\"3000\" height=\"300\" value=\"{TVEH.IMMAT}\"/>"
    "<line x=\"0\" y=\"800\" width=\"5000\" height=\"0\" thickness=\"40\" "
    "color=\"#FF0000\"/></section></details>"
    "<pageFooter><section height=\"300\"><field width=\"5800\" height=\"300\" align=\"right\" value=\"'Page "
    "' &amp; PageNumber &amp; '/' &amp; TotalPageCount\"/>"
    "</section></pageFooter>");

class DocumentTest : public testing::Test {
 protected:
    void SetUp() override {
        folder_.MakeVehicles();
        document_ = folder_.Open(kList)->Compose();
    }

    static QString Output(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished());
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    [[nodiscard]] QStringList PagesIn(const QString& path) const {
        QStringList pages =
            Output(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")})
                .split(u'\f');
        pages.removeLast();
        for (QString& page : pages) {
            page = page.simplified();
        }
        return pages;
    }
    static bool HasPdftotext() {
        return !QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty();
    }

    test::ReportFolder folder_;
    std::shared_ptr<const Document> document_;
};

const QStringList kPages = {QStringLiteral("Éléments du parc AA-111-AA BB-222-BB Page 1/3"),
                            QStringLiteral("Éléments du parc CC-333-CC DD-444-DD Page 2/3"),
                            QStringLiteral("Éléments du parc EE-555-EE Page 3/3")};

TEST_F(DocumentTest, APdfFileHoldsThePages) {
    if (!HasPdftotext()) {
        GTEST_SKIP() << "pdftotext is not installed";
    }
    QFile file(folder_.NativePath(QStringLiteral("etat.pdf")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(document_->WritePdf(file));
    file.close();
    EXPECT_EQ(PagesIn(file.fileName()), kPages);
    const QString info = Output(QStringLiteral("pdfinfo"), {file.fileName()});
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Title:\\s+Essai")))) << info.toStdString();
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Page size:\\s+300 x 160 pts"))))
        << info.toStdString();
}

TEST_F(DocumentTest, APdfFileIsReadLetterByLetter) {
    if (!HasPdftotext()) {
        GTEST_SKIP() << "pdftotext is not installed";
    }
    QFile file(folder_.NativePath(QStringLiteral("etat.pdf")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    folder_
        .Open(QStringLiteral("<reportHeader><section height=\"300\"><text width=\"5000\" height=\"300\">"
                             "fiche effectuée, affleurer</text></section></reportHeader>"))
        ->Compose()
        ->WritePdf(file);
    file.close();
    EXPECT_EQ(PagesIn(file.fileName()), QStringList(QStringLiteral("fiche effectuée, affleurer")));
}

TEST_F(DocumentTest, APrinterGetsTheSamePages) {
    if (!HasPdftotext()) {
        GTEST_SKIP() << "pdftotext is not installed";
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder_.NativePath(QStringLiteral("papier.pdf")));
    ASSERT_TRUE(document_->Print(printer));
    EXPECT_EQ(PagesIn(printer.outputFileName()), kPages);
}

TEST_F(DocumentTest, OnlyTheWantedPagesArePrinted) {
    if (!HasPdftotext()) {
        GTEST_SKIP() << "pdftotext is not installed";
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder_.NativePath(QStringLiteral("papier.pdf")));
    QPageRanges ranges;
    ranges.addPage(2);
    printer.setPageRanges(ranges);
    ASSERT_TRUE(document_->Print(printer));
    EXPECT_EQ(PagesIn(printer.outputFileName()), QStringList(kPages[1]));
}

TEST_F(DocumentTest, PagesThatThereAreNotMakeNoBlankSheet) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder_.NativePath(QStringLiteral("papier.pdf")));
    QPageRanges ranges;
    ranges.addRange(7, 9);
    printer.setPageRanges(ranges);
    EXPECT_FALSE(document_->Print(printer));
    EXPECT_FALSE(QFile::exists(printer.outputFileName()));
}

TEST_F(DocumentTest, APdfThatCannotBeMadeIsTold) {
    QFile closed(folder_.NativePath(QStringLiteral("etat.pdf")));
    EXPECT_FALSE(document_->WritePdf(closed));
}

TEST_F(DocumentTest, WhatIsPaintedStandsWhereItShould) {
    QImage page(580, 300, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    painter.scale(0.1, 0.1);
    document_->Paint(painter, 1);
    painter.end();
    // The line of the first record: 300 + 800 twips below the top, 40 thick.
    EXPECT_EQ(page.pixelColor(250, 110), QColor(255, 0, 0));
    EXPECT_EQ(page.pixelColor(250, 116), QColor(Qt::white));
    EXPECT_EQ(page.pixelColor(510, 110), QColor(Qt::white));
    bool inked = false;
    for (int x = 0; x < 150; ++x) {
        for (int y = 0; y < 30; ++y) {
            inked = inked || page.pixelColor(x, y).lightness() < 100;
        }
    }
    EXPECT_TRUE(inked) << "the heading";
}

TEST_F(DocumentTest, TextsAreFoundInAnyCaseWithTheirPages) {
    const std::vector<Occurrence> found = document_->Find(QStringLiteral("éléments DU"));
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[2].page, 3);
    EXPECT_EQ(found[0].area.topLeft(), QPointF(100, 100));
    EXPECT_EQ(document_->Find(QStringLiteral("D")).size(), 7U) << "three times \"du\", and DD-444-DD";
    EXPECT_TRUE(document_->Find(QString()).empty());
    EXPECT_TRUE(document_->Find(QStringLiteral("absent")).empty());
}

TEST_F(DocumentTest, TheDocumentOutlivesItsReportAndItsData) {
    QFile::remove(folder_.NativePath(QStringLiteral("DONNEES.MDB")));
    EXPECT_EQ(document_->Pages(), 3);
    EXPECT_TRUE(document_->TextOf(2).contains(QStringLiteral("CC-333-CC")));
}

TEST_F(DocumentTest, PicturesKeepTheirProportions) {
    QImage logo(20, 10, QImage::Format_RGB32);
    logo.fill(Qt::blue);
    ASSERT_TRUE(logo.save(folder_.NativePath(QStringLiteral("logo.png"))));
    const auto document =
        folder_
            .Open(
                QStringLiteral("<pageHeader><section height=\"1000\"><picture width=\"1000\" height=\"1000\" "
                               "file=\"logo.png\"/></section></pageHeader>"))
            ->Compose();
    QImage page(200, 200, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    painter.scale(0.1, 0.1);
    document->Paint(painter, 1);
    painter.end();
    EXPECT_EQ(page.pixelColor(95, 45), QColor(Qt::blue));
    EXPECT_EQ(page.pixelColor(50, 60), QColor(Qt::white));
}

}  // namespace

}  // namespace quardele::engine
