// A value of the program: one cell, one argument, one result of an expression.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <variant>
#include <vector>

#include <basic/text.h>

namespace quardele::basic {

/// Never assigned.
struct Empty {
    friend bool operator==(Empty, Empty) = default;
};
/// The database's "no value"; spreads through operators.
struct Null {
    friend bool operator==(Null, Null) = default;
};

/// A moment: days since 30/12/1899, the fraction is the time of day and always counts forward (a value of
/// -1.25 is 29/12/1899 06:00). No time zone.
struct Date {
    double days = 0;
    friend auto operator<=>(const Date&, const Date&) = default;
};

/// A fixed-point amount with four decimals.
struct Currency {
    std::int64_t tenThousandths = 0;
    friend auto operator<=>(const Currency&, const Currency&) = default;
};

/// A decimal number: magnitude / 10^scale, most significant 32 bits first.
struct Decimal {
    bool negative = false;
    std::uint8_t scale = 0;
    std::array<std::uint32_t, 4> magnitude{};
    friend bool operator==(const Decimal&, const Decimal&) = default;
};

/// A GUID in the byte order of the file (first three groups little-endian).
struct Guid {
    std::array<std::uint8_t, 16> bytes{};
    friend bool operator==(const Guid&, const Guid&) = default;
};

using Binary = std::vector<std::uint8_t>;

/// A value with its type. Copying copies the text or bytes; a Variant owns what it holds.
class Variant {
 public:
    using Storage = std::variant<Empty, Null, bool, std::uint8_t, std::int16_t, std::int32_t, Currency, float,
                                 double, Date, Decimal, Guid, Text, Binary>;

    Variant() = default;
    Variant(Empty) {}
    Variant(Null value) : storage_(value) {}
    Variant(bool value) : storage_(value) {}
    Variant(std::uint8_t value) : storage_(value) {}
    Variant(std::int16_t value) : storage_(value) {}
    Variant(std::int32_t value) : storage_(value) {}
    Variant(Currency value) : storage_(value) {}
    Variant(float value) : storage_(value) {}
    Variant(double value) : storage_(value) {}
    Variant(Date value) : storage_(value) {}
    Variant(Decimal value) : storage_(value) {}
    Variant(Guid value) : storage_(value) {}
    Variant(Text value) : storage_(std::move(value)) {}
    Variant(TextView value) : storage_(Text(value)) {}
    Variant(const char16_t* value) : storage_(Text(value)) {}
    Variant(Binary value) : storage_(std::move(value)) {}

    [[nodiscard]] bool IsEmpty() const { return Is<Empty>(); }
    [[nodiscard]] bool IsNull() const { return Is<Null>(); }
    [[nodiscard]] bool IsText() const { return Is<Text>(); }
    [[nodiscard]] bool IsDate() const { return Is<Date>(); }
    /// Boolean, Byte, Integer, Long, Currency, Single, Double or Decimal.
    [[nodiscard]] bool IsNumber() const;

    template <class T>
    [[nodiscard]] bool Is() const {
        return std::holds_alternative<T>(storage_);
    }
    /// The value as it is stored; throws RuntimeError 13 when it has another type. See conversion.h to
    /// convert.
    template <class T>
    [[nodiscard]] const T& As() const {
        if (const T* value = std::get_if<T>(&storage_)) {
            return *value;
        }
        ThrowTypeMismatch();
    }
    [[nodiscard]] const Storage& Stored() const { return storage_; }

    /// Same type and same value (texts binary); not the database's comparison.
    friend bool operator==(const Variant&, const Variant&) = default;

 private:
    [[noreturn]] static void ThrowTypeMismatch();

    Storage storage_;
};

}  // namespace quardele::basic
