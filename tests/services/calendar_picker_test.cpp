// The date picker on controls of every kind, driven by real keys and clicks.
#include <functional>

#include <QScopedValueRollback>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/locale.h>
#include <basic/runtime_error.h>
#include <forms/combo.h>
#include <forms/controls.h>
#include <forms/drop_down.h>
#include <forms/grid.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <forms/twips.h>
#include <services/calendar_picker.h>
#include <services/calendar_settings.h>
#include <support/boxes.h>

using namespace quardele;
using services::F_CALENDAR;
using services::F_CALENDAR2;

namespace {

constexpr int kWide = 1920 * 15;
constexpr int kHigh = 1080 * 15;

class CallerForm : public forms::Form {
    Q_OBJECT
 public:
    CallerForm() : Form(QStringLiteral("APPELANTE"), forms::FormKind::Dialog) {
        Surface()->resize(600, 400);
        box = Add<forms::TextBox>("CTX_DATE", Surface(), QRect(40, 60, 100, 20));
        memo = Add<forms::MemoBox>("CTX_NOTE", Surface(), QRect(40, 100, 100, 40));
        combo = Add<forms::ListCombo>("DBC_DATE", Surface(), QRect(40, 160, 100, 24));
        button = Add<forms::Button>("Cmd_AUTRE", Surface(), QRect(40, 200, 32, 32));
        choice = Add<forms::DropDown>("BXC_DATE", Surface(), QRect(160, 200, 100, 24));
        grid = Add<forms::Grid>("DBG_DATES", Surface(), QRect(40, 240, 300, 120));
        grid->SetColumnLines({QStringLiteral("Code||10|text"), QStringLiteral("Date||12|date")});
        grid->SetMaxRows(3);
        auto* const tabs = Add<forms::TabControl>("SST", Surface(), QRect(350, 20, 240, 200));
        auto* const page = new QWidget;
        tabs->addTab(page, QStringLiteral("Page"));
        auto* const frame = Add<forms::Frame>("FRM", page, QRect(10, 12, 200, 120));
        inner = Add<forms::TextBox>("CTX_DEDANS", frame, QRect(20, 30, 90, 20));
    }

    forms::TextBox* box;
    forms::MemoBox* memo;
    forms::ListCombo* combo;
    forms::Button* button;
    forms::DropDown* choice;
    forms::Grid* grid;
    forms::TextBox* inner;

 private:
    template <class T>
    T* Add(const char* name, QWidget* container, const QRect& place) {
        auto* const control = new T(container);
        control->setObjectName(QString::fromLatin1(name));
        control->setGeometry(place);
        return control;
    }
};

CallerForm& Caller() {
    return forms::Instance<CallerForm>();
}

/// The picker on the screen, with all that the desktop draws around it; twips.
QRect PlaceOf(const services::CalendarPicker& picker) {
    const QRect pixels = picker.Window()->frameGeometry();
    return {pixels.topLeft() * forms::kTwipsPerPixel, pixels.size() * forms::kTwipsPerPixel};
}

QString Shown(basic::Date date) {
    return forms::ToQString(basic::CStr(date));
}

/// Opens the calendar on a control, lets `act` use it, and says whether one came.
template <class Picker>
bool OpenOn(QWidget* control, const std::function<void(Picker&)>& act) {
    forms::SetFocus(control);
    bool came = false;
    QTimer::singleShot(0, &Caller(), [&] {
        came = forms::IsLoaded<Picker>() && forms::Instance<Picker>().Visible();
        if (came) {
            act(forms::Instance<Picker>());
        }
        if (forms::IsLoaded<Picker>()) {
            forms::Instance<Picker>().Unload();
        }
    });
    services::OpenCalendar();
    QCoreApplication::processEvents();
    return came;
}

void Press(const forms::Calendar& calendar, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(calendar.findChild<QTableView*>(), key, modifiers);
}

/// Clicks the first cell that shows a number of the month.
void ClickDay(const forms::Calendar& calendar, int day) {
    auto* const days = calendar.findChild<QTableView*>();
    for (int row = 1; row < days->model()->rowCount(); ++row) {
        for (int column = 1; column < days->model()->columnCount(); ++column) {
            const QModelIndex cell = days->model()->index(row, column);
            const bool inMonth = row > 2 || day < 15;
            if (inMonth && cell.data().toInt() == day) {
                QTest::mouseClick(days->viewport(), Qt::LeftButton, {}, days->visualRect(cell).center());
                return;
            }
        }
    }
    QFAIL("no such day");
}

const std::function<void(F_CALENDAR&)> kLookOnly = [](F_CALENDAR&) {};

}  // namespace

