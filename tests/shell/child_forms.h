// Small child forms that stand in for the program's own behind the main window's menu.
#pragma once

#include <QStringList>

#include <forms/controls.h>
#include <forms/form.h>

namespace quardele::tests {

class ChildForm : public forms::Form {
    Q_OBJECT
 public:
    /// Names of the forms that ran Unload since the list was last emptied, in that order.
    static QStringList& Unloaded();

 protected:
    void Form_Unload(bool& cancel) override;
    ChildForm(const QString& name) : Form(name, forms::FormKind::MdiChild) {
        Surface()->resize(300, 200);
        box_ = new forms::TextBox(Surface());
        box_->setObjectName(QStringLiteral("CTX_") + name);
        box_->setGeometry(8, 8, 120, 20);
    }

 private:
    forms::TextBox* box_;
};

class VehiclesDouble : public ChildForm {
    Q_OBJECT
 public:
    VehiclesDouble() : ChildForm(QStringLiteral("VEHICULES")) {}
};

class RemindersDouble : public ChildForm {
    Q_OBJECT
 public:
    RemindersDouble() : ChildForm(QStringLiteral("RELANCES")) {}
};

/// Points the main window's menu at the doubles.
void WireChildForms();

}  // namespace quardele::tests
