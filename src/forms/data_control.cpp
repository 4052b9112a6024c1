#include <forms/data_control.h>

#include <algorithm>

#include <QScopedValueRollback>

#include <basic/runtime_error.h>
#include <forms/bound_control.h>
#include <forms/strings.h>

#include "field_text.h"

namespace quardele::forms {
namespace {

bool HasCurrentRecord(const dao::Recordset& recordset) {
    return recordset.EditMode() == dao::EditMode::Add || (!recordset.Bof() && !recordset.Eof());
}

/// The value to show; blank where there is no row, or where somebody has deleted it.
basic::Variant ValueToShow(const dao::Recordset* recordset, const QString& field) {
    if (recordset == nullptr || !HasCurrentRecord(*recordset)) {
        return basic::Null{};
    }
    try {
        return recordset->Value(ToText(field));
    } catch (const basic::RuntimeError& error) {
        if (error.Number() == basic::error::kRecordDeleted) {
            return basic::Null{};
        }
        throw;
    }
}

bool IsGone(const dao::Recordset& recordset) {
    if (recordset.Fields().empty() || !HasCurrentRecord(recordset)) {
        return false;
    }
    try {
        static_cast<void>(recordset.Value(0));
    } catch (const basic::RuntimeError& error) {
        return error.Number() == basic::error::kRecordDeleted;
    }
    return false;
}

basic::Variant ContentFor(const BoundControl& control, const dao::Field& field) {
    const basic::Variant content = control.Content();
    return content.IsText() ? FieldValue(ToQString(content.As<basic::Text>()), field) : content;
}

}  // namespace

DataControl::DataControl(QWidget* parent) : QWidget(parent) {
    hide();
}

DataControl::~DataControl() {
    if (recordset_ != nullptr) {
        recordset_->SetObserver(nullptr);
    }
    while (!controls_.empty()) {
        controls_.back()->SetDataSource(nullptr);
    }
    while (!views_.empty()) {
        RowsView* view = views_.back();
        views_.pop_back();
        view->SourceGone();
    }
}

std::shared_ptr<dao::Database> DataControl::OpenedDatabase() {
    if (database_ == nullptr || openDatabaseName_ != databaseName_) {
        database_ = dao::DBEngine::Instance().Workspaces(0).OpenDatabase(ToText(databaseName_));
        openDatabaseName_ = databaseName_;
    }
    return database_;
}

void DataControl::Refresh() {
    tried_ = true;
    SetRecordset(OpenedDatabase()->OpenRecordset(ToText(recordSource_), dao::RecordsetType::Dynaset));
}

void DataControl::SetRecordset(std::shared_ptr<dao::Recordset> recordset) {
    tried_ = true;
    if (recordset_ != nullptr) {
        recordset_->SetObserver(nullptr);
    }
    recordset_ = std::move(recordset);
    if (recordset_ != nullptr) {
        if (!recordset_->Bof() || !recordset_->Eof()) {
            recordset_->MoveFirst();
        }
        recordset_->SetObserver(this);
    }
    FillAll();
    TellViews(&RowsView::RowsReplaced);
    emit Reposition();
}

void DataControl::RefreshIfBound() {
    const bool bound = !controls_.empty() || !views_.empty();
    if (bound && !tried_ && !recordSource_.isEmpty() && !databaseName_.isEmpty()) {
        Refresh();
    }
}

dao::Recordset& DataControl::Opened() const {
    if (recordset_ == nullptr) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    return *recordset_;
}

dao::EditMode DataControl::EditMode() const {
    return recordset_ == nullptr ? dao::EditMode::None : recordset_->EditMode();
}

void DataControl::UpdateRecord() {
    dao::Recordset& recordset = Opened();
    if (recordset.EditMode() == dao::EditMode::None) {
        recordset.Edit();
    }
    recordset.Update();
}

void DataControl::UpdateControls() {
    FillAll();
}

void DataControl::Attach(BoundControl* control) {
    controls_.push_back(control);
    Fill(*control);
}

void DataControl::Detach(BoundControl* control) {
    std::erase(controls_, control);
    shown_.erase(control);
}

void DataControl::AttachView(RowsView* view) {
    views_.push_back(view);
    view->RowsReplaced();
}

void DataControl::DetachView(RowsView* view) {
    std::erase(views_, view);
}

bool DataControl::AnyChanged() const {
    return std::any_of(controls_.begin(), controls_.end(),
                       [](const BoundControl* control) { return control->HasPendingChange(); });
}

void DataControl::Fill(BoundControl& control) {
    if (!control.DataField().isEmpty()) {
        const basic::Variant value = ValueToShow(recordset_.get(), control.DataField());
        shown_[&control] = value;
        control.Fill(value);
    }
}

void DataControl::FillAll() {
    // Filling fires Change, whose handlers may bind and unbind.
    const std::vector<BoundControl*> controls = controls_;
    for (BoundControl* control : controls) {
        if (std::find(controls_.begin(), controls_.end(), control) != controls_.end()) {
            Fill(*control);
        }
    }
}

void DataControl::TellViews(void (RowsView::*what)()) {
    const std::vector<RowsView*> views = views_;
    for (RowsView* view : views) {
        if (std::find(views_.begin(), views_.end(), view) != views_.end()) {
            (view->*what)();
        }
    }
}

/// A row is left: what the operator changed in it is saved first, or the move is refused.
void DataControl::RowLeaving(dao::Recordset& recordset) {
    if (!saving_ && AnyChanged() && HasCurrentRecord(recordset)) {
        SaveChanges(recordset);
    }
}

void DataControl::SaveChanges(dao::Recordset& recordset) {
    const QScopedValueRollback<bool> saving(saving_, true);
    const bool began = recordset.EditMode() == dao::EditMode::None;
    if (began) {
        recordset.Edit();
    }
    try {
        recordset.Update();
    } catch (...) {
        // The row goes back to what it was, the controls keep what the operator wrote.
        if (began) {
            recordset.CancelUpdate();
        }
        throw;
    }
}

void DataControl::Updating(dao::Recordset& recordset) {
    for (const BoundControl* control : controls_) {
        if (control->HasPendingChange()) {
            const int field = recordset.FieldIndex(ToText(control->DataField()));
            const basic::Variant content =
                ContentFor(*control, recordset.Fields()[static_cast<std::size_t>(field)]);
            RequireSeen(*control, recordset.Value(field), content);
            recordset.SetValue(field, content);
        }
    }
}

/// Nobody's change is written over unseen: the operator is told once, and then means it.
void DataControl::RequireSeen(const BoundControl& control, const basic::Variant& stored,
                              const basic::Variant& content) {
    basic::Variant& shown = shown_[&control];
    const bool isForeign = EditMode() == dao::EditMode::Edit && stored != shown && stored != content;
    if (isForeign) {
        shown = stored;
        throw basic::RuntimeError(basic::error::kRecordChanged);
    }
}

void DataControl::RowArrived(dao::Recordset& /*recordset*/) {
    if (saving_) {
        return;
    }
    FillAll();
    TellViews(&RowsView::CurrentRowMoved);
    emit Reposition();
}

void DataControl::RowsReplaced(dao::Recordset& /*recordset*/) {
    TellViews(&RowsView::RowsReplaced);
}

void DataControl::RowChanged(dao::Recordset& recordset) {
    if (IsGone(recordset)) {
        // A deleted row stays on screen until the program moves on.
        for (BoundControl* control : controls_) {
            control->SetDataChanged(false);
        }
    } else {
        FillAll();
    }
    TellViews(&RowsView::RowsChanged);
}

}  // namespace quardele::forms
