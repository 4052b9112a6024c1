// What boxes for text have in common, of one line or of several.
#pragma once

#include <forms/bound_control.h>

namespace quardele::forms {

class TextEntry : public BoundControl {
 public:
    [[nodiscard]] virtual QString Text() const = 0;
    virtual void SetText(const QString& text) = 0;
    /// In UTF-16 units of Text(); 0 is no limit. Limits typing only.
    [[nodiscard]] int MaxLength() const { return maxLength_; }
    void SetMaxLength(int units) { maxLength_ = units; }

    [[nodiscard]] basic::Variant Content() const override;

 protected:
    void ShowValue(const basic::Variant& value) override;

 private:
    int maxLength_ = 0;
};

}  // namespace quardele::forms
