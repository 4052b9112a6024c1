// Word's Font object: the look of the selected text, or of what is typed next.
#pragma once

#include "document_object.h"

namespace quardele::word::writer {

class Font final : public DocumentObject<Font> {
 public:
    using DocumentObject::DocumentObject;
    static std::span<const Member<Font>> Members();

 private:
    Value Bold(const Arguments&);
    void SetBold(const Value& bold);
    Value Hidden(const Arguments&);
    void SetHidden(const Value& hidden);
    Value Italic(const Arguments&);
    void SetItalic(const Value& italic);
    Value Name(const Arguments&);
    void SetName(const Value& name);
    /// Points.
    Value Size(const Arguments&);
    void SetSize(const Value& size);
    /// Word's numbers: 0 none, 1 single, 3 double, 4 dotted; true is 1.
    Value Underline(const Arguments&);
    void SetUnderline(const Value& underline);
};

}  // namespace quardele::word::writer
