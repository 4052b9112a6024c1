#include "style.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QIcon>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStyleOption>
#include <QTabBar>

#include <forms/controls.h>

#include "cell_marks.h"
#include "palette.h"

namespace quardele::forms {
namespace {

using namespace colors;

constexpr double kRadius = 2;
constexpr double kButtonRadius = 4;
constexpr double kFocusWidth = 2;
constexpr int kScrollFrame = 2;
constexpr int kTabBand = 3;

/// A rectangle whose outline of the given width falls on whole pixels inside `rect`.
QRectF Outline(const QRect& rect, double width) {
    return QRectF(rect).adjusted(width / 2, width / 2, -width / 2, -width / 2);
}

void RoundedBox(QPainter& painter, const QRect& rect, const QBrush& fill, const QColor& border,
                double borderWidth, double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(border, borderWidth));
    painter.setBrush(fill);
    painter.drawRoundedRect(Outline(rect, borderWidth), radius, radius);
    painter.restore();
}

bool HasFocus(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_HasFocus);
}
bool IsEnabled(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled);
}

bool IsMainButton(const QWidget* widget) {
    if (const auto* button = qobject_cast<const Button*>(widget)) {
        return button->IsMain();
    }
    const auto* plain = qobject_cast<const QPushButton*>(widget);
    return plain != nullptr && plain->isDefault();
}

void DrawButton(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const auto* button = qobject_cast<const Button*>(widget);
    const bool focus = HasFocus(option);
    const bool main = IsMainButton(widget);
    QColor face = focus || main ? kAccentLight : kButton;
    if (option.state.testAnyFlags(QStyle::State_Sunken | QStyle::State_On)) {
        face = kButtonPressed;
    } else if (option.state.testFlag(QStyle::State_MouseOver) && IsEnabled(option)) {
        face = kAccentLight;
    }
    if (button != nullptr && button->FaceColor() >= 0) {
        face = FromPlatform(button->FaceColor());
    }
    const QColor border = focus || main ? kAccent : IsEnabled(option) ? kBorder : kDecorativeLine;
    const double borderWidth = focus ? kFocusWidth : 1;
    RoundedBox(painter, option.rect, face, border, borderWidth, kButtonRadius);
    if (button != nullptr && button->RimColor() >= 0) {
        const int inset = static_cast<int>(borderWidth);
        RoundedBox(painter, option.rect.adjusted(inset, inset, -inset, -inset), Qt::NoBrush,
                   FromPlatform(button->RimColor()), 1, kButtonRadius);
    }
}

void DrawField(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const auto* box = qobject_cast<const TextBox*>(widget);
    QColor fill = option.palette.color(QPalette::Base);
    if (box != nullptr && box->IsShaded()) {
        fill = kShaded;
    } else if (option.state.testFlag(QStyle::State_ReadOnly) || !IsEnabled(option)) {
        fill = kLocked;
    } else if (box != nullptr && box->HasPendingChange()) {
        fill = kPendingFill;
    }
    RoundedBox(painter, option.rect, fill, box != nullptr && box->IsShaded() ? kDecorativeLine : kBorder, 1,
               kRadius);
}

void DrawOption(const QStyleOption& option, QPainter& painter) {
    constexpr double kDot = 4;
    const bool chosen = option.state.testFlag(QStyle::State_On);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(chosen ? kAccent : kBorder, 1));
    painter.setBrush(kEntry);
    painter.drawEllipse(Outline(option.rect, 1));
    if (chosen) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(kAccent);
        painter.drawEllipse(QRectF(option.rect).center(), kDot, kDot);
    }
    painter.restore();
}

