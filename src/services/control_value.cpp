#include "control_value.h"

#include <basic/runtime_error.h>
#include <forms/combo.h>
#include <forms/drop_down.h>
#include <forms/text_entry.h>

namespace quardele::services {

namespace {

constexpr int kReadOnlyText = 383;

/// The list is never typed into: its text can only become one of its entries.
void Choose(forms::DropDown& choice, const QString& entry) {
    const int index = choice.findText(entry);
    if (index < 0) {
        throw basic::RuntimeError(kReadOnlyText, u"La propriété 'Text' est en lecture seule");
    }
    choice.SetListIndex(index);
}

}  // namespace

QString ControlValue(const QWidget& control) {
    if (const auto* const box = dynamic_cast<const forms::TextEntry*>(&control)) {
        return box->Text();
    }
    if (const auto* const list = qobject_cast<const forms::ListCombo*>(&control)) {
        return list->Text();
    }
    if (const auto* const choice = qobject_cast<const forms::DropDown*>(&control)) {
        return choice->Text();
    }
    throw basic::RuntimeError(basic::error::kNoSuchMember);
}

void SetControlValue(QWidget& control, const QString& value) {
    if (auto* const box = dynamic_cast<forms::TextEntry*>(&control)) {
        box->SetText(value);
    } else if (auto* const list = qobject_cast<forms::ListCombo*>(&control)) {
        list->SetText(value);
    } else if (auto* const choice = qobject_cast<forms::DropDown*>(&control)) {
        Choose(*choice, value);
    } else {
        throw basic::RuntimeError(basic::error::kNoSuchMember);
    }
}

}  // namespace quardele::services
