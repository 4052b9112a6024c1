// The date picker, in its two versions.
#pragma once

#include <optional>

#include <QPointer>

#include <basic/variant.h>
#include <forms/calendar.h>
#include <forms/form.h>

namespace quardele::services {

/// Takes no argument: it binds itself at load to the control that has the focus on the active form, stands
/// next to it, and writes the picked date back into it; into a grid as the text of the active cell, day first
/// with four digits for the year. Escape leaves the control as it is. Throws RuntimeError 91 at load when no
/// control has the focus.
class CalendarPicker : public forms::Form {
    Q_OBJECT
 public:
    forms::Calendar* CAL;

 protected:
    explicit CalendarPicker(const QString& name);

    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyDown(int& keyCode, int shift) override;
    void Form_Unload(bool& cancel) override;

    [[nodiscard]] QWidget& Bound() const;

 private:
    void PlaceInTheMiddle(const forms::Form& caller);
    void PlaceBeside(const QWidget& control, const forms::Form& caller);
    void WriteBack(basic::Date date);

    QPointer<QWidget> bound_;
};

/// Opens on today.
class F_CALENDAR : public CalendarPicker {
    Q_OBJECT
 public:
    F_CALENDAR();
};

/// As large as its calendar; opens on the date of the control, on today when that is empty or a grid. Throws
/// RuntimeError 13 at load when the control holds something else.
class F_CALENDAR2 : public CalendarPicker {
    Q_OBJECT
 public:
    F_CALENDAR2();

 protected:
    void Form_Load() override;
    void Form_Activate() override;

 private:
    std::optional<basic::Date> preset_;
};

/// Shows the version that the workstation has chosen, modally; the second stands in where the first fails.
/// The caller sets the calendar-open flag first and has the focus on the control that is to get the date.
/// Failures are ignored: no calendar comes then.
void OpenCalendar();

}  // namespace quardele::services
