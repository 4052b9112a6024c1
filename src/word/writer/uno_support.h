// Small conversions between our types and those of LibreOffice's interfaces.
#pragma once

#include <filesystem>
#include <initializer_list>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <rtl/ustring.hxx>

#include <basic/text.h>

namespace quardele::word::writer {

namespace css = ::com::sun::star;
using basic::Text;
using basic::TextView;
using css::uno::Reference;

[[nodiscard]] Text ToText(const rtl::OUString& text);
[[nodiscard]] rtl::OUString ToUno(TextView text);

/// A file of this machine as the encoded URL that LibreOffice takes.
[[nodiscard]] rtl::OUString FileUrl(const std::filesystem::path& file);

/// The named arguments of a load or store.
struct Setting {
    const char* name;
    css::uno::Any value;
};
[[nodiscard]] css::uno::Sequence<css::beans::PropertyValue> Settings(std::initializer_list<Setting> settings);

/// A property of any object; the type's own empty value when the object leaves it void.
template <class T>
[[nodiscard]] T Property(const Reference<css::uno::XInterface>& object, const char* name) {
    const Reference<css::beans::XPropertySet> properties(object, css::uno::UNO_QUERY_THROW);
    T value{};
    properties->getPropertyValue(rtl::OUString::createFromAscii(name)) >>= value;
    return value;
}

template <class T>
void SetProperty(const Reference<css::uno::XInterface>& object, const char* name, const T& value) {
    const Reference<css::beans::XPropertySet> properties(object, css::uno::UNO_QUERY_THROW);
    properties->setPropertyValue(rtl::OUString::createFromAscii(name), css::uno::Any(value));
}

}  // namespace quardele::word::writer
