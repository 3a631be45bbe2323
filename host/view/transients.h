// AcGiTransientManager: what is shown for a moment and belongs to no drawing: rubber shapes, gizmos,
// highlights. Each drawable is drawn into a display list when it is added and when it is updated; front
// ends show the lists.
#pragma once

#include <array>
#include <unordered_map>
#include <vector>

#include "host/ge/array.h"
#include "host/view/display_list.h"

class AcGiDrawable;

enum AcGiTransientDrawingMode {
    kAcGiMain = 0,
    kAcGiSprite = 1,
    kAcGiDirectShortTerm = 2,
    kAcGiHighlight = 3,
    kAcGiDirectTopmost = 4,
    kAcGiContrast = 5
};

class AcGiTransientManager {
public:
    struct Entry {
        const AcGiDrawable* drawable;
        AcGiTransientDrawingMode mode;
        int subMode;
        std::vector<int> viewports; // empty: all
        host::DisplayList picture;
    };

    // False for null, for a mode that is none, and for a drawable that is there already in that mode. The
    // drawable stays the caller's, who takes it out before it dies. An empty list of viewports means all.
    bool addTransient(AcGiDrawable* drawable, AcGiTransientDrawingMode mode, int subMode,
                      const AcArray<int>& viewports);
    bool updateTransient(AcGiDrawable* drawable, const AcArray<int>& viewports);
    bool eraseTransient(AcGiDrawable* drawable, const AcArray<int>& viewports);
    // Those of one mode and sub-mode; of all sub-modes for -1. False when there were none.
    bool eraseTransients(AcGiTransientDrawingMode mode, int subMode, const AcArray<int>& viewports);
    int getFreeSubDrawingMode(AcGiTransientDrawingMode mode, int& subMode,
                              const AcArray<int>& viewports) const;

    // In drawing order: by mode and sub-mode, then as they were added.
    const std::vector<Entry>& entries() const { return entries_; }
    // Grows with every change, so that a front end sees when to draw again.
    unsigned generation() const { return generation_; }

private:
    // The place among the entries, or their number.
    size_t find(const AcGiDrawable* drawable, AcGiTransientDrawingMode mode);
    void eraseAt(size_t place);

    std::vector<Entry> entries_;
    // By mode; only looked up, never walked. Stale when entries have moved.
    std::array<std::unordered_map<const AcGiDrawable*, size_t>, kAcGiContrast + 1> places_;
    bool stale_ = false;
    unsigned generation_ = 0;
};

AcGiTransientManager* acgiGetTransientManager();
