// Markup of any kind above the cells.
#include <random>

#include <gtest/gtest.h>

#include <QImage>

#include "sheet_painter.h"

namespace quardele::print {

namespace {

constexpr QSize kPaper(15000, 10000);
constexpr unsigned kSeed = 20261121;

QString AnyMarkup(std::mt19937& random) {
    static const QStringList marks{QStringLiteral("/l"),
                                   QStringLiteral("/c"),
                                   QStringLiteral("/r"),
                                   QStringLiteral("/n"),
                                   QStringLiteral("/p"),
                                   QStringLiteral("/fb1"),
                                   QStringLiteral("/fb0"),
                                   QStringLiteral("/fz\"14\""),
                                   QStringLiteral("/fz\"999\""),
                                   QStringLiteral("/fz\""),
                                   QStringLiteral("/fz\"0\""),
                                   QStringLiteral("/"),
                                   QStringLiteral("Immatriculation "),
                                   QStringLiteral("\n")};
    QString markup;
    for (std::size_t piece = random() % 40; piece > 0; --piece) {
        if (random() % 3 == 0) {
            markup += QChar(static_cast<char16_t>(random() % 0x10000));
        } else {
            markup += marks[static_cast<qsizetype>(random() % static_cast<unsigned>(marks.size()))];
        }
    }
    return markup;
}

TEST(AnyHeader, IsReadIntoPiecesThatHoldAllItsText) {
    std::mt19937 random(kSeed);
    for (int round = 0; round < 5000; ++round) {
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", round " + std::to_string(round));
        const QString markup = AnyMarkup(random);
        qsizetype units = 0;
        for (const HeaderLine& line : HeaderLines(markup, 7)) {
            ASSERT_TRUE(line.points >= 1 && line.points <= 96);
            for (const HeaderPiece& piece : line.pieces) {
                ASSERT_FALSE(piece.text.isEmpty());
                ASSERT_TRUE(piece.points >= 1 && piece.points <= 96);
                units += piece.text.size();
            }
        }
        ASSERT_LE(units, markup.size());
        ASSERT_GE(units, markup.count(QStringLiteral("Immatriculation ")) * 16);
    }
}

TEST(AnyHeader, LeavesRoomForTheCells) {
    std::mt19937 random(kSeed);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", round " + std::to_string(round));
        Sheet sheet;
        sheet.header = AnyMarkup(random);
        sheet.columns = {{QStringLiteral("Marque"), 1500, Qt::AlignLeft}};
        sheet.rows = 1;
        sheet.cell = [](int /*row*/, int /*column*/) { return SheetCell(); };
        ASSERT_LE(HeaderPainter(sheet.header, kPaper).Height(), kPaper.height() / 2);
        QImage picture(kPaper / 20, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.scale(1 / 20.0, 1 / 20.0);
        SheetPainter(sheet, kPaper).Paint(painter, 1);
    }
}

}  // namespace

}  // namespace quardele::print
