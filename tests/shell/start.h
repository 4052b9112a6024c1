// Starting the main window as main() does, with its boxes answered and the end of the process caught.
#pragma once

#include <utility>
#include <vector>

#include <QString>

#include <basic/text.h>
#include <support/boxes.h>

namespace quardele::shell {
class MDIMENU_VEH;
}

namespace quardele::tests {

struct Start {
    bool ended = false;                    ///< the process ended during start-up
    std::vector<QString> boxes;            ///< the texts of the boxes shown
    std::vector<support::ShownBox> shown;  ///< the same boxes, with all that they showed
};

/// A fresh session, then the main window's load and first show.
Start StartProgram();
/// The running main window.
shell::MDIMENU_VEH& MainWindow();
/// Raises the translation switch as the start of a translated edition does; these texts take the places of
/// the first rows of the table.
void RaiseTranslation(const std::vector<std::pair<basic::Text, basic::Text>>& translations);
/// Unloads what is loaded and forgets the session.
void StopProgram();

}  // namespace quardele::tests
