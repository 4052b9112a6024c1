#include "dialog_window.h"

#include <QKeyEvent>

namespace quardele::forms {

DialogWindow::DialogWindow(QWidget* parent) : QDialog(parent) {
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

void DialogWindow::keyPressEvent(QKeyEvent* event) {
    event->ignore();
}

}  // namespace quardele::forms
