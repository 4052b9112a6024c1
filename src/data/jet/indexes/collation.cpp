#include <jet/collation.h>

#include <algorithm>
#include <string_view>

#include "indexes/collation_tables.h"

namespace quardele::jet {

namespace {

using collation::UnitKind;
using collation::UnitWeight;

constexpr char kEndOfInline = 0x01;
constexpr char kEndOfText = 0x00;
/// Stands for a character without accent among the accents.
constexpr char kNoAccent = 0x02;
constexpr std::uint8_t kSurrogateAccent = 0x3F;

const UnitWeight* Tabulated(char16_t unit) {
    if (unit < std::size(collation::kLatin1)) {
        return &collation::kLatin1[unit];
    }
    for (const collation::UnitRange& range : collation::kRanges) {
        if (unit >= range.first && unit < range.first + range.weights.size()) {
            return &range.weights[static_cast<std::size_t>(unit - range.first)];
        }
    }
    return nullptr;
}

constexpr bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// The halves of characters beyond U+FFFF follow a rule instead of a table.
UnitWeight SurrogateWeight(char16_t unit) {
    if (IsHighSurrogate(unit)) {
        return collation::I2(unit - 10238u, kSurrogateAccent);
    }
    const unsigned offset = unit - 0xDC00u;
    const unsigned shift = offset < 8     ? 9992
                           : offset < 262 ? 9990
                           : offset < 516 ? 9988
                           : offset < 770 ? 9986
                                          : 9984;
    return collation::I2(unit - shift, kSurrogateAccent);
}

// Behind everything else, in the order of their codes: three bytes, the first of which no table uses.
constexpr std::uint8_t kUnknownFirst = 0xFE;

UnitWeight WeightOf(char16_t unit) {
    if (const UnitWeight* weight = Tabulated(unit)) {
        return *weight;
    }
    if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
        return SurrogateWeight(unit);
    }
    return collation::S2(unit);
}

bool IsUnknown(char16_t unit) {
    return Tabulated(unit) == nullptr && !IsHighSurrogate(unit) && !IsLowSurrogate(unit);
}

void AppendBytes(std::span<const std::uint8_t> bytes, std::string& target) {
    for (const std::uint8_t byte : bytes) {
        target += static_cast<char>(byte);
    }
}

TextView WithoutTrailingBlanks(TextView text) {
    return text.substr(0, text.find_last_not_of(u' ') + 1);
}

/// Appends a key to a string.
class KeyBuilder {
 public:
    /// For a text of so many units, each of which gives three inline bytes at most.
    KeyBuilder(std::string& key, std::size_t units) : key_(key), end_(key.size()) {
        key_.resize(end_ + units * kMostInline);
    }

    void Add(char16_t unit) {
        if (const UnitWeight* weight = Tabulated(unit)) {
            Add(*weight);
            return;
        }
        if (IsUnknown(unit)) {
            key_[end_++] = static_cast<char>(kUnknownFirst);
        }
        Add(WeightOf(unit));
    }

    void Finish() {
        while (!accents_.empty() && static_cast<std::uint8_t>(accents_.back()) <= kNoAccent) {
            accents_.pop_back();
        }
        key_.resize(end_);
        key_ += kEndOfInline;
        key_ += accents_;
        if (!positional_.empty()) {
            key_.append(3, kEndOfInline);
            key_ += positional_;
        }
        key_ += kEndOfText;
    }

 private:
    static constexpr std::size_t kMostInline = 3;

    void Add(const UnitWeight& weight) {
        switch (weight.kind) {
            case UnitKind::Ignored:
                return;
            case UnitKind::Simple:
                PutInline(weight);
                return;
            case UnitKind::Accented:
                FillAccents();
                PutInline(weight);
                AppendBytes(weight.Extra(), accents_);
                ++accented_;
                return;
            case UnitKind::Modifier:
                AddModifier(weight.extra[0]);
                return;
            case UnitKind::Positional:
                AddPositional(weight.extra[0]);
                return;
        }
    }

    void PutInline(const UnitWeight& weight) {
        for (const std::uint8_t byte : weight.Inline()) {
            key_[end_++] = static_cast<char>(byte);
        }
        ++characters_;
    }

    // Every character before the one that comes now has its place among the accents.
    void FillAccents() {
        if (accented_ < characters_) {
            accents_.append(characters_ - accented_, kNoAccent);
            accented_ = characters_;
        }
    }

