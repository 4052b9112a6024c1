// A workshop with the program started on it: an installation, the main window, the reminders form.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <QString>

#include <forms/grid.h>
#include <reminders/frelances.h>
#include <support/boxes.h>
#include <support/installation.h>

namespace quardele::tests {

/// Starts the program on a fresh installation, answers its boxes, and takes everything down again.
class Workshop {
 public:
    Workshop();
    ~Workshop();
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    /// The reminders form, opened through the main window's menu at first use.
    reminders::FRELANCES& Reminders();
    /// Types a date as an operator does, and presses Enter.
    void ListDueBefore(const QString& date);
    /// How often the process would have ended since the workshop was opened.
    [[nodiscard]] int Ends() const;

    /// Runs a change over the rows of a statement on the data database.
    void Change(basic::TextView rows, const std::map<basic::Text, basic::Variant>& values) const;
    /// The same on another file of the installation ("STOCK\SERVANDA.MDB").
    static void Change(const QString& file, basic::TextView rows,
                       const std::map<basic::Text, basic::Variant>& values);
    /// A row of TVEH_DETAIL as an independent program reads it.
    [[nodiscard]] std::string StoredVisit(const std::string& registration, const std::string& work) const;

    support::Installation installation;
    support::BoxAnswerer boxes;

 private:
    int endsBefore_ = 0;
};

// The list as the operator sees it.
[[nodiscard]] QString Cell(forms::Grid& grid, int col, int row);
/// The row of a visit, 0 when it is not listed.
[[nodiscard]] int RowOf(forms::Grid& grid, const QString& registration, const QString& work);
[[nodiscard]] bool IsTicked(forms::Grid& grid, int col, int row);
[[nodiscard]] bool IsRowHidden(forms::Grid& grid, int row);
/// Clicks a cell with the mouse.
void ClickCell(forms::Grid& grid, int col, int row);
void Press(QWidget* button);
/// Chooses a site by typing its code into the combo.
void ChooseSite(const reminders::FRELANCES& form, const QString& code);

}  // namespace quardele::tests
