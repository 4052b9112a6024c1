// Waiting for the program as its operator does: until it has painted and has nothing left to do.
#pragma once

#include <functional>

#include <QObject>

#include "measure.h"

namespace quardele::bench {

/// Handles events until none is left.
void RunUntilIdle();

/// Does something, then handles events until the widget has been painted and none is left. Returns how long
/// all of it took. The application object stands for any widget. Throws std::runtime_error (French) when
/// nothing is painted within a minute.
Duration TimeUntilPainted(QObject& widget, const std::function<void()>& act);

}  // namespace quardele::bench
