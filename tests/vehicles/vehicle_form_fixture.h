// The vehicle form opened through the main window's menu, and short ways to its controls.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include <QTest>

#include <forms/control.h>
#include <forms/controls.h>
#include <forms/data_control.h>
#include <forms/grid.h>
#include <forms/runtime.h>
#include <shell/main_window.h>
#include <shell/session.h>
#include <support/boxes.h>
#include <support/installation.h>
#include <vehicles/fficveh.h>

#include "database_edits.h"
#include "start.h"

namespace quardele::tests {

inline constexpr auto kDataFile = u"C:\\QUARDELE\\DATA\\talmeon.mdb";

inline constexpr int kListTab = 0;
inline constexpr int kRecordTab = 1;

/// A running program on an installation of its own; unloaded and removed at the end.
class RunningProgram {
 public:
    RunningProgram();
    /// On a copy of another installation.
    explicit RunningProgram(const std::filesystem::path& source);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Opens the vehicle form by the menu and waits until it has the focus.
    void OpenVehicles();

    /// The machine's path of the data file.
    [[nodiscard]] std::filesystem::path DataFile() const { return installation_.File("DATA/talmeon.mdb"); }
    [[nodiscard]] const support::Installation& Files() const { return installation_; }

 private:
    static void Start();

    support::Installation installation_;
};

/// Sets up what all tests of the form share; call before the first test.
void PrepareVehicleTests();

[[nodiscard]] vehicles::FFICVEH& Form();
template <class T>
[[nodiscard]] T* Control(const char* name) {
    T* const control = Form().Surface()->findChild<T*>(QString::fromLatin1(name));
    if (control == nullptr) {
        qFatal("no control %s", name);
    }
    return control;
}
[[nodiscard]] forms::TextBox* Box(const char* name);
[[nodiscard]] forms::TextBox* UserBox(int number);
[[nodiscard]] forms::Label* UserLabel(int number);
[[nodiscard]] forms::Button* Button(const char* name);
[[nodiscard]] forms::Grid* Grid(const char* name);
[[nodiscard]] forms::TabControl* Tabs();
[[nodiscard]] forms::DataControl* Data(const char* name);

/// The text of a grid's cell, of its heading with row 0.
[[nodiscard]] QString Cell(const char* grid, int column, int row);
/// Whether the operator could see the control if the form were in front.
[[nodiscard]] bool Shown(const QWidget* control);

/// Pictures of boxes.
inline const QString kNoIcon;
inline const QString kExclamation = QStringLiteral("avertissement");
/// One box was shown so far: this one, under the program's title.
void CompareOnlyBox(const support::BoxAnswerer& boxes, const QString& text, const QString& icon);

/// The boxes shown so far are these, in this order.
void CompareBoxes(const support::BoxAnswerer& boxes, const QStringList& texts);

/// Brings the list to a vehicle and opens its record.
void OpenRecordOf(const QString& registration);
/// Types into a box as the operator would, over what stands there.
void TypeOver(forms::TextBox* box, const QString& text);
/// Presses a button with the mouse.
void Press(const char* button);
/// Clicks a cell of a grid, or the heading of a column.
void ClickCell(const char* grid, int column, int row);
void ClickHeading(const char* grid, int column);
/// Whether a control stands in front of another one with the same parent.
[[nodiscard]] bool InFront(const char* frame, const char* other);
/// Clicks a cell of the visits, types over what stands there and leaves it with Enter.
void TypeVisit(int column, int row, const QString& text);
/// Goes into the visits with the mouse, behind the last of them; without visits that opens the first one.
void ClickBehindVisits();
/// Types over what stands in the cell that has the cursor and leaves it with Enter.
void TypeIntoCell(const QString& text);
/// The texts of the boxes shown so far, and forgets them; empty when there was none.
[[nodiscard]] QString TakeTexts(support::BoxAnswerer& boxes);
void PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

}  // namespace quardele::tests
