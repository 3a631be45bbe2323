// What tracing costs: outlines of a black-and-white image of rings and specks, centre lines of a drawing of
// ten thousand strokes; at 1, 4 and 16 megapixels, to show that the cost follows the pixels.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>

#include "raster/vectorize.h"

using namespace corvane::raster;

namespace {

RasterImage white(int side) { return RasterImage(side, side, PixelKind::bgr, 255); }
void ink(RasterImage& image, int x, int y) {
    if (x >= 0 && y >= 0 && x < image.cols && y < image.rows)
        for (int k = 0; k < 3; ++k) image.row(y)[3 * x + k] = 0;
}

// Rings in squares of 64 pixels, wavy so that outlines have many vertices.
RasterImage ringed(int side) {
    RasterImage image = white(side);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const double dx = x % 64 - 32, dy = y % 64 - 32, r = std::hypot(dx, dy);
            const double wave = 3 * std::sin(7 * std::atan2(dy, dx));
            if (r < 27 + wave && r > 14 + wave) ink(image, x, y);
        }
    return image;
}

// A bent stroke of three pixels' width in each of 100 by 100 squares.
RasterImage stroked(int side) {
    RasterImage image = white(side);
    const int square = side / 100;
    for (int k = 0; k < 10000; ++k) {
        const double left = k % 100 * square, top = k / 100 * square;
        for (double t = 0; t <= 1; t += 0.2 / square)
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    ink(image, int(left + square * (0.15 + 0.7 * t)) + dx,
                        int(top + square * (0.5 + 0.3 * std::sin(6 * t + k))) + dy);
    }
    return image;
}

void Outlines(benchmark::State& state) {
    const RasterImage image = ringed(int(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(VectorizeImage(image, {VectorizeMode::outlines, 0, 0}));
    state.SetItemsProcessed(state.iterations() * std::int64_t(image.pixels()));
}
void CentreLines(benchmark::State& state) {
    const RasterImage image = stroked(int(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(VectorizeImage(image, {VectorizeMode::centreLines, 0, 0}));
    state.SetItemsProcessed(state.iterations() * std::int64_t(image.pixels()));
}

} // namespace

BENCHMARK(Outlines)->Arg(1000)->Arg(2000)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(CentreLines)->Arg(1000)->Arg(2000)->Arg(4000)->Unit(benchmark::kMillisecond);
