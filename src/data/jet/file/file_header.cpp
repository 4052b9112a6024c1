#include "file/file_header.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

#include <basic/runtime_error.h>

#include "bytes.h"

namespace quardele::jet {

namespace {

constexpr std::string_view kEngineName{"Standard Jet DB\0", 16};
constexpr std::uint8_t kVersion97 = 0;
constexpr std::uint8_t kVersion2000 = 1;
constexpr std::size_t kPasswordLength97 = 20;
constexpr std::size_t kPasswordLength2000 = 40;
constexpr std::uint16_t kWestern = 1252;

/// The start of the RC4 key stream of the bytes C7 DA 39 6B, which hides a part of the header.
constexpr std::array<std::uint8_t, 128> kMask = {
    0xB5, 0x6F, 0x03, 0x62, 0x61, 0x08, 0xC2, 0x55, 0xEB, 0xA9, 0x67, 0x72, 0x43, 0x3F, 0x00, 0x9C,
    0x7A, 0x9F, 0x90, 0xFF, 0x80, 0x9A, 0x31, 0xC5, 0x79, 0xBA, 0xED, 0x30, 0xBC, 0xDF, 0xCC, 0x9D,
    0x63, 0xD9, 0xE4, 0xC3, 0x7B, 0x42, 0xFB, 0x8A, 0xBC, 0x4E, 0x86, 0xFB, 0xEC, 0x37, 0x5D, 0x44,
    0x9C, 0xFA, 0xC6, 0x5E, 0x28, 0xE6, 0x13, 0xB6, 0x8A, 0x60, 0x54, 0x94, 0x7B, 0x36, 0xF5, 0x72,
    0xDF, 0xB1, 0x77, 0xF4, 0x13, 0x43, 0xCF, 0xAF, 0xB1, 0x33, 0x34, 0x61, 0x79, 0x5B, 0x92, 0xB5,
    0x7C, 0x2A, 0x05, 0xF1, 0x7C, 0x99, 0x01, 0x1B, 0x98, 0xFD, 0x12, 0x4F, 0x4A, 0x94, 0x6C, 0x3E,
    0x60, 0x26, 0x5F, 0x95, 0xF8, 0xD0, 0x89, 0x24, 0x85, 0x67, 0xC6, 0x1F, 0x27, 0x44, 0xD2, 0xEE,
    0xCF, 0x65, 0xED, 0xFF, 0x07, 0xC7, 0x46, 0xA1, 0x78, 0x16, 0x0C, 0xED, 0xE9, 0x2D, 0x62, 0xD4};

[[noreturn]] void ThrowForeign(const OsFile& file, basic::TextView what) {
    basic::Text description = u"Format de base de données non reconnu : « ";
    description += FileName(file.Path());
    description += u" » ";
    description += what;
    description += u".";
    throw basic::RuntimeError(basic::error::kNotADatabase, std::move(description));
}

[[noreturn]] void ThrowUnsupported(const OsFile& file, basic::TextView what) {
    basic::Text description = u"Le fichier « ";
    description += FileName(file.Path());
    description += u" » ";
    description += what;
    description += u".";
    throw basic::RuntimeError(basic::error::kOperationNotSupported, std::move(description));
}

void Unmask(std::vector<std::uint8_t>& page, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
        page[header::kMaskStart + i] ^= kMask[i];
    }
}

// The stored password of Access 2000 files is hidden once more behind the day on which the file was made.
bool HasPassword(const ByteView& page, bool hiddenByDate) {
    const std::size_t length = hiddenByDate ? kPasswordLength2000 : kPasswordLength97;
    std::array<std::uint8_t, 4> mask{};
    if (hiddenByDate) {
        const double created = page.F64(header::kCreationDate);
        const bool plausible = std::abs(created) < 1e9;  // also false for what is no number
        StoreLittle(std::span(mask), static_cast<std::int32_t>(plausible ? created : 0.0));
    }
    for (std::size_t i = 0; i < length; ++i) {
        if (page.U8(header::kPassword + i) != mask[i % mask.size()]) {
            return true;
        }
    }
    return false;
}

// Enough of the header page for all that is looked at, in both versions.
ByteString ReadStart(const OsFile& file) {
    ByteString bytes(kJet3.pageSize);
    if (file.ReadAt(0, bytes) != bytes.size()) {
        ThrowForeign(file, u"est vide ou incomplet");
    }
    return bytes;
}

/// What stands in every new file, as it is before masking: the pages of the four system tables, the ANSI code
/// page, and values of one known file, whose date of creation the identities of accounts depend on.
void FillMaskedArea(std::span<std::uint8_t> page) {
    constexpr std::array<std::uint8_t, 8> kConstant = {0x00, 0x01, 0x00, 0x00, 0x01, 0x01, 0x00, 0x00};
    constexpr std::array<std::uint8_t, 4> kDateMask = {0x59, 0xA5, 0x00, 0x00};
    constexpr std::array<std::uint8_t, 8> kDate = {0x3E, 0x85, 0xD3, 0x3B, 0x3E, 0xAB, 0xE4, 0x40};
    constexpr std::size_t kSystemPages = 0x20;
    constexpr std::size_t kBuild = 0x6A;
    constexpr std::size_t kCollation = 0x6E;
    std::copy(kConstant.begin(), kConstant.end(), page.begin() + header::kMaskStart);
    for (std::uint32_t i = 0; i < 4; ++i) {
        StoreLittle(page.subspan(kSystemPages + i * 4), kCatalogPage + i);
    }
    StoreLittle(page.subspan(header::kCodePage), kWestern);
    for (std::size_t i = 0; i < kPasswordLength2000; ++i) {
        page[header::kPassword + i] = kDateMask[i % kDateMask.size()];
    }
    StoreLittle(page.subspan(kBuild), std::uint32_t{0x261C});
    StoreLittle(page.subspan(kCollation), std::uint32_t{kGeneralLcid});
    std::copy(kDate.begin(), kDate.end(), page.begin() + header::kCreationDate);
}

}  // namespace

