// The window of a dialog form. Unlike a bare QDialog it gives no key a meaning of its own: what Escape and
// Enter do is for the form's handlers.
#pragma once

#include <QDialog>

namespace quardele::forms {

class DialogWindow : public QDialog {
    Q_OBJECT
 public:
    explicit DialogWindow(QWidget* parent);
    void reject() override {}

 protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace quardele::forms
