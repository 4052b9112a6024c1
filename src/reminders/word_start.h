// A new Word with a new document from a template, ready to be filled.
#pragma once

#include <automation/object.h>
#include <basic/text.h>

namespace quardele::reminders {

/// Starts a Word application of its own into `application` and creates a document from the template, whose
/// Windows path comes without its extension. False, after a box, when that did not work.
bool C_Appel_Word(automation::ObjectPtr& application, const basic::Text& templatePath);

}  // namespace quardele::reminders
