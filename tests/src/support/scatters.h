// Scatters in tests: drawings with curves, boundaries and templates, and the scatter that a command left.
#pragma once
#include "host/os/clock.h"
#include "scatter/random/params.h"
#include "support/arrays.h"

namespace support {

// The clock stands for the length of a scope.
class StandingClock {
public:
    explicit StandingClock(std::uint32_t ticks = 5) { host::setClock(host::ClockSetting{1700000000, ticks}); }
    ~StandingClock() { host::setClock(std::nullopt); }
    StandingClock(const StandingClock&) = delete;
    StandingClock& operator=(const StandingClock&) = delete;
};

class ScatterDrawing : public ArrayDrawing {
public:
    AcDbObjectId addEllipse(const AcGePoint3d& centre, const AcGeVector3d& major, double ratio) {
        return add(std::make_unique<AcDbEllipse>(centre, AcGeVector3d::kZAxis, major, ratio));
    }
    AcDbObjectId addText(const wchar_t* text, const AcGePoint3d& at = {0, -500, 0}) {
        return add(std::make_unique<AcDbText>(at, text, AcDbObjectId(), 2.5));
    }
    // The command on those sources, with the answers behind them.
    std::string scatter(const wchar_t* command, const std::vector<AcDbObjectId>& sources,
                        const std::wstring& answers) {
        return run(std::wstring(command) + L"\n" + selection(sources) + answers);
    }
    static std::wstring selection(const std::vector<AcDbObjectId>& ids) {
        std::wstring answers;
        for (const AcDbObjectId id : ids) answers += handleAnswer(id) + L"\n";
        return answers + L"\n";
    }
};

template <class Params> Params paramsOf(AcDbObjectId scatter) {
    const auto params = corvane::scatter::ReadParams<Params>(scatter);
    EXPECT_TRUE(params);
    return params.value_or(Params());
}

} // namespace support
