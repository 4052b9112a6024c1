#include <forms/form.h>

#include <algorithm>
#include <exception>
#include <map>
#include <utility>

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <basic/runtime_error.h>
#include <forms/data_control.h>
#include <forms/events.h>
#include <forms/mdi_form.h>
#include <forms/twips.h>

#include "control_list.h"
#include "dialog_window.h"
#include "focus_events.h"
#include "form_host.h"
#include "layout.h"

namespace quardele::forms {
namespace {

/// Qt closes a child window on Ctrl+W, which French keyboards reach for as they type; Ctrl+F4 is the usual
/// key.
void KeepUsualCloseKey(const QMdiSubWindow& window) {
    for (QAction* action : window.systemMenu()->actions()) {
        if (!action->shortcuts().isEmpty()) {
            action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F4));
        }
    }
}

QWidget* MakeChildWindow() {
    auto* window = new QMdiSubWindow;
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    KeepUsualCloseKey(*window);
    if (const MdiForm* main = MdiForm::Current()) {
        main->Client()->addSubWindow(window);
        window->move(0, 0);
    }
    return window;
}

QWidget* MakeWindow(FormKind kind) {
    switch (kind) {
        case FormKind::Main:
            return new QMainWindow;
        case FormKind::MdiChild:
            return MakeChildWindow();
        case FormKind::Dialog:
            break;
    }
    const MdiForm* main = MdiForm::Current();
    return new DialogWindow(main != nullptr ? main->Window() : nullptr);
}

/// What the window's frame adds to the size of the window as Qt counts it: nothing for a child window, whose
/// title bar is its own.
QSize FrameOf(const QWidget& window) {
    return window.isWindow() ? window.frameGeometry().size() - window.size() : QSize(0, 0);
}

std::map<std::type_index, std::unique_ptr<Form>>& Slots() {
    static std::map<std::type_index, std::unique_ptr<Form>> instances;
    return instances;
}

/// Windows must not outlive the application object, which the slots, being static, would do.
void DropInstances() {
    Slots().clear();
}

/// The first control that Tab would reach.
QWidget* FirstInTabOrder(QWidget& surface) {
    for (QWidget* widget = surface.nextInFocusChain(); widget != &surface;
         widget = widget->nextInFocusChain()) {
        if (surface.isAncestorOf(widget) && widget->isVisibleTo(&surface) && widget->isEnabled() &&
            (widget->focusPolicy() & Qt::TabFocus) != 0) {
            return widget;
        }
    }
    return nullptr;
}

/// Events that Qt sends while a form shows itself wait: the form brings its own, in their order.
class Showing {
 public:
    Showing() { FormHost::Instance().SetShowing(true); }
    ~Showing() { FormHost::Instance().SetShowing(false); }
    Showing(const Showing&) = delete;
    Showing& operator=(const Showing&) = delete;
};

}  // namespace

class Form::Private {
 public:
    // Deleted with the form unless Qt was quicker: the main window takes its child windows with it.
    QPointer<QWidget> ownedWindow;
    QPointer<QWidget> ownedSurface;
    std::vector<QPointer<QWidget>> controls;
    QPointer<QEventLoop> modalLoop;
    QSize outer;              ///< size with the frame that the program gave, where it did; pixels
    bool framed = false;      ///< the desktop has told the frame, and the window has made room for it
    QPointer<QWidget> focus;  ///< had the focus when the form was hidden
    bool shown = false;       ///< was on screen at least once
    bool showingModally = false;
    std::exception_ptr activateFailure;  ///< what left Form_Activate during a modal Show
    bool unloading = false;              ///< its QueryUnload and Unload handlers are running
    bool gone = false;                   ///< unloaded, waiting for its destruction
};

std::unique_ptr<Form>& Form::Slot(std::type_index type) {
    static const bool registered = [] {
        qAddPostRoutine(DropInstances);
        return true;
    }();
    Q_UNUSED(registered)
    return Slots()[type];
}

void Form::Load(std::unique_ptr<Form>& slot, std::unique_ptr<Form> form) {
    slot = std::move(form);
    try {
        slot->AdoptSurface();
        FormHost::Instance().Add(*slot);
        slot->Form_Load();
    } catch (...) {
        slot.reset();
        throw;
    }
}

Form::Form(QString name, FormKind kind)
    : d_(std::make_unique<Private>()),
      name_(std::move(name)),
      kind_(kind),
      surface_(nullptr),
      window_(MakeWindow(kind)) {
    FocusEvents::Instance();
    FormHost::Instance();
    surface_ = kind == FormKind::Main ? window_ : new QWidget;
    d_->ownedWindow = window_;
    d_->ownedSurface = surface_;
}

