#include <QScopedValueRollback>

#include <forms/bound_control.h>
#include <forms/data_control.h>

namespace quardele::forms {

BoundControl::~BoundControl() {
    if (dataSource_ != nullptr) {
        dataSource_->Detach(this);
    }
}

void BoundControl::SetDataSource(DataControl* source) {
    if (source == dataSource_) {
        return;
    }
    if (dataSource_ != nullptr) {
        dataSource_->Detach(this);
    }
    dataSource_ = source;
    if (dataSource_ != nullptr) {
        dataSource_->Attach(this);
    }
}

void BoundControl::SetDataChanged(bool changed) {
    if (changed != dataChanged_) {
        dataChanged_ = changed;
        DataChangedChanged();
    }
}

bool BoundControl::HasPendingChange() const {
    return dataChanged_ && dataSource_ != nullptr && !dataField_.isEmpty();
}

void BoundControl::Fill(const basic::Variant& value) {
    const QScopedValueRollback<bool> filling(filling_, true);
    ShowValue(value);
    SetDataChanged(false);
}

void BoundControl::ContentChanged() {
    if (!filling_) {
        SetDataChanged(true);
    }
}

}  // namespace quardele::forms
