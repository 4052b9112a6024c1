// Shows the pages of a report: zoom, pages, search, printing, PDF. In layout files a promoted QWidget.
#pragma once

#include <memory>

#include <QWidget>

#include <engine/report.h>

namespace quardele::engine {

class ReportViewer : public QWidget {
    Q_OBJECT
 public:
    explicit ReportViewer(QWidget* parent = nullptr);
    ~ReportViewer() override;

    [[nodiscard]] std::shared_ptr<Report> ReportSource() const;
    void SetReportSource(std::shared_ptr<Report> report);
    /// 1 fits the width of a page, 2 a whole page; 25 to 400 is per cent. Throws RuntimeError 5 for others.
    void Zoom(int level);
    [[nodiscard]] int ZoomLevel() const;
    /// Composes the report and shows its first page. Throws what Report::Compose throws, 91 without a report.
    void ViewReport();

    /// The pages on show; null before ViewReport.
    [[nodiscard]] std::shared_ptr<const Document> Shown() const;
    /// The page in view, from 1; 0 without pages.
    [[nodiscard]] int CurrentPage() const;
    void ShowPage(int page);
    /// Goes to the next place of a text behind the last one found, from the first page again after the last
    /// place; false when there is none.
    bool FindNext(const QString& text);

 private:
    class Private;
    std::unique_ptr<Private> d_;
};

}  // namespace quardele::engine
