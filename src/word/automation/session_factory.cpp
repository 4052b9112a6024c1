#include "platform_factory.h"

namespace quardele::automation {

namespace {

Factory*& Replacement() {
    static Factory* replacement = nullptr;
    return replacement;
}

}  // namespace

Factory& SessionFactory() {
    return Replacement() == nullptr ? PlatformFactory() : *Replacement();
}

void SetSessionFactory(Factory* factory) {
    Replacement() = factory;
}

}  // namespace quardele::automation
