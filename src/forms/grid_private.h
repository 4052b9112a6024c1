// What the source files of the grid share.
#pragma once

#include <map>

#include <QPixmap>

#include <forms/grid.h>

#include "grid_delegate.h"
#include "grid_header.h"
#include "grid_model.h"
#include "grid_notice.h"
#include "grid_selection.h"

namespace quardele::forms {

/// What goes onto paper.
struct PrintSettings {
    bool border = true;
    bool colHeaders = true;
    bool rowHeaders = true;
    bool lines = true;
    bool color = false;
    bool shadows = false;
    int orientation = 0;
    QString header;
};

class Grid::Private {
 public:
    GridHeader* header = nullptr;
    GridSelection* cursor = nullptr;
    GridDelegate* delegate = nullptr;
    GridNotice* notice = nullptr;

    double characterWidth = 8.117;
    /// Texts of the row headers and of the corner, which belong to the program alone.
    std::map<int, QString> rowHeaderTexts;
    std::map<int, double> rowHeaderFontSizes;

    PrintSettings print;
    QString exportFailure;

    bool changeMade = false;
    bool editModePermanent = false;
    bool editModeReplace = false;
    bool redraw = true;
    QPixmap oldPicture;             ///< of the cells, while they are not drawn anew
    int lastColumn = 0;             ///< the cursor's column, kept while there is no row
    bool beforeRow = false;         ///< the cursor stands in front of its row, on column 0
    bool movesRecord = false;       ///< the current record is following the cursor just now
    bool saving = false;            ///< changed rows are on their way into the recordset
    bool opening = false;           ///< the key that opens a cell is passed on to it
    bool staysClosed = false;       ///< no cell opens by itself just now
    bool changingRows = false;      ///< rows come and go by the program's order
    bool moving = false;            ///< a move by the operator is being asked for
    QPersistentModelIndex pressed;  ///< cell under the button that went down
    bool loadRequested =
        false;  ///< rows in view are to be loaded as soon as control is back in the event loop
};

}  // namespace quardele::forms
