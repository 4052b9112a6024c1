#include <engine/section.h>

namespace quardele::engine {

Collection<ReportObject> Section::ReportObjects() const {
    Collection<ReportObject> all;
    for (const std::shared_ptr<ReportObject>& object : objects) {
        all.Add(object);
        if (object->Kind() == ObjectKind::Flow) {
            for (const FlowCell& cell : static_cast<const FlowObject&>(*object).cells) {
                for (const std::shared_ptr<ReportObject>& inner : cell.objects) {
                    all.Add(inner);
                }
            }
        }
    }
    return all;
}

}  // namespace quardele::engine
