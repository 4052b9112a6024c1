#include "grid_delegate.h"

#include <QApplication>
#include <QHelpEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QToolTip>

#include <forms/runtime.h>

#include "cell_marks.h"
#include "grid_model.h"
#include "palette.h"
#include "style.h"

namespace quardele::forms {
namespace {

constexpr int kMargin = 4;
constexpr int kFarMargin = 1;
constexpr int kPicture = 14;

}  // namespace

GridDelegate::GridDelegate(Grid& grid, GridModel& model)
    : QStyledItemDelegate(&grid), grid_(grid), model_(model) {}

QRect GridDelegate::TextRect(const QRect& cell, Qt::Alignment alignment) {
    return cell.adjusted(alignment.testFlag(Qt::AlignLeft) ? kMargin : kFarMargin, 0,
                         alignment.testFlag(Qt::AlignRight) ? -kMargin : -kFarMargin, 0);
}

QRect GridDelegate::TickRect(const QRect& cell) {
    QRect box(0, 0, draw::kTickSize, draw::kTickSize);
    box.moveCenter(cell.center());
    return box;
}

QRect GridDelegate::ButtonRect(const QRect& cell) {
    return cell.adjusted(5, 2, -6, -3);
}

bool GridDelegate::IsActive(const QModelIndex& index) const {
    return index.row() + 1 == grid_.ActiveRow() && index.column() + 1 == grid_.ActiveCol();
}

bool GridDelegate::HasNoHistory(const QModelIndex& index) const {
    return MeansNoHistory(model_.Look(index.row(), index.column()));
}

bool GridDelegate::IsPending(const QModelIndex& index) const {
    return model_.IsChanged(index.row(), index.column()) && model_.FieldOf(index.column()) != nullptr;
}

QColor GridDelegate::BackOf(const QModelIndex& index) const {
    const int row = index.row();
    const int column = index.column();
    const bool locked = model_.IsLocked(row, column);
    if (const std::optional<int> own = model_.Look(row, column).backColor;
        own && FromPlatform(*own) != Qt::white) {
        return FromPlatform(*own);
    }
    if (IsPending(index)) {
        return colors::kPendingFill;
    }
    if (grid_.IsEntryGrid()) {
        return locked ? colors::kLocked : colors::kEntry;
    }
    if (row + 1 == grid_.ActiveRow()) {
        return colors::kSelectedRow;
    }
    return row % 2 == 0 ? colors::kEntry : colors::kEvenRow;
}

QFont GridDelegate::FontOf(const QModelIndex& index) const {
    QFont font = grid_.CellFont();
    const CellLook look = model_.Look(index.row(), index.column());
    font.setItalic(look.italic.value_or(font.italic()));
    font.setBold(look.bold.value_or(font.bold()));
    return font;
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const QRect rect = option.rect;
    painter->save();
    painter->fillRect(rect, BackOf(index));
    PaintContent(*painter, rect, index);
    if (IsPending(index)) {
        draw::PendingBar(*painter, rect);
    }
    if (IsActive(index) && grid_.HasFocusInside()) {
        draw::CellFrame(*painter, rect, HasNoHistory(index) ? QColor(Qt::black) : colors::kAccent);
    }
    painter->restore();
}

void GridDelegate::PaintContent(QPainter& painter, const QRect& rect, const QModelIndex& index) const {
    switch (model_.Column(index.column()).type) {
        case CellType::CheckBox:
            draw::TickBox(painter, TickRect(rect), index.data(Qt::CheckStateRole).toInt() == Qt::Checked,
                          !model_.IsLocked(index.row(), index.column()));
            return;
        case CellType::Button:
            PaintButton(painter, rect, index);
            return;
        default:
            PaintText(painter, rect, index);
    }
}

void GridDelegate::PaintText(QPainter& painter, const QRect& rect, const QModelIndex& index) const {
    const QString text = index.data(Qt::DisplayRole).toString();
    if (text.isEmpty() && HasNoHistory(index)) {
        QRect place(0, 0, kPicture, kPicture);
        place.moveCenter(rect.center());
        QIcon(QStringLiteral(":/icons/sans-historique.svg")).paint(&painter, place);
        return;
    }
    painter.setPen(HasNoHistory(index) ? colors::kEntry : colors::kInk);
    painter.setFont(FontOf(index));
    const Qt::Alignment alignment = model_.Column(index.column()).Alignment();
    const int bar = IsPending(index) ? draw::kPendingBarWidth : 0;
    const QRect room = TextRect(rect.adjusted(bar, 0, 0, 0), alignment);
    painter.drawText(room, static_cast<int>(alignment),
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
}

void GridDelegate::PaintButton(QPainter& painter, const QRect& rect, const QModelIndex& index) const {
    const QRect face = ButtonRect(rect);
    draw::Face(painter, face, colors::kButton, colors::kBorder, 1);
    const QString& picture = model_.Column(index.column()).picture;
    if (!picture.isEmpty()) {
        QRect place(0, 0, kPicture, kPicture);
        place.moveCenter(face.center());
        QIcon(QStringLiteral(":/icons/%1.svg").arg(picture)).paint(&painter, place);
    }
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& index) const {
    auto* editor = new QLineEdit(parent);
    editor->setFrame(false);
    editor->setFont(FontOf(index));
    editor->setAlignment(model_.Column(index.column()).Alignment());
    editor->setAccessibleName(model_.Column(index.column()).heading);
    const dao::Field* field = model_.FieldOf(index.column());
    if (field != nullptr && field->type == dao::FieldType::Text && field->size > 0) {
        editor->setMaxLength(field->size);
    }
    connect(editor, &QLineEdit::textEdited, this, &GridDelegate::Typed);
    return editor;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* line = qobject_cast<QLineEdit*>(editor);
    line->setText(index.data(Qt::EditRole).toString());
    line->selectAll();
}

void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    const QString typed = qobject_cast<QLineEdit*>(editor)->text();
    if (typed == index.data(Qt::EditRole).toString()) {
        return;
    }
    if (const std::optional<QString> text = model_.Column(index.column()).Accepted(typed)) {
        model->setData(index, *text, Qt::EditRole);
    } else {
        Beep();  // the cell keeps what it had
    }
}

void GridDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& /*index*/) const {
    editor->setGeometry(option.rect.adjusted(2, 2, -2, -2));
}

bool GridDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        bool taken = false;
        emit KeyInEditor(static_cast<QKeyEvent*>(event), taken);
        if (taken) {
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

bool GridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (!index.isValid()) {
        QToolTip::hideText();
        return false;
    }
    const QString text = index.data(Qt::DisplayRole).toString();
    const QRect room = TextRect(option.rect, model_.Column(index.column()).Alignment());
    if (QFontMetrics(FontOf(index)).horizontalAdvance(text) > room.width()) {
        QToolTip::showText(event->globalPos(), text, view, option.rect);
        return true;
    }
    QToolTip::hideText();
    return false;
}

}  // namespace quardele::forms
