#include <engine/report_viewer.h>

#include <algorithm>
#include <array>

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

#include <forms/controls.h>
#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/printers.h>
#include <forms/strings.h>

#include "output.h"
#include "page_view.h"

namespace quardele::engine {

namespace error = basic::error;
using forms::Button;
using forms::On;

namespace {

constexpr int kFitWidth = 1;
constexpr int kFitPage = 2;
constexpr int kLeastPercent = 25;
constexpr int kMostPercent = 400;
constexpr std::array kPercents = {25, 50, 75, 100, 125, 150, 200, 300, 400};
constexpr QSize kButton(32, 32);
constexpr int kSpace = 4;
constexpr int kGroupSpace = 12;
constexpr int kBoxHeight = 24;

}  // namespace

class ReportViewer::Private {
 public:
    explicit Private(ReportViewer& viewer) : viewer_(viewer), view(new PageView(&viewer)) {
        MakeBar();
        auto* layout = new QVBoxLayout(&viewer_);
        layout->setContentsMargins({});
        layout->setSpacing(0);
        layout->addWidget(bar_);
        layout->addWidget(view, 1);
        Connect();
        MakeKeys();
        ShowState();
    }

    void Zoom(int level) {
        if (level == kFitWidth || level == kFitPage) {
            view->SetFit(level == kFitWidth ? Fit::Width : Fit::Page);
        } else if (level >= kLeastPercent && level <= kMostPercent) {
            view->SetPercent(level);
        } else {
            throw basic::RuntimeError(error::kInvalidCall);
        }
        zoomLevel = level;
        ShowState();
    }

    void ShowDocument(std::shared_ptr<const Document> shown) {
        document = std::move(shown);
        found_.clear();
        sought_.clear();
        view->SetDocument(document);
        ShowState();
        view->setFocus();
    }

    bool FindNext(const QString& text) {
        if (document == nullptr || text.isEmpty()) {
            return false;
        }
        if (text != sought_) {
            sought_ = text;
            found_ = document->Find(text);
            next_ = 0;
        }
        if (found_.empty()) {
            return false;
        }
        view->ShowOccurrence(found_[next_]);
        next_ = (next_ + 1) % found_.size();
        return true;
    }

    std::shared_ptr<Report> report;
    std::shared_ptr<const Document> document;
    int zoomLevel = kFitWidth;

 private:
    // The bar.

