// Keys, ranges, defaults.
#include "raster/vectorizing/outline_settings.h"

#include <algorithm>

#include "core/settings.h"

namespace corvane {
namespace {

constexpr wchar_t kThreshold[] = L"OutlineThreshold", kStep[] = L"OutlineStep",
                  kReduction[] = L"OutlinePreprocessMode", kVertices[] = L"OutlineIgnorVertexNumber",
                  kLevel[] = L"OutlineOptimizationLevel", kLevelInited[] = L"OutlineOptimizationLevelInited",
                  kBlur[] = L"OutlineSmoothness", kMode[] = L"VectorizeMode";

int readHeld(const wchar_t* key, int least, int most) {
    const std::uint32_t stored = SettingsStore::ReadInt(key);
    const int held = int(std::clamp<std::int64_t>(std::int32_t(stored), least, most));
    if (std::uint32_t(held) != stored) SettingsStore::WriteInt(key, std::uint32_t(held));
    return held;
}
// Where a stored 0 means that nothing was chosen yet.
int readChosen(const wchar_t* key, int least, int most, int otherwise) {
    return SettingsStore::ReadInt(key) == 0 ? otherwise : readHeld(key, least, most);
}
void writeHeld(const wchar_t* key, int value, int least, int most) {
    SettingsStore::WriteInt(key, std::uint32_t(std::clamp(value, least, most)));
}

} // namespace

Reduction OutlineSettings::derivedReduction() const {
    if (threshold != kMiddleThreshold) return Reduction::blackAndWhite;
    return step == kUsualStep ? Reduction::none : Reduction::colours;
}

OutlineSettings ReadOutlineSettings() {
    OutlineSettings settings;
    settings.threshold = readChosen(kThreshold, 1, 254, OutlineSettings::kMiddleThreshold);
    settings.step = readChosen(kStep, 1, 8, OutlineSettings::kUsualStep);
    settings.reduction = Reduction(readHeld(kReduction, 0, 2));
    settings.fewestVertices = readHeld(kVertices, 0, 16);
    if (SettingsStore::ReadInt(kLevelInited) == 0) {
        writeHeld(kLevel, OutlineSettings::kMostLevel, 0, OutlineSettings::kMostLevel);
        SettingsStore::WriteInt(kLevelInited, 1);
    }
    settings.level = readHeld(kLevel, 0, OutlineSettings::kMostLevel);
    settings.blur = readHeld(kBlur, 0, 5);
    settings.mode = raster::VectorizeMode(readHeld(kMode, 0, 1));
    return settings;
}

void WriteOutlineSettings(const OutlineSettings& settings) {
    writeHeld(kThreshold, settings.threshold, 1, 254);
    writeHeld(kStep, settings.step, 1, 8);
    SettingsStore::WriteInt(kReduction, std::uint32_t(settings.reduction));
    writeHeld(kVertices, settings.fewestVertices, 2, 16);
    writeHeld(kLevel, settings.level, 0, OutlineSettings::kMostLevel);
    SettingsStore::WriteInt(kLevelInited, 1);
    writeHeld(kBlur, settings.blur, 0, 5);
}

void WriteVectorizeMode(raster::VectorizeMode mode) { SettingsStore::WriteInt(kMode, std::uint32_t(mode)); }

} // namespace corvane
