#include <services/charset_converter.h>

#include <cstdint>
#include <optional>

#include <QStringDecoder>
#include <QStringEncoder>

#include <basic/runtime_error.h>
#include <basic/western.h>

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

/// A byte kept as the character of its number, or as that of its code in the Western code page.
std::optional<std::uint8_t> ByteIn(QChar unit) {
    return unit.unicode() <= 0xFF ? static_cast<std::uint8_t>(unit.unicode())
                                  : basic::ToWestern(unit.unicode());
}

/// The bytes that a text holds, one to a character; empty optional for a text of other characters.
std::optional<QByteArray> BytesIn(const QString& text) {
    QByteArray bytes;
    for (const QChar unit : text) {
        const std::optional<std::uint8_t> byte = ByteIn(unit);
        if (!byte) {
            return {};
        }
        bytes.append(static_cast<char>(*byte));
    }
    return bytes;
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
    if (const std::optional<QByteArray> bytes = BytesIn(text)) {
        QStringDecoder source = DecoderOf(sourceCharset_);
        const QString decoded = source(*bytes);
        if (!source.hasError()) {
            characters = decoded;
        }
    }
    const QByteArray encoded = EncoderOf(targetCharset)(characters);
    QString shown = DecoderOf(targetCharset)(encoded);
    return shown.replace(QChar(kSubstitute), QLatin1Char('?'));
}

}  // namespace quardele::services
