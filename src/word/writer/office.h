// The running office: one process for all logical applications, in a profile of its own.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

#include "office_process.h"
#include "uno_support.h"

namespace quardele::word::writer {

class OpenDocument;

/// A connection to the office. It is shared by everything that stems from it; when the last of these goes,
/// an office with no open document ends, one with documents stays for the operator.
class Office : public std::enable_shared_from_this<Office> {
 public:
    /// The office in use, else one that is started, or found running in the profile. Throws RuntimeError 429
    /// when that fails.
    [[nodiscard]] static std::shared_ptr<Office> Acquire();
    ~Office();
    Office(const Office&) = delete;
    Office& operator=(const Office&) = delete;

    [[nodiscard]] const Reference<css::frame::XDesktop2>& Desktop() const { return desktop_; }
    [[nodiscard]] bool ShowsWindows() const { return showsWindows_; }

    /// Whether the process has ended or has broken the connection. Lock files that it left beside the letters
    /// are removed then: nobody holds those letters open any more.
    [[nodiscard]] bool IsGone();
    /// Runs a command of Writer's own (".uno:Copy" and the like) in a document's window.
    void RunCommand(const Reference<css::frame::XController>& controller, const char* command) const;
    /// A file that an open document lies in.
    void NoteOpenFile(const std::filesystem::path& file) { openFiles_.insert(file); }

    /// Shows the document's window when the program pauses, see ShowPending. A letter is filled four times as
    /// fast while its window is hidden.
    void ShowSoon(const std::shared_ptr<OpenDocument>& document);
    /// Takes back ShowSoon.
    void DoNotShow(const std::shared_ptr<OpenDocument>& document);
    /// Shows the windows that wait for it.
    void ShowPending();

 private:
    explicit Office(bool showsWindows) : showsWindows_(showsWindows) {}
    void Start(const std::filesystem::path& installation);

    bool showsWindows_;
    bool gone_ = false;
    std::filesystem::path profile_;
    std::optional<OfficeProcess> process_;
    Reference<css::uno::XComponentContext> context_;
    Reference<css::frame::XDesktop2> desktop_;
    std::set<std::filesystem::path> openFiles_;
    std::vector<std::weak_ptr<OpenDocument>> pending_;
};

}  // namespace quardele::word::writer
