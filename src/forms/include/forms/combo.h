// A drop-down list over the rows of a data control, with several columns.
#pragma once

#include <QComboBox>

#include <forms/data_control.h>

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

    void showPopup() override;

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

    DataControl* rowSource_ = nullptr;
    QString dataSourceName_;
    QStringList listFields_;
    RowsModel* rows_;
};

}  // namespace quardele::forms
