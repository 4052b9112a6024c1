#include "functions.h"

#include <algorithm>

namespace quardele::formula {

const Function* FindFunction(TextView name) {
    for (const std::span<const Function> functions : {TextFunctions(), NumberFunctions(), DateFunctions()}) {
        const auto found = std::find_if(functions.begin(), functions.end(), [name](const Function& function) {
            return basic::EqualNoCase(function.name, name);
        });
        if (found != functions.end()) {
            return &*found;
        }
    }
    return nullptr;
}

const Text& TextIn(const Variant& value) {
    return value.As<Text>();
}

}  // namespace quardele::formula
