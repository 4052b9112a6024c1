// The spreadsheet grid: cells addressed by a current cell, bound to a data control or filled by the program.
// One class for every list. UI thread only.
//
//   DBG_RELANCES->SetCol(8);
//   for (int row = 1; row <= DBG_RELANCES->MaxRows(); ++row) { DBG_RELANCES->SetRow(row); ... }
//
// Rows and columns are 1-based; row 0 is the column header, column 0 the row header, -1 the whole column or
// row. Setting Row and Col does not move the cursor, which is ActiveRow and ActiveCol.
#pragma once

#include <functional>
#include <memory>

#include <QStringList>
#include <QTableView>

#include <basic/variant.h>
#include <forms/data_control.h>

namespace quardele::forms {

class GridModel;
struct CellLook;

/// Values of CellType that the system uses.
enum class CellType { Date = 0, Edit = 1, Float = 2, Integer = 3, Button = 7, CheckBox = 10, Number = 13 };

class Grid : public QTableView, private RowsView {
    Q_OBJECT
    Q_PROPERTY(QString dataSourceName READ DataSourceName WRITE SetDataSourceName)
    /// One line per column: heading | data field | width in characters | kind (text, date, number, float,
    /// integer, check, button) | "locked" or "" | icon of button cells | range "lowest..highest" of what may
    /// be typed, dates as yyyy-mm-dd. Parts at the end may be left out; "\n" in the heading breaks its line.
    Q_PROPERTY(QStringList columns READ ColumnLines WRITE SetColumnLines)
    /// Width of one character of column width, in pixels.
    Q_PROPERTY(double characterWidth READ CharacterWidth WRITE SetCharacterWidth)
    /// Shown as the text tip; also the name, without extension, of the file that the list is exported to.
    Q_PROPERTY(QString toolTipText READ ToolTipText WRITE SetToolTipText)
    /// Painted in the middle while there is no row; never a cell text.
    Q_PROPERTY(QString emptyHint READ EmptyHint WRITE SetEmptyHint)
    Q_PROPERTY(bool rowHeader READ RowHeader WRITE SetRowHeader)
    /// Pixels.
    Q_PROPERTY(int rowHeight READ RowHeight WRITE SetRowHeight)
    /// Pixels; 0 for as much as the texts need, two lines at most.
    Q_PROPERTY(int headingHeight READ HeadingHeight WRITE SetHeadingHeight)
    /// Text heights in pixels; 0 for the grid's font.
    Q_PROPERTY(int textPixels READ TextPixels WRITE SetTextPixels)
    Q_PROPERTY(int headingPixels READ HeadingPixels WRITE SetHeadingPixels)
    Q_PROPERTY(bool headingBold READ HeadingBold WRITE SetHeadingBold)

 public:
    explicit Grid(QWidget* parent = nullptr);
    ~Grid() override;

    // Binding.
    [[nodiscard]] DataControl* DataSource() const { return dataSource_; }
    void SetDataSource(DataControl* source);
    [[nodiscard]] QString DataSourceName() const { return dataSourceName_; }
    void SetDataSourceName(const QString& name) { dataSourceName_ = name; }
    [[nodiscard]] QStringList ColumnLines() const;
    void SetColumnLines(const QStringList& lines);
    /// Field of the column Col().
    [[nodiscard]] QString DataField() const;

    // Size. Setting MaxRows to 0 empties the grid; setting it higher adds blank rows. The recordset of a
    // bound grid keeps its rows either way.
    [[nodiscard]] int MaxRows() const;
    void SetMaxRows(int rows);
    [[nodiscard]] int MaxCols() const;
    /// The last row that holds data; 0 when none does.
    [[nodiscard]] int DataRowCnt() const;
    /// The program's word that rows are to be loaded when they are needed, which they are either way, and how
    /// many there will be, -1 when that is not known; a bound grid counts them by itself.
    [[nodiscard]] bool VirtualMode() const { return virtualMode_; }
    void SetVirtualMode(bool on) { virtualMode_ = on; }
    [[nodiscard]] int VirtualMaxRows() const { return virtualMaxRows_; }
    void SetVirtualMaxRows(int rows) { virtualMaxRows_ = rows; }

