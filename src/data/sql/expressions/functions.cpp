#include "expressions/functions.h"

namespace quardele::sql {

const Function* FindFunction(TextView name) {
    for (const auto functions : {TextFunctions(), NumberFunctions(), DateFunctions()}) {
        for (const Function& function : functions) {
            if (basic::EqualNoCase(function.name, name)) {
                return &function;
            }
        }
    }
    return nullptr;
}

}  // namespace quardele::sql
