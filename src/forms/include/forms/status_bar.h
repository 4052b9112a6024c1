// A status bar of panels.
#pragma once

#include <vector>

#include <QFrame>
#include <QStringList>

class QLabel;

namespace quardele::forms {

class StatusBar;

/// One panel; obtained from StatusBar::Panels, which owns it.
class StatusPanel : public QFrame {
    Q_OBJECT
 public:
    StatusPanel(int index, StatusBar* bar);
    [[nodiscard]] int Index() const { return index_; }
    [[nodiscard]] QString Text() const;
    void SetText(const QString& text);
    /// As set, whether or not the window is on screen.
    [[nodiscard]] bool Visible() const { return !isHidden(); }
    void SetVisible(bool visible) { setHidden(!visible); }

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    int index_;
    QLabel* label_;
    StatusBar* bar_;
};

class StatusBar : public QFrame {
    Q_OBJECT
    Q_PROPERTY(QStringList panelTexts READ PanelTexts WRITE SetPanelTexts)

 public:
    explicit StatusBar(QWidget* parent = nullptr);
    [[nodiscard]] int Count() const { return static_cast<int>(panels_.size()); }
    /// 1-based; throws RuntimeError 9 outside.
    [[nodiscard]] StatusPanel& Panels(int index) const;
    [[nodiscard]] QStringList PanelTexts() const;
    /// Makes the panels, each 2540 twips wide.
    void SetPanelTexts(const QStringList& texts);
    /// In twips.
    [[nodiscard]] int Height() const;

 signals:
    void PanelClick(quardele::forms::StatusPanel* panel);

 private:
    std::vector<StatusPanel*> panels_;
};

}  // namespace quardele::forms