class CalendarPickerTest : public QObject {
    Q_OBJECT

 private slots:
    void init();
    void cleanup();

    // Which version opens.
    void TheWorkstationChoosesTheVersion_data();
    void TheWorkstationChoosesTheVersion();
    void TheSecondVersionStandsInForTheFirst();
    void WithoutAControlNoCalendarComes();

    // What it opens on.
    void TheFirstVersionOpensOnToday();
    void TheSecondVersionOpensOnTheDateOfTheControl();
    void TheSecondVersionOpensOnTodayWhereTheControlIsEmpty();
    void TheSecondVersionOpensOnTodayOverAGrid();
    void ATextThatIsNoDateLetsNoSecondVersionCome();
    void ATextThatIsNoDateIsNothingToTheFirstVersion();

    // Where it stands.
    void ItStandsAtTheRightOfTheControl();
    void ContainersAndTheFormAddUp();
    void NearTheBottomTheBottomsAreLevel();
    void NearTheRightEdgeItOpensToTheLeft();
    void ExactlyAtTheEdgesItStays();
    void OverAGridItStandsInTheMiddle();
    void TheSecondVersionIsAsLargeAsItsCalendar();

    // What it writes.
    void AClickWritesTheDayBack_data();
    void AClickWritesTheDayBack();
    void EnterWritesTheChosenDayBack_data();
    void EnterWritesTheChosenDayBack();
    void EscapeLeavesTheControl_data();
    void EscapeLeavesTheControl();
    void TheDateGoesIntoEveryBoxThatTakesText();
    void AControlWithoutATextIsTheRuntimesError();
    void TheDateGoesIntoTheActiveCellOfAGrid();
    void TheDateGoesIntoTheOpenCellOfAGrid();
    void AGridIsWrittenDayFirstWhateverTheWorkstationSays();
    void AnyOtherControlIsWrittenAsTheWorkstationDoes();
    void ADropDownTakesADateThatItOffers();
    void TheFlagFallsWhenTheCalendarGoes();

    // The month.
    void WeeksBeginOnMondayAndCarryTheirNumbers();
    void MonthsAndDaysAreFrench();
    void KeysMoveByDaysWeeksMonthsAndYears();
    void TodayIsMarked();
    void NoArrowStandsUnderTheMonth();
};

void CalendarPickerTest::init() {
    services::TheCalendarSettings() = {};
    forms::Screen::SetSizeForTests(kWide, kHigh);
    Caller().Show();
    QVERIFY(QTest::qWaitForWindowActive(Caller().Window()));
    Caller().SetLeft(1500);
    Caller().SetTop(3000);
}

void CalendarPickerTest::cleanup() {
    Caller().Unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    forms::Screen::SetSizeForTests(0, 0);
}

void CalendarPickerTest::TheWorkstationChoosesTheVersion_data() {
    QTest::addColumn<int>("parameter");
    QTest::addColumn<bool>("second");
    QTest::newRow("0") << 0 << false;
    QTest::newRow("1") << 1 << true;
    QTest::newRow("-1") << -1 << true;
}

void CalendarPickerTest::TheWorkstationChoosesTheVersion() {
    QFETCH(const int, parameter);
    QFETCH(const bool, second);
    services::TheCalendarSettings().PARAM_CALENDRIER = static_cast<std::int16_t>(parameter);
    QCOMPARE(second ? OpenOn<F_CALENDAR2>(Caller().box, [](F_CALENDAR2&) {})
                    : OpenOn<F_CALENDAR>(Caller().box, kLookOnly),
             true);
    QVERIFY(!forms::IsLoaded<F_CALENDAR>() && !forms::IsLoaded<F_CALENDAR2>());
}