Form::~Form() {
    FormHost::Instance().Remove(*this);
    delete d_->ownedWindow;
    delete d_->ownedSurface;
}

void Form::AdoptSurface() {
    const QSize designed = surface_->size();
    window_->setWindowTitle(surface_->windowTitle());
    window_->setWindowIcon(QIcon(QStringLiteral(":/icons/application.svg")));
    d_->controls = ControlsOn(*surface_);
    PlaceInStrips(*surface_);
    BindControls(surface_);
    if (auto* child = qobject_cast<QMdiSubWindow*>(window_)) {
        child->setWidget(surface_);
        child->ensurePolished();
        const QMargins frame = child->contentsMargins();
        child->resize(designed.grownBy(frame));
    } else if (kind_ == FormKind::Dialog) {
        auto* layout = new QVBoxLayout(window_);
        layout->setContentsMargins({});
        layout->setSizeConstraint(QLayout::SetNoConstraint);
        layout->addWidget(surface_);
        window_->resize(designed);
    }
    surface_->installEventFilter(this);
    window_->installEventFilter(this);
}

/// The desktop draws its frame around the main window only once that is on screen. The size that the program
/// gave before then includes it.
void Form::MakeRoomForFrame() {
    if (kind_ != FormKind::Main || d_->framed || !Visible() || !d_->outer.isValid()) {
        return;
    }
    const QSize frame = FrameOf(*window_);
    if (frame.isNull()) {
        return;
    }
    d_->framed = true;
    if (WindowState() == forms::WindowState::Normal) {
        window_->resize(d_->outer - frame);
    }
}

bool Form::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window_) {
        MakeRoomForFrame();
    }
    const bool resized =
        watched == surface_ && event->type() == QEvent::Resize &&
        static_cast<QResizeEvent*>(event)->size() != static_cast<QResizeEvent*>(event)->oldSize();
    const bool minimised = watched == window_ && event->type() == QEvent::WindowStateChange &&
                           WindowState() == forms::WindowState::Minimized;
    if (resized || minimised) {
        Resized();
    }
    return false;
}

void Form::Resized() {
    if (d_->shown && Visible() && !d_->gone) {
        RunHandler([this] { Form_Resize(); });
    }
}

QString Form::Caption() const {
    return window_->windowTitle();
}
void Form::SetCaption(const QString& caption) {
    window_->setWindowTitle(caption);
}

int Form::Left() const {
    return ToTwips(window_->x());
}
int Form::Top() const {
    return ToTwips(window_->y());
}
int Form::Width() const {
    return ToTwips(window_->width() + FrameOf(*window_).width());
}
int Form::Height() const {
    return ToTwips(window_->height() + FrameOf(*window_).height());
}
void Form::SetLeft(int twips) {
    window_->move(ToPixels(twips), window_->y());
}
void Form::SetTop(int twips) {
    window_->move(window_->x(), ToPixels(twips));
}
void Form::SetWidth(int twips) {
    const QSize frame = FrameOf(*window_);
    window_->resize(ToPixels(twips) - frame.width(), window_->height());
    d_->outer = window_->size() + frame;
}
void Form::SetHeight(int twips) {
    const QSize frame = FrameOf(*window_);
    window_->resize(window_->width(), ToPixels(twips) - frame.height());
    d_->outer = window_->size() + frame;
}
int Form::ScaleWidth() const {
    return ToTwips(surface_->width());
}
int Form::ScaleHeight() const {
    return ToTwips(surface_->height());
}

forms::WindowState Form::WindowState() const {
    if (window_->isMinimized()) {
        return forms::WindowState::Minimized;
    }
    return window_->isMaximized() ? forms::WindowState::Maximized : forms::WindowState::Normal;
}

void Form::SetWindowState(forms::WindowState state) {
    if (state == WindowState()) {
        return;
    }
    const Qt::WindowStates kept = window_->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
    const Qt::WindowState added = state == forms::WindowState::Minimized   ? Qt::WindowMinimized
                                  : state == forms::WindowState::Maximized ? Qt::WindowMaximized
                                                                           : Qt::WindowNoState;
    if (!Visible()) {
        window_->setWindowState(kept | added);
    } else if (state == forms::WindowState::Minimized) {
        window_->showMinimized();
    } else if (state == forms::WindowState::Maximized) {
        window_->showMaximized();
    } else {
        window_->showNormal();
    }
}

bool Form::Visible() const {
    return !window_->isHidden();
}

