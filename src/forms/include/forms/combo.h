// A drop-down list over the rows of a data control, with several columns.
#pragma once

#include <map>

#include <QComboBox>

#include <forms/data_control.h>

class QHelpEvent;
class QTableView;

namespace quardele::forms {

class RowsModel;

/// Choosing a row, or typing a text that equals a row's first column, makes that row the current record of
/// the data control. Text() is the first column of the choice, or what was typed.
class ListCombo : public QComboBox, private RowsView {
    Q_OBJECT
    Q_PROPERTY(QString dataSourceName READ DataSourceName WRITE SetDataSourceName)
    Q_PROPERTY(QStringList listFields READ ListFields WRITE SetListFields)

 public:
    explicit ListCombo(QWidget* parent = nullptr);
    ~ListCombo() override;

    [[nodiscard]] QString Text() const;
    void SetText(const QString& text);
    /// Empties text and choice; the list of rows stays.
    void Clear();
    /// The rows come from here; null for none.
    [[nodiscard]] DataControl* RowSource() const { return rowSource_; }
    void SetRowSource(DataControl* source);
    [[nodiscard]] QString DataSourceName() const { return dataSourceName_; }
    void SetDataSourceName(const QString& name) { dataSourceName_ = name; }
    /// Fields shown, in column order.
    [[nodiscard]] QStringList ListFields() const { return listFields_; }
    void SetListFields(const QStringList& fields);

    // The list that drops down: columns addressed by Col from 0, sizes in twips.
    [[nodiscard]] int Columns() const { return static_cast<int>(listFields_.size()); }
    [[nodiscard]] int Col() const { return col_; }
    void SetCol(int column) { col_ = column; }
    /// Of the column Col(); 0 for as wide as its texts.
    [[nodiscard]] int ColWidth() const;
    void SetColWidth(int twips);
    /// 0 for as wide as its columns.
    [[nodiscard]] int ListWidth() const { return listWidth_; }
    void SetListWidth(int twips) { listWidth_ = twips; }
    [[nodiscard]] int RowHeight() const;
    void SetRowHeight(int twips);
    /// Size in points of the tip that shows a text of the list whole where its column cuts it off.
    [[nodiscard]] double TextTipFontSize() const { return textTipFontSize_; }
    void SetTextTipFontSize(double points) { textTipFontSize_ = points; }

    void showPopup() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
    /// The text changed, by hand or by the program.
    void Change();
    /// The operator chose a row of the list.
    void Click();
    void GotFocus();
    void LostFocus();

 private:
    void RowsReplaced() override;
    void CurrentRowMoved() override {}
    void RowsChanged() override;
    void SourceGone() override;

    void TextChanged(const QString& text);
    void RowChosen(int row);
    void MakeCurrent(int row);
    void ShowRows();
    [[nodiscard]] QTableView& List() const;
    void ApplyColWidths();
    void ShowTextTip(const QHelpEvent& event) const;

    DataControl* rowSource_ = nullptr;
    QString dataSourceName_;
    QStringList listFields_;
    std::map<int, int> colWidths_;
    int col_ = 0;
    int listWidth_ = 0;
    double textTipFontSize_;
    RowsModel* rows_;
};

}  // namespace quardele::forms
