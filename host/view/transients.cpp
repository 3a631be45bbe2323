// The list of transients.
#include "host/view/transients.h"

#include <algorithm>
#include <tuple>

#include "host/db/database.h"
#include "host/view/collector.h"
#include "host/view/database_source.h"

namespace {

host::DisplayList drawn(const AcGiDrawable& drawable) {
    const auto* entity = dynamic_cast<const AcDbEntity*>(&drawable);
    AcDbDatabase* database = entity ? entity->database() : nullptr;
    host::DatabaseSource source(database ? database : acdbHostApplicationServices()->workingDatabase());
    host::DisplayCollector collector(source, {.dragging = true});
    collector.add(drawable);
    return collector.take();
}

} // namespace

bool AcGiTransientManager::addTransient(AcGiDrawable* drawable, AcGiTransientDrawingMode mode, int subMode,
                                        const AcArray<int>& viewports) {
    const auto same = [&](const Entry& e) { return e.drawable == drawable && e.mode == mode; };
    if (!drawable || std::any_of(entries_.begin(), entries_.end(), same)) return false;
    Entry entry{drawable, mode, subMode, {viewports.begin(), viewports.end()}, drawn(*drawable)};
    const auto before = [](const Entry& a, const Entry& b) {
        return std::tie(a.mode, a.subMode) < std::tie(b.mode, b.subMode);
    };
    entries_.insert(std::upper_bound(entries_.begin(), entries_.end(), entry, before), std::move(entry));
    ++generation_;
    return true;
}

bool AcGiTransientManager::updateTransient(AcGiDrawable* drawable, const AcArray<int>&) {
    bool found = false;
    for (Entry& entry : entries_) {
        if (entry.drawable != drawable) continue;
        entry.picture = drawn(*drawable);
        found = true;
    }
    generation_ += found;
    return found;
}

bool AcGiTransientManager::eraseTransient(AcGiDrawable* drawable, const AcArray<int>&) {
    const bool found = std::erase_if(entries_, [&](const Entry& e) { return e.drawable == drawable; }) > 0;
    generation_ += found;
    return found;
}

bool AcGiTransientManager::eraseTransients(AcGiTransientDrawingMode mode, int subMode, const AcArray<int>&) {
    const auto meant = [&](const Entry& e) {
        return e.mode == mode && (subMode == -1 || e.subMode == subMode);
    };
    const bool found = std::erase_if(entries_, meant) > 0;
    generation_ += found;
    return found;
}

int AcGiTransientManager::getFreeSubDrawingMode(AcGiTransientDrawingMode mode, int& subMode,
                                                const AcArray<int>&) const {
    int highest = -1;
    for (const Entry& entry : entries_)
        if (entry.mode == mode) highest = std::max(highest, entry.subMode);
    return subMode = highest + 1;
}

AcGiTransientManager* acgiGetTransientManager() {
    static AcGiTransientManager manager;
    return &manager;
}
