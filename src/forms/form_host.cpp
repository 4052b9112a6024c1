#include "form_host.h"

#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

#include <basic/runtime_error.h>
#include <forms/events.h>
#include <forms/mdi_form.h>
#include <forms/runtime.h>

#include "key_codes.h"

namespace quardele::forms {

FormHost& FormHost::Instance() {
    static QPointer<FormHost> instance;
    if (instance.isNull()) {
        instance = new FormHost(qApp);
    }
    return *instance;
}

FormHost::FormHost(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
}

void FormHost::Add(Form& form) {
    loaded_.push_back(&form);
}

void FormHost::Remove(Form& form) {
    const auto found = std::find(loaded_.begin(), loaded_.end(), &form);
    if (found == loaded_.end()) {
        return;
    }
    loaded_.erase(found);
    Leave(form);
    if (loaded_.empty()) {
        QCoreApplication::quit();
    }
}

Form* FormHost::FormOf(const QWidget* widget) const {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        if (Form* form = FormWithWindow(widget)) {
            return form;
        }
        if (widget->isWindow()) {
            return nullptr;
        }
    }
    return nullptr;
}

Form* FormHost::FormWithWindow(const QObject* window) const {
    const auto found = std::find_if(loaded_.begin(), loaded_.end(),
                                    [window](const Form* form) { return form->Window() == window; });
    return found == loaded_.end() ? nullptr : *found;
}

bool FormHost::IsSurface(const QWidget* widget) const {
    return std::any_of(loaded_.begin(), loaded_.end(),
                       [widget](const Form* form) { return form->Surface() == widget; });
}

void FormHost::Activate(Form& form) {
    if (showing_ || active_ == &form) {
        return;
    }
    activeBefore_.push_back(active_);
    active_ = &form;
    form.Activated();
}

void FormHost::Leave(Form& form) {
    if (active_ != &form) {
        return;
    }
    active_ = nullptr;
    while (!activeBefore_.empty()) {
        const QPointer<Form> before = activeBefore_.back();
        activeBefore_.pop_back();
        const bool loaded = std::find(loaded_.begin(), loaded_.end(), before.data()) != loaded_.end();
        if (before != nullptr && before != &form && loaded && before->Visible()) {
            before->BecomeActive();
            return;
        }
    }
}

void FormHost::WindowActivated(const QObject* window) {
    Form* form = FormWithWindow(window);
    if (form == nullptr || !form->Visible()) {
        return;
    }
    if (const auto* main = qobject_cast<MdiForm*>(form)) {
        if (Form* child = FormOf(main->Client()->activeSubWindow())) {
            form = child;
        }
    }
    Activate(*form);
}

bool FormHost::PreviewKey(QWidget* receiver, const QKeyEvent& event) {
    const QWidget* focus = receiver->window()->focusWidget();
    const bool first = focus != nullptr ? receiver == focus : receiver->isWindow();
    Form* form = first ? FormOf(receiver) : nullptr;
    if (form == nullptr) {
        return false;
    }
    int keyCode = KeyCodeOf(event);
    if (keyCode == 0) {
        return false;
    }
    const int shift = ShiftOf(event);
    RunHandler([&] { form->Form_KeyDown(keyCode, shift); });
    return keyCode == 0;
}

bool FormHost::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType()) {
        return false;
    }
    switch (event->type()) {
        case QEvent::KeyPress:
            return PreviewKey(static_cast<QWidget*>(watched), *static_cast<QKeyEvent*>(event));
        case QEvent::WindowActivate:
            if (static_cast<QWidget*>(watched)->isWindow()) {
                WindowActivated(watched);
            }
            return false;
        case QEvent::Close:
            if (Form* form = FormWithWindow(watched)) {
                event->ignore();
                form->Unload();
                return true;
            }
            return false;
        default:
            return false;
    }
}

int Forms::Count() {
    return static_cast<int>(FormHost::Instance().Loaded().size());
}

Form& Forms::Item(int index) {
    const std::vector<Form*>& loaded = FormHost::Instance().Loaded();
    if (index < 0 || static_cast<std::size_t>(index) >= loaded.size()) {
        throw basic::RuntimeError(basic::error::kSubscript);
    }
    return *loaded[static_cast<std::size_t>(index)];
}

}  // namespace quardele::forms
