// The program with its two lists open, and an operator in the dialogs of the list tools.
#pragma once

#include <functional>

#include <listtools/fcherche.h>
#include <listtools/fclasse.h>
#include <listtools/fselect.h>
#include <listtools/grid_tools.h>
#include <listtools/list_tool_context.h>
#include <reminders/frelances.h>

#include "vehicle_form_fixture.h"

namespace quardele::tests {

/// A running program. Boxes are answered; the end of the process is caught and counted.
class ListProgram {
 public:
    ListProgram();
    ~ListProgram();
    ListProgram(const ListProgram&) = delete;
    ListProgram& operator=(const ListProgram&) = delete;

    /// The vehicle form in front; its list has no condition and no order.
    void OpenList();
    /// The reminders form in front, with the visits due before 20/11/2026.
    void OpenReminders();
    /// How often the process would have ended.
    [[nodiscard]] int Ends() const;
    /// The machine's folder that is current for the program.
    [[nodiscard]] std::filesystem::path CurrentFolder() const;

    support::BoxAnswerer boxes;

 private:
    RunningProgram program_;
    int endsBefore_;
};

/// What a list and its data control are.
struct List {
    forms::Grid* grid;
    forms::DataControl* data;
    forms::Form* form;
};
[[nodiscard]] List Vehicles();
[[nodiscard]] List Reminders();

/// Opens the list of the vehicles on a condition that none meets.
void EmptyTheVehicles();

/// Columns of the list as a site could have them: the line of one column replaced.
void ReplaceColumn(forms::Grid& grid, int column, const QString& line);
/// Puts the cursor into a column of the first row.
void GoToColumn(forms::Grid& grid, int column);
/// Presses a button of the toolbar of a list.
void PressTool(const List& list, int index);
[[nodiscard]] QString CellOf(forms::Grid& grid, int column, int row);
/// The cells of a column, from the first row on.
[[nodiscard]] QStringList CellsOf(forms::Grid& grid, int column);
[[nodiscard]] QString ActiveCell(forms::Grid& grid, int column);

/// Runs `open`, which opens a dialog of the list tools, and `work` in it. A dialog that is open behind that
/// is closed. False when none opened.
[[nodiscard]] bool InDialog(const std::function<void()>& open, const std::function<void()>& work);

/// The dialog that is open.
[[nodiscard]] listtools::FSELECT& Selection();
[[nodiscard]] listtools::FCHERCHE& SearchDialog();
[[nodiscard]] listtools::FCLASSE& SortDialog();

/// Types a text over what stands in a box. What is long, or has letters beyond ASCII, is pasted.
void EnterText(forms::TextBox* box, const QString& text);
/// Chooses an entry of the comparisons by keys, enters a value and presses the button.
void Select(int entry, const QString& value);
/// Enters a value and presses the button of the search.
void SearchFor(const QString& value);
void Click(QWidget* control);

/// Opens the selection on a column and selects.
void SelectOn(const List& list, int column, int entry, const QString& value);

inline constexpr int kSelectionTool = 0;
inline constexpr int kSearchTool = 1;
inline constexpr int kSortTool = 2;
inline constexpr int kPrintTool = 3;
inline constexpr int kExcelTool = 4;

}  // namespace quardele::tests
