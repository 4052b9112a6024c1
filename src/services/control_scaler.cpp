#include "control_scaler.h"

#include <cmath>

#include <forms/combo.h>
#include <forms/control.h>
#include <forms/control_font.h>
#include <forms/controls.h>

namespace quardele::services {

namespace {

using forms::ControlKind;

// Twips.
/// A control this far to the left is out of sight, and measures from a far point on the left.
constexpr int kParkedLeft = -500;
constexpr double kParkedOrigin = 75000;
constexpr int kGridBorder = 250;
constexpr double kColumnCharacter = 121.75;

/// Columns with less room to spare than this only grow into the room that there is.
constexpr double kLeastRoom = 1.01;
constexpr double kMarkUnits = 10000;
constexpr double kMarkPoints = 36;

bool TakesFont(ControlKind kind) {
    switch (kind) {
        case ControlKind::TextBox:
        case ControlKind::MemoBox:
        case ControlKind::Label:
        case ControlKind::Frame:
        case ControlKind::CommandButton:
        case ControlKind::Combo:
        case ControlKind::ListCombo:
            return true;
        default:
            return false;
    }
}

int Whole(double twips) {
    return static_cast<int>(std::lround(twips));
}

/// Those that are seen, the row header among them.
double WidthOfColumns(forms::Grid& grid) {
    double characters = 0;
    for (int column = 0; column <= grid.MaxCols(); ++column) {
        grid.SetCol(column);
        if (!grid.ColHidden()) {
            characters += grid.ColWidth();
        }
    }
    return characters * kColumnCharacter;
}

void WidenColumns(forms::Grid& grid, double factor) {
    for (int column = 0; column <= grid.MaxCols(); ++column) {
        grid.SetCol(column);
        if (!grid.ColHidden()) {
            grid.SetColWidth(grid.ColWidth() * factor);
        }
    }
    grid.SetCol(0);
    grid.SetRow(0);
    grid.SetFontSize(kMarkPoints);
    grid.SetText(QString::number(static_cast<int>(factor * kMarkUnits)));
}

}  // namespace

bool ControlScaler::Traits::KeepsSize() const {
    return kind == ControlKind::PictureButton;
}
bool ControlScaler::Traits::KeepsFont() const {
    return name.startsWith(u'Z');
}
bool ControlScaler::Traits::IsBlockAtTop() const {
    return name.startsWith(QStringLiteral("PIC_BOUTONS"), Qt::CaseInsensitive);
}
bool ControlScaler::Traits::IsBlockInMiddle() const {
    return name.startsWith(QStringLiteral("FRM_BOUTONS"), Qt::CaseInsensitive);
}

int ControlScaler::Scaled(int twips) const {
    return Whole(twips * ratio_);
}

void ControlScaler::Scale(QWidget* control) {
    const Traits traits{control, forms::KindOf(control), forms::ControlName(control)};
    if (traits.kind == ControlKind::TabPage) {
        return;
    }
    basic::ResumeNext step;
    step([&] { ScaleChoiceFont(traits); });
    step([&] { ScaleTop(traits); });
    step([&] { ScaleLeft(traits); });
    step([&] { ScaleHeight(traits); });
    step([&] { ScaleWidth(traits); });
    step([&] { ScaleList(traits); });
    step([&] { ScaleFont(traits); });
    step([&] { ScaleListFont(traits); });
    step([&] { KeepBoxInPlace(traits); });
    step([&] { ScaleColumns(traits); });
    step([&] { ScaleTabs(traits); });
}

void ControlScaler::ScaleChoiceFont(const Traits& traits) const {
    const bool choice = traits.kind == ControlKind::CheckBox || traits.kind == ControlKind::OptionButton;
    if (choice && !traits.KeepsFont()) {
        forms::SetFontSize(traits.control, forms::FontSize(traits.control) * ratio_);
    }
}

void ControlScaler::ScaleTop(const Traits& traits) {
    if (traits.KeepsSize()) {
        return;
    }
    const int top = forms::Top(traits.control);
    if (traits.IsBlockInMiddle()) {
        const double grown = (ratio_ - 1) * forms::Height(traits.control) / 2;
        forms::SetTop(traits.control, Whole(top * ratio_ + grown));
    } else if (!traits.IsBlockAtTop()) {
        forms::SetTop(traits.control, Scaled(top));
    }
    designWidth_ = forms::Width(traits.control);
}

void ControlScaler::ScaleLeft(const Traits& traits) const {
    const int left = forms::Left(traits.control);
    if (left <= kParkedLeft) {
        forms::SetLeft(traits.control, Whole((left + kParkedOrigin) * ratio_ - kParkedOrigin));
    } else if (traits.KeepsSize()) {
        const double grown = (ratio_ - 1) * forms::Width(traits.control) / 2;
        forms::SetLeft(traits.control, Whole(left * ratio_ + grown));
    } else {
        forms::SetLeft(traits.control, Scaled(left));
    }
}

/// A box of one line takes its height from its font.
void ControlScaler::ScaleHeight(const Traits& traits) const {
    const bool fromFont = traits.kind == ControlKind::Combo || traits.kind == ControlKind::TextBox;
    if (!traits.KeepsSize() && !fromFont && !traits.IsBlockAtTop() && !traits.IsBlockInMiddle()) {
        forms::SetHeight(traits.control, Scaled(forms::Height(traits.control)));
    }
}

void ControlScaler::ScaleWidth(const Traits& traits) const {
    if (traits.KeepsSize()) {
        return;
    }
    forms::SetWidth(traits.control, Scaled(forms::Width(traits.control)));
}

void ControlScaler::ScaleList(const Traits& traits) const {
    auto* const list = qobject_cast<forms::ListCombo*>(traits.control);
    if (list == nullptr) {
        return;
    }
    for (int column = 0; column < list->Columns(); ++column) {
        list->SetCol(column);
        list->SetColWidth(Scaled(list->ColWidth()));
    }
    list->SetListWidth(Scaled(list->ListWidth()));
}

void ControlScaler::ScaleFont(const Traits& traits) {
    if (!TakesFont(traits.kind) || traits.KeepsFont()) {
        return;
    }
    notedHeight_ = forms::Height(traits.control);
    forms::SetFontSize(traits.control, forms::FontSize(traits.control) * ratio_);
}

void ControlScaler::ScaleListFont(const Traits& traits) const {
    auto* const list = qobject_cast<forms::ListCombo*>(traits.control);
    if (list != nullptr && !traits.KeepsFont()) {
        list->SetTextTipFontSize(list->TextTipFontSize() * ratio_);
        list->SetRowHeight(Scaled(list->RowHeight()));
    }
}

/// Its lower edge stays where the scaling of its top has put it. A box that keeps its font acts on the height
/// that the control before it has left.
void ControlScaler::KeepBoxInPlace(const Traits& traits) const {
    if (notedHeight_ > 0 && traits.kind == ControlKind::TextBox) {
        const int grown = forms::Height(traits.control) - notedHeight_;
        forms::SetTop(traits.control, forms::Top(traits.control) - grown);
    }
}

/// Columns that had room grow with the grid, others as far as they fill it. The corner keeps the factor.
void ControlScaler::ScaleColumns(const Traits& traits) const {
    auto* const grid = qobject_cast<forms::Grid*>(traits.control);
    if (grid == nullptr) {
        return;
    }
    const double columns = WidthOfColumns(*grid);
    const bool hadRoom = (designWidth_ - kGridBorder) / columns >= kLeastRoom;
    const double factor = hadRoom ? ratio_ : (forms::Width(grid) - kGridBorder) / columns;
    if (factor > 1) {
        WidenColumns(*grid, factor);
    }
}

void ControlScaler::ScaleTabs(const Traits& traits) const {
    if (auto* const tabs = qobject_cast<forms::TabControl*>(traits.control)) {
        tabs->SetTabHeight(Scaled(tabs->TabHeight()));
    }
}

}  // namespace quardele::services
