#include <forms/combo.h>

#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTableView>
#include <QToolTip>

#include <forms/control_font.h>
#include <forms/events.h>
#include <forms/twips.h>

#include "rows_model.h"

namespace quardele::forms {
namespace {

constexpr int kListRow = 22;

QTableView* MakeList(QWidget* parent) {
    auto* list = new QTableView(parent);
    list->horizontalHeader()->hide();
    list->verticalHeader()->hide();
    list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list->verticalHeader()->setMinimumSectionSize(1);
    list->verticalHeader()->setDefaultSectionSize(kListRow);
    list->setShowGrid(false);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    return list;
}

}  // namespace

ListCombo::ListCombo(QWidget* parent)
    : QComboBox(parent), textTipFontSize_(FontSize(this)), rows_(new RowsModel(this)) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setModel(rows_);
    setView(MakeList(this));
    view()->viewport()->installEventFilter(this);
    setModelColumn(0);
    connect(this, &QComboBox::editTextChanged, this, &ListCombo::TextChanged);
    connect(this, &QComboBox::activated, this, &ListCombo::RowChosen);
}

ListCombo::~ListCombo() {
    if (rowSource_ != nullptr) {
        rowSource_->DetachView(this);
    }
}

QString ListCombo::Text() const {
    return currentText();
}

void ListCombo::SetText(const QString& text) {
    setEditText(text);
}

void ListCombo::Clear() {
    setCurrentIndex(-1);
    clearEditText();
}

void ListCombo::SetRowSource(DataControl* source) {
    if (source == rowSource_) {
        return;
    }
    if (rowSource_ != nullptr) {
        rowSource_->DetachView(this);
    }
    rowSource_ = source;
    if (rowSource_ != nullptr) {
        rowSource_->AttachView(this);
    } else {
        ShowRows();
    }
}

void ListCombo::SetListFields(const QStringList& fields) {
    listFields_ = fields;
    ShowRows();
}

void ListCombo::RowsReplaced() {
    ShowRows();
}
void ListCombo::RowsChanged() {
    ShowRows();
}
void ListCombo::SourceGone() {
    rowSource_ = nullptr;
    ShowRows();
}

/// A list that is replaced leaves the text alone; only the operator and the program change that.
void ListCombo::ShowRows() {
    const QString text = Text();
    const QSignalBlocker quiet(this);
    rows_->SetRows(rowSource_ == nullptr ? nullptr : rowSource_->Recordset(), listFields_);
    setCurrentIndex(-1);
    setEditText(text);
}

void ListCombo::TextChanged(const QString& text) {
    MakeCurrent(rows_->RowOf(text));
    emit Change();
}

void ListCombo::RowChosen(int row) {
    MakeCurrent(row);
    emit Click();
}

void ListCombo::MakeCurrent(int row) {
    if (row < 0 || rowSource_ == nullptr || rowSource_->Recordset() == nullptr) {
        return;
    }
    RunHandler([this, row] { rowSource_->Recordset()->SetAbsolutePosition(row); });
}

QTableView& ListCombo::List() const {
    return *qobject_cast<QTableView*>(view());
}

int ListCombo::ColWidth() const {
    const auto found = colWidths_.find(col_);
    return found == colWidths_.end() ? 0 : found->second;
}

void ListCombo::SetColWidth(int twips) {
    colWidths_[col_] = twips;
}

int ListCombo::RowHeight() const {
    return ToTwips(List().verticalHeader()->defaultSectionSize());
}

void ListCombo::SetRowHeight(int twips) {
    List().verticalHeader()->setDefaultSectionSize(ToPixels(twips));
}

void ListCombo::ApplyColWidths() {
    List().resizeColumnsToContents();
    for (const auto& [column, width] : colWidths_) {
        if (width > 0) {
            List().setColumnWidth(column, ToPixels(width));
        }
    }
}

void ListCombo::showPopup() {
    QTableView& list = List();
    ApplyColWidths();
    int width = 2 * list.frameWidth() + 24;
    for (int column = 0; column < rows_->columnCount(); ++column) {
        width += list.columnWidth(column);
    }
    if (listWidth_ > 0) {
        width = ToPixels(listWidth_);
    }
    list.setMinimumWidth(std::max(width, this->width()));
    QComboBox::showPopup();
}

bool ListCombo::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ToolTip && watched == List().viewport()) {
        ShowTextTip(*static_cast<QHelpEvent*>(event));
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

/// The font of tips is one for the whole process; the size goes into the text.
void ListCombo::ShowTextTip(const QHelpEvent& event) const {
    const QTableView& list = List();
    const QModelIndex entry = list.indexAt(event.pos());
    if (!entry.isValid() || list.sizeHintForIndex(entry).width() <= list.visualRect(entry).width()) {
        QToolTip::hideText();
        return;
    }
    const QString tip = QStringLiteral("<p style=\"white-space: pre; font-size: %1pt\">%2</p>")
                            .arg(QString::number(TextTipFontSize()), entry.data().toString().toHtmlEscaped());
    QToolTip::showText(event.globalPos(), tip, list.viewport(), list.visualRect(entry));
}

}  // namespace quardele::forms
