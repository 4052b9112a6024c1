#include <forms/status_bar.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>

#include <basic/runtime_error.h>
#include <forms/twips.h>

#include "palette.h"
#include "style.h"

namespace quardele::forms {
namespace {

constexpr int kPanelWidthTwips = 2540;
constexpr int kBarHeight = 28;
constexpr int kEdge = 4;
constexpr int kIndent = 8;

}  // namespace

StatusPanel::StatusPanel(int index, StatusBar* bar)
    : QFrame(bar), index_(index), label_(new QLabel(this)), bar_(bar) {
    setObjectName(QStringLiteral("Panel_%1").arg(index));
    setFixedWidth(ToPixels(kPanelWidthTwips));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kIndent, 0, kIndent, 0);
    label_->setTextFormat(Qt::PlainText);
    layout->addWidget(label_);
    if (index > 1) {
        // A panel behind the first stands for an open form, which a click brings forward.
        setCursor(Qt::PointingHandCursor);
    }
}

QString StatusPanel::Text() const {
    return label_->text();
}

void StatusPanel::SetText(const QString& text) {
    label_->setText(text);
    setAccessibleName(text);
}

void StatusPanel::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

void StatusPanel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit bar_->PanelClick(this);
    }
}

void StatusPanel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    draw::Sheet(painter, rect(), index_ == 1 ? colors::kLocked : colors::kEntry, colors::kDecorativeLine);
}

StatusBar::StatusBar(QWidget* parent) : QFrame(parent) {
    setFixedHeight(kBarHeight);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kEdge, kEdge, kEdge, kEdge);
    layout->setSpacing(kEdge + 2);
    layout->addStretch(1);
}

StatusPanel& StatusBar::Panels(int index) const {
    if (index < 1 || index > Count()) {
        throw basic::RuntimeError(basic::error::kSubscript);
    }
    return *panels_[static_cast<std::size_t>(index) - 1];
}

QStringList StatusBar::PanelTexts() const {
    QStringList texts;
    for (const StatusPanel* panel : panels_) {
        texts.push_back(panel->Text());
    }
    return texts;
}

void StatusBar::SetPanelTexts(const QStringList& texts) {
    for (StatusPanel* panel : panels_) {
        delete panel;
    }
    panels_.clear();
    auto* row = qobject_cast<QHBoxLayout*>(layout());
    for (const QString& text : texts) {
        auto* panel = new StatusPanel(Count() + 1, this);
        panel->SetText(text);
        row->insertWidget(Count(), panel);
        panels_.push_back(panel);
    }
}

int StatusBar::Height() const {
    return ToTwips(height());
}

}  // namespace quardele::forms
