#include "bookmarks.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/text/XBookmarksSupplier.hpp>

#include "range.h"
#include "text_range.h"
#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::uno::UNO_QUERY_THROW;

Reference<css::container::XNameAccess> AllBookmarks(const OpenDocument& document) {
    return Reference<css::text::XBookmarksSupplier>(document.Model(), UNO_QUERY_THROW)->getBookmarks();
}

}  // namespace

std::span<const Member<Bookmarks>> Bookmarks::Members() {
    static constexpr Member<Bookmarks> kMembers[] = {
        {u"Add", &Bookmarks::Add},
        {u"Count", &Bookmarks::Count},
        {u"Exists", &Bookmarks::Exists},
        {u"Item", &Bookmarks::Item},
    };
    return kMembers;
}

Reference<css::text::XTextContent> Bookmarks::Find(const Text& name) const {
    if (name.empty()) {
        return {};
    }
    const auto all = AllBookmarks(*Doc());
    rtl::OUString spelled = ToUno(name);
    if (!all->hasByName(spelled)) {
        const auto names = all->getElementNames();
        const auto* const end = names.getConstArray() + names.getLength();
        const auto* const found = std::find_if(names.getConstArray(), end, [&](const rtl::OUString& other) {
            return basic::EqualNoCase(ToText(other), name);
        });
        if (found == end) {
            return {};
        }
        spelled = *found;
    }
    return {all->getByName(spelled), UNO_QUERY_THROW};
}

Value Bookmarks::Add(const Arguments& arguments) {
    const Text name = arguments.TextAt(0, u"Name");
    if (const auto former = Find(name); former.is()) {
        former->getAnchor()->getText()->removeTextContent(former);
    }
    const Reference<css::lang::XMultiServiceFactory> factory(Doc()->Model(), UNO_QUERY_THROW);
    const Reference<css::text::XTextContent> bookmark(factory->createInstance("com.sun.star.text.Bookmark"),
                                                      UNO_QUERY_THROW);
    Reference<css::container::XNamed>(bookmark, UNO_QUERY_THROW)->setName(ToUno(name));
    const auto selection = ModelCursor(Doc()->Cursor().get());
    selection->getText()->insertTextContent(selection.get(), bookmark, true);
    return Make<Bookmark>(Doc(), bookmark);
}

Value Bookmarks::Count(const Arguments&) {
    return static_cast<int>(
        Reference<css::container::XIndexAccess>(AllBookmarks(*Doc()), UNO_QUERY_THROW)->getCount());
}

Value Bookmarks::Exists(const Arguments& arguments) {
    return Find(arguments.TextAt(0, u"Name")).is();
}

Value Bookmarks::Item(const Arguments& arguments) {
    const auto bookmark = Find(arguments.TextAt(0, u"Index"));
    if (!bookmark.is()) {
        throw Failure(WordError::NoSuchElement);
    }
    return Make<Bookmark>(Doc(), bookmark);
}

std::span<const Member<Bookmark>> Bookmark::Members() {
    static constexpr Member<Bookmark> kMembers[] = {
        {u"Range", &Bookmark::GetRange},
        {u"Select", &Bookmark::Select},
    };
    return kMembers;
}

Value Bookmark::GetRange(const Arguments&) {
    return Make<Range>(Doc(), bookmark_->getAnchor());
}

Value Bookmark::Select(const Arguments&) {
    Doc()->Cursor()->gotoRange(bookmark_->getAnchor(), false);
    return {};
}

}  // namespace quardele::word::writer
