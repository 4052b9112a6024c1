#include "open_document.h"

#include <unistd.h>

#include <utility>

#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/XTopWindow2.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/text/XTextViewCursorSupplier.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <com/sun/star/view/XViewSettingsSupplier.hpp>

#include "word_error.h"

namespace quardele::word::writer {

namespace {

namespace fs = std::filesystem;
using css::uno::Any;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

constexpr char kBlankDocument[] = "private:factory/swriter";
constexpr char kLetterFormat[] = "MS Word 2007 XML";

Reference<css::awt::XWindow> WindowOf(const Reference<css::frame::XController>& controller) {
    return {controller->getFrame()->getContainerWindow(), UNO_QUERY_THROW};
}

/// Writer itself makes missing folders without a word, and Word does not.
void RequireWritable(const fs::path& file) {
    std::error_code failure;
    const bool exists = fs::exists(file, failure);
    const fs::path folder = file.parent_path();
    const bool writable =
        fs::is_directory(folder, failure) && access(folder.c_str(), W_OK) == 0 &&
        (!exists || (fs::is_regular_file(file, failure) && access(file.c_str(), W_OK) == 0));
    if (!writable) {
        throw Failure(WordError::BadFileName);
    }
}

}  // namespace

std::shared_ptr<OpenDocument> OpenDocument::FromFile(const std::shared_ptr<Office>& office,
                                                     const fs::path& file, Mode mode) {
    auto document = Load(office, FileUrl(file), mode);
    if (mode == Mode::Edit) {
        office->NoteOpenFile(file);
    }
    if (mode != Mode::NewFromTemplate) {
        document->file_ = file;
    }
    return document;
}

std::shared_ptr<OpenDocument> OpenDocument::Blank(const std::shared_ptr<Office>& office) {
    return Load(office, rtl::OUString(kBlankDocument), Mode::Edit);
}

std::shared_ptr<OpenDocument> OpenDocument::Load(const std::shared_ptr<Office>& office,
                                                 const rtl::OUString& url, Mode mode) {
    Reference<css::lang::XComponent> component;
    try {
        constexpr sal_Int16 kNeverRunMacros = 0;
        component = office->Desktop()->loadComponentFromURL(
            url, "_blank", 0,
            Settings({{"Hidden", Any(true)},
                      {"AsTemplate", Any(mode == Mode::NewFromTemplate)},
                      {"ReadOnly", Any(mode == Mode::ReadOnly)},
                      {"MacroExecutionMode", Any(kNeverRunMacros)}}));
    } catch (const css::lang::IllegalArgumentException&) {
        throw Failure(WordError::FileNotFound);
    }
    const Reference<css::text::XTextDocument> model(component, UNO_QUERY);
    if (!model.is() || !model->getCurrentController().is()) {
        // A workbook, for example: nobody sees it, and as long as it is open the office does not end.
        if (const Reference<css::util::XCloseable> other(component, UNO_QUERY); other.is()) {
            other->close(true);
        }
        throw Failure(WordError::FileNotFound);
    }
    return std::shared_ptr<OpenDocument>(new OpenDocument(office, model));
}

OpenDocument::OpenDocument(std::shared_ptr<Office> office, Reference<css::text::XTextDocument> model)
    : office_(std::move(office)),
      model_(std::move(model)),
      controller_(model_->getCurrentController()),
      cursor_(Reference<css::text::XTextViewCursorSupplier>(controller_, UNO_QUERY_THROW)->getViewCursor()) {}

Reference<css::uno::XInterface> OpenDocument::ViewSettings() const {
    return Reference<css::view::XViewSettingsSupplier>(controller_, UNO_QUERY_THROW)->getViewSettings();
}

bool OpenDocument::IsClosed() {
    if (!closed_) {
        try {
            closed_ = !model_->getCurrentController().is();
        } catch (const css::uno::Exception&) {
            closed_ = true;
        }
    }
    return closed_;
}

void OpenDocument::Close() {
    Reference<css::util::XModifiable>(model_, UNO_QUERY_THROW)->setModified(false);
    Reference<css::util::XCloseable>(model_, UNO_QUERY_THROW)->close(true);
    closed_ = true;
}

void OpenDocument::SaveAs(const fs::path& file) {
    RequireWritable(file);
    Reference<css::frame::XStorable>(model_, UNO_QUERY_THROW)
        ->storeAsURL(FileUrl(file), Settings({{"FilterName", Any(rtl::OUString(kLetterFormat))}}));
    office_->NoteOpenFile(file);
    file_ = file;
}

bool OpenDocument::IsFrom(const fs::path& file) const {
    std::error_code unequal;
    return !file_.empty() && fs::equivalent(file_, file, unequal);
}

void OpenDocument::Save() {
    const Reference<css::frame::XStorable> storable(model_, UNO_QUERY_THROW);
    if (!storable->hasLocation()) {
        throw Failure(WordError::CommandFailed);
    }
    storable->store();
}

void OpenDocument::SetPlace(const WindowPlace& place) {
    place_ = place;
    if (shown_) {
        ApplyPlace();
    }
}

void OpenDocument::ApplyPlace() {
    const auto window = WindowOf(controller_);
    const Reference<css::awt::XTopWindow2> top(window, UNO_QUERY_THROW);
    if (place_.state == WindowState::Normal) {
        top->setIsMaximized(false);
        top->setIsMinimized(false);
    }
    const Pixels position = place_.position.value_or(Pixels{});
    const Pixels size = place_.size.value_or(Pixels{});
    const int flags =
        (place_.position ? css::awt::PosSize::POS : 0) | (place_.size ? css::awt::PosSize::SIZE : 0);
    window->setPosSize(position.x, position.y, size.x, size.y, static_cast<sal_Int16>(flags));
    if (place_.state == WindowState::Maximized) {
        top->setIsMaximized(true);
    } else if (place_.state == WindowState::Minimized) {
        top->setIsMinimized(true);
    }
}

// Shown late, when the operator may have done anything meanwhile: a failure concerns nobody.
void OpenDocument::ShowWindow() {
    try {
        WindowOf(controller_)->setVisible(true);
        shown_ = true;
        ApplyPlace();
    } catch (const css::uno::Exception&) {
        closed_ = IsClosed();
    }
}

void OpenDocument::HideWindow() {
    shown_ = false;
    WindowOf(controller_)->setVisible(false);
}

void OpenDocument::Dispatch(const char* command) {
    office_->RunCommand(controller_, command);
}

void OpenDocument::Activate() {
    if (!shown_) {
        return;
    }
    controller_->getFrame()->activate();
    const auto window = WindowOf(controller_);
    Reference<css::awt::XTopWindow2>(window, UNO_QUERY_THROW)->toFront();
    window->setFocus();
}

Text OpenDocument::Title() const {
    return ToText(Reference<css::frame::XTitle>(controller_->getFrame(), UNO_QUERY_THROW)->getTitle());
}

}  // namespace quardele::word::writer
