#include "registrations.h"

#include <string>

#include <basic/date.h>

#include "random.h"

namespace quardele::workshop {

namespace {

using basic::Date;
using basic::Text;
using basic::TextView;

/// One vehicle in so many has a registration of the old form.
constexpr int kOldFormEvery = 10;

/// I, O and U are not used.
constexpr TextView kLetters = u"ABCDEFGHJKLMNPQRSTVWXYZ";
constexpr std::int64_t kLetterCount = 23;
constexpr std::int64_t kPairs = kLetterCount * kLetterCount;
/// First pairs handed out so far: AA to HJ.
constexpr std::int64_t kFirstPairs = 7 * kLetterCount + 9;
constexpr std::int64_t kNumbers = 999;
constexpr std::int64_t kDepartments = 95;
constexpr std::int64_t kOldNumbers = 9000;

Text PairOf(std::int64_t number) {
    const auto letter = [](std::int64_t place) { return kLetters[static_cast<std::size_t>(place)]; };
    return {letter(number / kLetterCount), letter(number % kLetterCount)};
}

/// A number with leading zeros.
Text Digits(std::int64_t number, std::size_t count) {
    const std::string digits = std::to_string(number);
    const Text zeros(count > digits.size() ? count - digits.size() : 0, u'0');
    return zeros + basic::FromUtf8(digits);
}

/// The pairs AA to ZZ without SS, which is not handed out.
Text LastPairOf(std::int64_t number) {
    static const Text kReserved = u"SS";
    const Text pair = PairOf(number);
    return pair < kReserved ? pair : PairOf(number + 1);
}

Registration NewForm(std::int64_t number, std::uint64_t seed, Date today) {
    constexpr std::int64_t kLastPairs = kPairs - 1;
    const std::int64_t place = Shuffled(number, kFirstPairs * kNumbers * kLastPairs, seed);
    const std::int64_t first = place / (kNumbers * kLastPairs);
    const Date start = basic::DateOf(2009, 4, 15);
    const double age =
        (today.days - start.days) * static_cast<double>(first) / static_cast<double>(kFirstPairs);
    return {PairOf(first) + u"-" + Digits(1 + place % kNumbers, 3) + u"-" +
                LastPairOf(place / kNumbers % kLastPairs),
            {start.days + static_cast<double>(static_cast<std::int64_t>(age))}};
}

Registration OldForm(std::int64_t number, std::uint64_t seed) {
    const std::int64_t size = kOldNumbers * kPairs * kDepartments;
    const std::int64_t place = Shuffled(number, size, seed);
    const std::int64_t rest = place / kDepartments;
    const Date start = basic::DateOf(2001, 7, 2);
    constexpr std::int64_t kDays = 2800;
    return {Digits(1000 + rest % kOldNumbers, 4) + u" " + PairOf(rest / kOldNumbers) + u" " +
                Digits(1 + place % kDepartments, 2),
            {start.days + static_cast<double>(rest % kDays)}};
}

}  // namespace

Registration RegistrationOf(std::int64_t number, std::uint64_t seed, Date today) {
    return number % kOldFormEvery == 0 ? OldForm(number / kOldFormEvery, seed) : NewForm(number, seed, today);
}

}  // namespace quardele::workshop
