#include <new>
#include <optional>

#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>

namespace quardele::forms {
namespace {

constexpr int kOutOfMemory = 7;
constexpr int kInternalError = 51;

/// The error that left a handler, if one did. What is no run-time error by itself becomes one here, so that
/// nothing ever crosses Qt.
std::optional<basic::RuntimeError> ErrorOf(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const basic::RuntimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return basic::RuntimeError(kOutOfMemory);
    } catch (const std::exception& failure) {
        return basic::RuntimeError(kInternalError,
                                   u"Erreur interne : " + ToText(QString::fromLocal8Bit(failure.what())));
    }
    return std::nullopt;
}

}  // namespace

void RunHandler(const std::function<void()>& handler) {
    try {
        if (const std::optional<basic::RuntimeError> error = ErrorOf(handler)) {
            UnhandledError(*error);
        }
    } catch (const ProcessEnded&) {
        // Only tests get here: the process that they look at has come to its end.
    }
}

void UnhandledError(const basic::RuntimeError& error) {
    MsgBox(QStringLiteral("Erreur d'exécution %1 :\n\n%2")
               .arg(error.Number())
               .arg(ToQString(error.Description())),
           BoxButtons::Ok, BoxIcon::Critical);
    EndProcess(1);
}

}  // namespace quardele::forms
