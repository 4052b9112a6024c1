#include "viewer_bar.h"

#include <QHBoxLayout>
#include <QShortcut>

#include <engine/report_viewer.h>
#include <forms/events.h>

#include "zoom_levels.h"

namespace quardele::engine {

using forms::Button;
using forms::On;

namespace {

constexpr QSize kButton(32, 32);
constexpr int kSpace = 4;
constexpr int kGroupSpace = 12;
constexpr int kBoxHeight = 24;

}  // namespace

ViewerBar::ViewerBar(QWidget* parent) : Frame(parent) {
    SetBar(true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kSpace, kSpace + 2, kSpace, kSpace + 2);
    row->setSpacing(0);
    print_ = AddButton("Cmd_Imprimer", "imprimer-defaut", QStringLiteral("Imprimer\nCtrl+P"), kSpace);
    pdf_ = AddButton("Cmd_Pdf", "page-pdf", QStringLiteral("Enregistrer en PDF\nCtrl+S"), kSpace);
    first_ =
        AddButton("Cmd_Premiere", "page-premiere", QStringLiteral("Première page\nCtrl+Début"), kGroupSpace);
    previous_ = AddButton("Cmd_Precedente", "page-precedente",
                          QStringLiteral("Page précédente\nCtrl+Pg préc"), kSpace);
    MakePageBox();
    following_ =
        AddButton("Cmd_Suivante", "page-suivante", QStringLiteral("Page suivante\nCtrl+Pg suiv"), kSpace);
    last_ = AddButton("Cmd_Derniere", "page-derniere", QStringLiteral("Dernière page\nCtrl+Fin"), kSpace);
    smaller_ = AddButton("Cmd_ZoomMoins", "zoom-moins", QStringLiteral("Réduire\nCtrl+-"), kGroupSpace);
    MakeZoomBox();
    larger_ = AddButton("Cmd_ZoomPlus", "zoom-plus", QStringLiteral("Agrandir\nCtrl++"), kSpace);
    width_ = AddButton("Cmd_Largeur", "largeur-page", QStringLiteral("Largeur de page\nCtrl+0"), kSpace);
    MakeSearchBox();
    find_ = AddButton("Cmd_Recherche", "recherche", QStringLiteral("Rechercher le suivant\nF3"), kSpace);
    row->addStretch(1);
    Connect();
    MakeKeys();
}

Button* ViewerBar::AddButton(const char* name, const char* icon, const QString& tip, int spaceBefore) {
    auto* button = new Button(this);
    button->setObjectName(QLatin1StringView(name));
    button->setIcon(QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1StringView(icon))));
    button->setToolTip(tip);
    button->setAccessibleName(tip.section(u'\n', 0, 0));
    button->setFixedSize(kButton);
    AddWidget(button, spaceBefore);
    return button;
}

void ViewerBar::AddWidget(QWidget* widget, int spaceBefore) {
    auto* row = static_cast<QHBoxLayout*>(layout());
    row->addSpacing(spaceBefore);
    row->addWidget(widget);
}

void ViewerBar::MakePageBox() {
    pageBox_ = new QLineEdit(this);
    pageBox_->setObjectName(QStringLiteral("CTX_Page"));
    pageBox_->setAccessibleName(QStringLiteral("Page"));
    pageBox_->setFixedSize(40, kBoxHeight);
    pageBox_->setAlignment(Qt::AlignRight);
    AddWidget(pageBox_, kSpace);
    pagesLabel_ = new QLabel(this);
    pagesLabel_->setObjectName(QStringLiteral("CTL_Pages"));
    pagesLabel_->setMinimumWidth(34);
    AddWidget(pagesLabel_, kSpace);
}

void ViewerBar::MakeZoomBox() {
    zoom_ = new QComboBox(this);
    zoom_->setObjectName(QStringLiteral("BXC_Zoom"));
    zoom_->setAccessibleName(QStringLiteral("Zoom"));
    zoom_->setFixedSize(126, kBoxHeight);
    zoom_->addItem(QStringLiteral("Largeur de page"), ReportViewer::kFitWidth);
    zoom_->addItem(QStringLiteral("Page entière"), ReportViewer::kFitPage);
    for (const int percent : kPercents) {
        zoom_->addItem(QStringLiteral("%1 %").arg(percent), percent);
    }
    AddWidget(zoom_, kSpace);
}

