// The cost of a whole picture in each format, for drawings of many short lines and many texts.
#include <benchmark/benchmark.h>

#include <cmath>

#include "host/picture/fonts.h"
#include "host/picture/picture.h"

using namespace host;

namespace {

DisplayList drawing(int lines, int texts) {
    installTextMetrics();
    DisplayList list;
    list.layers = {{L"0", true}};
    list.styles = {{}};
    list.faces = {{}};
    for (int i = 0; i < lines; ++i) {
        DisplayPrimitive line;
        line.first = std::uint32_t(i);
        line.count = 1;
        const double x = i % 300, y = i / 300;
        list.points.insert(list.points.end(), {{x, y, 0}, {x + std::sin(i), y + std::cos(i), 0}});
        list.contourEnds.push_back(std::uint32_t(list.points.size()));
        list.primitives.push_back(line);
    }
    for (int i = 0; i < texts; ++i) {
        DisplayPrimitive text;
        text.kind = DisplayPrimitive::Kind::text;
        text.first = std::uint32_t(i);
        list.texts.push_back(
            {L"R 12.5 曲线", 0, {double(i % 30) * 10, double(i / 30), 0}, {1, 0, 0}, {0, 1, 0}});
        list.primitives.push_back(text);
    }
    return list;
}

void write(benchmark::State& state, PictureFormat format) {
    const DisplayList list = drawing(int(state.range(0)), int(state.range(0)) / 20);
    const PicturePanel panel{.list = &list};
    std::size_t bytes = 0;
    for (auto _ : state) bytes = pictureBytes(std::span(&panel, 1), format, {}).bytes.size();
    state.counters["bytes"] = double(bytes);
}

void Svg(benchmark::State& state) { write(state, PictureFormat::svg); }
void Png(benchmark::State& state) { write(state, PictureFormat::png); }
void Pdf(benchmark::State& state) { write(state, PictureFormat::pdf); }
BENCHMARK(Svg)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Png)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Pdf)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
