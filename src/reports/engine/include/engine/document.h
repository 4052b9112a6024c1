// The finished pages of a report. One painter shows them in the viewer, on printers and in PDF files.
// Lengths are twips of paper.
#pragma once

#include <memory>
#include <vector>

#include <QIODevice>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QRectF>
#include <QString>

namespace quardele::engine {

struct Content;

/// A place where a text stands.
struct Occurrence {
    int page = 0;  ///< from 1
    QRectF area;   ///< on the whole page, margins included
};

class Document {
 public:
    Document(QString title, const QPageLayout& layout, std::unique_ptr<Content> content);
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    [[nodiscard]] const QString& Title() const { return title_; }
    [[nodiscard]] const QPageLayout& Layout() const { return layout_; }
    /// At least 1.
    [[nodiscard]] int Pages() const;
    /// A page with its margins.
    [[nodiscard]] QSizeF PageSize() const;
    /// Paints a page (from 1), its margins left out, at the painter's origin, one unit being a twip.
    void Paint(QPainter& painter, int page) const;
    /// Where a text stands, page by page from the top down, in any case; none for an empty text.
    [[nodiscard]] std::vector<Occurrence> Find(const QString& text) const;
    /// The lines of a page from the top down, pieces of a line separated by tabs.
    [[nodiscard]] QString TextOf(int page) const;

    /// Paints the pages on a device, those of its page ranges only where it has some. The layout of the
    /// device's pages is made the document's. False when it cannot be painted on or wants none of the pages.
    bool Print(QPagedPaintDevice& device) const;
    /// False when it could not be made. Whether the device has taken all bytes is the device's to tell.
    bool WritePdf(QIODevice& out) const;

 private:
    QString title_;
    QPageLayout layout_;
    std::unique_ptr<Content> content_;
};

}  // namespace quardele::engine
