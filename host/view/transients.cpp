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

size_t AcGiTransientManager::find(const AcGiDrawable* drawable, AcGiTransientDrawingMode mode) {
    if (stale_) {
        for (auto& places : places_) places.clear();
        for (size_t i = 0; i < entries_.size(); ++i) places_[entries_[i].mode][entries_[i].drawable] = i;
        stale_ = false;
    }
    const auto found = places_[mode].find(drawable);
    return found == places_[mode].end() ? entries_.size() : found->second;
}

// The last entry goes without moving others, so that those who take out what they added, backwards, are
// quick.
void AcGiTransientManager::eraseAt(size_t place) {
    stale_ = stale_ || place + 1 < entries_.size();
    places_[entries_[place].mode].erase(entries_[place].drawable);
    entries_.erase(entries_.begin() + std::ptrdiff_t(place));
}

bool AcGiTransientManager::addTransient(AcGiDrawable* drawable, AcGiTransientDrawingMode mode, int subMode,
                                        const AcArray<int>& viewports) {
    if (!drawable || mode < kAcGiMain || mode > kAcGiContrast || find(drawable, mode) < entries_.size())
        return false;
    Entry entry{drawable, mode, subMode, {viewports.begin(), viewports.end()}, drawn(*drawable)};
    const auto before = [](const Entry& a, const Entry& b) {
        return std::tie(a.mode, a.subMode) < std::tie(b.mode, b.subMode);
    };
    const auto at = std::upper_bound(entries_.begin(), entries_.end(), entry, before);
    stale_ = at != entries_.end();
    places_[mode][drawable] = entries_.size();
    entries_.insert(at, std::move(entry));
    ++generation_;
    return true;
}

bool AcGiTransientManager::updateTransient(AcGiDrawable* drawable, const AcArray<int>&) {
    bool found = false;
    for (int mode = kAcGiMain; mode <= kAcGiContrast; ++mode) {
        const size_t place = find(drawable, AcGiTransientDrawingMode(mode));
        if (place == entries_.size()) continue;
        entries_[place].picture = drawn(*drawable);
        found = true;
    }
    generation_ += found;
    return found;
}

bool AcGiTransientManager::eraseTransient(AcGiDrawable* drawable, const AcArray<int>&) {
    bool found = false;
    for (int mode = kAcGiMain; mode <= kAcGiContrast; ++mode) {
        const size_t place = find(drawable, AcGiTransientDrawingMode(mode));
        if (place == entries_.size()) continue;
        eraseAt(place);
        found = true;
    }
    generation_ += found;
    return found;
}

bool AcGiTransientManager::eraseTransients(AcGiTransientDrawingMode mode, int subMode, const AcArray<int>&) {
    const auto meant = [&](const Entry& e) {
        return e.mode == mode && (subMode == -1 || e.subMode == subMode);
    };
    const bool found = std::erase_if(entries_, meant) > 0;
    stale_ = stale_ || found;
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