    // The addressed cell.
    [[nodiscard]] int Row() const { return row_; }
    void SetRow(int row) { row_ = row; }
    [[nodiscard]] int Col() const { return col_; }
    void SetCol(int col) { col_ = col; }
    /// What the cell shows. A program's assignment is no operator's change.
    [[nodiscard]] QString Text() const;
    void SetText(const QString& text);
    /// Check cells: 1 or 0 (-1 is taken as ticked); others as Text.
    [[nodiscard]] QString Value() const;
    void SetValue(int value);
    void SetValue(const QString& value) { SetText(value); }
    [[nodiscard]] forms::CellType CellType() const;
    [[nodiscard]] bool Lock() const;
    void SetLock(bool locked);
    /// 0x00BBGGRR as the platform counts colours: 255 is pure red, 16777215 white.
    [[nodiscard]] int BackColor() const;
    void SetBackColor(int color);
    [[nodiscard]] bool FontItalic() const;
    void SetFontItalic(bool italic);
    [[nodiscard]] bool FontBold() const;
    void SetFontBold(bool bold);
    /// In points, of row headers and the corner above them; the texts of other cells take their size from the
    /// grid, and asking for theirs, or giving it, throws RuntimeError 438.
    [[nodiscard]] double FontSize() const;
    void SetFontSize(double points);
    /// Whether the cell was changed and must be saved.
    [[nodiscard]] bool ChangedFlag() const;
    void SetChangedFlag(bool changed);
    /// Of the column Col(), of the row Row().
    [[nodiscard]] bool ColHidden() const;
    void SetColHidden(bool hidden);
    [[nodiscard]] bool RowHidden() const;
    void SetRowHidden(bool hidden);
    /// In characters.
    [[nodiscard]] double ColWidth() const;
    void SetColWidth(double characters);

    // The cursor. It stands in a cell whenever there is one; ActiveRow is 0 without rows. A move by the
    // program fires neither LeaveCell nor LeaveRow. Of a bound grid the current record follows the active row
    // and the other way round; leaving a changed record saves it first, and a refused save raises its error
    // to the program's move, or is the unhandled error when the operator moved.
    [[nodiscard]] int ActiveRow() const;
    [[nodiscard]] int ActiveCol() const;
    /// Column 0 puts the cursor in front of the row: its next step is column 1. What does not exist stays as
    /// it is.
    void SetActiveCell(int col, int row);
    /// 0 makes Row/Col the active cell; 15 writes the changed rows of a bound grid to its data control: the
    /// fields of flagged cells, in records that exist or in new ones. A value that somebody else has stored
    /// since the cell was loaded is not written over: the cell takes it, or, where the operator has changed
    /// it as well, 3197 is raised, once. Throws RuntimeError 5 for others, the engine's errors for 15.
    void Action(int action);

    /// The active cell stands open for typing while the grid has the focus. Off unless set.
    [[nodiscard]] bool EditModePermanent() const;
    void SetEditModePermanent(bool permanent);
    /// A cell that opens selects its content, so that typing replaces it; otherwise the caret stands behind
    /// it. A key typed into a closed cell replaces its content either way. Off unless set.
    [[nodiscard]] bool EditModeReplace() const;
    void SetEditModeReplace(bool replace);

    /// Whether the operator has changed a cell since it was last set to false.
    [[nodiscard]] bool ChangeMade() const;
    void SetChangeMade(bool changed);
    [[nodiscard]] bool ReDraw() const;
    void SetReDraw(bool redraw);
    [[nodiscard]] QString ToolTipText() const { return toolTipText_; }
    void SetToolTipText(const QString& text);

    /// While it is off the operator may change locked cells too. On unless set.
    [[nodiscard]] bool Protect() const;
    void SetProtect(bool protect);

    // Excel.
    /// Writes what the grid shows, its headings as the first row, into an Excel 97-2003 workbook: all rows,
    /// those too that nobody has looked at yet; hidden rows and hidden or empty-width columns are left out.
    /// The file name is a Windows path and starts at the current folder when it is relative. The file is
    /// there whole or, where false comes back, as it was before. The reason of a failure goes to the log
    /// file, unless its name is empty, to ExportFailure(), and into a strip over the last rows, which stays
    /// until the operator closes it or the next export starts. Throws nothing.
    bool ExportToExcel(const QString& fileName, const QString& sheetName, const QString& logFile);
    /// Why the last export failed, in French; empty when it succeeded.
    [[nodiscard]] QString ExportFailure() const;

    // Paper. Everything is printed but colours and shadows unless set.
    /// Prints all rows on as many pages as it takes. The operator sees the pages first where there is a
    /// printer, and is asked for a PDF file where there is none. Throws RuntimeError 5 for flags other than
    /// 1, the engine's errors where a row cannot be read.
    void PrintSheet(int flags);
    /// A frame around the cells.
    [[nodiscard]] bool PrintBorder() const;
    void SetPrintBorder(bool printed);
    [[nodiscard]] bool PrintColHeaders() const;
    void SetPrintColHeaders(bool printed);
    /// Row headers are printed only where the grid shows them.
    [[nodiscard]] bool PrintRowHeaders() const;
    void SetPrintRowHeaders(bool printed);
    /// Lines between the cells.
    [[nodiscard]] bool PrintGrid() const;
    void SetPrintGrid(bool printed);
    /// Background colours of cells.
    [[nodiscard]] bool PrintColor() const;
    void SetPrintColor(bool printed);
    /// Grey headings.
    [[nodiscard]] bool PrintShadows() const;
    void SetPrintShadows(bool printed);
    /// 0 as the printer has it, 1 portrait, 2 landscape; throws RuntimeError 5 for others.
    [[nodiscard]] int PrintOrientation() const;
    void SetPrintOrientation(int orientation);
    /// 0, the whole sheet; throws RuntimeError 5 for others.
    [[nodiscard]] static int PrintType() { return 0; }
    static void SetPrintType(int type);
    /// Text above the cells of every page: /l /c /r left, centred, right; /fb1 /fb0 bold on and off;
    /// /fz"14" size in points; /n new line; /p page number.
    [[nodiscard]] QString PrintHeader() const;
    void SetPrintHeader(const QString& markup);

