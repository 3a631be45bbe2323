// Dialogs in tests: templates out of tests/data, screens put in place and taken away, colours out of
// paintings.
#pragma once
#include <gtest/gtest.h>

#include <vector>

#include "core/host/dialogs.h"

namespace support {

// Templates of tests/data/dialogs are those in use.
class TestTemplates {
public:
    TestTemplates() : override_(host::resourceModule(CORVANE_TEST_DATA)) {}

private:
    CAcModuleResourceOverride override_;
};

class Screens {
public:
    explicit Screens(std::vector<host::Monitor> monitors) { host::setMonitors(std::move(monitors)); }
    ~Screens() { host::setMonitors({}), host::setDpiForWindowPresent(true); }
    Screens(const Screens&) = delete;
    Screens& operator=(const Screens&) = delete;
};
inline host::Monitor screen(int left, int width, int height, int dotsPerInch) {
    return {{left, 0, left + width, height}, {left, 0, left + width, height - 40}, dotsPerInch};
}

// All texts of a painting with their places, those of recordings in it included.
struct PaintedText {
    std::wstring text;
    double y;
};
inline void collectTexts(const host::Recording& recording, std::vector<PaintedText>& texts) {
    for (const host::Primitive& p : recording.primitives) {
        if (p.kind == host::Primitive::Kind::text) texts.push_back({p.text, p.points.at(0).y});
        if (p.recording) collectTexts(*p.recording, texts);
    }
}

inline CRect placeOf(HWND dialog, int id) {
    CRect place;
    GetWindowRect(GetDlgItem(dialog, id), place);
    MapWindowPoints(nullptr, dialog, place);
    return place;
}

} // namespace support
