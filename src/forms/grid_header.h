// The headings of a grid: on two lines where one is too short, with a bar below the marked column.
#pragma once

#include <QHeaderView>

namespace quardele::forms {

class GridModel;

class GridHeader : public QHeaderView {
    Q_OBJECT
 public:
    GridHeader(const GridModel& model, QWidget* parent);

    /// Pixels; 0 for as much as the texts need.
    [[nodiscard]] int FixedHeight() const { return fixedHeight_; }
    void SetFixedHeight(int pixels);
    /// Pixels; 0 for the grid's font.
    [[nodiscard]] int TextPixels() const { return textPixels_; }
    void SetTextPixels(int pixels);
    [[nodiscard]] bool IsBold() const { return bold_; }
    void SetBold(bool bold);

    [[nodiscard]] QSize sizeHint() const override;

 signals:
    void Pressed(int section, Qt::MouseButton button, QPoint position);

 protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

 private:
    [[nodiscard]] QFont FontOf(int section) const;
    [[nodiscard]] bool IsMarked(int section) const;
    [[nodiscard]] QRect TextRect(int section, const QRect& rect) const;

    const GridModel& model_;
    int fixedHeight_ = 0;
    int textPixels_ = 0;
    bool bold_ = true;
    int pressed_ = -1;
};

}  // namespace quardele::forms
