// Conversion between published character sets.
#pragma once

#include <QString>

namespace quardele::services {

/// Brings UTF-8 text into another character set. The shared instance of the translation reads "utf-8".
class CharsetConverter {
 public:
    static CharsetConverter& Instance();

    [[nodiscard]] QString SourceCharset() const { return sourceCharset_; }
    void SetSourceCharset(const QString& name) { sourceCharset_ = name; }

    /// The text as a program of the target character set ("windows-1250") shows it: what that set lacks
    /// becomes "?". The text may hold characters or, each in a unit of its own, the bytes of the source
    /// character set: as their numbers or as the Western code page shows them. Throws RuntimeError 5 for a
    /// character set that is not known.
    [[nodiscard]] QString Convert(const QString& text, const QString& targetCharset) const;

 private:
    QString sourceCharset_;
};

}  // namespace quardele::services
