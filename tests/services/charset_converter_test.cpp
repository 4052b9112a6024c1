#include <gtest/gtest.h>

#include <basic/runtime_error.h>
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
