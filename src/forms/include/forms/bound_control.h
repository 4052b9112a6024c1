// Controls that show and change a field of a data control's current record.
#pragma once

#include <QString>

#include <basic/variant.h>

namespace quardele::forms {

class DataControl;

/// Mixed into text boxes, check boxes and combos. DataChanged turns true whenever the content changes by any
/// way but Fill, program assignments included.
class BoundControl {
 public:
    BoundControl() = default;
    BoundControl(const BoundControl&) = delete;
    BoundControl& operator=(const BoundControl&) = delete;
    virtual ~BoundControl();

    /// Empty when the control is not bound.
    [[nodiscard]] QString DataField() const { return dataField_; }
    void SetDataField(const QString& field) { dataField_ = field; }
    [[nodiscard]] DataControl* DataSource() const { return dataSource_; }
    /// Not owned; shows the field of its current record. Null unbinds.
    void SetDataSource(DataControl* source);
    /// Name of the data control in the layout file; the form binds by it when it is loaded.
    [[nodiscard]] QString DataSourceName() const { return dataSourceName_; }
    void SetDataSourceName(const QString& name) { dataSourceName_ = name; }
    [[nodiscard]] bool DataChanged() const { return dataChanged_; }
    void SetDataChanged(bool changed);
    /// Whether a save would write this control: it is bound, and changed.
    [[nodiscard]] bool HasPendingChange() const;

    /// Shows a value without counting as a change; Null and Empty show as blank.
    void Fill(const basic::Variant& value);
    /// What the control holds, as it goes into the field.
    [[nodiscard]] virtual basic::Variant Content() const = 0;

 protected:
    virtual void ShowValue(const basic::Variant& value) = 0;
    /// To be called whenever the content has changed.
    void ContentChanged();
    /// Repaints the mark of a pending change.
    virtual void DataChangedChanged() {}

 private:
    QString dataField_;
    QString dataSourceName_;
    DataControl* dataSource_ = nullptr;
    bool dataChanged_ = false;
    bool filling_ = false;
};

}  // namespace quardele::forms
