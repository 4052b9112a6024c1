#include "dialog.h"

#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <listtools/list_tool_context.h>
#include <services/translation.h>
#include <shell/session.h>

namespace quardele::listtools {

void PlaceDialog(forms::Form& dialog) {
    const shell::Session& session = shell::TheSession();
    dialog.SetTop((session.WorkAreaHeight - dialog.Height()) / 2 + session.WorkAreaTop);
    dialog.SetLeft((forms::Forms::Item(0).Width() - dialog.Width()) / 2);
    dialog.Window()->setFixedSize(dialog.Window()->size());
}

QString TitleOn(const QString& start) {
    return services::TRAD(start + TheListToolContext().ColumnTitle + u']');
}

void ShowPressing(forms::Button* button, QObject* context) {
    forms::On(button, &forms::Button::pressed, context, [button] { button->SetMain(false); });
    forms::On(button, &forms::Button::released, context, [button] { button->SetMain(true); });
}

void EnterAsTab(int& character) {
    if (character == kKeyEnter) {
        character = 0;
        forms::SendKeys(QStringLiteral("{TAB}"));
    }
}

void ReportError(const QString& start, const basic::RuntimeError& error) {
    forms::MsgBox(start + QString::number(error.Number()) + QStringLiteral("): ") +
                  forms::ToQString(error.Description()));
}

}  // namespace quardele::listtools
