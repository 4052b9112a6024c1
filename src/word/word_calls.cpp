#include "word_calls.h"

namespace quardele::word {

using automation::Object;

Object& Application(const ObjectPtr& Word) {
    if (Word == nullptr) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    return *Word;
}

ObjectPtr ActiveDocument(const ObjectPtr& Word) {
    return Application(Word).Child(u"ActiveDocument");
}
ObjectPtr ActiveWindow(const ObjectPtr& Word) {
    return Application(Word).Child(u"ActiveWindow");
}
ObjectPtr Selection(const ObjectPtr& Word) {
    return Application(Word).Child(u"Selection");
}

ObjectPtr ViewOfActivePane(const ObjectPtr& Word) {
    return ActiveWindow(Word)->Child(u"ActivePane")->Child(u"View");
}

std::int32_t Number(Object& object, TextView member) {
    return basic::CLng(object.Get(member).Plain());
}
bool Truth(Object& object, TextView member) {
    return basic::CBool(object.Get(member).Plain());
}

}  // namespace quardele::word
