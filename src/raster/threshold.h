// From grey values to masks: blur, thresholds for the whole image and for each pixel's surroundings.
#pragma once
#include "raster/image.h"

namespace corvane::raster {

// A grey image blurred by a separable Gaussian. The size is made odd and at least 3; a sigma of 0 or less
// stands for half the size. Beyond the rim the rim goes on; each of the two passes rounds to bytes.
RasterImage GaussianBlur(const RasterImage& grey, int size, double sigma);

// The threshold that parts the grey values into two classes with the greatest variance between them (Otsu,
// 1979); the first of equals. The mean of a class without pixels is 0.
int OtsuThreshold(const RasterImage& grey);
// Dark is foreground: 255 where the value is at most the threshold.
RasterImage DarkMask(const RasterImage& grey, int threshold);

enum class LocalMean { box = 0, gaussian = 1 };
enum class LocalSense { atMost = 0, above = 1 }; // which pixels get the maximum, seen from the threshold
// Each pixel against the mean of its surroundings less `offset`, rounded: `maximum` or 0. The box is clipped
// at the image; the Gaussian (sigma a third of the block) takes what lies outside as 0. `block` is the width
// of the surroundings, odd.
RasterImage AdaptiveThreshold(const RasterImage& grey, Byte maximum, LocalMean mean, LocalSense sense,
                              int block, double offset);

// The mask that is traced: grey values, blurred for a level above 0 (sigma half the level), and parted by
// OtsuThreshold. Empty for an empty image.
RasterImage MaskOf(const RasterImage& image, int blurLevel);

} // namespace corvane::raster
