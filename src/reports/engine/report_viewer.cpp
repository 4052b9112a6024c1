#include <engine/report_viewer.h>

#include <QVBoxLayout>

#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/printers.h>
#include <forms/strings.h>

#include "output.h"
#include "page_view.h"
#include "text_search.h"
#include "viewer_bar.h"
#include "zoom_levels.h"

namespace quardele::engine {

namespace error = basic::error;
using forms::On;

class ReportViewer::Private {
 public:
    explicit Private(ReportViewer& viewer)
        : view(new PageView(&viewer)), viewer_(viewer), bar_(new ViewerBar(&viewer)) {
        auto* layout = new QVBoxLayout(&viewer_);
        layout->setContentsMargins({});
        layout->setSpacing(0);
        layout->addWidget(bar_);
        layout->addWidget(view, 1);
        Connect();
        ShowState();
    }

    void Zoom(int level) {
        if (level == kFitWidth || level == kFitPage) {
            view->SetFit(level == kFitWidth ? Fit::Width : Fit::Page);
        } else if (level >= kPercents.front() && level <= kPercents.back()) {
            view->SetPercent(level);
        } else {
            throw basic::RuntimeError(error::kInvalidCall);
        }
        zoomLevel = level;
        ShowState();
    }

    void ShowDocument(std::shared_ptr<const Document> shown) {
        document = std::move(shown);
        search_.SetDocument(document);
        view->SetDocument(document);
        ShowState();
    }

    bool FindNext(const QString& text) {
        const Occurrence* const place = search_.Next(text, CurrentPage());
        if (place != nullptr) {
            view->ShowOccurrence(*place);
        }
        return place != nullptr;
    }

    [[nodiscard]] int CurrentPage() const { return document == nullptr ? 0 : view->CurrentPage(); }

    PageView* const view;
    std::shared_ptr<Report> report;
    std::shared_ptr<const Document> document;
    int zoomLevel = kFitWidth;

 private:
    void Connect() {
        On(bar_, &ViewerBar::PrintAsked, &viewer_, [this] { Print(); });
        On(bar_, &ViewerBar::PdfAsked, &viewer_, [this] { SavePdf(); });
        On(bar_, &ViewerBar::PageAsked, &viewer_, [this](int page) { view->ShowPage(page); });
        On(bar_, &ViewerBar::ZoomAsked, &viewer_, [this](int level) { Zoom(level); });
        On(bar_, &ViewerBar::ZoomStepAsked, &viewer_, [this](int direction) { Step(direction); });
        On(bar_, &ViewerBar::SearchAsked, &viewer_, [this](const QString& text) { Search(text); });
        On(view, &PageView::CurrentPageChanged, &viewer_, [this] { ShowState(); });
        On(view, &PageView::ZoomAsked, &viewer_, [this](int direction) { Step(direction); });
    }

    void Step(int direction) { Zoom(NextPercent(view->Percent(), direction)); }

    void Search(const QString& text) {
        if (!FindNext(text)) {
            emit viewer_.TextNotFound(text);
        }
    }

    /// What is shown is printed, whatever happens to the data meanwhile.
    void Print() {
        if (!forms::HasPrinter()) {
            SavePdf();
            return;
        }
        TellingFailures([this] {
            const std::unique_ptr<QPrinter> printer = MakePrinter(document->Title(), document->Layout());
            if (ConfirmPrinting(*printer, document->Pages(), viewer_.window())) {
                PrintOn(*printer, *document);
            }
        });
    }

    void SavePdf() {
        TellingFailures([this] { OfferPdf(*document, viewer_.window()); });
    }

    template <class Action>
    static void TellingFailures(const Action& action) {
        try {
            action();
        } catch (const basic::RuntimeError& failure) {
            forms::MsgBox(forms::ToQString(failure.Description()), forms::BoxButtons::Ok,
                          forms::BoxIcon::Exclamation);
        }
    }

    void ShowState() {
        bar_->ShowPages(CurrentPage(), document == nullptr ? 0 : document->Pages());
        bar_->ShowZoom(zoomLevel);
    }

    ReportViewer& viewer_;
    ViewerBar* bar_;
    TextSearch search_;
};

ReportViewer::ReportViewer(QWidget* parent) : QWidget(parent), d_(std::make_unique<Private>(*this)) {
    setFocusProxy(d_->view);
}

ReportViewer::~ReportViewer() = default;

std::shared_ptr<Report> ReportViewer::ReportSource() const {
    return d_->report;
}

void ReportViewer::SetReportSource(std::shared_ptr<Report> report) {
    d_->report = std::move(report);
    d_->ShowDocument(nullptr);
}

void ReportViewer::Zoom(int level) {
    d_->Zoom(level);
}

int ReportViewer::ZoomLevel() const {
    return d_->zoomLevel;
}

void ReportViewer::ViewReport() {
    if (d_->report == nullptr) {
        throw basic::RuntimeError(error::kObjectNotSet);
    }
    d_->ShowDocument(d_->report->Compose());
    d_->view->setFocus();
}

std::shared_ptr<const Document> ReportViewer::Shown() const {
    return d_->document;
}

int ReportViewer::CurrentPage() const {
    return d_->CurrentPage();
}

void ReportViewer::ShowPage(int page) {
    d_->view->ShowPage(page);
}

bool ReportViewer::FindNext(const QString& text) {
    return d_->FindNext(text);
}

}  // namespace quardele::engine
