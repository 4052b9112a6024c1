// The multiple-document frame: the one top-level window, with a menu, child windows and a status bar.
#pragma once

#include <forms/form.h>

class QMainWindow;
class QMdiArea;

namespace quardele::forms {

/// A form of kind Main. Its Window() is a QMainWindow; the layout file is a QMainWindow too:
///   ui.setupUi(MainWindow());
/// Child forms appear in its QMdiArea (the central widget, object name "MDI_Client"). Closing it unloads the
/// child forms first, in the order of loading, each by its own handlers; the process ends when none is left.
class MdiForm : public Form {
    Q_OBJECT
 public:
    [[nodiscard]] QMainWindow* MainWindow() const;
    [[nodiscard]] QMdiArea* Client() const;
    /// The frame that child forms appear in; null before it was created.
    [[nodiscard]] static MdiForm* Current();

 protected:
    explicit MdiForm(QString name);
    /// Call at the end of the constructor, after setupUi.
    void AdoptLayout();
};

}  // namespace quardele::forms
