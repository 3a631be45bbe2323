// A cage to try the loops on, the view that tests of them have, and scripts that answer.
#pragma once
#include <gmock/gmock.h>

#include <sstream>

#include "core/sysvar_stack.h"
#include "deform/cage/cage_loop.h"
#include "host/os/keys.h"
#include "host/os/text.h"
#include "host/view/screen.h"
#include "host/view/transients.h"
#include "support/drawing.h"

namespace support {

// Nine control points on a square of 100, numbered along Y first. It counts how often it was applied.
class FlatCage final : public corvane::deform::Cage {
public:
    using ControlPoint = corvane::deform::ControlPoint;
    FlatCage() {
        for (int i = 0; i < 9; ++i) {
            ControlPoint point;
            point.position.set(50.0 * (i / 3), 50.0 * (i % 3), 0);
            point.initialPosition = point.position;
            points.push_back(point);
            if (i % 3 < 2) lines.push_back({i, i + 1});
            if (i / 3 < 2) lines.push_back({i, i + 3});
        }
    }
    int size() const override { return int(points.size()); }
    ControlPoint& point(int index) override { return points[size_t(index)]; }
    const std::vector<corvane::deform::CageEdge>& edges() const override { return lines; }
    AcDbExtents box() const override { return {{0, 0, 0}, {100, 100, 0}}; }
    void apply() override { ++applied; }
    CString pickedText(int index) const override {
        CString text;
        text.Format(L"\npicked %d", index);
        return text;
    }
    // R drops the last point: another number of points, as after new settings.
    bool keyword(wchar_t letter) override {
        asked += letter;
        if (letter != L'R') return false;
        points.pop_back();
        lines.clear();
        return true;
    }

    corvane::deform::GizmoAxes axes() const override { return frame; }

    std::vector<ControlPoint> points;
    corvane::deform::GizmoAxes frame = Cage::axes();
    std::vector<corvane::deform::CageEdge> lines;
    std::wstring asked;
    int applied = 0;
};

// One run of the loop, answered by a script.
struct LoopRun {
    std::string said;
    bool deformed = false, ranDry = false, leftOver = false;
};
inline LoopRun runLoop(corvane::deform::Cage& cage, const std::wstring& script) {
    LoopRun run;
    host::ScriptFrontEnd frontEnd(script, [&](const std::string& text) { run.said += text; });
    host::setFrontEnd(&frontEnd);
    run.deformed = corvane::deform::RunCageLoop(cage).deformed;
    run.ranDry = frontEnd.ranDry();
    run.leftOver = frontEnd.unreadLine().has_value();
    host::setFrontEnd(nullptr);
    host::heldKeys() = {};
    return run;
}

inline std::wstring replaced(std::wstring text, const std::wstring& from, const std::wstring& to) {
    for (size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

// The transcript with the lines of the menu as "#", the control-point prompt as ">", and of a gizmo's line
// what stands in its brackets.
inline std::string brief(const std::string& said) {
    std::wstring text = host::wide(said);
    text = replaced(text,
                    L"操作提示：\n  [M]-多选 [S]-设置 [L]-锁形 [R]-重置 [U]-撤销 [X]-退出 或<点击控制点>\n",
                    L"#\n");
    text = replaced(text, L"选择控制点或 [M多选/S设置/L锁形/R重置/U撤销/X退出]: ", L"> ");
    for (size_t at = 0; (at = text.find(L"[Gizmo: ", at)) != text.npos; ++at) {
        const size_t from = text.find(L']', at) + 1, end = text.find(L": ", from);
        text.erase(from, end + 1 - from);
    }
    return host::utf8(text);
}

// Tells the first line that is another than expected.
inline testing::AssertionResult sameLines(const std::string& expected, const std::string& said) {
    std::istringstream wanted(expected), actual(said);
    std::string want, got;
    for (int line = 1;; ++line) {
        const bool more = bool(std::getline(wanted, want)), also = bool(std::getline(actual, got));
        if (!more && !also) return testing::AssertionSuccess();
        if (more && also && want == got) continue;
        return testing::AssertionFailure() << "line " << line << " is\n"
                                           << (also ? got : "(the end)") << "\ninstead of\n"
                                           << (more ? want : "(the end)");
    }
}

// A drawing shown at 27 pixels a unit round 0,50, so that the gizmo of the cage, 11.31 units, has 305 pixels.
class CageLoops : public testing::Test {
protected:
    CageLoops() {
        drawing.run(L"ZOOM W -35,30 35,70\n");
        double height = 0;
        corvane::ReadSysVar(L"VIEWSIZE", height);
        drawing.run(L"ZOOM " + std::to_wstring(height / 40) + L"x\n");
        host::heldKeys() = {};
    }
    ~CageLoops() override {
        EXPECT_TRUE(acgiGetTransientManager()->entries().empty());
        EXPECT_TRUE(host::screen().vectors().empty());
    }
    LoopRun run(const std::wstring& script) { return runLoop(cage, script); }
    // The X coordinates of the control points, in whole units.
    std::vector<int> xs() const {
        std::vector<int> values;
        for (const FlatCage::ControlPoint& point : cage.points)
            values.push_back(int(std::lround(point.position.x)));
        return values;
    }
    Drawing drawing;
    FlatCage cage;
};

// A place so many pixels to the right of and above a point, as an answer.
inline std::wstring beside(double x, double y, double right, double above) {
    constexpr double kPixels = 27;
    return std::to_wstring(x + right / kPixels) + L"," + std::to_wstring(y + above / kPixels);
}

} // namespace support