    Button* AddButton(const char* name, const char* icon, const QString& tip, int spaceBefore = kSpace) {
        auto* button = new Button(bar_);
        button->setObjectName(QLatin1StringView(name));
        button->setIcon(QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1StringView(icon))));
        button->setToolTip(tip);
        button->setAccessibleName(tip.section(u'\n', 0, 0));
        button->setFixedSize(kButton);
        AddWidget(button, spaceBefore);
        return button;
    }

    void AddWidget(QWidget* widget, int spaceBefore = kSpace) {
        auto* row = static_cast<QHBoxLayout*>(bar_->layout());
        row->addSpacing(spaceBefore);
        row->addWidget(widget);
    }

    void MakeBar() {
        bar_ = new forms::Frame(&viewer_);
        bar_->SetBar(true);
        auto* row = new QHBoxLayout(bar_);
        row->setContentsMargins(kSpace, kSpace + 2, kSpace, kSpace + 2);
        row->setSpacing(0);
        print_ = AddButton("Cmd_Imprimer", "imprimer-defaut", QStringLiteral("Imprimer\nCtrl+P"));
        pdf_ = AddButton("Cmd_Pdf", "page-pdf", QStringLiteral("Enregistrer en PDF\nCtrl+S"));
        first_ = AddButton("Cmd_Premiere", "page-premiere", QStringLiteral("Première page\nCtrl+Début"),
                           kGroupSpace);
        previous_ =
            AddButton("Cmd_Precedente", "page-precedente", QStringLiteral("Page précédente\nCtrl+Pg préc"));
        MakePageBox();
        following_ =
            AddButton("Cmd_Suivante", "page-suivante", QStringLiteral("Page suivante\nCtrl+Pg suiv"));
        last_ = AddButton("Cmd_Derniere", "page-derniere", QStringLiteral("Dernière page\nCtrl+Fin"));
        smaller_ = AddButton("Cmd_ZoomMoins", "zoom-moins", QStringLiteral("Réduire\nCtrl+-"), kGroupSpace);
        MakeZoomBox();
        larger_ = AddButton("Cmd_ZoomPlus", "zoom-plus", QStringLiteral("Agrandir\nCtrl++"));
        width_ = AddButton("Cmd_Largeur", "largeur-page", QStringLiteral("Largeur de page\nCtrl+0"));
        MakeSearchBox();
        find_ = AddButton("Cmd_Recherche", "recherche", QStringLiteral("Rechercher le suivant\nF3"));
        row->addStretch(1);
    }

    void MakePageBox() {
        page_ = new QLineEdit(bar_);
        page_->setObjectName(QStringLiteral("CTX_Page"));
        page_->setAccessibleName(QStringLiteral("Page"));
        page_->setFixedSize(40, kBoxHeight);
        page_->setAlignment(Qt::AlignRight);
        AddWidget(page_);
        pages_ = new QLabel(bar_);
        pages_->setObjectName(QStringLiteral("CTL_Pages"));
        pages_->setMinimumWidth(34);
        AddWidget(pages_);
    }

    void MakeZoomBox() {
        zoom_ = new QComboBox(bar_);
        zoom_->setObjectName(QStringLiteral("BXC_Zoom"));
        zoom_->setAccessibleName(QStringLiteral("Zoom"));
        zoom_->setFixedSize(126, kBoxHeight);
        zoom_->addItem(QStringLiteral("Largeur de page"), kFitWidth);
        zoom_->addItem(QStringLiteral("Page entière"), kFitPage);
        for (const int percent : kPercents) {
            zoom_->addItem(QStringLiteral("%1 %").arg(percent), percent);
        }
        AddWidget(zoom_);
    }

    void MakeSearchBox() {
        text_ = new forms::TextBox(bar_);
        text_->setObjectName(QStringLiteral("CTX_Recherche"));
        text_->setAccessibleName(QStringLiteral("Texte à rechercher"));
        text_->setPlaceholderText(QStringLiteral("Rechercher"));
        text_->setToolTip(QStringLiteral("Texte à rechercher\nCtrl+F"));
        text_->setFixedSize(120, kBoxHeight);
        AddWidget(text_, kGroupSpace);
    }

    // What the operator does.

    void Connect() {
        On(print_, &Button::Click, &viewer_, [this] { Print(); });
        On(pdf_, &Button::Click, &viewer_, [this] { SavePdf(); });
        On(first_, &Button::Click, &viewer_, [this] { view->ShowPage(1); });
        On(previous_, &Button::Click, &viewer_, [this] { view->ShowPage(view->CurrentPage() - 1); });
        On(following_, &Button::Click, &viewer_, [this] { view->ShowPage(view->CurrentPage() + 1); });
        On(last_, &Button::Click, &viewer_, [this] { view->ShowPage(document->Pages()); });
        On(smaller_, &Button::Click, &viewer_, [this] { Step(-1); });
        On(larger_, &Button::Click, &viewer_, [this] { Step(1); });
        On(width_, &Button::Click, &viewer_, [this] { Zoom(kFitWidth); });
        On(find_, &Button::Click, &viewer_, [this] { Search(); });
        On(text_, &QLineEdit::returnPressed, &viewer_, [this] { Search(); });
        On(page_, &QLineEdit::returnPressed, &viewer_, [this] { GoToTypedPage(); });
        On(page_, &QLineEdit::editingFinished, &viewer_, [this] { ShowState(); });
        On(zoom_, &QComboBox::activated, &viewer_,
           [this](int index) { Zoom(zoom_->itemData(index).toInt()); });
        On(view, &PageView::CurrentPageChanged, &viewer_, [this] { ShowState(); });
        On(view, &PageView::ZoomAsked, &viewer_, [this](int direction) { Step(direction); });
    }

    template <class Action>
    void Key(const QKeySequence& key, Action action) {
        auto* shortcut = new QShortcut(key, &viewer_);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        On(shortcut, &QShortcut::activated, &viewer_, action);
    }

    /// The keys leave the focus where it is: the arrows go on scrolling the pages.
    void MakeKeys() {
        const auto press = [](Button* button) { return [button] { button->click(); }; };
        Key(QKeySequence(Qt::CTRL | Qt::Key_P), press(print_));
        Key(QKeySequence(Qt::CTRL | Qt::Key_S), press(pdf_));
        Key(QKeySequence(Qt::CTRL | Qt::Key_Home), press(first_));
        Key(QKeySequence(Qt::CTRL | Qt::Key_PageUp), press(previous_));
        Key(QKeySequence(Qt::CTRL | Qt::Key_PageDown), press(following_));
        Key(QKeySequence(Qt::CTRL | Qt::Key_End), press(last_));
        Key(QKeySequence(Qt::CTRL | Qt::Key_Minus), press(smaller_));
        Key(QKeySequence(Qt::CTRL | Qt::Key_Plus), press(larger_));
        Key(QKeySequence(Qt::CTRL | Qt::Key_0), press(width_));
        Key(QKeySequence(Qt::Key_F3), press(find_));
        Key(QKeySequence(Qt::CTRL | Qt::Key_F), [this] {
            text_->setFocus();
            text_->selectAll();
        });
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

    void Step(int direction) {
        const int percent = view->Percent();
        if (direction > 0) {
            const auto* const next = std::upper_bound(kPercents.begin(), kPercents.end(), percent);
            Zoom(next == kPercents.end() ? kMostPercent : *next);
        } else {
            const auto* const next = std::lower_bound(kPercents.begin(), kPercents.end(), percent);
            Zoom(next == kPercents.begin() ? kLeastPercent : *(next - 1));
        }
    }

    void Search() {
        const QString text = text_->text();
        if (text.isEmpty()) {
            text_->setFocus();
        } else if (!FindNext(text)) {
            forms::MsgBox(QStringLiteral("« %1 » ne se trouve pas dans l'état.").arg(text),
                          forms::BoxButtons::Ok, forms::BoxIcon::Information);
        }
    }

    void GoToTypedPage() {
        bool isNumber = false;
        const int page = page_->text().toInt(&isNumber);
        if (isNumber) {
            view->ShowPage(page);
        }
        ShowState();
        page_->selectAll();
    }

    /// Page, number of pages, zoom, and which buttons make sense.
    void ShowState() {
        const int pages = document == nullptr ? 0 : document->Pages();
        const int page = document == nullptr ? 0 : view->CurrentPage();
        for (QWidget* control :
             {static_cast<QWidget*>(print_), static_cast<QWidget*>(pdf_), static_cast<QWidget*>(page_),
              static_cast<QWidget*>(smaller_), static_cast<QWidget*>(larger_), static_cast<QWidget*>(width_),
              static_cast<QWidget*>(zoom_), static_cast<QWidget*>(text_), static_cast<QWidget*>(find_)}) {
            control->setEnabled(pages > 0);
        }
        first_->setEnabled(page > 1);
        previous_->setEnabled(page > 1);
        following_->setEnabled(page < pages);
        last_->setEnabled(page < pages);
        page_->setText(pages > 0 ? QString::number(page) : QString());
        pages_->setText(pages > 0 ? QStringLiteral("/ %1").arg(pages) : QString());
        zoom_->setCurrentIndex(zoom_->findData(zoomLevel));
        zoom_->setPlaceholderText(QStringLiteral("%1 %").arg(zoomLevel));
    }

    ReportViewer& viewer_;
    forms::Frame* bar_ = nullptr;
    Button* print_ = nullptr;
    Button* pdf_ = nullptr;
    Button* first_ = nullptr;
    Button* previous_ = nullptr;
    Button* following_ = nullptr;
    Button* last_ = nullptr;
    Button* smaller_ = nullptr;
    Button* larger_ = nullptr;
    Button* width_ = nullptr;
    Button* find_ = nullptr;
    QLineEdit* page_ = nullptr;
    QLabel* pages_ = nullptr;
    QComboBox* zoom_ = nullptr;
    forms::TextBox* text_ = nullptr;
    QString sought_;
    std::vector<Occurrence> found_;
    std::size_t next_ = 0;

 public:
    PageView* view;
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
}

std::shared_ptr<const Document> ReportViewer::Shown() const {
    return d_->document;
}

int ReportViewer::CurrentPage() const {
    return d_->document == nullptr ? 0 : d_->view->CurrentPage();
}

void ReportViewer::ShowPage(int page) {
    d_->view->ShowPage(page);
}

bool ReportViewer::FindNext(const QString& text) {
    return d_->FindNext(text);
}

}  // namespace quardele::engine
