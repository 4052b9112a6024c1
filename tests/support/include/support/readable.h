// What a reader of a form would miss.
#pragma once

#include <QString>

#include <forms/form.h>

namespace quardele::support {

/// Texts on screen now that are cut off, boxes too low for their text, controls that reach out of their
/// container or stand on each other; empty when all is well. What is parked at the left of the form is out of
/// sight; floating frames stand in front of the others on purpose.
[[nodiscard]] QString WhatCannotBeRead(const forms::Form& form);

/// Keeps a picture of a widget for a reader, under `pictures` in the build tree: NAME.png, with its scale
/// behind the name on a desktop that is scaled up.
void KeepPicture(QWidget& widget, const QString& name);

}  // namespace quardele::support