void DrawTab(const QStyleOptionTab& tab, QPainter& painter) {
    const bool selected = tab.state.testFlag(QStyle::State_Selected);
    const QRect rect = selected ? tab.rect : tab.rect.adjusted(0, 2, 0, -1);
    painter.save();
    painter.setClipRect(tab.rect);
    RoundedBox(painter, rect.adjusted(0, 0, 0, 6), selected ? kWindow : kHeading, kBorder, 1, kButtonRadius);
    if (selected) {
        painter.setClipRect(QRect(rect.left(), rect.top(), rect.width(), kTabBand), Qt::IntersectClip);
        RoundedBox(painter, rect.adjusted(0, 0, 0, 6), kAccent, kAccent, 1, kButtonRadius);
    }
    painter.restore();
}

/// Pictures are drawn for light ground; on the accent of a title bar only their shape counts.
QIcon InWhite(const QIcon& icon) {
    constexpr int kSize = 16;
    QPixmap shape = icon.pixmap(kSize);
    QPainter painter(&shape);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(shape.rect(), kEntry);
    return shape;
}

bool HasFocusInside(const QStyleOption& option, const QWidget& widget) {
    return HasFocus(option) || widget.isAncestorOf(QApplication::focusWidget());
}

/// The name of a month in the heading of a calendar.
bool IsMonthButton(const QWidget* widget) {
    const QWidget* const heading = widget != nullptr ? widget->parentWidget() : nullptr;
    return heading != nullptr && qobject_cast<const QCalendarWidget*>(heading->parentWidget()) != nullptr;
}

void DrawComboArrow(const QStyleOptionComboBox& combo, QPainter& painter, const QWidget& widget) {
    const QRect arrow =
        widget.style()->subControlRect(QStyle::CC_ComboBox, &combo, QStyle::SC_ComboBoxArrow, &widget);
    constexpr int kSize = 14;
    QRect place(0, 0, kSize, kSize);
    place.moveCenter(arrow.center());
    QIcon(QStringLiteral(":/icons/chevron-bas.svg")).paint(&painter, place);
}

}  // namespace

void draw::EntryBorder(QPainter& painter, const QRect& rect, bool focus) {
    RoundedBox(painter, rect, Qt::NoBrush, focus ? kAccent : kBorder, focus ? kFocusWidth : 1, kRadius);
}

void draw::PendingBar(QPainter& painter, const QRect& rect) {
    painter.fillRect(QRect(rect.left(), rect.top(), kPendingBarWidth, rect.height()), kPendingBar);
}

