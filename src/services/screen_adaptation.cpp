#include <services/screen_adaptation.h>

#include <forms/runtime.h>

namespace quardele::services {

namespace {

/// The screen that forms are drawn for: 800 x 600.
constexpr int kDesignScreenHeight = 9000;
/// Up to 768 lines a form keeps its height and only takes the main window's width.
constexpr int kFirstScaledScreenHeight = 11521;
constexpr std::int16_t kMinimized = -2;
constexpr std::int16_t kLargerThanMainWindow = -1;

}  // namespace

std::int16_t AdjustForm(forms::Form& form, bool mode) {
    const int screenHeight = forms::Screen::Height();
    if (!mode || screenHeight == kDesignScreenHeight) {
        return 0;
    }
    if (form.WindowState() == forms::WindowState::Minimized) {
        return kMinimized;
    }
    const forms::Form& mainWindow = forms::Forms::Item(0);
    const int formHeight = form.Height();
    const int fittedHeight = screenHeight < kFirstScaledScreenHeight ? formHeight : mainWindow.Height();
    if (fittedHeight < formHeight) {
        return kLargerThanMainWindow;
    }
    form.SetTop(0);
    form.SetLeft(0);
    form.SetWidth(mainWindow.Width());
    form.SetHeight(fittedHeight);
    return static_cast<std::int16_t>(form.WindowState());
}

}  // namespace quardele::services
