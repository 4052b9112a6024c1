#include <word/gword.h>

namespace quardele::word {

GWORD::GWORD(std::function<CatalogueKey()> catalogueKey, ShowBox showBox)
    : catalogueKey_(std::move(catalogueKey)), showBox_(std::move(showBox)) {}

}  // namespace quardele::word