void draw::CellFrame(QPainter& painter, const QRect& rect, const QColor& color) {
    painter.save();
    painter.setPen(QPen(color, kFocusWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(Outline(rect, kFocusWidth));
    painter.restore();
}

/// A line would lose the pixels that lie outside of the rectangle by half.
void draw::Sheet(QPainter& painter, const QRect& rect, const QColor& fill, const QColor& border) {
    painter.fillRect(rect, border);
    painter.fillRect(rect.adjusted(1, 1, -1, -1), fill);
}

void draw::TickBox(QPainter& painter, const QRect& rect, bool ticked, bool enabled) {
    const QColor border = !enabled ? kDecorativeLine : ticked ? kAccent : kBorder;
    RoundedBox(painter, rect, ticked ? (enabled ? kAccent : kBorder) : kEntry, border, 1, kRadius + 1);
    if (!ticked) {
        return;
    }
    const QRectF box(rect);
    QPainterPath tick(QPointF(box.left() + box.width() * 0.22, box.top() + box.height() * 0.52));
    tick.lineTo(box.left() + box.width() * 0.43, box.top() + box.height() * 0.72);
    tick.lineTo(box.left() + box.width() * 0.79, box.top() + box.height() * 0.30);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kEntry, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(tick);
    painter.restore();
}

void draw::Face(QPainter& painter, const QRect& rect, const QColor& fill, const QColor& border,
                double borderWidth) {
    RoundedBox(painter, rect, fill, border, borderWidth, kButtonRadius);
}

Style::Style() : QProxyStyle(QStringLiteral("Fusion")) {}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    switch (element) {
        case PE_PanelButtonCommand:
            DrawButton(*option, *painter, widget);
            return;
        case PE_PanelLineEdit:
            if (qobject_cast<const QComboBox*>(widget != nullptr ? widget->parentWidget() : nullptr) ==
                nullptr) {
                const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
                if (frame != nullptr && frame->lineWidth == 0) {
                    painter->fillRect(option->rect,
                                      kEntry);  // the open cell of a grid, which has its own frame
                    return;
                }
                DrawField(*option, *painter, widget);
                if (HasFocus(*option)) {
                    draw::EntryBorder(*painter, option->rect, true);
                }
            }
            return;
        case PE_FrameFocusRect:
            return;  // the focus shows in the control's own border
        case PE_IndicatorCheckBox:
            draw::TickBox(*painter, option->rect, option->state.testFlag(State_On), IsEnabled(*option));
            return;
        case PE_IndicatorRadioButton:
            DrawOption(*option, *painter);
            return;
        case PE_Frame:
            if (qobject_cast<const QAbstractScrollArea*>(widget) != nullptr) {
                draw::EntryBorder(*painter, option->rect, HasFocusInside(*option, *widget));
            } else {
                RoundedBox(*painter, option->rect, Qt::NoBrush, kDecorativeLine, 1, kButtonRadius);
            }
            return;
        case PE_FrameTabWidget:
            RoundedBox(*painter, option->rect, kWindow, kBorder, 1, kRadius);
            return;
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
    if (element == CE_TabBarTabShape) {
        if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
            DrawTab(*tab, *painter);
            return;
        }
    }
    if (element == CE_CheckBoxLabel || element == CE_RadioButtonLabel) {
        if (HasFocus(*option)) {
            const QRect text = option->rect.adjusted(-4, 0, 0, 0);
            draw::EntryBorder(*painter, text, true);
        }
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
    if (const auto* title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
        control == CC_TitleBar && title != nullptr) {
        QStyleOptionTitleBar inWhite = *title;
        inWhite.icon = InWhite(title->icon);
        QProxyStyle::drawComplexControl(control, &inWhite, painter, widget);
        return;
    }
    if (const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
        control == CC_ToolButton && button != nullptr && IsMonthButton(widget)) {
        // The arrow of its menu would stand under the text.
        QStyleOptionToolButton plain = *button;
        plain.features.setFlag(QStyleOptionToolButton::HasMenu, false);
        QProxyStyle::drawComplexControl(control, &plain, painter, widget);
        return;
    }
    const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control != CC_ComboBox || combo == nullptr || widget == nullptr) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    RoundedBox(*painter, option->rect, IsEnabled(*option) ? kEntry : kLocked, kBorder, 1, kRadius);
    if (HasFocus(*option)) {
        draw::EntryBorder(*painter, option->rect, true);
    }
    DrawComboArrow(*combo, *painter, *widget);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_DefaultFrameWidth:
            if (qobject_cast<const QAbstractScrollArea*>(widget) != nullptr) {
                return kScrollFrame;
            }
            return QProxyStyle::pixelMetric(metric, option, widget);
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return draw::kTickSize;
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        case PM_TabBarBaseOverlap:
            return 1;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* returnData) const {
    switch (hint) {
        case SH_EtchDisabledText:
        case SH_DitherDisabledText:
            return 0;
        case SH_Table_GridLineColor:
            return static_cast<int>(kGridLine.rgb());
        default:
            return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QRect Style::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const auto* tabs = qobject_cast<const TabControl*>(widget);
    if (tabs != nullptr) {
        const QRect whole = tabs->rect();
        const QRect page = whole.adjusted(0, tabs->StripPixels(), 0, 0);
        if (element == SE_TabWidgetTabPane || element == SE_TabWidgetTabContents) {
            return page;
        }
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                              const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto* const tabs =
        qobject_cast<const TabControl*>(widget == nullptr ? nullptr : widget->parentWidget());
    if (type == CT_TabBarTab && tabs != nullptr) {
        result.setHeight(tabs->StripPixels() - 2);
        result.setWidth(result.width() + 8);
    }
    return result;
}

}  // namespace quardele::forms
