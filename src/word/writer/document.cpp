#include "document.h"

#include <com/sun/star/util/XModifiable.hpp>

#include <basic/conversion.h>

#include "bookmarks.h"
#include "host.h"
#include "range.h"
#include "tables.h"

namespace quardele::word::writer {

namespace {

constexpr int kDoNotSaveChanges = 0;

Reference<css::util::XModifiable> Modifiable(const OpenDocument& document) {
    return {document.Model(), css::uno::UNO_QUERY_THROW};
}

}  // namespace

std::span<const Member<Document>> Document::Members() {
    static constexpr Member<Document> kMembers[] = {
        {u"Bookmarks", &Document::Bookmarks}, {u"Close", &Document::Close},
        {u"Range", &Document::Range},         {u"Save", &Document::Save},
        {u"SaveAs", &Document::SaveAs},       {u"Saved", &Document::Saved, &Document::SetSaved},
        {u"Tables", &Document::Tables},
    };
    return kMembers;
}

Value Document::Bookmarks(const Arguments& arguments) {
    return CollectionOrItem(Make<writer::Bookmarks>(Doc()), arguments);
}

Value Document::Close(const Arguments& arguments) {
    const bool keepChanges = arguments.IntegerAt(0, u"SaveChanges", kDoNotSaveChanges) != kDoNotSaveChanges;
    if (keepChanges && Modifiable(*Doc())->isModified()) {
        Doc()->Save();
    }
    Doc()->Close();
    return {};
}

Value Document::Range(const Arguments& arguments) {
    return ObjectPtr(
        Make<FlatRange>(Doc(), arguments.IntegerAt(0, u"Start"), arguments.IntegerAt(1, u"End")));
}

Value Document::Save(const Arguments&) {
    Doc()->Save();
    return {};
}

Value Document::SaveAs(const Arguments& arguments) {
    Doc()->SaveAs(NativePath(arguments.TextAt(0, u"FileName")));
    return {};
}

Value Document::Saved(const Arguments&) {
    return !Modifiable(*Doc())->isModified();
}

void Document::SetSaved(const Value& saved) {
    Modifiable(*Doc())->setModified(!basic::CBool(saved.Plain()));
}

Value Document::Tables(const Arguments& arguments) {
    return CollectionOrItem(Make<writer::Tables>(Doc(), BodyTables(*Doc())), arguments);
}

}  // namespace quardele::word::writer
