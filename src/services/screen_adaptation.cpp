#include <services/screen_adaptation.h>

#include <cmath>
#include <optional>

#include <forms/runtime.h>

#include "control_scaler.h"

namespace quardele::services {

namespace {

/// The screen that forms are drawn for: 800 x 600.
constexpr int kDesignScreenHeight = 9000;
/// Up to 768 lines a form keeps its height and only takes the main window's width.
constexpr int kFirstScaledScreenHeight = 11521;
constexpr double kDesignShape = 0.75;

constexpr std::int16_t kUntouched = 0;
constexpr std::int16_t kMinimized = -2;
constexpr std::int16_t kLargerThanMainWindow = -1;

/// A form's ratio and its place in the main window; twips.
struct Fit {
    double ratio = 1;
    int top = 0;
};
/// Nothing for a form that is larger than the main window.
using FindFit = std::optional<Fit> (*)(const forms::Form& form, const forms::Form& mainWindow);

std::optional<Fit> FitByHeight(const forms::Form& form, const forms::Form& mainWindow) {
    if (ScreenAtStart().ScreenHeight < kFirstScaledScreenHeight) {
        return Fit();
    }
    const double ratio = static_cast<double>(mainWindow.Height()) / form.Height();
    return ratio < 1 ? std::nullopt : std::optional<Fit>({ratio, 0});
}

/// A wide screen would stretch the form beyond what its height allows.
std::optional<Fit> FitByWidth(const forms::Form& form, const forms::Form& mainWindow) {
    const double ratio = static_cast<double>(mainWindow.Width()) / form.Width();
    if (ratio < 1) {
        return std::nullopt;
    }
    const double shape = static_cast<double>(ScreenAtStart().ScreenHeight) / ScreenAtStart().ScreenWidth;
    return Fit{shape < kDesignShape ? ratio * shape / kDesignShape : ratio, mainWindow.Height() + 1};
}

std::int16_t StateOf(const forms::Form& form) {
    return static_cast<std::int16_t>(form.WindowState());
}

/// A maximized form fills its area already, and can neither be moved nor sized.
void Place(forms::Form& form, const forms::Form& mainWindow, const Fit& fit) {
    if (form.WindowState() == forms::WindowState::Maximized) {
        return;
    }
    const double height = form.Height() * fit.ratio;
    form.SetTop(fit.top);
    form.SetLeft(0);
    form.SetWidth(mainWindow.Width());
    form.SetHeight(static_cast<int>(std::lround(height)));
}

void ScaleControls(const forms::Form& form, double ratio) {
    if (ratio == 1) {
        return;
    }
    ControlScaler scaler(ratio);
    for (QWidget* control : form.Controls()) {
        scaler.Scale(control);
    }
}

double RatioOfMode(std::int16_t mode, const forms::Form& mainWindow) {
    const double width = mainWindow.Width();
    const double screen = ScreenAtStart().ScreenWidth;
    return mode == kScaleToMainWindow ? width / screen : screen / width;
}

std::int16_t Adjust(forms::Form& form, std::int16_t mode, FindFit find) {
    if (ScreenAtStart().ScreenHeight == kDesignScreenHeight) {
        return kUntouched;
    }
    if (form.WindowState() == forms::WindowState::Minimized) {
        return kMinimized;
    }
    if (mode == kAskWindowState) {
        return StateOf(form);
    }
    const forms::Form& mainWindow = forms::Forms::Item(0);
    if (mode != kFitToMainWindow) {
        ScaleControls(form, RatioOfMode(mode, mainWindow));
        return StateOf(form);
    }
    const std::optional<Fit> fit = find(form, mainWindow);
    if (!fit) {
        return kLargerThanMainWindow;
    }
    Place(form, mainWindow, *fit);
    ScaleControls(form, fit->ratio);
    return StateOf(form);
}

}  // namespace

ScreenSize& ScreenAtStart() {
    static ScreenSize size;
    return size;
}

std::int16_t AdjustForm(forms::Form& form, std::int16_t mode) {
    return Adjust(form, mode, FitByHeight);
}

std::int16_t AdjustWelcomeForm(forms::Form& form, std::int16_t mode) {
    return Adjust(form, mode, FitByWidth);
}

}  // namespace quardele::services