/// The first cannot be shown while it is on screen already.
void CalendarPickerTest::TheSecondVersionStandsInForTheFirst() {
    forms::SetFocus(Caller().box);
    forms::Instance<F_CALENDAR>().Show();
    Caller().ZOrder(0);
    Caller().box->SetText(QStringLiteral("24/12/2030"));
    QVERIFY(OpenOn<F_CALENDAR2>(Caller().box, [](F_CALENDAR2& picker) {
        QCOMPARE(Shown(picker.CAL->Value()), QStringLiteral("24/12/2030"));
    }));
    forms::Instance<F_CALENDAR>().Unload();
}

void CalendarPickerTest::WithoutAControlNoCalendarComes() {
    Caller().Unload();
    support::BoxAnswerer boxes;
    services::OpenCalendar();
    QVERIFY(!forms::IsLoaded<F_CALENDAR>() && !forms::IsLoaded<F_CALENDAR2>());
    QVERIFY(boxes.Shown().empty());
    Caller().Show();
}

void CalendarPickerTest::TheFirstVersionOpensOnToday() {
    Caller().box->SetText(QStringLiteral("24/12/2030"));
    QVERIFY(OpenOn<F_CALENDAR>(Caller().box, [](F_CALENDAR& picker) {
        QCOMPARE(Shown(picker.CAL->Value()), Shown(basic::Today()));
        QVERIFY(picker.CAL->isAncestorOf(picker.Window()->focusWidget()));
    }));
}

void CalendarPickerTest::TheSecondVersionOpensOnTheDateOfTheControl() {
    services::TheCalendarSettings().PARAM_CALENDRIER = 1;
    Caller().box->SetText(QStringLiteral("24/12/2030"));
    QVERIFY(OpenOn<F_CALENDAR2>(Caller().box, [](F_CALENDAR2& picker) {
        QCOMPARE(Shown(picker.CAL->Value()), QStringLiteral("24/12/2030"));
        QCOMPARE(picker.CAL->monthShown(), 12);
        QCOMPARE(picker.CAL->yearShown(), 2030);
    }));
}

void CalendarPickerTest::TheSecondVersionOpensOnTodayWhereTheControlIsEmpty() {
    services::TheCalendarSettings().PARAM_CALENDRIER = 1;
    QVERIFY(OpenOn<F_CALENDAR2>(Caller().box, [](F_CALENDAR2& picker) {
        QCOMPARE(Shown(picker.CAL->Value()), Shown(basic::Today()));
    }));
}

void CalendarPickerTest::TheSecondVersionOpensOnTodayOverAGrid() {
    services::TheCalendarSettings().PARAM_CALENDRIER = 1;
    Caller().grid->SetRow(1);
    Caller().grid->SetCol(2);
    Caller().grid->SetText(QStringLiteral("24/12/2030"));
    Caller().grid->SetActiveCell(2, 1);
    QVERIFY(OpenOn<F_CALENDAR2>(Caller().grid, [](F_CALENDAR2& picker) {
        QCOMPARE(Shown(picker.CAL->Value()), Shown(basic::Today()));
    }));
}

void CalendarPickerTest::ATextThatIsNoDateLetsNoSecondVersionCome() {
    services::TheCalendarSettings().PARAM_CALENDRIER = 1;
    Caller().box->SetText(QStringLiteral("demain"));
    support::BoxAnswerer boxes;
    QVERIFY(!OpenOn<F_CALENDAR2>(Caller().box, [](F_CALENDAR2&) {}));
    QVERIFY(boxes.Shown().empty());
    QCOMPARE(Caller().box->Text(), QStringLiteral("demain"));
    try {
        static_cast<void>(forms::Instance<F_CALENDAR2>());
        QFAIL("a date was made of it");
    } catch (const basic::RuntimeError& error) {
        QCOMPARE(error.Number(), basic::error::kTypeMismatch);
    }
}

void CalendarPickerTest::ATextThatIsNoDateIsNothingToTheFirstVersion() {
    Caller().box->SetText(QStringLiteral("demain"));
    QVERIFY(OpenOn<F_CALENDAR>(Caller().box, kLookOnly));
}

