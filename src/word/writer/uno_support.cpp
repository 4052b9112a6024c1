#include "uno_support.h"

#include <osl/file.hxx>

namespace quardele::word::writer {

static_assert(sizeof(sal_Unicode) == sizeof(char16_t));

Text ToText(const rtl::OUString& text) {
    return {reinterpret_cast<const char16_t*>(text.getStr()), static_cast<std::size_t>(text.getLength())};
}

rtl::OUString ToUno(TextView text) {
    return {reinterpret_cast<const sal_Unicode*>(text.data()), static_cast<sal_Int32>(text.size())};
}

rtl::OUString FileUrl(const std::filesystem::path& file) {
    rtl::OUString url;
    osl::FileBase::getFileURLFromSystemPath(ToUno(basic::FromUtf8(file.string())), url);
    return url;
}

css::uno::Sequence<css::beans::PropertyValue> Settings(std::initializer_list<Setting> settings) {
    css::uno::Sequence<css::beans::PropertyValue> sequence(static_cast<sal_Int32>(settings.size()));
    css::beans::PropertyValue* target = sequence.getArray();
    for (const Setting& setting : settings) {
        target->Name = rtl::OUString::createFromAscii(setting.name);
        target->Value = setting.value;
        ++target;
    }
    return sequence;
}

}  // namespace quardele::word::writer
