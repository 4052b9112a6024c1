#include <services/calendar_picker.h>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/resume_next.h>
#include <forms/control.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <forms/twips.h>
#include <services/calendar_settings.h>

#include "control_value.h"

namespace quardele::services {

namespace {

constexpr int kKeyEscape = 27;
/// Twips.
constexpr int kMargin = 5;

struct Position {
    int left = 0;
    int top = 0;
};

/// Where a control stands, through all its containers, the form's own place included; twips.
Position PositionOf(const QWidget& control, const forms::Form& form) {
    const QPoint onForm = control.mapTo(form.Surface(), QPoint(0, 0));
    return {form.Left() + forms::ToTwips(onForm.x()), form.Top() + forms::ToTwips(onForm.y())};
}

}  // namespace

CalendarPicker::CalendarPicker(const QString& name)
    : Form(name, forms::FormKind::Dialog), CAL(new forms::Calendar(Surface())) {
    // Its size and its place count to the edge: nothing of the desktop's may come on top.
    Window()->setWindowFlag(Qt::FramelessWindowHint);
    CAL->setObjectName(QStringLiteral("CAL"));
    CAL->setAccessibleName(QStringLiteral("Calendrier"));
    CAL->resize(CAL->sizeHint());
    Surface()->resize(CAL->size());
    Surface()->setWindowTitle(QStringLiteral("Calendrier"));
    forms::On(CAL, &forms::Calendar::DateClick, this, [this](basic::Date date) { WriteBack(date); });
}

void CalendarPicker::Form_Load() {
    const forms::Form* const caller = forms::Screen::ActiveForm();
    QWidget* const control = forms::Screen::ActiveControl();
    if (caller == nullptr || control == nullptr || !caller->Surface()->isAncestorOf(control)) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    bound_ = control;
    if (qobject_cast<forms::Grid*>(control) != nullptr) {
        PlaceInTheMiddle(*caller);
    } else {
        PlaceBeside(*control, *caller);
    }
}

QWidget& CalendarPicker::Bound() const {
    if (bound_ == nullptr) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    return *bound_;
}

/// The caller's own position does not count.
void CalendarPicker::PlaceInTheMiddle(const forms::Form& caller) {
    SetTop((caller.Height() - Height()) / 2);
    SetLeft((caller.Width() - Width()) / 2);
}

/// At the control's right, top edges level; where the screen ends, bottom edges level and at its left.
void CalendarPicker::PlaceBeside(const QWidget& control, const forms::Form& caller) {
    auto [left, top] = PositionOf(control, caller);
    left += forms::Width(&control);
    if (top + Height() > forms::Screen::Height()) {
        top += forms::Height(&control) - Height();
    }
    if (left + Width() > forms::Screen::Width()) {
        left -= Width() + forms::Width(&control);
    }
    SetTop(top);
    SetLeft(left);
}

void CalendarPicker::Form_Activate() {
    CAL->SetValue(basic::Today());
}

void CalendarPicker::Form_KeyDown(int& keyCode, int /*shift*/) {
    if (keyCode == kKeyEscape) {
        keyCode = 0;
        Unload();
    }
}

void CalendarPicker::Form_Unload(bool& /*cancel*/) {
    TheCalendarSettings().calendarOpen = false;
}

void CalendarPicker::WriteBack(basic::Date date) {
    if (auto* const grid = qobject_cast<forms::Grid*>(&Bound())) {
        grid->SetRow(grid->ActiveRow());
        grid->SetCol(grid->ActiveCol());
        grid->SetText(forms::ToQString(basic::Format(date, u"dd/mm/yyyy")));
    } else {
        SetControlValue(Bound(), forms::ToQString(basic::CStr(date)));
    }
    Unload();
}

F_CALENDAR::F_CALENDAR() : CalendarPicker(QStringLiteral("F_CALENDAR")) {}

F_CALENDAR2::F_CALENDAR2() : CalendarPicker(QStringLiteral("F_CALENDAR2")) {}

void F_CALENDAR2::Form_Load() {
    SetWidth(forms::Width(CAL) + 2 * kMargin);
    SetHeight(forms::Height(CAL) + 2 * kMargin);
    forms::SetLeft(CAL, kMargin);
    forms::SetTop(CAL, kMargin);
    CalendarPicker::Form_Load();
    if (qobject_cast<forms::Grid*>(&Bound()) != nullptr) {
        return;
    }
    if (const QString value = ControlValue(Bound()); !value.isEmpty()) {
        preset_ = basic::CDate(forms::ToText(value));
    }
}

void F_CALENDAR2::Form_Activate() {
    CalendarPicker::Form_Activate();
    if (preset_) {
        CAL->SetValue(*preset_);
    }
}

void OpenCalendar() {
    bool failed = false;
    basic::ResumeNext statement([&failed](const basic::RuntimeError&) { failed = true; });
    const auto showSecond = [] { forms::Instance<F_CALENDAR2>().Show(forms::ShowMode::Modal); };
    if (TheCalendarSettings().PARAM_CALENDRIER != 0) {
        statement(showSecond);
        return;
    }
    statement([] { forms::Instance<F_CALENDAR>().Show(forms::ShowMode::Modal); });
    if (failed) {
        statement(showSecond);
    }
}

}  // namespace quardele::services
