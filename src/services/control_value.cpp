#include "control_value.h"

#include <basic/runtime_error.h>
#include <forms/combo.h>
#include <forms/text_entry.h>

namespace quardele::services {

QString ControlValue(const QWidget& control) {
    if (const auto* const box = dynamic_cast<const forms::TextEntry*>(&control)) {
        return box->Text();
    }
    if (const auto* const list = qobject_cast<const forms::ListCombo*>(&control)) {
        return list->Text();
    }
    throw basic::RuntimeError(basic::error::kNoSuchMember);
}

void SetControlValue(QWidget& control, const QString& value) {
    if (auto* const box = dynamic_cast<forms::TextEntry*>(&control)) {
        box->SetText(value);
    } else if (auto* const list = qobject_cast<forms::ListCombo*>(&control)) {
        list->SetText(value);
    } else {
        throw basic::RuntimeError(basic::error::kNoSuchMember);
    }
}

}  // namespace quardele::services
