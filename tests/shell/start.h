// Starting the main window as main() does, with its boxes answered and the end of the process caught.
#pragma once

#include <vector>

#include <QString>

#include <support/boxes.h>
#include <support/translation.h>

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
/// The same in the session as it stands.
Start GoOnStarting();
/// The running main window.
shell::MDIMENU_VEH& MainWindow();
/// Unloads what is loaded and forgets the session.
void StopProgram();

}  // namespace quardele::tests
