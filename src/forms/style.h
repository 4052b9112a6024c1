// The look of the screens: Fusion with flat faces, one border colour and a two pixel accent frame for the
// focus. Names no font and no text size, so that both stay what the program sets.
#pragma once

#include <QProxyStyle>

namespace quardele::forms {

/// Drawn by the controls of this room themselves, in the same hand.
namespace draw {
/// A field's or a list's border; a thicker accent frame with the focus.
void EntryBorder(QPainter& painter, const QRect& rect, bool focus);
/// The bar on the left edge that marks a pending change, and its pixels.
inline constexpr int kPendingBarWidth = 4;
void PendingBar(QPainter& painter, const QRect& rect);
/// The focus frame of a cell.
void CellFrame(QPainter& painter, const QRect& rect, const QColor& color);
/// A tick box of kTickSize pixels.
void TickBox(QPainter& painter, const QRect& rect, bool ticked, bool enabled);
inline constexpr int kTickSize = 14;
/// A face with square corners and a thin border, which stays whole at every scale of the desktop.
void Sheet(QPainter& painter, const QRect& rect, const QColor& fill, const QColor& border);
/// A face with rounded corners.
void Face(QPainter& painter, const QRect& rect, const QColor& fill, const QColor& border, double borderWidth);
}  // namespace draw

class Style : public QProxyStyle {
    Q_OBJECT
 public:
    Style();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returnData) const override;
    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option,
                                       const QWidget* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                         const QWidget* widget) const override;
    using QProxyStyle::polish;
};

}  // namespace quardele::forms
