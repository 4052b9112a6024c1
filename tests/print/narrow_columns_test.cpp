// Columns with no room for a letter, looked at as pictures.
#include <gtest/gtest.h>

#include <QImage>

#include "sheet_painter.h"

namespace quardele::print {

namespace {

/// As wide as the columns: there is nothing to widen them by.
constexpr QSize kPaper(1590, 3000);

QImage PictureOf(const Sheet& sheet) {
    QImage picture(kPaper / 5, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.scale(1 / 5.0, 1 / 5.0);
    SheetPainter(sheet, kPaper).Paint(painter, 1);
    return picture;
}

Sheet NarrowSheet(const QString& heading, const QString& text) {
    Sheet sheet;
    sheet.columns = {{heading, 90, Qt::AlignLeft}, {QStringLiteral("Marque"), 1500, Qt::AlignLeft}};
    sheet.rows = 1;
    sheet.cell = [text](int /*row*/, int column) {
        SheetCell cell;
        cell.text = column == 0 ? text : QStringLiteral("RENAULT");
        return cell;
    };
    return sheet;
}

TEST(NarrowColumns, ATextWithoutRoomForALetterLeavesAMark) {
    EXPECT_NE(PictureOf(NarrowSheet({}, QStringLiteral("AB-123-CD"))), PictureOf(NarrowSheet({}, {})));
}

TEST(NarrowColumns, AHeadingWithoutRoomForALetterLeavesAMark) {
    EXPECT_NE(PictureOf(NarrowSheet(QStringLiteral("Immatriculation du véhicule"), {})),
              PictureOf(NarrowSheet({}, {})));
}

}  // namespace

}  // namespace quardele::print
