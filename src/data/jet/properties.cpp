#include "properties.h"

#include <algorithm>
#include <string_view>

#include "text_codec.h"

namespace quardele::jet {

namespace {

constexpr std::string_view kMagicWide{"MR2\0", 4};
constexpr std::string_view kMagicNarrow{"KKD\0", 4};
constexpr std::uint16_t kNameList = 0x0080;
constexpr std::uint16_t kOfColumn = 0x0001;
constexpr std::size_t kBlockHeader = 6;
constexpr std::size_t kValueHeader = 8;

class Blob {
 public:
    Blob(const ByteView& bytes, const Format& format, TableDef& table)
        : bytes_(bytes), format_(format), table_(table) {}

    void Apply() {
        const std::string_view magic = format_.wideText ? kMagicWide : kMagicNarrow;
        const ByteView start = bytes_.Sub(0, magic.size());
        if (!std::equal(magic.begin(), magic.end(), start.Span().begin(),
                        [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; })) {
            ThrowDamaged(bytes_.Page(), u"propriétés de forme inconnue");
        }
        for (std::size_t at = magic.size(); at < bytes_.Size();) {
            const std::size_t length = bytes_.U32(at);
            if (length < kBlockHeader) {
                ThrowDamaged(bytes_.Page(), u"propriétés de longueur impossible");
            }
            const std::uint16_t type = bytes_.U16(at + 4);
            const ByteView body = bytes_.Sub(at, length).From(kBlockHeader);
            if (type == kNameList) {
                ReadNames(body);
            } else if (type == kOfColumn) {
                ReadColumn(body);
            }
            at += length;
        }
    }

 private:
    [[nodiscard]] Text NameAt(const ByteView& body, std::size_t at) const {
        const ByteView name = body.Sub(at + 2, body.U16(at));
        return format_.wideText ? DecodePlainText(name) : DecodeText(name, format_);
    }

    void ReadNames(const ByteView& body) {
        names_.clear();
        for (std::size_t at = 0; at < body.Size(); at += 2 + std::size_t{body.U16(at)}) {
            names_.push_back(NameAt(body, at));
        }
    }

    void ReadColumn(const ByteView& body) {
        const int ordinal = table_.FindColumn(NameAt(body, 4));
        for (std::size_t at = body.U32(0); at < body.Size();) {
            const std::size_t length = body.U16(at);
            if (length < kValueHeader) {
                ThrowDamaged(bytes_.Page(), u"propriété de longueur impossible");
            }
            const std::size_t name = body.U16(at + 4);
            const ByteView value = body.Sub(at + kValueHeader, body.U16(at + 6));
            if (ordinal >= 0 && name < names_.size()) {
                Set(table_.columns[static_cast<std::size_t>(ordinal)], names_[name], value);
            }
            at += length;
        }
    }

    void Set(Column& column, const Text& name, const ByteView& value) const {
        const bool truth = !value.IsEmpty() && value.U8(0) != 0;
        if (name == u"Required") {
            column.required = truth;
        } else if (name == u"AllowZeroLength") {
            column.allowZeroLength = truth;
        } else if (name == u"DefaultValue") {
            column.defaultValue = format_.wideText ? DecodePlainText(value) : DecodeText(value, format_);
        }
    }

    ByteView bytes_;
    const Format& format_;
    TableDef& table_;
    std::vector<Text> names_;
};

}  // namespace

void ApplyProperties(const ByteView& blob, const Format& format, TableDef& table) {
    Blob(blob, format, table).Apply();
}

}  // namespace quardele::jet