void CalendarPickerTest::ItStandsAtTheRightOfTheControl() {
    QVERIFY(OpenOn<F_CALENDAR>(Caller().box, [](F_CALENDAR& picker) {
        QCOMPARE(PlaceOf(picker).topLeft(), QPoint(1500 + (40 + 100) * 15, 3000 + 60 * 15));
    }));
}

void CalendarPickerTest::ContainersAndTheFormAddUp() {
    QVERIFY(OpenOn<F_CALENDAR>(Caller().inner, [](F_CALENDAR& picker) {
        const int strip = forms::TabControl::kStripPixels;
        QCOMPARE(PlaceOf(picker).topLeft(),
                 QPoint(1500 + (350 + 10 + 20 + 90) * 15, 3000 + (20 + strip + 12 + 30) * 15));
    }));
}

void CalendarPickerTest::NearTheBottomTheBottomsAreLevel() {
    Caller().SetTop(kHigh - 3000);
    QVERIFY(OpenOn<F_CALENDAR>(Caller().box, [](F_CALENDAR& picker) {
        const int bottomOfBox = kHigh - 3000 + (60 + 20) * 15;
        QCOMPARE(PlaceOf(picker).bottom() + 1, bottomOfBox);
    }));
}

void CalendarPickerTest::NearTheRightEdgeItOpensToTheLeft() {
    Caller().SetLeft(kWide - 3000);
    QVERIFY(OpenOn<F_CALENDAR>(Caller().box, [](F_CALENDAR& picker) {
        const int leftOfBox = kWide - 3000 + 40 * 15;
        QCOMPARE(PlaceOf(picker).right() + 1, leftOfBox);
    }));
}

void CalendarPickerTest::ExactlyAtTheEdgesItStays() {
    QSize size;
    QVERIFY(OpenOn<F_CALENDAR>(Caller().box, [&](F_CALENDAR& picker) { size = PlaceOf(picker).size(); }));
    Caller().SetLeft(kWide - size.width() - 140 * 15);
    Caller().SetTop(kHigh - size.height() - 60 * 15);
    QVERIFY(OpenOn<F_CALENDAR>(Caller().box, [&](F_CALENDAR& picker) {
        QCOMPARE(PlaceOf(picker), QRect(QPoint(kWide - size.width(), kHigh - size.height()), size));
    }));
    Caller().SetLeft(Caller().Left() + 15);
    Caller().SetTop(Caller().Top() + 15);
    QVERIFY(OpenOn<F_CALENDAR>(Caller().box, [&](F_CALENDAR& picker) {
        QVERIFY(picker.Left() < kWide - size.width());
        QVERIFY(picker.Top() < kHigh - size.height());
    }));
}

/// The form's own place does not count.
void CalendarPickerTest::OverAGridItStandsInTheMiddle() {
    QVERIFY(OpenOn<F_CALENDAR>(Caller().grid, [](F_CALENDAR& picker) {
        const QRect place = PlaceOf(picker);
        QVERIFY(std::abs(place.left() - (Caller().Width() - place.width()) / 2) < 15);
        QVERIFY(std::abs(place.top() - (Caller().Height() - place.height()) / 2) < 15);
    }));
}

/// Ten twips more are less than a pixel.
void CalendarPickerTest::TheSecondVersionIsAsLargeAsItsCalendar() {
    services::TheCalendarSettings().PARAM_CALENDRIER = 1;
    QVERIFY(OpenOn<F_CALENDAR2>(Caller().box, [](F_CALENDAR2& picker) {
        QCOMPARE(PlaceOf(picker).size(), (picker.CAL->size() + QSize(1, 1)) * forms::kTwipsPerPixel);
        QCOMPARE(picker.CAL->pos(), QPoint(0, 0));
    }));
}

void CalendarPickerTest::AClickWritesTheDayBack_data() {
    QTest::addColumn<int>("parameter");
    QTest::newRow("first version") << 0;
    QTest::newRow("second version") << 1;
}

