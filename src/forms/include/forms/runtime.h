// The process and its screen as a Basic program sees them. UI thread only.
#pragma once

#include <functional>

#include <QString>
#include <QStringList>

class QApplication;
class QWidget;

namespace quardele::forms {

class Form;

/// Loaded forms, hidden ones included, in the order of loading; Item(0) is the main window.
namespace Forms {
[[nodiscard]] int Count();
/// Throws RuntimeError 9 outside 0..Count()-1.
[[nodiscard]] Form& Item(int index);
}  // namespace Forms

/// The screen that the main window stands on; sizes in twips.
namespace Screen {
[[nodiscard]] int Width();
[[nodiscard]] int Height();
/// The active form of the program, null when there is none; the child form when the main window is active.
[[nodiscard]] Form* ActiveForm();
/// The control with the focus, null when there is none.
[[nodiscard]] QWidget* ActiveControl();
/// 0 default, 11 hourglass; shown at once.
[[nodiscard]] int MousePointer();
void SetMousePointer(int pointer);
/// Tests run the program on a screen of a given size (twips); 0, 0 brings back the real one.
void SetSizeForTests(int width, int height);
}  // namespace Screen

/// Version numbers come from QCoreApplication::applicationVersion(), "9.5.5".
namespace App {
[[nodiscard]] int Major();
[[nodiscard]] int Minor();
[[nodiscard]] int Revision();
/// Title of message boxes: the program's display name.
[[nodiscard]] QString Title();
/// The program's folder as a Windows path, without a trailing backslash.
[[nodiscard]] QString Path();
/// Tests say where the program lies; an empty path brings back the real one.
void SetPathForTests(const QString& path);
}  // namespace App

/// The command line behind the program's name.
[[nodiscard]] QString Command();

/// Lets pending events through.
void DoEvents();
void Beep();

/// Puts keys into the queue of the window that has the focus when they arrive, which is after the running
/// handler has returned: letters as they stand, "{TAB}", "{ESC}", "{ENTER}", "{F1}" to "{F12}". Unknown
/// names in braces throw RuntimeError 5.
void SendKeys(const QString& keys);

/// The end statement: stops the process at once; no form is unloaded, nothing is closed. Exit code 0 unless
/// given.
[[noreturn]] void EndProcess(int exitCode = 0);

/// Thrown by EndProcess in place of ending, when a test has asked for it; event walls let it end the handler.
struct ProcessEnded {
    int exitCode;
};
/// Tests: EndProcess throws ProcessEnded and counts instead of ending. Returns how often it was called so
/// far.
int CatchEndOfProcess(bool on);

/// Style, palette, font, French texts of Qt's own, message box defaults. Call once, after QApplication.
void SetUpApplication(QApplication& application);

}  // namespace quardele::forms
