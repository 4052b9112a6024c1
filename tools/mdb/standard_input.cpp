#include "standard_input.h"

#include <cstdio>

#include "failure.h"

namespace quardele::mdb {

std::string ReadStandardInput() {
    constexpr Message kCannotRead{"lecture de l'entrée impossible", "cannot read the input"};
    std::string text;
    std::string part(std::size_t{1} << 16, '\0');
    for (std::size_t count = 0; (count = std::fread(part.data(), 1, part.size(), stdin)) > 0;) {
        text.append(part, 0, count);
    }
    if (std::ferror(stdin) != 0) {
        throw Failure(kCannotRead);
    }
    return text;
}

}  // namespace quardele::mdb
