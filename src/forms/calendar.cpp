#include <forms/calendar.h>

#include <QKeyEvent>
#include <QLayout>
#include <QPainter>
#include <QTableView>
#include <QTextCharFormat>
#include <QToolButton>

#include <basic/date.h>

#include "palette.h"

namespace quardele::forms {
namespace {

constexpr int kTextPixels = 12;
constexpr int kTodayFrame = 2;
constexpr int kBorderWidth = 1;
constexpr int kMonthsOfYear = 12;

basic::Date ToDate(QDate day) {
    return basic::DateOf(day.year(), day.month(), day.day());
}

QDate Today() {
    const basic::CivilDate day = basic::CivilOf(basic::Today());
    return {day.year, day.month, day.day};
}

QTextCharFormat Ink(const QColor& ink) {
    QTextCharFormat format;
    format.setForeground(ink);
    return format;
}

/// A chevron in the colour of the band that the months' buttons stand on.
QIcon Chevron(bool toTheLeft) {
    constexpr int kSize = 16;
    constexpr qreal kTip = 5.5;
    constexpr qreal kOpen = 10.5;
    constexpr qreal kThickness = 2;
    QPixmap picture(kSize, kSize);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors::kEntry, kThickness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const qreal tip = toTheLeft ? kTip : kSize - kTip;
    const qreal open = toTheLeft ? kOpen : kSize - kOpen;
    painter.drawPolyline(QPolygonF{{open, 3}, {tip, kSize / 2.0}, {open, kSize - 3}});
    return {picture};
}

}  // namespace

Calendar::Calendar(QWidget* parent) : QCalendarWidget(parent) {
    QFont text = font();
    text.setPixelSize(kTextPixels);
    setFont(text);
    setLocale(QLocale(QLocale::French, QLocale::France));
    setFirstDayOfWeek(Qt::Monday);
    setVerticalHeaderFormat(QCalendarWidget::ISOWeekNumbers);
    setHorizontalHeaderFormat(QCalendarWidget::ShortDayNames);
    setDateEditEnabled(false);
    QTextCharFormat heading = Ink(colors::kSecondaryInk);
    heading.setBackground(colors::kHeading);
    setHeaderTextFormat(heading);
    // As the other days; an ink of their own would be that of their headings too.
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
        setWeekdayTextFormat(day, QTextCharFormat());
    }
    layout()->setContentsMargins(kBorderWidth, kBorderWidth, kBorderWidth, kBorderWidth);
    NameButtons();
    // The days take the keys; the buttons of the months are for the mouse.
    auto* const days = findChild<QTableView*>();
    days->installEventFilter(this);
    setFocusProxy(days);
    connect(this, &QCalendarWidget::clicked, this, [this](QDate day) { emit DateClick(ToDate(day)); });
}

void Calendar::NameButtons() {
    for (QToolButton* button : findChildren<QToolButton*>()) {
        button->setFocusPolicy(Qt::NoFocus);
    }
    const auto name = [this](const char* button, const QString& text) {
        auto* const found = findChild<QToolButton*>(QLatin1String(button));
        found->setToolTip(text);
        found->setAccessibleName(text);
    };
    findChild<QToolButton*>(QStringLiteral("qt_calendar_prevmonth"))->setIcon(Chevron(true));
    findChild<QToolButton*>(QStringLiteral("qt_calendar_nextmonth"))->setIcon(Chevron(false));
    name("qt_calendar_prevmonth", QStringLiteral("Mois précédent"));
    name("qt_calendar_nextmonth", QStringLiteral("Mois suivant"));
    name("qt_calendar_monthbutton", QStringLiteral("Mois"));
    name("qt_calendar_yearbutton", QStringLiteral("Année"));
}

QSize Calendar::sizeHint() const {
    return QCalendarWidget::sizeHint() + QSize(2 * kBorderWidth, 2 * kBorderWidth);
}

basic::Date Calendar::Value() const {
    return ToDate(selectedDate());
}

void Calendar::SetValue(basic::Date date) {
    const basic::CivilDate day = basic::CivilOf(date);
    const QDate shown(day.year, day.month, day.day);
    if (shown < minimumDate()) {
        setMinimumDate(shown);
    }
    setSelectedDate(shown);
    setCurrentPage(shown.year(), shown.month());
}

bool Calendar::MoveByKey(int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers != Qt::ControlModifier) {
        return false;
    }
    switch (key) {
        case Qt::Key_PageUp:
            setSelectedDate(selectedDate().addMonths(-kMonthsOfYear));
            return true;
        case Qt::Key_PageDown:
            setSelectedDate(selectedDate().addMonths(kMonthsOfYear));
            return true;
        case Qt::Key_Home:
            setSelectedDate(Today());
            return true;
        default:
            return false;
    }
}

bool Calendar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            emit DateClick(Value());
            return true;
        }
        if (MoveByKey(key->key(), key->modifiers())) {
            return true;
        }
    }
    return QCalendarWidget::eventFilter(watched, event);
}

/// The window of a calendar has no frame of its own.
void Calendar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(QPen(colors::kBorder, kBorderWidth));
    painter.drawRect(rect().adjusted(0, 0, -kBorderWidth, -kBorderWidth));
}

void Calendar::paintCell(QPainter* painter, const QRect& rect, QDate date) const {
    QCalendarWidget::paintCell(painter, rect, date);
    if (date == Today()) {
        painter->save();
        const QColor ink = date == selectedDate() ? colors::kEntry : colors::kAccent;
        painter->setPen(QPen(ink, kTodayFrame));
        painter->drawRect(rect.adjusted(kTodayFrame, kTodayFrame, -kTodayFrame, -kTodayFrame));
        painter->restore();
    }
}

}  // namespace quardele::forms
