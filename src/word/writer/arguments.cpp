#include "arguments.h"

#include <algorithm>

#include <basic/conversion.h>

#include "word_error.h"

namespace quardele::word::writer {

bool Truth(const Value& value) {
    return basic::CBool(value.Plain());
}

const Value* Arguments::Find(std::size_t position, TextView name) const {
    const auto byName = std::find_if(named_.begin(), named_.end(), [&](const NamedArgument& argument) {
        return basic::EqualNoCase(argument.first, name);
    });
    const Value* found = nullptr;
    if (byName != named_.end()) {
        found = &byName->second;
    } else if (position < positional_.size()) {
        found = &positional_[position];
    }
    return found == nullptr || found->IsMissing() ? nullptr : found;
}

const Value& Arguments::Require(std::size_t position, TextView name) const {
    const Value* found = Find(position, name);
    if (found == nullptr) {
        throw Failure(WordError::MissingArgument);
    }
    return *found;
}

Text Arguments::TextAt(std::size_t position, TextView name) const {
    return basic::CStr(Require(position, name).Plain());
}

int Arguments::IntegerAt(std::size_t position, TextView name, std::optional<int> fallback) const {
    if (fallback && Find(position, name) == nullptr) {
        return *fallback;
    }
    return basic::CLng(Require(position, name).Plain());
}

bool Arguments::TruthAt(std::size_t position, TextView name, bool fallback) const {
    const Value* found = Find(position, name);
    return found == nullptr ? fallback : basic::CBool(found->Plain());
}

}  // namespace quardele::word::writer
