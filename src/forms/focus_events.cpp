#include "focus_events.h"

#include <QApplication>
#include <QMenuBar>

#include "form_host.h"

namespace quardele::forms {
namespace {

bool IsOfThisRoom(const QWidget& widget) {
    for (const QMetaObject* type = widget.metaObject(); type != nullptr; type = type->superClass()) {
        if (QByteArrayView(type->className()).startsWith("quardele::forms::")) {
            return true;
        }
    }
    return false;
}

bool HasOwnName(const QWidget& widget) {
    return !widget.objectName().isEmpty() && !widget.objectName().startsWith(QLatin1String("qt_"));
}

}  // namespace

FocusEvents& FocusEvents::Instance() {
    static QPointer<FocusEvents> instance;
    if (instance.isNull()) {
        instance = new FocusEvents(qApp);
    }
    return *instance;
}

FocusEvents::FocusEvents(QObject* parent) : QObject(parent) {
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*old*/, QWidget* now) { FocusChanged(now); });
}

QWidget* FocusEvents::ControlOf(QWidget* widget) {
    const bool onForm = FormHost::Instance().FormOf(widget) != nullptr;
    for (QWidget* part = widget; part != nullptr && !part->isWindow(); part = part->parentWidget()) {
        if (IsOfThisRoom(*part)) {
            return part;
        }
        if (qobject_cast<QMenuBar*>(part) != nullptr || FormHost::Instance().IsSurface(part)) {
            return nullptr;
        }
        if (onForm && HasOwnName(*part)) {
            return part;
        }
    }
    return nullptr;
}

void FocusEvents::FocusChanged(QWidget* now) {
    if (holds_ > 0 || now == nullptr || !now->isVisible()) {
        return;
    }
    if (QWidget* control = ControlOf(now)) {
        MoveTo(control);
    }
}

void FocusEvents::MoveTo(QWidget* control) {
    if (control == current_) {
        return;
    }
    if (current_ != nullptr) {
        notices_.push_back({current_, "LostFocus"});
    }
    current_ = control;
    notices_.push_back({control, "GotFocus"});
    Tell();
}

void FocusEvents::Tell() {
    while (!notices_.empty()) {
        const Notice notice = notices_.front();
        notices_.pop_front();
        QWidget* control = notice.control;
        const QByteArray signature = QByteArray(notice.event) + "()";
        if (control != nullptr && control->metaObject()->indexOfSignal(signature.constData()) >= 0) {
            QMetaObject::invokeMethod(control, notice.event, Qt::DirectConnection);
        }
    }
}

FocusEvents::Hold::Hold(const QWidget* window) : window_(window) {
    ++Instance().holds_;
}

FocusEvents::Hold::~Hold() {
    FocusEvents& events = Instance();
    --events.holds_;
    events.FocusChanged(window_ != nullptr ? window_->focusWidget() : QApplication::focusWidget());
}

}  // namespace quardele::forms
