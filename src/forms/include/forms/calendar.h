// A month to pick a day from.
#pragma once

#include <QCalendarWidget>

#include <basic/variant.h>

namespace quardele::forms {

/// Weeks begin on Monday and carry their numbers; today is framed, the chosen day filled. The arrow keys move
/// by days and weeks, Home and End to the ends of the month, Page Up and Page Down by months, with Ctrl by
/// years; Ctrl+Home goes to today. Names of days and months are French.
class Calendar : public QCalendarWidget {
    Q_OBJECT
 public:
    explicit Calendar(QWidget* parent = nullptr);

    /// The chosen day, at midnight.
    [[nodiscard]] basic::Date Value() const;
    /// The time of day does not count. Throws RuntimeError 6 outside the years 100 to 9999.
    void SetValue(basic::Date date);

    [[nodiscard]] QSize sizeHint() const override;

 signals:
    /// The operator has picked a day with the mouse, or the chosen one with Enter.
    void DateClick(quardele::basic::Date date);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void paintCell(QPainter* painter, const QRect& rect, QDate date) const override;

 private:
    void NameButtons();
    [[nodiscard]] bool MoveByKey(int key, Qt::KeyboardModifiers modifiers);
};

}  // namespace quardele::forms
