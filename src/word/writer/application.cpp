#include "application.h"

#include <algorithm>

#include <com/sun/star/uno/Exception.hpp>

#include <basic/conversion.h>

#include "document.h"
#include "documents.h"
#include "selection.h"
#include "tasks.h"
#include "window.h"
#include "word_error.h"

namespace quardele::word::writer {

std::span<const Member<Application>> Application::Members() {
    static constexpr Member<Application> kMembers[] = {
        {u"Activate", &Application::Activate},
        {u"ActiveDocument", &Application::ActiveDocument},
        {u"ActiveWindow", &Application::ActiveWindow},
        {u"Documents", &Application::GetDocuments},
        {u"Quit", &Application::Quit},
        {u"Selection", &Application::Selection},
        {u"Tasks", &Application::Tasks},
        {u"Visible", &Application::Visible, &Application::SetVisible},
        {u"WindowState", &Application::GetWindowState, &Application::SetWindowState},
    };
    return kMembers;
}

std::shared_ptr<Application> Application::Create() {
    std::shared_ptr<Office> office = Office::Acquire();
    office->ShowPending();
    return std::shared_ptr<Application>(new Application(std::move(office)));
}

Application::~Application() {
    if (quit_) {
        return;
    }
    if (visible_ && GetOffice()->ShowsWindows()) {
        GetOffice()->ShowPending();
    } else {
        CloseDocuments();
    }
}

Application::Documents Application::OpenDocuments() {
    RunningOffice();
    std::erase_if(documents_, [](const auto& document) { return document->IsClosed(); });
    return documents_;
}

std::shared_ptr<OpenDocument> Application::Active() const {
    RunningOffice();
    const auto open = [](const auto& document) { return !document->IsKnownClosed(); };
    const auto active = std::find_if(documents_.rbegin(), documents_.rend(), open);
    if (active == documents_.rend()) {
        throw Failure(WordError::NoDocument);
    }
    return *active;
}

const std::shared_ptr<Office>& Application::RunningOffice() const {
    if (quit_) {
        throw basic::RuntimeError(basic::error::kServerGone);
    }
    return GetOffice();
}

void Application::Adopt(const std::shared_ptr<OpenDocument>& document) {
    documents_.push_back(document);
    document->SetPlace(place_);
    if (visible_) {
        GetOffice()->ShowSoon(document);
    }
}

std::shared_ptr<OpenDocument> Application::OpenedFrom(const std::filesystem::path& file) {
    const Documents documents = OpenDocuments();
    const auto found = std::find_if(documents.begin(), documents.end(),
                                    [&](const auto& document) { return document->IsFrom(file); });
    return found == documents.end() ? nullptr : *found;
}

void Application::MakeActive(const std::shared_ptr<OpenDocument>& document) {
    std::erase(documents_, document);
    documents_.push_back(document);
    document->SetPlace(place_);
    document->Activate();
}

void Application::SetPlace(const WindowPlace& place) {
    place_ = place;
    if (!OpenDocuments().empty()) {
        Active()->SetPlace(place_);
    }
}

void Application::CloseDocuments() {
    for (const auto& document : std::exchange(documents_, {})) {
        try {
            document->Close();
        } catch (const css::uno::Exception&) {
            continue;  // The operator closed it, or the office is gone: closed it is.
        }
    }
}

Value Application::Activate(const Arguments&) {
    if (!OpenDocuments().empty()) {
        Active()->Activate();
    }
    return {};
}

Value Application::ActiveDocument(const Arguments&) {
    return Make<Document>(Active());
}

Value Application::ActiveWindow(const Arguments&) {
    return Make<Window>(Active());
}

Value Application::GetDocuments(const Arguments&) {
    RunningOffice();
    return ObjectPtr(Make<writer::Documents>(shared_from_this()));
}

Value Application::Quit(const Arguments&) {
    RunningOffice();
    CloseDocuments();
    quit_ = true;
    ReleaseOffice();
    return {};
}

Value Application::Selection(const Arguments&) {
    return Make<writer::Selection>(Active());
}

Value Application::Tasks(const Arguments& arguments) {
    RunningOffice();
    return CollectionOrItem(Make<writer::Tasks>(shared_from_this()), arguments);
}

void Application::SetVisible(const Value& visible) {
    const bool show = basic::CBool(visible.Plain());
    for (const auto& document : OpenDocuments()) {
        if (show && !visible_) {
            GetOffice()->ShowSoon(document);
        } else if (!show) {
            GetOffice()->DoNotShow(document);
            document->HideWindow();
        }
    }
    visible_ = show;
}

void Application::SetWindowState(const Value& state) {
    const std::int32_t number = basic::CLng(state.Plain());
    if (number < 0 || number > static_cast<int>(WindowState::Minimized)) {
        throw Failure(WordError::BadParameter);
    }
    WindowPlace place = place_;
    place.state = static_cast<WindowState>(number);
    SetPlace(place);
}

}  // namespace quardele::word::writer
