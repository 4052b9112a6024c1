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
    Value Name(const Arguments&);
    void SetName(const Value& name);
    /// Points.
    Value Size(const Arguments&);
    void SetSize(const Value& size);
    /// 0 none, 1 any line. Written: 0, and 1 or true for a single line; throws RuntimeError 4120 for Word's
    /// other lines.
    Value Underline(const Arguments&);
    void SetUnderline(const Value& underline);
};

}  // namespace quardele::word::writer
