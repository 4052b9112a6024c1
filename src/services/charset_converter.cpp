#include <services/charset_converter.h>

#include <algorithm>

#include <QStringDecoder>
#include <QStringEncoder>

#include <basic/runtime_error.h>

namespace quardele::services {

namespace {

/// What an encoder writes for a character that its set lacks.
constexpr char16_t kSubstitute = u'\x1A';

QStringDecoder DecoderOf(const QString& charset) {
    QStringDecoder decoder(charset.toLatin1().constData(), QStringConverter::Flag::Stateless);
    if (!decoder.isValid()) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    return decoder;
}

QStringEncoder EncoderOf(const QString& charset) {
    QStringEncoder encoder(charset.toLatin1().constData(), QStringConverter::Flag::Stateless);
    if (!encoder.isValid()) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    return encoder;
}

bool HoldsBytes(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() <= 0xFF; });
}

}  // namespace

CharsetConverter& CharsetConverter::Instance() {
    static CharsetConverter converter = [] {
        CharsetConverter made;
        made.SetSourceCharset(QStringLiteral("utf-8"));
        return made;
    }();
    return converter;
}

QString CharsetConverter::Convert(const QString& text, const QString& targetCharset) const {
    QString characters = text;
    if (HoldsBytes(text)) {
        QStringDecoder source = DecoderOf(sourceCharset_);
        const QString decoded = source(text.toLatin1());
        if (!source.hasError()) {
            characters = decoded;
        }
    }
    const QByteArray encoded = EncoderOf(targetCharset)(characters);
    QString shown = DecoderOf(targetCharset)(encoded);
    return shown.replace(QChar(kSubstitute), QLatin1Char('?'));
}

}  // namespace quardele::services
