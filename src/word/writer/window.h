// Word's Window, its pane and its view.
#pragma once

#include "document_object.h"

namespace quardele::word::writer {

class Window final : public DocumentObject<Window> {
 public:
    using DocumentObject::DocumentObject;
    static std::span<const Member<Window>> Members();

 private:
    Value ActivePane(const Arguments&);
    Value GetView(const Arguments&);
    Value DisplayRulers(const Arguments&);
    void SetDisplayRulers(const Value& display);
};

class Pane final : public DocumentObject<Pane> {
 public:
    using DocumentObject::DocumentObject;
    static std::span<const Member<Pane>> Members();

 private:
    Value GetView(const Arguments&);
};

class View final : public DocumentObject<View> {
 public:
    using DocumentObject::DocumentObject;
    static std::span<const Member<View>> Members();

 private:
    /// From a header to the footer of the same kind, and back; Word's next section is not looked for. Throws
    /// RuntimeError 4198 elsewhere.
    Value NextHeaderFooter(const Arguments&);
    Value PreviousHeaderFooter(const Arguments&);
    /// The story that the selection stands in.
    Value SeekView(const Arguments&);
    void SetSeekView(const Value& story);
    Value ShowAll(const Arguments&);
    void SetShowAll(const Value& show);
    Value SplitSpecial(const Arguments&) { return Doc()->View().split; }
    void SetSplitSpecial(const Value& split);
    /// 6 is the web layout; Writer shows all other types as pages.
    Value Type(const Arguments&);
    void SetType(const Value& type);
};

}  // namespace quardele::word::writer