void ViewerBar::MakeSearchBox() {
    text_ = new forms::TextBox(this);
    text_->setObjectName(QStringLiteral("CTX_Recherche"));
    text_->setAccessibleName(QStringLiteral("Texte à rechercher"));
    text_->setPlaceholderText(QStringLiteral("Rechercher"));
    text_->setToolTip(QStringLiteral("Texte à rechercher\nCtrl+F"));
    text_->setFixedSize(120, kBoxHeight);
    AddWidget(text_, kGroupSpace);
}

void ViewerBar::Connect() {
    On(print_, &Button::Click, this, [this] { emit PrintAsked(); });
    On(pdf_, &Button::Click, this, [this] { emit PdfAsked(); });
    On(first_, &Button::Click, this, [this] { emit PageAsked(1); });
    On(previous_, &Button::Click, this, [this] { emit PageAsked(page_ - 1); });
    On(following_, &Button::Click, this, [this] { emit PageAsked(page_ + 1); });
    On(last_, &Button::Click, this, [this] { emit PageAsked(pages_); });
    On(smaller_, &Button::Click, this, [this] { emit ZoomStepAsked(-1); });
    On(larger_, &Button::Click, this, [this] { emit ZoomStepAsked(1); });
    On(width_, &Button::Click, this, [this] { emit ZoomAsked(ReportViewer::kFitWidth); });
    On(find_, &Button::Click, this, [this] { Search(); });
    On(text_, &QLineEdit::returnPressed, this, [this] { Search(); });
    On(pageBox_, &QLineEdit::returnPressed, this, [this] { GoToTypedPage(); });
    On(pageBox_, &QLineEdit::editingFinished, this, [this] { ShowPages(page_, pages_); });
    On(zoom_, &QComboBox::activated, this,
       [this](int index) { emit ZoomAsked(zoom_->itemData(index).toInt()); });
}

/// The keys leave the focus where it is: the arrows go on scrolling the pages.
void ViewerBar::MakeKeys() {
    const auto key = [this](const QKeySequence& keys, auto action) {
        auto* shortcut = new QShortcut(keys, parentWidget());
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        On(shortcut, &QShortcut::activated, this, action);
    };
    const auto press = [](Button* button) { return [button] { button->click(); }; };
    key(QKeySequence(Qt::CTRL | Qt::Key_P), press(print_));
    key(QKeySequence(Qt::CTRL | Qt::Key_S), press(pdf_));
    key(QKeySequence(Qt::CTRL | Qt::Key_Home), press(first_));
    key(QKeySequence(Qt::CTRL | Qt::Key_PageUp), press(previous_));
    key(QKeySequence(Qt::CTRL | Qt::Key_PageDown), press(following_));
    key(QKeySequence(Qt::CTRL | Qt::Key_End), press(last_));
    key(QKeySequence(Qt::CTRL | Qt::Key_Minus), press(smaller_));
    key(QKeySequence(Qt::CTRL | Qt::Key_Plus), press(larger_));
    key(QKeySequence(Qt::CTRL | Qt::Key_0), press(width_));
    key(QKeySequence(Qt::Key_F3), press(find_));
    key(QKeySequence(Qt::CTRL | Qt::Key_F), [this] {
        text_->setFocus();
        text_->selectAll();
    });
}

void ViewerBar::GoToTypedPage() {
    bool isNumber = false;
    const int page = pageBox_->text().toInt(&isNumber);
    if (isNumber) {
        emit PageAsked(page);
    }
    ShowPages(page_, pages_);
    pageBox_->selectAll();
}

void ViewerBar::Search() {
    if (text_->text().isEmpty()) {
        text_->setFocus();
    } else {
        emit SearchAsked(text_->text());
    }
}

void ViewerBar::ShowPages(int page, int pages) {
    page_ = page;
    pages_ = pages;
    const bool any = pages > 0;
    for (QWidget* tool : std::initializer_list<QWidget*>{print_, pdf_, pageBox_, smaller_, zoom_, larger_,
                                                         width_, text_, find_}) {
        tool->setEnabled(any);
    }
    first_->setEnabled(page > 1);
    previous_->setEnabled(page > 1);
    following_->setEnabled(page < pages);
    last_->setEnabled(page < pages);
    pageBox_->setText(any ? QString::number(page) : QString());
    pagesLabel_->setText(any ? QStringLiteral("/ %1").arg(pages) : QString());
}

void ViewerBar::ShowZoom(int level) {
    zoom_->setCurrentIndex(zoom_->findData(level));
    zoom_->setPlaceholderText(QStringLiteral("%1 %").arg(level));
}

}  // namespace quardele::engine
