// The program put together from its rooms: what `vehicules` runs, and what drives it from outside (the guided
// tour, benchmarks).
#pragma once

class QApplication;

namespace quardele {

/// Name, version, style and French texts of the application, and the forms that the menu opens. Call once.
void SetUpProgram(QApplication& application);

/// Shows the main window, whose load is the start-up; may end the process. From there on everything happens
/// in event handlers.
void StartProgram();

}  // namespace quardele