void CalendarPickerTest::AClickWritesTheDayBack() {
    QFETCH(const int, parameter);
    services::TheCalendarSettings().PARAM_CALENDRIER = static_cast<std::int16_t>(parameter);
    Caller().box->SetText(QStringLiteral("24/12/2030"));
    const auto clickFifth = [](services::CalendarPicker& picker) {
        picker.CAL->SetValue(basic::DateOf(2031, 1, 24));
        ClickDay(*picker.CAL, 5);
    };
    QVERIFY(parameter == 0 ? OpenOn<F_CALENDAR>(Caller().box, clickFifth)
                           : OpenOn<F_CALENDAR2>(Caller().box, clickFifth));
    QCOMPARE(Caller().box->Text(), QStringLiteral("05/01/2031"));
    QVERIFY(!forms::IsLoaded<F_CALENDAR>() && !forms::IsLoaded<F_CALENDAR2>());
    QVERIFY(Caller().box->hasFocus());
}

void CalendarPickerTest::EnterWritesTheChosenDayBack_data() {
    AClickWritesTheDayBack_data();
}

void CalendarPickerTest::EnterWritesTheChosenDayBack() {
    QFETCH(const int, parameter);
    services::TheCalendarSettings().PARAM_CALENDRIER = static_cast<std::int16_t>(parameter);
    const auto nextWeek = [](services::CalendarPicker& picker) {
        Press(*picker.CAL, Qt::Key_Down);
        Press(*picker.CAL, Qt::Key_Return);
    };
    const bool came = parameter == 0 ? OpenOn<F_CALENDAR>(Caller().box, nextWeek)
                                     : OpenOn<F_CALENDAR2>(Caller().box, nextWeek);
    QVERIFY(came);
    QCOMPARE(Caller().box->Text(), Shown(basic::DateAdd(u"d", 7, basic::Today())));
}

void CalendarPickerTest::EscapeLeavesTheControl_data() {
    EnterWritesTheChosenDayBack_data();
}

void CalendarPickerTest::EscapeLeavesTheControl() {
    QFETCH(const int, parameter);
    services::TheCalendarSettings().PARAM_CALENDRIER = static_cast<std::int16_t>(parameter);
    Caller().box->SetText(QStringLiteral("24/12/2030"));
    bool gone = false;
    const auto leave = [&gone](services::CalendarPicker& picker) {
        Press(*picker.CAL, Qt::Key_Right);
        Press(*picker.CAL, Qt::Key_Escape);
        gone = !picker.Visible();
    };
    QVERIFY(parameter == 0 ? OpenOn<F_CALENDAR>(Caller().box, leave)
                           : OpenOn<F_CALENDAR2>(Caller().box, leave));
    QVERIFY(gone);
    QCOMPARE(Caller().box->Text(), QStringLiteral("24/12/2030"));
    QVERIFY(Caller().box->hasFocus());
}

void CalendarPickerTest::TheDateGoesIntoEveryBoxThatTakesText() {
    const auto today = [](F_CALENDAR& picker) { Press(*picker.CAL, Qt::Key_Return); };
    OpenOn<F_CALENDAR>(Caller().memo, today);
    QCOMPARE(Caller().memo->Text(), Shown(basic::Today()));
    OpenOn<F_CALENDAR>(Caller().combo, today);
    QCOMPARE(Caller().combo->Text(), Shown(basic::Today()));
    OpenOn<F_CALENDAR>(Caller().inner, today);
    QCOMPARE(Caller().inner->Text(), Shown(basic::Today()));
}

void CalendarPickerTest::AControlWithoutATextIsTheRuntimesError() {
    const int before = forms::CatchEndOfProcess(true);
    support::BoxAnswerer boxes;
    OpenOn<F_CALENDAR>(Caller().button, [](F_CALENDAR& picker) { Press(*picker.CAL, Qt::Key_Return); });
    QCOMPARE(forms::CatchEndOfProcess(true), before + 1);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY(boxes.Shown().front().text.contains(QStringLiteral("438")));
}

