#include <gtest/gtest.h>

#include <basic/runtime_error.h>
#include <basic/western.h>
#include <services/charset_converter.h>

using quardele::services::CharsetConverter;
namespace error = quardele::basic::error;

namespace {

CharsetConverter Utf8Converter() {
    CharsetConverter converter;
    converter.SetSourceCharset(QStringLiteral("utf-8"));
    return converter;
}

const QString kCentralEuropean = QStringLiteral("windows-1250");

TEST(CharsetConverter, CharactersOfTheTargetStayAsTheyAre) {
    const QString text = QStringLiteral("Výběr je prázdný.");
    EXPECT_EQ(Utf8Converter().Convert(text, kCentralEuropean), text);
}

TEST(CharsetConverter, BytesOfTheSourceBecomeCharacters) {
    const QString bytes = QString::fromLatin1(QStringLiteral("Výběr").toUtf8());
    EXPECT_EQ(Utf8Converter().Convert(bytes, kCentralEuropean), QStringLiteral("Výběr"));
}

/// A tool that stores bytes as text takes them for characters of the Western code page, where 0x99 is a sign
/// of its own.
TEST(CharsetConverter, BytesThatCameThroughTheWesternCodePageBecomeCharacters) {
    const QString text = QStringLiteral("Výběr řádku");
    QString stored;
    for (const char byte : text.toUtf8()) {
        stored += QChar(quardele::basic::FromWestern(static_cast<std::uint8_t>(byte)));
    }
    EXPECT_NE(stored, QString::fromLatin1(text.toUtf8()));
    EXPECT_EQ(Utf8Converter().Convert(stored, kCentralEuropean), text);
}

TEST(CharsetConverter, WesternCharactersThatAreNoBytesOfTheSourceStayAsTheyAre) {
    const QString text = QStringLiteral("50 € – „Žižkov“");
    EXPECT_EQ(Utf8Converter().Convert(text, kCentralEuropean), text);
}

TEST(CharsetConverter, WhatTheTargetLacksBecomesAQuestionMark) {
    EXPECT_EQ(Utf8Converter().Convert(QStringLiteral("Дата č. 1"), kCentralEuropean),
              QStringLiteral("???? č. 1"));
}

TEST(CharsetConverter, AnUnknownCharacterSetIsAnInvalidCall) {
    try {
        (void)Utf8Converter().Convert(QStringLiteral("č"), QStringLiteral("no-such-charset"));
        FAIL() << "no error";
    } catch (const quardele::basic::RuntimeError& failure) {
        EXPECT_EQ(failure.Number(), error::kInvalidCall);
    }
}

}  // namespace
