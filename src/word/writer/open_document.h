// A document that is open in the office, with its view and its window.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/text/XTextDocument.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/text/XTextViewCursor.hpp>

#include "office.h"
#include "uno_support.h"

namespace quardele::word::writer {

/// States of a window, with Word's numbers.
enum class WindowState { Normal = 0, Maximized = 1, Minimized = 2 };

struct Pixels {
    int x = 0;
    int y = 0;
};

/// Where a window is to stand; what is left out is left to the window system.
struct WindowPlace {
    std::optional<Pixels> position;
    std::optional<Pixels> size;
    WindowState state = WindowState::Normal;
};

class OpenDocument {
 public:
    /// What the view was told and Writer has no notion of, with Word's numbers.
    struct RememberedView {
        int type = 3;
        int split = 0;
        /// Where the body was left for the header or footer.
        Reference<css::text::XTextRange> bodyPlace;
    };

    /// Opens a file, or a new document made of a template file. The window is hidden. Throws RuntimeError
    /// 5174.
    enum class Mode { NewFromTemplate, Edit, ReadOnly };
    [[nodiscard]] static std::shared_ptr<OpenDocument> FromFile(const std::shared_ptr<Office>& office,
                                                                const std::filesystem::path& file, Mode mode);
    [[nodiscard]] static std::shared_ptr<OpenDocument> Blank(const std::shared_ptr<Office>& office);

    [[nodiscard]] const std::shared_ptr<Office>& GetOffice() const { return office_; }
    [[nodiscard]] const Reference<css::text::XTextDocument>& Model() const { return model_; }
    [[nodiscard]] const Reference<css::frame::XController>& Controller() const { return controller_; }
    /// The selection.
    [[nodiscard]] const Reference<css::text::XTextViewCursor>& Cursor() const { return cursor_; }
    /// The settings of the view: rulers, marks, layout.
    [[nodiscard]] Reference<css::uno::XInterface> ViewSettings() const;
    [[nodiscard]] RememberedView& View() { return view_; }

    /// Whether it was closed, by us or by the operator.
    [[nodiscard]] bool IsClosed();
    /// The same as far as it is known already, without asking the office.
    [[nodiscard]] bool IsKnownClosed() const { return closed_; }
    /// Closes it, losing what is not saved.
    void Close();

    /// Saves under a path of this machine in the format of today's Word, whatever the extension. Throws
    /// RuntimeError 5152 when the folder is missing or not writable.
    void SaveAs(const std::filesystem::path& file);
    /// Whether it was opened from a file, or saved in it last.
    [[nodiscard]] bool IsFrom(const std::filesystem::path& file) const;
    /// Throws RuntimeError 4198 when it was never saved under a name.
    void Save();

    /// Takes effect at once when the window is shown, else when it will be.
    void SetPlace(const WindowPlace& place);
    void ShowWindow();
    void HideWindow();
    /// Runs a command of Writer's own, on the selection.
    void Dispatch(const char* command);
    /// Brings a shown window to the front.
    void Activate();
    /// The text of the window's title bar.
    [[nodiscard]] Text Title() const;

 private:
    OpenDocument(std::shared_ptr<Office> office, Reference<css::text::XTextDocument> model);
    static std::shared_ptr<OpenDocument> Load(const std::shared_ptr<Office>& office, const rtl::OUString& url,
                                              Mode mode);
    void ApplyPlace();

    std::shared_ptr<Office> office_;
    Reference<css::text::XTextDocument> model_;
    Reference<css::frame::XController> controller_;
    Reference<css::text::XTextViewCursor> cursor_;
    std::filesystem::path file_;
    RememberedView view_;
    WindowPlace place_;
    bool shown_ = false;
    bool closed_ = false;
};

}  // namespace quardele::word::writer
