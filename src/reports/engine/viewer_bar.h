// The tools above the pages of a report.
#pragma once

#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>

#include <forms/controls.h>

namespace quardele::engine {

/// Asks for what its buttons, boxes and their keys mean; the keys work in all of the parent.
class ViewerBar : public forms::Frame {
    Q_OBJECT
 public:
    explicit ViewerBar(QWidget* parent);

    /// The page in view of so many; without pages nothing can be asked for.
    void ShowPages(int page, int pages);
    /// A level of ReportViewer::Zoom.
    void ShowZoom(int level);

 signals:
    void PrintAsked();
    void PdfAsked();
    /// Any number, as it was typed.
    void PageAsked(int page);
    void ZoomAsked(int level);
    /// 1 larger, -1 smaller.
    void ZoomStepAsked(int direction);
    void SearchAsked(const QString& text);

 private:
    forms::Button* AddButton(const char* name, const char* icon, const QString& tip, int spaceBefore);
    void AddWidget(QWidget* widget, int spaceBefore);
    void MakePageBox();
    void MakeZoomBox();
    void MakeSearchBox();
    void Connect();
    void MakeKeys();
    void GoToTypedPage();
    void Search();

    forms::Button* print_ = nullptr;
    forms::Button* pdf_ = nullptr;
    forms::Button* first_ = nullptr;
    forms::Button* previous_ = nullptr;
    QLineEdit* pageBox_ = nullptr;
    QLabel* pagesLabel_ = nullptr;
    forms::Button* following_ = nullptr;
    forms::Button* last_ = nullptr;
    forms::Button* smaller_ = nullptr;
    QComboBox* zoom_ = nullptr;
    forms::Button* larger_ = nullptr;
    forms::Button* width_ = nullptr;
    forms::TextBox* text_ = nullptr;
    forms::Button* find_ = nullptr;
    int page_ = 0;
    int pages_ = 0;
};

}  // namespace quardele::engine
