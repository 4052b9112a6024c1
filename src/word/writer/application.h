// Word's Application object. Each one is a logical application: it has its own documents and its own active
// document, and they all live in one office.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "open_document.h"
#include "word_object.h"

namespace quardele::word::writer {

class Application final : public WordObject<Application>, public std::enable_shared_from_this<Application> {
 public:
    using Documents = std::vector<std::shared_ptr<OpenDocument>>;

    /// A new application, not visible and without a document. Throws RuntimeError 429.
    [[nodiscard]] static std::shared_ptr<Application> Create();
    /// Leaves the documents that the operator can see, and closes the others: nobody could reach them.
    ~Application() override;
    static std::span<const Member<Application>> Members();

    /// Its open documents, in the order in which they became active. Documents that the operator closed are
    /// not among them.
    [[nodiscard]] Documents OpenDocuments();
    /// The document opened or activated last; throws RuntimeError 4248 when none is open.
    [[nodiscard]] std::shared_ptr<OpenDocument> Active() const;
    /// The office; throws RuntimeError 462 after Quit.
    const std::shared_ptr<Office>& RunningOffice() const;
    void Adopt(const std::shared_ptr<OpenDocument>& document);
    /// The open document that lies in a file; null when there is none.
    [[nodiscard]] std::shared_ptr<OpenDocument> OpenedFrom(const std::filesystem::path& file);
    void MakeActive(const std::shared_ptr<OpenDocument>& document);

    /// The place of its windows.
    [[nodiscard]] const WindowPlace& Place() const { return place_; }
    /// For the active window and those to come.
    void SetPlace(const WindowPlace& place);

 private:
    explicit Application(std::shared_ptr<Office> office) : WordObject(std::move(office)) {}
    void CloseDocuments();

    Value Activate(const Arguments&);
    Value ActiveDocument(const Arguments&);
    Value ActiveWindow(const Arguments&);
    Value GetDocuments(const Arguments&);
    Value Quit(const Arguments&);
    Value Selection(const Arguments&);
    Value Tasks(const Arguments& arguments);
    Value Visible(const Arguments&) { return visible_; }
    void SetVisible(const Value& visible);
    Value GetWindowState(const Arguments&) { return static_cast<int>(place_.state); }
    void SetWindowState(const Value& state);

    Documents documents_;
    WindowPlace place_;
    bool visible_ = false;
    bool quit_ = false;
};

}  // namespace quardele::word::writer
