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
    virtual ~BoundControl();

    /// Empty when the control is not bound.
    [[nodiscard]] QString DataField() const { return dataField_; }
    void SetDataField(const QString& field) { dataField_ = field; }
    [[nodiscard]] DataControl* DataSource() const { return dataSource_; }
    void SetDataSource(DataControl* source);
    [[nodiscard]] bool DataChanged() const { return dataChanged_; }
    void SetDataChanged(bool changed);

    /// Shows a value without counting as a change; Null and Empty show as blank.
    virtual void Fill(const basic::Variant& value) = 0;
    /// What the control holds, as it goes into the field.
    [[nodiscard]] virtual basic::Variant Content() const = 0;

 protected:
    /// Repaints the mark of a pending change.
    virtual void DataChangedChanged() {}

 private:
    QString dataField_;
    DataControl* dataSource_ = nullptr;
    bool dataChanged_ = false;
};

}  // namespace quardele::forms
