// Event handlers. A handler is a wall: an error that it does not catch itself goes no further up; it is the
// runtime's unhandled error, which shows a box and ends the process. Qt never sees an exception.
#pragma once

#include <functional>
#include <utility>

#include <QObject>

#include <basic/runtime_error.h>

namespace quardele::forms {

/// Runs a handler behind the wall.
void RunHandler(const std::function<void()>& handler);

/// Connects a signal to a handler behind the wall, called directly, arguments by reference included:
///   On(Cmd_Quitter, &Button::Click, this, [this] { Cmd_Quitter_Click(); });
template <class Sender, class... Args, class Base, class Handler>
QMetaObject::Connection On(Sender* sender, void (Base::*signal)(Args...), QObject* context, Handler handler) {
    return QObject::connect(
        sender, signal, context,
        [handler = std::move(handler)](Args... args) { RunHandler([&] { std::invoke(handler, args...); }); },
        Qt::DirectConnection);
}

/// The runtime's answer to an error that nothing caught: a box with the number and the description, then
/// EndProcess with exit code 1.
void UnhandledError(const basic::RuntimeError& error);

}  // namespace quardele::forms
