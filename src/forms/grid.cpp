#include <forms/grid.h>

#include <cmath>
#include <utility>

#include <QPainter>
#include <QScopedValueRollback>

#include "grid_private.h"
#include "palette.h"

namespace quardele::forms {
namespace {

constexpr int kRowHeight = 22;
constexpr int kHintMargin = 24;

}  // namespace

Grid::Grid(QWidget* parent)
    : QTableView(parent), model_(new GridModel(this)), d_(std::make_unique<Private>()) {
    d_->header = new GridHeader(*model_, this);
    d_->delegate = new GridDelegate(*this, *model_);
    d_->notice = new GridNotice(viewport());
    setHorizontalHeader(d_->header);
    setModel(model_);
    d_->cursor = new GridSelection(
        model_, this, [this](const QModelIndex& to) { return MayMove(to); },
        [this] {
            // From in front of the row into its first cell: column 0 is no cell, so that this leaves none.
            if (std::exchange(d_->beforeRow, false)) {
                OpenActiveCell();
                viewport()->update();
            }
        });
    setSelectionModel(d_->cursor);
    setItemDelegate(d_->delegate);
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(AnyKeyPressed | DoubleClicked | EditKeyPressed);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setFocusPolicy(Qt::StrongFocus);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setVisible(false);
    SetRowHeight(kRowHeight);

    model_->SetFillQuestion([this](int row, int column, int dataType) {
        // Rows are filled late, in the middle of whatever the program does: it keeps its addressed cell.
        const QScopedValueRollback<int> keepsRow(row_);
        const QScopedValueRollback<int> keepsCol(col_);
        bool cancel = false;
        emit DataFill(column + 1, row + 1, dataType, true, cancel);
        return !cancel;
    });
    connect(model_, &GridModel::Edited, this, [this] { d_->changeMade = true; });
    connect(d_->delegate, &GridDelegate::Typed, this, [this] { d_->changeMade = true; });
    // The frame shows the focus of an open cell too.
    connect(d_->delegate, &GridDelegate::closeEditor, this, [this] { QWidget::update(); });
    connect(d_->delegate, &GridDelegate::KeyInEditor, this, &Grid::KeyInEditor);
    connect(d_->header, &GridHeader::Pressed, this, &Grid::HeadingPressed);
    connect(d_->header, &QHeaderView::sectionResized, this, [this](int section, int /*old*/, int pixels) {
        if (pixels > 0 && section < model_->columnCount()) {
            model_->Column(section).width = pixels / d_->characterWidth;
        }
    });
}

Grid::~Grid() {
    if (dataSource_ != nullptr) {
        dataSource_->DetachView(this);
    }
}

// Columns and look.

QStringList Grid::ColumnLines() const {
    return LinesOf(model_->Columns());
}

void Grid::SetColumnLines(const QStringList& lines) {
    model_->SetColumns(ColumnsOf(lines));
    ApplyWidths();
    PlaceSomewhere();
}

void Grid::ApplyWidths() {
    // A width in pixels is rounded; the width in characters stays as it was given.
    const QSignalBlocker quiet(d_->header);
    for (int column = 0; column < model_->columnCount(); ++column) {
        const double pixels = model_->Column(column).width * d_->characterWidth;
        setColumnWidth(column, static_cast<int>(std::lround(pixels)));
    }
    updateGeometries();
}

double Grid::CharacterWidth() const {
    return d_->characterWidth;
}

void Grid::SetCharacterWidth(double pixels) {
    d_->characterWidth = pixels;
    ApplyWidths();
}

void Grid::SetEmptyHint(const QString& hint) {
    emptyHint_ = hint;
    viewport()->update();
}

bool Grid::RowHeader() const {
    return !verticalHeader()->isHidden();
}
void Grid::SetRowHeader(bool shown) {
    verticalHeader()->setVisible(shown);
}
int Grid::RowHeight() const {
    return verticalHeader()->defaultSectionSize();
}
void Grid::SetRowHeight(int pixels) {
    verticalHeader()->setDefaultSectionSize(pixels);
}
int Grid::HeadingHeight() const {
    return d_->header->FixedHeight();
}
void Grid::SetHeadingHeight(int pixels) {
    d_->header->SetFixedHeight(pixels);
}
int Grid::HeadingPixels() const {
    return d_->header->TextPixels();
}
void Grid::SetHeadingPixels(int pixels) {
    d_->header->SetTextPixels(pixels);
}
bool Grid::HeadingBold() const {
    return d_->header->IsBold();
}
void Grid::SetHeadingBold(bool bold) {
    d_->header->SetBold(bold);
}

void Grid::SetTextPixels(int pixels) {
    textPixels_ = pixels;
    viewport()->update();
}

QFont Grid::CellFont() const {
    QFont result = font();
    if (textPixels_ > 0) {
        result.setPixelSize(textPixels_);
    }
    return result;
}

bool Grid::IsEntryGrid() const {
    const std::vector<GridColumn>& columns = model_->Columns();
    return std::any_of(columns.begin(), columns.end(),
                       [](const GridColumn& column) { return column.IsTyped() && !column.locked; });
}

bool Grid::HasFocusInside() const {
    const QWidget* focus = window()->focusWidget();
    return focus == this || (focus != nullptr && isAncestorOf(focus));
}

void Grid::SetToolTipText(const QString& text) {
    toolTipText_ = text;
    setToolTip(text);
}

bool Grid::ReDraw() const {
    return d_->redraw;
}

/// Whatever happens to the rows meanwhile, and whatever stands in front of them: the picture stays.
void Grid::SetReDraw(bool redraw) {
    if (redraw) {
        d_->oldPicture = {};
    } else if (d_->redraw && isVisible()) {
        d_->oldPicture = viewport()->grab();
    }
    d_->redraw = redraw;
    viewport()->update();
}

bool Grid::ChangeMade() const {
    return d_->changeMade;
}
void Grid::SetChangeMade(bool changed) {
    d_->changeMade = changed;
}

// Painting. Rows are loaded before they are painted, never while: their events may do anything.

void Grid::paintEvent(QPaintEvent* event) {
    if (!d_->redraw) {
        QPainter(viewport()).drawPixmap(0, 0, d_->oldPicture);
        return;
    }
    if (HasUnloadedRowsInView() && !d_->loadRequested) {
        d_->loadRequested = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                d_->loadRequested = false;
                LoadRowsInView();
            },
            Qt::QueuedConnection);
    }
    model_->SetLoadsOnSight(false);
    QTableView::paintEvent(event);
    model_->SetLoadsOnSight(true);
    if (model_->Rows() == 0 && !emptyHint_.isEmpty()) {
        QPainter painter(viewport());
        painter.setPen(colors::kSecondaryInk);
        painter.drawText(viewport()->rect().adjusted(kHintMargin, 0, -kHintMargin, 0),
                         Qt::AlignCenter | Qt::TextWordWrap, emptyHint_);
    }
}

void Grid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    LoadRowsInView();
}

void Grid::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    LoadRowsInView();
}

void Grid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dy != 0) {
        LoadRowsInView();  // what has come into view is painted later
    }
}

}  // namespace quardele::forms
