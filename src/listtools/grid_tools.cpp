#include <listtools/grid_tools.h>

#include <basic/conversion.h>
#include <forms/runtime.h>

namespace quardele::listtools {

namespace {

constexpr int kSelection = 0;
constexpr int kSearch = 1;

/// Holds the position of a right click while its tool runs.
class AnchorHold {
 public:
    AnchorHold(int x, int y) { Anchor() = {x, y}; }
    ~AnchorHold() { Anchor() = {}; }
    AnchorHold(const AnchorHold&) = delete;
    AnchorHold& operator=(const AnchorHold&) = delete;
};

}  // namespace

DialogAnchor& Anchor() {
    static DialogAnchor anchor;
    return anchor;
}

ToolRunner& TheToolRunner() {
    static ToolRunner runner = [](int, forms::Grid&, forms::DataControl&) { return false; };
    return runner;
}

bool GridToolAction(int action, forms::Grid& grid, forms::DataControl& data) {
    return TheToolRunner()(action, grid, data);
}

void MarkActiveColumn(forms::Grid& grid) {
    if (grid.ActiveCol() <= 0) {
        return;
    }
    grid.SetRow(0);
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
    GridToolAction(row == 0 ? kSelection : kSearch, grid, data);
}

}  // namespace quardele::listtools
