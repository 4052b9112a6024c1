#include <listtools/grid_tools.h>

#include <basic/conversion.h>
#include <basic/runtime_error.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <listtools/fcherche.h>
#include <listtools/fclasse.h>
#include <listtools/fselect.h>
#include <listtools/list_tool_context.h>
#include <listtools/selection.h>
#include <services/translation.h>
#include <shell/form_support.h>

#include "export_list.h"

namespace quardele::listtools {

namespace {

using services::TRAD;

constexpr int kSelection = 0;
constexpr int kSearch = 1;
constexpr int kSort = 2;
constexpr int kPrint = 3;
constexpr int kExcel = 4;

constexpr int kWholeColumn = -1;
constexpr int kHeader = 0;

/// Holds the position of a right click while its tool runs.
class AnchorHold {
 public:
    AnchorHold(int x, int y) { Anchor() = {x, y}; }
    ~AnchorHold() { Anchor() = {}; }
    AnchorHold(const AnchorHold&) = delete;
    AnchorHold& operator=(const AnchorHold&) = delete;
};

/// Hands the list to a dialog while that is open.
class ListHold {
 public:
    ListHold(forms::Grid& grid, forms::DataControl& data) {
        TheListToolContext().DataCtl = &data;
        TheListToolContext().Grid = &grid;
    }
    ~ListHold() {
        TheListToolContext().DataCtl = nullptr;
        TheListToolContext().Grid = nullptr;
    }
    ListHold(const ListHold&) = delete;
    ListHold& operator=(const ListHold&) = delete;
};

void TakeApart(const forms::DataControl& data) {
    ListToolContext& context = TheListToolContext();
    shell::SplitRecordSource(data.RecordSource(), context.SelectPart, context.WherePart, context.OrderPart);
    KeepStartingFilter(forms::Forms::Item(forms::Forms::Count() - 1));
}

void PrintList(forms::Grid& grid) {
    constexpr int kLandscape = 2;
    constexpr int kWholeSheet = 0;
    constexpr int kPrintAll = 1;
    grid.SetPrintBorder(true);
    grid.SetPrintColHeaders(true);
    grid.SetPrintRowHeaders(false);
    grid.SetPrintOrientation(kLandscape);
    grid.SetPrintGrid(true);
    grid.SetPrintColor(false);
    grid.SetPrintShadows(false);
    grid.SetPrintType(kWholeSheet);
    grid.PrintSheet(kPrintAll);
}

/// The kind of the cells of a column, which a locked column gives to those alone who unlock it.
forms::CellType KindOfColumn(forms::Grid& grid) {
    grid.SetRow(kWholeColumn);
    if (!grid.Lock()) {
        return grid.CellType();
    }
    grid.SetLock(false);
    const forms::CellType kind = grid.CellType();
    grid.SetLock(true);
    return kind;
}

void ShowDialog(int action) {
    switch (action) {
        case kSelection:
            forms::Instance<FSELECT>().Show(forms::ShowMode::Modal);
            break;
        case kSearch:
            forms::Instance<FCHERCHE>().Show(forms::ShowMode::Modal);
            break;
        case kSort:
            forms::Instance<FCLASSE>().Show(forms::ShowMode::Modal);
            break;
        default:
            break;
    }
}

/// Describes the active column, and opens the dialog on it when it has a field.
void WorkOnActiveColumn(int action, forms::Grid& grid, forms::DataControl& data) {
    ListToolContext& context = TheListToolContext();
    context.ActiveCol = grid.ActiveCol();
    context.ActiveRow = grid.ActiveRow();
    grid.SetCol(context.ActiveCol);
    context.FieldName = grid.DataField();
    if (context.FieldName.isEmpty()) {
        forms::Beep();
        forms::MsgBox(TRAD(QStringLiteral("Opération impossible sur cette colonne.")));
        return;
    }
    context.ColumnType = KindOfColumn(grid);
    grid.SetRow(kHeader);
    context.ColumnTitle = grid.Text();
    const ListHold list(grid, data);
    ShowDialog(action);
}

}  // namespace

DialogAnchor& Anchor() {
    static DialogAnchor anchor;
    return anchor;
}

bool GridToolAction(int action, forms::Grid& grid, forms::DataControl* data) {
    TheListToolContext().ListKind = QStringLiteral("0");
    if (action == kExcel) {
        return ExportList(grid, data);
    }
    if (data == nullptr) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    TakeApart(*data);
    if (action == kPrint) {
        PrintList(grid);
    } else {
        WorkOnActiveColumn(action, grid, *data);
    }
    return true;
}

void MarkActiveColumn(forms::Grid& grid) {
    if (grid.ActiveCol() <= 0) {
        return;
    }
    grid.SetRow(kHeader);
    for (int column = 1; column <= grid.MaxCols(); ++column) {
        grid.SetCol(column);
        if (grid.FontItalic()) {
            grid.SetFontItalic(false);
            break;
        }
    }
    grid.SetCol(grid.ActiveCol());
    grid.SetFontItalic(true);
}

void GridRightClick(forms::Form& form, forms::Grid& grid, forms::DataControl& data, int /*clickType*/,
                    int col, int row, int mouseX, int mouseY) {
    if (row < 0 || col < 1) {
        Anchor() = {};
        return;
    }
    const AnchorHold hold(mouseX, basic::CLng(form.Top() / 2.0 + mouseY));
    grid.SetCol(col);
    grid.SetRow(row);
    grid.Action(0);
    MarkActiveColumn(grid);
    forms::DoEvents();
    GridToolAction(row == kHeader ? kSelection : kSearch, grid, &data);
}

}  // namespace quardele::listtools
