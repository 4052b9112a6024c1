// The forms that are loaded, which of them is active, and what they all share: keys seen first, closing.
#pragma once

#include <vector>

#include <QObject>
#include <QPointer>

#include <forms/form.h>

class QKeyEvent;

namespace quardele::forms {

class FormHost : public QObject {
    Q_OBJECT
 public:
    /// Lives as long as the application object.
    static FormHost& Instance();

    void Add(Form& form);
    /// The process ends with its last form.
    void Remove(Form& form);
    /// In the order of loading.
    [[nodiscard]] const std::vector<Form*>& Loaded() const { return loaded_; }

    /// The form whose window holds a widget; null when there is none.
    [[nodiscard]] Form* FormOf(const QWidget* widget) const;
    [[nodiscard]] bool IsSurface(const QWidget* widget) const;

    [[nodiscard]] Form* Active() const { return active_; }
    /// Makes a form the active one; Form_Activate runs unless it is already.
    void Activate(Form& form);
    /// The form is no longer on screen; the one that was active before becomes active again.
    void Leave(Form& form);
    /// Activations by Qt wait while a form shows itself: it has an order of its own.
    void SetShowing(bool showing) { showing_ = showing; }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    explicit FormHost(QObject* parent);
    [[nodiscard]] Form* FormWithWindow(const QObject* window) const;
    void WindowActivated(const QObject* window);
    bool PreviewKey(QWidget* receiver, const QKeyEvent& event);

    std::vector<Form*> loaded_;
    QPointer<Form> active_;
    std::vector<QPointer<Form>> activeBefore_;
    bool showing_ = false;
};

}  // namespace quardele::forms
