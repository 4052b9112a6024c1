#include "rows/key_table.h"

#include <functional>

namespace quardele::sql {
namespace {

constexpr std::size_t kFirstPlaces = 64;

std::uint32_t TagOf(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> 32);
}

}  // namespace

KeyTable::KeyTable() : places_(kFirstPlaces) {}

std::string_view KeyTable::KeyOf(std::uint32_t number) const {
    const Entry& entry = entries_[number];
    return std::string_view(bytes_).substr(entry.offset, entry.length);
}

std::size_t KeyTable::PlaceOf(std::string_view key, std::uint64_t hash) const {
    const std::size_t mask = places_.size() - 1;
    std::size_t place = hash & mask;
    while (places_[place].number != 0) {
        if (places_[place].tag == TagOf(hash) && KeyOf(places_[place].number - 1) == key) {
            break;
        }
        place = (place + 1) & mask;
    }
    return place;
}

std::uint32_t KeyTable::Insert(std::string_view key) {
    const std::uint64_t hash = std::hash<std::string_view>()(key);
    const std::size_t place = PlaceOf(key, hash);
    if (places_[place].number != 0) {
        return places_[place].number - 1;
    }
    const std::uint32_t number = Size();
    entries_.push_back({hash, bytes_.size(), key.size()});
    bytes_ += key;
    places_[place] = {number + 1, TagOf(hash)};
    if (entries_.size() * 2 > places_.size()) {
        Grow();
    }
    return number;
}

bool KeyTable::Add(std::string_view key) {
    const std::uint32_t before = Size();
    return Insert(key) == before;
}

void KeyTable::Grow() {
    places_.assign(places_.size() * 2, {});
    const std::size_t mask = places_.size() - 1;
    for (std::uint32_t number = 0; number < entries_.size(); ++number) {
        std::size_t place = entries_[number].hash & mask;
        while (places_[place].number != 0) {
            place = (place + 1) & mask;
        }
        places_[place] = {number + 1, TagOf(entries_[number].hash)};
    }
}

std::optional<std::uint32_t> KeyTable::Find(std::string_view key) const {
    const std::size_t place = PlaceOf(key, std::hash<std::string_view>()(key));
    return places_[place].number == 0 ? std::nullopt : std::optional(places_[place].number - 1);
}

void KeyedRows::Add(std::string_view key, std::uint32_t row) {
    const std::uint32_t number = keys_.Insert(key);
    const auto entry = static_cast<std::uint32_t>(entries_.size());
    entries_.push_back({row, kEnd});
    if (number == chains_.size()) {
        chains_.push_back({entry, entry});
        return;
    }
    entries_[chains_[number].last].next = entry;
    chains_[number].last = entry;
}

std::uint32_t KeyedRows::First(std::string_view key) const {
    const auto number = keys_.Find(key);
    return number ? chains_[*number].first : kEnd;
}

}  // namespace quardele::sql
