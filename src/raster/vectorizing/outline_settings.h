// What the vectorising dialog remembers from run to run.
#pragma once
#include "raster/vectorize.h"

namespace corvane {

enum class Reduction { none = 0, blackAndWhite = 1, colours = 2 };

struct OutlineSettings {
    static constexpr int kMiddleThreshold = 128, kUsualStep = 2, kMostLevel = 10;
    int threshold = kMiddleThreshold; // 1 to 254
    int step = kUsualStep;            // 1 to 8
    Reduction reduction = Reduction::none;
    int fewestVertices = 0; // 0 to 16; 2 at least once it has been stored
    int level = kMostLevel; // of evening, 0 to 10
    int blur = 0;           // 0 to 5
    raster::VectorizeMode mode = raster::VectorizeMode::centreLines;

    // The reduction that these sliders stand for.
    Reduction derivedReduction() const;
};

// From the settings store; values out of range are brought into it and written back. The level starts at its
// most, whatever is stored, the first time.
OutlineSettings ReadOutlineSettings();
// All but the mode, which is stored as it is chosen.
void WriteOutlineSettings(const OutlineSettings& settings);
void WriteVectorizeMode(raster::VectorizeMode mode);

} // namespace corvane
