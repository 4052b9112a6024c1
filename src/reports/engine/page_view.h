// The pages of a document, one below the other.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QAbstractScrollArea>

#include <engine/document.h>

namespace quardele::engine {

/// How large pages are shown.
enum class Fit { None, Width, Page };

class PageView : public QAbstractScrollArea {
    Q_OBJECT
 public:
    explicit PageView(QWidget* parent = nullptr);

    void SetDocument(std::shared_ptr<const Document> document);
    void SetFit(Fit fit);
    /// In per cent; ends fitting.
    void SetPercent(int percent);
    /// As it is now, fitted or not.
    [[nodiscard]] int Percent() const;
    [[nodiscard]] int CurrentPage() const { return current_; }
    void ShowPage(int page);
    /// Marks a place and brings it into view.
    void ShowOccurrence(const Occurrence& occurrence);

 signals:
    void CurrentPageChanged();
    /// Ctrl and the wheel: 1 larger, -1 smaller.
    void ZoomAsked(int direction);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    [[nodiscard]] double PixelsPerTwip(int percent) const;
    [[nodiscard]] QSizeF PagePixels() const;
    /// Place of a page in the viewport.
    [[nodiscard]] QRectF PageRect(int page) const;
    [[nodiscard]] int PageInTheMiddle() const;
    void Arrange();
    void Rescale(const std::function<void()>& change);
    void SetCurrent(int page);
    void Scrolled();

    std::shared_ptr<const Document> document_;
    std::optional<Occurrence> mark_;
    Fit fit_ = Fit::Width;
    double scale_ = 0;  ///< pixels to a twip
    int current_ = 0;
    bool moving_ = false;  ///< the program moves to a page
};

}  // namespace quardele::engine
