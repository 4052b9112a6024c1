// Scales the controls of a form, one after the other.
#pragma once

#include <QString>
#include <QWidget>

#include <basic/resume_next.h>
#include <forms/control_kind.h>
#include <forms/grid.h>

namespace quardele::services {

/// Takes the controls in the order of the form: what one control notes, a later one may act on. A step that
/// fails for a control is left out for it.
///
/// Names decide too. A control whose name begins with "Z" keeps its font. Blocks of buttons, "PIC_BOUTONS…"
/// and "FRM_BOUTONS…" in any case, keep their height; the first keep their top, the others stay in the middle
/// of the room that grows around them.
class ControlScaler {
 public:
    explicit ControlScaler(double ratio) : ratio_(ratio) {}
    void Scale(QWidget* control);

 private:
    /// What is asked of a control more than once.
    struct Traits {
        QWidget* control;
        forms::ControlKind kind;
        QString name;
        [[nodiscard]] bool KeepsSize() const;
        [[nodiscard]] bool KeepsFont() const;
        [[nodiscard]] bool IsBlockAtTop() const;
        [[nodiscard]] bool IsBlockInMiddle() const;
    };

    void ScaleChoiceFont(const Traits& traits) const;
    void ScaleTop(const Traits& traits);
    void ScaleLeft(const Traits& traits) const;
    void ScaleHeight(const Traits& traits) const;
    void ScaleWidth(const Traits& traits) const;
    void ScaleList(const Traits& traits) const;
    void ScaleFont(const Traits& traits);
    void ScaleListFont(const Traits& traits) const;
    void KeepBoxInPlace(const Traits& traits) const;
    void ScaleColumns(const Traits& traits) const;
    void ScaleTabs(const Traits& traits) const;

    [[nodiscard]] int Scaled(int twips) const;

    double ratio_;
    /// The width of the control at hand before it was scaled; twips.
    int designWidth_ = 0;
    /// The height before its font was scaled of the last control that had its font scaled; twips.
    int notedHeight_ = 0;
};

}  // namespace quardele::services
