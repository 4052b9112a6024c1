// Shows the pages of a report: zoom, pages, search, printing, PDF. In layout files a promoted QWidget.
#pragma once

#include <memory>

#include <QWidget>

#include <engine/report.h>

namespace quardele::engine {

class ReportViewer : public QWidget {
    Q_OBJECT
 public:
    /// Zoom levels that fit the pages into the window.
    static constexpr int kFitWidth = 1;
    static constexpr int kFitPage = 2;

    explicit ReportViewer(QWidget* parent = nullptr);
    ~ReportViewer() override;

    [[nodiscard]] std::shared_ptr<Report> ReportSource() const;
    /// Shows no pages until ViewReport.
    void SetReportSource(std::shared_ptr<Report> report);
    /// kFitWidth, kFitPage, or 25 to 400 per cent. Throws RuntimeError 5 for others.
    void Zoom(int level);
    [[nodiscard]] int ZoomLevel() const;
    /// Composes the report and shows its first page. Throws what Report::Compose throws, 91 without a report.
    void ViewReport();

    /// The pages on show; null before ViewReport.
    [[nodiscard]] std::shared_ptr<const Document> Shown() const;
    /// The page in view, from 1; 0 without pages.
    [[nodiscard]] int CurrentPage() const;
    void ShowPage(int page);
    /// Goes to the next place of a text behind the last one found, of another text to the first one from the
    /// page in view on; from the first page again after the last place. False when there is none.
    bool FindNext(const QString& text);

 signals:
    /// The operator has sought a text that stands nowhere. It is the form's to tell, in its language.
    void TextNotFound(const QString& text);

 private:
    class Private;
    std::unique_ptr<Private> d_;
};

}  // namespace quardele::engine