void Form::Show(ShowMode mode) {
    const bool modal = mode == ShowMode::Modal;
    if (modal && (kind_ != FormKind::Dialog || Visible())) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    if (kind_ == FormKind::Dialog) {
        window_->setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    }
    {
        const QScopedValueRollback<bool> showing(d_->showingModally, modal);
        if (!d_->shown) {
            ShowFirst();
        } else if (!Visible()) {
            ShowAgain();
        }
        BecomeActive();
    }
    RethrowFailure();
    if (modal && !d_->gone && Visible()) {
        RunModally();
    }
}

void Form::ShowFirst() {
    for (const QPointer<QWidget>& control : d_->controls) {
        if (auto* data = qobject_cast<DataControl*>(control.data())) {
            data->RefreshIfBound();
        }
    }
    const FocusEvents::Hold hold(window_);
    {
        const Showing showing;
        window_->show();
        MakeRoomForFrame();
        d_->shown = true;
        if (QWidget* first = FirstInTabOrder(*surface_)) {
            first->setFocus();
        }
    }
    Resized();
    if (!d_->gone) {
        BecomeActive();
    }
}

/// With the focus where it was.
void Form::ShowAgain() {
    const FocusEvents::Hold hold(window_);
    const Showing showing;
    window_->show();
    if (d_->focus != nullptr) {
        d_->focus->setFocus();
    }
}

void Form::RunModally() {
    QEventLoop loop;
    d_->modalLoop = &loop;
    loop.exec();
}

/// In front of the others and, for the program, the one that the operator is in.
void Form::BecomeActive() {
    if (!Visible()) {
        return;
    }
    const FocusEvents::Hold hold(window_);
    if (auto* child = qobject_cast<QMdiSubWindow*>(window_);
        child != nullptr && child->mdiArea() != nullptr) {
        child->mdiArea()->setActiveSubWindow(child);
        child->raise();
    } else {
        window_->raise();
        window_->activateWindow();
    }
    FormHost::Instance().Activate(*this);
}

/// The failure waits until Qt, which may have asked for the activation, is through with it.
void Form::Activated() {
    if (!d_->showingModally) {
        RunHandler([this] { Form_Activate(); });
        return;
    }
    try {
        Form_Activate();
    } catch (...) {
        d_->activateFailure = std::current_exception();
    }
}

void Form::RethrowFailure() {
    try {
        if (const std::exception_ptr failure = std::exchange(d_->activateFailure, nullptr)) {
            std::rethrow_exception(failure);
        }
    } catch (const basic::RuntimeError&) {
        Unload();
        throw;
    }
}

void Form::Hide() {
    {
        // Qt passes the focus on inside the form that goes; nobody can see that.
        const FocusEvents::Hold hold(nullptr);
        d_->focus = window_->focusWidget();
        window_->hide();
        FormHost::Instance().Leave(*this);
    }
    if (d_->modalLoop != nullptr) {
        d_->modalLoop->quit();
    }
}

void Form::ZOrder(int position) {
    if (position == 0) {
        BecomeActive();
    } else {
        window_->lower();
    }
}

std::vector<QWidget*> Form::Controls() const {
    std::vector<QWidget*> controls;
    for (const QPointer<QWidget>& control : d_->controls) {
        if (control != nullptr) {
            controls.push_back(control);
        }
    }
    return controls;
}

/// All other forms, in the order of loading: a dialog left behind would keep a process without a window.
bool Form::UnloadOthers() {
    const std::vector<Form*> loaded = FormHost::Instance().Loaded();
    return std::all_of(loaded.begin(), loaded.end(), [](Form* form) {
        const std::vector<Form*>& still = FormHost::Instance().Loaded();
        const bool there = std::find(still.begin(), still.end(), form) != still.end();
        return !there || form->kind_ == FormKind::Main || form->Unload();
    });
}

bool Form::MayUnload() {
    bool cancel = false;
    RunHandler([&] { Form_QueryUnload(cancel); });
    if (!cancel) {
        RunHandler([&] { Form_Unload(cancel); });
    }
    return !cancel;
}

bool Form::Unload() {
    if (d_->gone || d_->unloading) {
        return true;
    }
    if (kind_ == FormKind::Main && !UnloadOthers()) {
        return false;
    }
    d_->unloading = true;
    const bool may = MayUnload();
    d_->unloading = false;
    if (may) {
        Release();
    }
    return may;
}

/// Gone for the program from here on; destroyed when no handler can be running any more.
void Form::Release() {
    d_->gone = true;
    for (auto& [type, slot] : Slots()) {
        if (slot.get() == this) {
            static_cast<void>(slot.release());
        }
    }
    Hide();
    FormHost::Instance().Remove(*this);
    deleteLater();
}

}  // namespace quardele::forms
