#include "structure/table_use.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "engine.h"

namespace quardele::jet {

namespace {

struct Use {
    std::filesystem::path file;
    std::uint32_t page;
    const Engine* engine;
    friend bool operator==(const Use&, const Use&) = default;
};

/// Databases may live in different threads.
struct Register {
    std::mutex mutex;
    std::vector<Use> uses;
};

Register& TheRegister() {
    static Register instance;
    return instance;
}

}  // namespace

TableUse::TableUse(const Engine& engine, std::uint32_t page)
    : engine_(engine), file_(engine.Path()), page_(page) {
    const std::scoped_lock lock(TheRegister().mutex);
    TheRegister().uses.push_back({file_, page_, &engine_});
}

TableUse::~TableUse() {
    const std::scoped_lock lock(TheRegister().mutex);
    auto& uses = TheRegister().uses;
    const auto found = std::find(uses.begin(), uses.end(), Use{file_, page_, &engine_});
    if (found != uses.end()) {
        uses.erase(found);
    }
}

bool TableUse::IsOpenElsewhere(const Engine& engine, std::uint32_t page) {
    const std::filesystem::path file = engine.Path();
    const std::scoped_lock lock(TheRegister().mutex);
    const auto& uses = TheRegister().uses;
    return std::any_of(uses.begin(), uses.end(), [&](const Use& use) {
        return use.engine != &engine && use.page == page && use.file == file;
    });
}

}  // namespace quardele::jet