    void AddModifier(std::uint8_t code) {
        FillAccents();
        if (accents_.empty()) {
            accents_ += static_cast<char>(code);
            leadingModifier_ = 1;
        } else {
            accents_.back() = static_cast<char>(static_cast<std::uint8_t>(accents_.back()) + code);
        }
    }

    void AddPositional(std::uint8_t code) {
        constexpr std::size_t kFirstPosition = 7;
        constexpr std::size_t kPerCharacter = 4;
        constexpr std::uint8_t kMark = 0x06;
        const std::size_t place =
            accents_.empty() ? characters_ : accents_.size() + characters_ - accented_ - leadingModifier_;
        const std::size_t position = 0x8000 | (kFirstPosition + kPerCharacter * place);
        const std::array<std::uint8_t, 4> bytes = {static_cast<std::uint8_t>(position >> 8 & 0xFF),
                                                   static_cast<std::uint8_t>(position & 0xFF), kMark, code};
        AppendBytes(bytes, positional_);
    }

    std::string& key_;  ///< the inline bytes go straight there
    std::size_t end_;   ///< of what they have come to
    std::string accents_;
    std::string positional_;
    std::size_t characters_ = 0;       ///< units that gave inline bytes
    std::size_t accented_ = 0;         ///< characters that have a place among the accents
    std::size_t leadingModifier_ = 0;  ///< 1 when the first accent belongs to no character
};

// The inline bytes of a text, one after the other.
class InlineBytes {
 public:
    explicit InlineBytes(TextView text) : text_(text) {}

    // The next byte; kEndOfInline behind the last.
    [[nodiscard]] std::uint8_t Next() {
        while (pending_.empty()) {
            if (position_ == text_.size()) {
                return kEndOfInline;
            }
            Load(text_[position_++]);
        }
        const std::uint8_t byte = pending_.front();
        pending_ = pending_.subspan(1);
        return byte;
    }
    [[nodiscard]] bool OnlySimple() const { return onlySimple_; }

 private:
    void Load(char16_t unit) {
        if (const UnitWeight* weight = Tabulated(unit)) {
            Note(*weight);
            pending_ = weight->Inline();
            return;
        }
        weight_ = WeightOf(unit);
        Note(weight_);
        if (IsUnknown(unit)) {
            unknown_ = {kUnknownFirst, weight_.inlineBytes[0], weight_.inlineBytes[1]};
            pending_ = unknown_;
        } else {
            pending_ = weight_.Inline();
        }
    }

    void Note(const UnitWeight& weight) {
        onlySimple_ = onlySimple_ && (weight.kind == UnitKind::Simple || weight.kind == UnitKind::Ignored);
    }

    TextView text_;
    std::size_t position_ = 0;
    UnitWeight weight_;  ///< of a unit that no table has
    std::array<std::uint8_t, 3> unknown_{};
    std::span<const std::uint8_t> pending_;
    bool onlySimple_ = true;
};

}  // namespace

std::string SortKey(TextView text) {
    std::string key;
    AppendSortKey(text, key);
    return key;
}

void AppendSortKey(TextView text, std::string& key) {
    const TextView counted = WithoutTrailingBlanks(text);
    KeyBuilder builder(key, counted.size());
    for (const char16_t unit : counted) {
        builder.Add(unit);
    }
    builder.Finish();
}

std::string SortKeyStart(TextView text) {
    std::string key = SortKey(text);
    key.resize(key.find(kEndOfInline));
    return key;
}

bool HasSortKey(TextView text) {
    return std::none_of(text.begin(), text.end(), IsUnknown);
}

std::weak_ordering Compare(TextView left, TextView right) {
    if (left == right) {
        return std::weak_ordering::equivalent;
    }
    InlineBytes leftBytes(WithoutTrailingBlanks(left));
    InlineBytes rightBytes(WithoutTrailingBlanks(right));
    for (;;) {
        const std::uint8_t a = leftBytes.Next();
        const std::uint8_t b = rightBytes.Next();
        if (a != b) {
            return a < b ? std::weak_ordering::less : std::weak_ordering::greater;
        }
        if (a == kEndOfInline) {
            break;
        }
    }
    if (leftBytes.OnlySimple() && rightBytes.OnlySimple()) {
        return std::weak_ordering::equivalent;
    }
    return SortKey(left) <=> SortKey(right);
}

bool Equal(TextView left, TextView right) {
    return Compare(left, right) == std::weak_ordering::equivalent;
}

}  // namespace quardele::jet
