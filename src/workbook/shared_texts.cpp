#include "shared_texts.h"

#include <algorithm>
#include <vector>

#include <workbook/workbook.h>

#include "record_names.h"

namespace quardele::workbook {

namespace {

/// Units and form of a text stand together in one record.
constexpr std::size_t kTextHeader = 3;
constexpr std::size_t kMostBuckets = 128;
constexpr std::size_t kLeastTextsPerBucket = 8;

bool OpensPair(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool ClosesPair(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// Where the first half of a pair stands that has no other half; the end when there is none.
std::size_t LoneHalf(basic::TextView text, std::size_t from) {
    for (std::size_t at = from; at < text.size(); ++at) {
        if (OpensPair(text[at]) && at + 1 < text.size() && ClosesPair(text[at + 1])) {
            ++at;
        } else if (OpensPair(text[at]) || ClosesPair(text[at])) {
            return at;
        }
    }
    return text.size();
}

/// Programs refuse a whole workbook for half a pair: U+FFFD stands in its place.
basic::Text WithoutLoneHalves(basic::TextView text) {
    basic::Text whole(text);
    for (std::size_t at = LoneHalf(whole, 0); at < whole.size(); at = LoneHalf(whole, at)) {
        whole[at] = u'\xFFFD';
    }
    return whole;
}

basic::Text Cut(basic::TextView text) {
    std::size_t length = Workbook::kMaxTextLength - 1;
    length -= OpensPair(text[length - 1]) ? 1 : 0;
    return basic::Text(text.substr(0, length)) + u'…';
}

/// As many units as fit into a record without dividing a pair: some programs read each record by itself.
std::size_t UnitsThatFit(basic::TextView text, std::size_t room) {
    if (text.size() <= room) {
        return text.size();
    }
    return room > 0 && OpensPair(text[room - 1]) ? room - 1 : room;
}

}  // namespace

std::uint32_t SharedTexts::NumberOf(basic::TextView text) {
    ++uses_;
    basic::Text corrected;
    if (text.size() > Workbook::kMaxTextLength) {
        corrected = Cut(text);
        text = corrected;
    }
    if (LoneHalf(text, 0) < text.size()) {
        corrected = WithoutLoneHalves(text);
        text = corrected;
    }
    if (const auto known = numbers_.find(text); known != numbers_.end()) {
        return known->second;
    }
    const auto number = static_cast<std::uint32_t>(texts_.size());
    texts_.emplace_back(text);
    numbers_.emplace(texts_.back(), number);
    return number;
}

void SharedTexts::Put(Records& out) const {
    out.Begin(record::kSharedTexts);
    out.PutLong(uses_);
    out.PutLong(static_cast<std::uint32_t>(texts_.size()));
    std::vector<Place> buckets;
    const std::size_t perBucket = TextsPerBucket();
    std::size_t number = 0;
    for (const basic::Text& text : texts_) {
        const Place place = PutText(out, text);
        if (number++ % perBucket == 0) {
            buckets.push_back(place);
        }
    }
    out.Begin(record::kSharedTextsIndex);
    out.PutShort(static_cast<std::uint16_t>(perBucket));
    for (const Place& bucket : buckets) {
        out.PutLong(bucket.inStream);
        out.PutShort(bucket.inRecord);
        out.PutShort(0);
    }
    out.End();
}

std::size_t SharedTexts::TextsPerBucket() const {
    return std::max(kLeastTextsPerBucket, (texts_.size() + kMostBuckets - 1) / kMostBuckets);
}

/// A text that does not fit goes on in continuing records; each of them says the form of the units again.
SharedTexts::Place SharedTexts::PutText(Records& out, basic::TextView text) {
    const bool wide = IsWide(text);
    const std::size_t unitSize = wide ? 2 : 1;
    if (out.Room() < kTextHeader + unitSize) {
        out.Begin(record::kContinue);
    }
    const Place place{static_cast<std::uint32_t>(out.Size()),
                      static_cast<std::uint16_t>(out.Size() - out.RecordStart())};
    out.PutShort(static_cast<std::uint16_t>(text.size()));
    out.PutByte(wide ? 1 : 0);
    while (true) {
        const std::size_t units = UnitsThatFit(text, out.Room() / unitSize);
        out.PutBareUnits(text.substr(0, units), wide);
        text.remove_prefix(units);
        if (text.empty()) {
            return place;
        }
        out.Begin(record::kContinue);
        out.PutByte(wide ? 1 : 0);
    }
}

}  // namespace quardele::workbook