    // Look.
    [[nodiscard]] double CharacterWidth() const;
    void SetCharacterWidth(double pixels);
    [[nodiscard]] QString EmptyHint() const { return emptyHint_; }
    void SetEmptyHint(const QString& hint);
    [[nodiscard]] bool RowHeader() const;
    void SetRowHeader(bool shown);
    [[nodiscard]] int RowHeight() const;
    void SetRowHeight(int pixels);
    [[nodiscard]] int HeadingHeight() const;
    void SetHeadingHeight(int pixels);
    [[nodiscard]] int TextPixels() const { return textPixels_; }
    void SetTextPixels(int pixels);
    [[nodiscard]] int HeadingPixels() const;
    void SetHeadingPixels(int pixels);
    [[nodiscard]] bool HeadingBold() const;
    void SetHeadingBold(bool bold);
    [[nodiscard]] QFont CellFont() const;
    /// Whether there are cells to type in. Such a grid shows its locked cells grey and moves on with Enter; a
    /// grid without is a list and shows its active row.
    [[nodiscard]] bool IsEntryGrid() const;
    /// Whether the grid or the open cell in it has the focus.
    [[nodiscard]] bool HasFocusInside() const;

 signals:
    void Click(int col, int row);
    void DblClick(int col, int row);
    void GotFocus();
    void LostFocus();
    void KeyDown(int& keyCode, int shift);
    /// Before the cursor moves; cancel keeps it.
    void LeaveCell(int col, int row, int newCol, int newRow, bool& cancel);
    void LeaveRow(int row, int newRow, bool& cancel);
    /// A check cell was ticked (1) or unticked (0), or a button cell pressed (1).
    void ButtonClicked(int col, int row, int buttonDown);
    /// Mouse position in twips inside the grid.
    void RightClick(int clickType, int col, int row, int mouseX, int mouseY);
    /// For each bound cell as its row is loaded, left to right; a row is loaded before any code or the eye
    /// reads one of its cells. getData is true while loading from the data control.
    void DataFill(int col, int row, int dataType, bool getData, bool& cancel);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void keyboardSearch(const QString& search) override;

 private:
    class Private;

    // RowsView.
    void RowsReplaced() override;
    void CurrentRowMoved() override;
    void RowsChanged() override;
    void SourceGone() override;

    // Binding.
    [[nodiscard]] std::shared_ptr<dao::Recordset> Rows() const;
    bool MakeRecordCurrent(int modelRow);
    void SaveChangedRows();
    void SaveRow(dao::Recordset& rows, int modelRow);
    void SaveCell(dao::Recordset& rows, int modelRow, int column);
    void LoadRowsInView();
    [[nodiscard]] bool HasUnloadedRowsInView() const;

    // The addressed cells, in the model's counting.
    [[nodiscard]] bool AddressesCell() const;
    [[nodiscard]] bool AddressesHeading() const;
    void ForEachAddressed(const std::function<void(int row, int column)>& act);
    void SetLook(const std::function<void(CellLook&)>& set);
    [[nodiscard]] CellLook AddressedLook() const;

    // Cursor and input.
    void Place(int modelRow, int modelColumn);
    void PlaceSomewhere();
    [[nodiscard]] bool MayMove(const QModelIndex& to);
    [[nodiscard]] bool AskToMove(const QPersistentModelIndex& wanted);
    void MoveToNextCell();
    bool PressCell(int modelRow, int modelColumn);
    [[nodiscard]] bool TellKey(const QKeyEvent& event);
    void ChangeRows(int kept, const std::function<void()>& change);

    // The open cell.
    [[nodiscard]] QWidget* OpenCell() const;
    void OpenActiveCell();
    void CloseOpenCell();
    void DropOpenCell();
    void KeyInEditor(QKeyEvent* event, bool& taken);
    [[nodiscard]] bool KeyLeavesCell(const QKeyEvent& event) const;
    void LeaveOpenCell(QKeyEvent* event);
    void TellMenuKey(const QModelIndex& cell);
    void TellRightClick(const QPoint& position, const QModelIndex& cell);
    void HeadingPressed(int section, Qt::MouseButton button, const QPoint& position);
    void ApplyWidths();

    GridModel* model_;
    DataControl* dataSource_ = nullptr;
    QString dataSourceName_;
    QString toolTipText_;
    QString emptyHint_;
    int row_ = 1;
    int col_ = 1;
    int textPixels_ = 0;
    bool virtualMode_ = false;
    int virtualMaxRows_ = -1;
    std::unique_ptr<Private> d_;
};

}  // namespace quardele::forms
