// An operator who works on the real windows with mouse and keyboard.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QString>
#include <QWidget>

#include <forms/grid.h>
#include <forms/mdi_form.h>

namespace quardele::demo {

/// Clicks an entry of the main window's menu bar.
void ClickMenu(forms::MdiForm& mainWindow, const QString& entry);
/// Clicks a control in its middle.
void Click(QWidget& control);
/// Clicks a cell, counted from 1, which has to be in view.
void ClickCell(const forms::Grid& grid, int col, int row);
/// Types keys into the control that has the focus, one after the other.
void PressKeys(const std::vector<Qt::Key>& keys);
/// Types where the focus is, character by character: the first one may open a cell that takes the others.
void TypeText(const QString& text);
/// Types a text into a control, over what it holds, and presses Enter.
void Enter(QWidget& control, const QString& text);
/// Ticks check cells of a column with the space bar.
void Tick(forms::Grid& grid, int col, const std::vector<int>& rows);
/// Lets the windows settle and be painted; closed ones go.
void Settle();

/// While it lives, does something once each time a modal window comes up (a dialog, a message box).
class ModalWatcher {
 public:
    explicit ModalWatcher(std::function<void(QWidget&)> answer);
    ~ModalWatcher();
    ModalWatcher(const ModalWatcher&) = delete;
    ModalWatcher& operator=(const ModalWatcher&) = delete;

 private:
    class Private;
    std::unique_ptr<Private> d_;
};

}  // namespace quardele::demo