ByteString NewHeaderPage() {
    constexpr std::size_t kSignatureAt = 0x98;
    constexpr std::size_t kVersionText = 0x9C;
    ByteString page(kJet4.pageSize);
    const auto bytes = std::span(page);
    page[1] = 1;
    std::copy(kEngineName.begin(), kEngineName.end(), page.begin() + header::kEngineName);
    page[header::kVersion] = kVersion2000;
    FillMaskedArea(bytes);
    Unmask(page, kJet4.headerMaskLength);
    StoreLittle(bytes.subspan(kSignatureAt), std::uint32_t{0x654});
    const std::string_view version = "4.0";
    std::copy(version.begin(), version.end(), page.begin() + kVersionText);
    StartSlotsAnew(page);
    return page;
}

void StartSlotsAnew(ByteString& page) {
    constexpr std::size_t kCommitSlots = 0xE00;
    constexpr std::size_t kSlotCount = 256;
    constexpr std::uint16_t kUnused = 0x0100;
    for (std::size_t i = 0; i < kSlotCount; ++i) {
        const auto uses = static_cast<std::uint16_t>(i == 0 ? 1 : 0);
        StoreLittle(std::span(page).subspan(kCommitSlots + i * 2),
                    static_cast<std::uint16_t>(kUnused + uses));
    }
}

const Format& IdentifyFormat(const OsFile& file) {
    const ByteString bytes = ReadStart(file);
    const ByteView page(bytes, kHeaderPage);
    const ByteView name = page.Sub(header::kEngineName, kEngineName.size());
    const bool known = std::equal(kEngineName.begin(), kEngineName.end(), name.Span().begin(),
                                  [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
    if (page.U8(0) != 0 || !known) {
        ThrowForeign(file, u"n'est pas une base Access");
    }
    switch (page.U8(header::kVersion)) {
        case kVersion97:
            return kJet3;
        case kVersion2000:
            return kJet4;
        default:
            ThrowForeign(file, u"est d'une version plus récente");
    }
}

void CheckHeader(const OsFile& file, const Format& format) {
    if (file.Size() % format.pageSize != 0 || file.Size() / format.pageSize <= kCatalogPage) {
        ThrowForeign(file, u"est incomplet");
    }
    ByteString bytes = ReadStart(file);
    Unmask(bytes, format.headerMaskLength);
    const ByteView page(bytes, kHeaderPage);
    if (page.U32(header::kEncryptionKey) != 0) {
        ThrowUnsupported(file, u"est codé ; décodez-le d'abord");
    }
    if (HasPassword(page, format.wideText)) {
        throw basic::RuntimeError(basic::error::kBadPassword);
    }
    if (!format.wideText && page.U16(header::kCodePage) != kWestern) {
        ThrowUnsupported(file, u"est écrit dans une page de codes autre que 1252");
    }
}

}  // namespace quardele::jet
