// Forms: windows with a life (load, show, activate, hide, unload) and handlers. UI thread only.
#pragma once

#include <memory>
#include <typeindex>
#include <typeinfo>
#include <vector>

#include <QObject>
#include <QString>
#include <QWidget>

namespace quardele::forms {

enum class FormKind {
    Main,      ///< the multiple-document frame
    MdiChild,  ///< child window of the main window
    Dialog,    ///< top-level, shown modally as a rule
};
enum class ShowMode { Modeless = 0, Modal = 1 };
/// Values of WindowState.
enum class WindowState { Normal = 0, Minimized = 1, Maximized = 2 };

/// A form. Its class is its name; its controls are children of Surface(), laid out by a .ui file:
///
///   FFICVEH::FFICVEH() : Form(u"FFICVEH"_qs, FormKind::MdiChild) { ui.setupUi(Surface()); Connect...; }
///
/// The surface takes the designed size (inner size), its windowTitle is the designed caption. Handlers are
/// virtual methods named after their events; each runs behind the wall of events.h except Form_Load, whose
/// errors reach the statement that touched the form first, and Form_Activate of a modal Show.
class Form : public QObject {
    Q_OBJECT

 public:
    ~Form() override;

    [[nodiscard]] QString Name() const { return name_; }
    [[nodiscard]] FormKind Kind() const { return kind_; }
    /// The widget that holds the controls.
    [[nodiscard]] QWidget* Surface() const { return surface_; }
    /// The window around it: QMainWindow, QMdiSubWindow or QDialog.
    [[nodiscard]] QWidget* Window() const { return window_; }

    [[nodiscard]] QString Caption() const;
    void SetCaption(const QString& caption);
    [[nodiscard]] QString Tag() const { return tag_; }
    void SetTag(const QString& tag) { tag_ = tag; }

    // Outer geometry in twips; of a child window inside the main window's area.
    [[nodiscard]] int Left() const;
    [[nodiscard]] int Top() const;
    [[nodiscard]] int Width() const;
    [[nodiscard]] int Height() const;
    void SetLeft(int twips);
    void SetTop(int twips);
    void SetWidth(int twips);
    void SetHeight(int twips);
    /// Size of the surface in twips.
    [[nodiscard]] int ScaleWidth() const;
    [[nodiscard]] int ScaleHeight() const;

    [[nodiscard]] forms::WindowState WindowState() const;
    void SetWindowState(forms::WindowState state);
    [[nodiscard]] bool Visible() const;

    /// Shows the form; with Modal returns when it hides or unloads. Fires Resize and Activate at first show,
    /// then GotFocus of the first control in tab order. A modal Show throws the error that leaves its
    /// Activate, after the form has been unloaded: nobody would end what has not begun.
    void Show(ShowMode mode = ShowMode::Modeless);
    void Hide();
    /// 0 brings the form to the front and activates it.
    void ZOrder(int position);

    /// The controls in the order of the layout file, those inside containers included.
    [[nodiscard]] std::vector<QWidget*> Controls() const;

    /// Runs QueryUnload, then Unload, and destroys the default instance; false when a handler cancelled. The
    /// object itself lives on until control is back in the event loop, so a handler may unload its own form.
    /// The main window unloads all other forms first, in the order of loading.
    bool Unload();

 protected:
    Form(QString name, FormKind kind);

    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_Resize() {}
    virtual void Form_QueryUnload(bool& /*cancel*/) {}
    virtual void Form_Unload(bool& /*cancel*/) {}
    /// Sees keys before the control that has the focus. Key codes are those of the platform (13 Enter, 27
    /// Escape, 115 F4, 119 F8); shift is 1 Shift, 2 Ctrl, 4 Alt; 0 swallows the key.
    virtual void Form_KeyDown(int& /*keyCode*/, int /*shift*/) {}

 private:
    friend class FormHost;
    template <class F>
    friend F& Instance();
    template <class F>
    friend bool IsLoaded();

    class Private;

    /// The place of the one instance of a form class.
    static std::unique_ptr<Form>& Slot(std::type_index type);
    /// Puts a new instance into its place, registers it and runs Form_Load; takes it out again when that
    /// fails.
    static void Load(std::unique_ptr<Form>& slot, std::unique_ptr<Form> form);
    static bool UnloadOthers();

    void AdoptSurface();
    void ShowFirst();
    void ShowAgain();
    void RunModally();
    void BecomeActive();
    void Activated();
    void RethrowFailure();
    void Resized();
    void MakeRoomForFrame();
    bool eventFilter(QObject* watched, QEvent* event) override;
    [[nodiscard]] bool MayUnload();
    void Release();

    std::unique_ptr<Private> d_;
    QString name_;
    FormKind kind_;
    QString tag_;
    QWidget* surface_;
    QWidget* window_;
};

/// The global instance of a form class, created (and loaded) at first touch and again after it was unloaded.
template <class F>
F& Instance() {
    std::unique_ptr<Form>& slot = Form::Slot(typeid(F));
    if (!slot) {
        Form::Load(slot, std::unique_ptr<Form>(new F()));
    }
    return static_cast<F&>(*slot);
}

/// Whether the global instance exists now; does not create it.
template <class F>
bool IsLoaded() {
    return Form::Slot(typeid(F)) != nullptr;
}

}  // namespace quardele::forms