void CalendarPickerTest::TheDateGoesIntoTheActiveCellOfAGrid() {
    forms::Grid& grid = *Caller().grid;
    grid.SetActiveCell(1, 2);
    // The addressed cell is another one; the program's own writing is no change of the operator's.
    grid.SetRow(3);
    grid.SetCol(2);
    OpenOn<F_CALENDAR>(&grid, [](F_CALENDAR& picker) { Press(*picker.CAL, Qt::Key_Return); });
    QCOMPARE(grid.Row(), 2);
    QCOMPARE(grid.Col(), 1);
    QCOMPARE(grid.Text(), forms::ToQString(basic::Format(basic::Today(), u"dd/mm/yyyy")));
    QVERIFY(!grid.ChangeMade());
}

void CalendarPickerTest::TheDateGoesIntoTheOpenCellOfAGrid() {
    forms::Grid& grid = *Caller().grid;
    grid.SetEditModePermanent(true);
    grid.SetActiveCell(2, 2);
    OpenOn<F_CALENDAR>(&grid, [](F_CALENDAR& picker) { Press(*picker.CAL, Qt::Key_Return); });
    QCOMPARE(grid.Text(), forms::ToQString(basic::Format(basic::Today(), u"dd/mm/yyyy")));
    QCOMPARE(grid.ActiveRow(), 2);
}

namespace {

void PickFifthOfDecember(F_CALENDAR& picker) {
    picker.CAL->SetValue(basic::DateOf(2030, 12, 5));
    Press(*picker.CAL, Qt::Key_Return);
}

}  // namespace

void CalendarPickerTest::AGridIsWrittenDayFirstWhateverTheWorkstationSays() {
    const QScopedValueRollback shortDate(basic::SessionLocale().shortDate, basic::Text(u"yy-mm-dd"));
    Caller().grid->SetActiveCell(1, 2);
    OpenOn<F_CALENDAR>(Caller().grid, PickFifthOfDecember);
    QCOMPARE(Caller().grid->Text(), QStringLiteral("05/12/2030"));
}

void CalendarPickerTest::AnyOtherControlIsWrittenAsTheWorkstationDoes() {
    const QScopedValueRollback shortDate(basic::SessionLocale().shortDate, basic::Text(u"yy-mm-dd"));
    OpenOn<F_CALENDAR>(Caller().box, PickFifthOfDecember);
    QCOMPARE(Caller().box->Text(), QStringLiteral("30-12-05"));
}

void CalendarPickerTest::ADropDownTakesADateThatItOffers() {
    Caller().choice->addItems({QStringLiteral("24/12/2030"), QStringLiteral("05/12/2030")});
    services::TheCalendarSettings().PARAM_CALENDRIER = 1;
    OpenOn<F_CALENDAR2>(Caller().choice, [](F_CALENDAR2& picker) {
        QCOMPARE(Shown(picker.CAL->Value()), QStringLiteral("24/12/2030"));
        ClickDay(*picker.CAL, 5);
    });
    QCOMPARE(Caller().choice->Text(), QStringLiteral("05/12/2030"));

    const int before = forms::CatchEndOfProcess(true);
    support::BoxAnswerer boxes;
    OpenOn<F_CALENDAR2>(Caller().choice, [](F_CALENDAR2& picker) { ClickDay(*picker.CAL, 6); });
    QCOMPARE(forms::CatchEndOfProcess(true), before + 1);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY(boxes.Shown().front().text.contains(QStringLiteral("383")));
    QCOMPARE(Caller().choice->Text(), QStringLiteral("05/12/2030"));
}

void CalendarPickerTest::TheFlagFallsWhenTheCalendarGoes() {
    services::TheCalendarSettings().calendarOpen = true;
    OpenOn<F_CALENDAR>(Caller().box, [](F_CALENDAR& picker) {
        QVERIFY(services::TheCalendarSettings().calendarOpen);
        Press(*picker.CAL, Qt::Key_Escape);
        QVERIFY(!services::TheCalendarSettings().calendarOpen);
    });
}

void CalendarPickerTest::WeeksBeginOnMondayAndCarryTheirNumbers() {
    forms::Calendar calendar;
    calendar.SetValue(basic::DateOf(2026, 1, 1));
    const QAbstractItemModel& days = *calendar.findChild<QTableView*>()->model();
    QCOMPARE(days.index(0, 1).data().toString(), QStringLiteral("lun."));
    QCOMPARE(days.index(0, 7).data().toString(), QStringLiteral("dim."));
    // Thursday, 1 January 2026, lies in week 1, which begins on 29 December.
    QCOMPARE(days.index(1, 0).data().toInt(), 1);
    QCOMPARE(days.index(1, 1).data().toInt(), 29);
    QCOMPARE(days.index(1, 4).data().toInt(), 1);
    calendar.SetValue(basic::DateOf(2021, 1, 3));
    QCOMPARE(days.index(1, 0).data().toInt(), 53);
    QCOMPARE(days.rowCount(), 7);
}

void CalendarPickerTest::MonthsAndDaysAreFrench() {
    forms::Calendar calendar;
    calendar.SetValue(basic::DateOf(2026, 8, 1));
    QCOMPARE(calendar.findChild<QToolButton*>(QStringLiteral("qt_calendar_monthbutton"))->text(),
             QStringLiteral("août"));
    QCOMPARE(calendar.findChild<QToolButton*>(QStringLiteral("qt_calendar_nextmonth"))->accessibleName(),
             QStringLiteral("Mois suivant"));
}

void CalendarPickerTest::KeysMoveByDaysWeeksMonthsAndYears() {
    struct Step {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* day;
    };
    forms::Calendar calendar;
    calendar.show();
    calendar.SetValue(basic::DateOf(2026, 3, 31));
    for (const Step& step : {Step{Qt::Key_Right, {}, "01/04/2026"}, Step{Qt::Key_Left, {}, "31/03/2026"},
                             Step{Qt::Key_Up, {}, "24/03/2026"}, Step{Qt::Key_Down, {}, "31/03/2026"},
                             Step{Qt::Key_PageUp, {}, "28/02/2026"}, Step{Qt::Key_PageDown, {}, "28/03/2026"},
                             Step{Qt::Key_Home, {}, "01/03/2026"}, Step{Qt::Key_End, {}, "31/03/2026"},
                             Step{Qt::Key_PageDown, Qt::ControlModifier, "31/03/2027"},
                             Step{Qt::Key_PageUp, Qt::ControlModifier, "31/03/2026"}}) {
        Press(calendar, step.key, step.modifiers);
        QCOMPARE(Shown(calendar.Value()), QString::fromLatin1(step.day));
    }
    Press(calendar, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(Shown(calendar.Value()), Shown(basic::Today()));
}

void CalendarPickerTest::TodayIsMarked() {
    forms::Calendar calendar;
    calendar.resize(calendar.sizeHint());
    const QColor accent(0x0B, 0x5C, 0x8A);
    const auto accents = [&](basic::Date chosen) {
        calendar.SetValue(chosen);
        const QImage picture = calendar.findChild<QTableView*>()->viewport()->grab().toImage();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                count += picture.pixelColor(x, y) == accent ? 1 : 0;
            }
        }
        return count;
    };
    // With a day chosen far from today, the month of today has a frame and the other has only its filled day.
    const basic::Date today = basic::Today();
    const int otherDay = basic::CivilOf(today).day == 15 ? 14 : 15;
    const basic::CivilDate civil = basic::CivilOf(today);
    const int here = accents(basic::DateOf(civil.year, civil.month, otherDay));
    const int elsewhere = accents(basic::DateOf(civil.year + 1, civil.month, otherDay));
    QVERIFY2(here > elsewhere, qPrintable(QStringLiteral("%1 %2").arg(here).arg(elsewhere)));
}

/// It looks as without its list of months.
void CalendarPickerTest::NoArrowStandsUnderTheMonth() {
    forms::Calendar calendar;
    calendar.resize(calendar.sizeHint());
    auto* const month = calendar.findChild<QToolButton*>(QStringLiteral("qt_calendar_monthbutton"));
    const QImage withMonths = month->grab().toImage();
    const QSize size = month->size();
    month->setMenu(nullptr);
    QCOMPARE(month->size(), size);
    QCOMPARE(month->grab().toImage(), withMonths);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    CalendarPickerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "calendar_picker_test.moc"
