// What the desk's view costs, without a screen: frames while it pans and zooms, the first picture of a
// drawing, and the picture after one entity has changed. CPU time is that of all threads.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <cmath>

#include "apps/corvane/session.h"
#include "apps/desk/canvas.h"
#include "apps/desk/picking.h"
#include "benchmarks/apps/desk/mixed_drawing.h"
#include "host/ed/editor.h"
#include "host/ed/selection.h"
#include "host/ent/line.h"

namespace {

bool startQt() {
    static int count = 1;
    static char name[] = "frames";
    static char* words[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto* application = new QApplication(count, words);
    return application != nullptr;
}

// Counts what it paints, so that no benchmark measures frames that never came.
class CountingCanvas : public desk::Canvas {
public:
    int frames = 0;

protected:
    void paintEvent(QPaintEvent* event) override {
        ++frames;
        desk::Canvas::paintEvent(event);
    }
};

// A canvas with a drawing, as the desk holds one.
class Bench {
public:
    explicit Bench(benchmark::State& state) : state_(state) {
        session_.open(deskbench::mixedDrawing(int(state.range(0))));
        canvas.resize(1280, 800);
        canvas.show();
        QApplication::processEvents(); // the window comes up
        canvas.refresh();
        canvas.repaint();
    }
    void mouse(QEvent::Type type, const QPointF& at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, at, button, held, Qt::NoModifier);
        QApplication::sendEvent(&canvas, &event);
    }
    void wheel(const QPointF& at, int delta) {
        QWheelEvent event(at, at, {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&canvas, &event);
    }
    AcDbDatabase& drawing() { return session_.drawing(); }
    ~Bench() {
        if (canvas.frames < int(state_.iterations())) state_.SkipWithError("Frames are missing.");
        if (inkOf(canvas.grab().toImage()) < 500) state_.SkipWithError("There is nothing in the picture.");
    }

private:
    static int inkOf(const QImage& image) {
        const QRgb ground = desk::groundColor(true).rgb();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) != ground;
        return count;
    }
    benchmark::State& state_;
    const bool started_ = startQt(); // before the canvas
    app::Session session_;

public:
    CountingCanvas canvas;
};

void BM_Pan(benchmark::State& state) {
    Bench bench(state);
    for (int i = 0; i < state.range(1); ++i) bench.wheel({640, 400}, 360);
    bench.canvas.repaint();
    bench.mouse(QEvent::MouseButtonPress, {640, 400}, Qt::MiddleButton, Qt::MiddleButton);
    int step = 0;
    for (auto _ : state) {
        ++step;
        bench.mouse(QEvent::MouseMove, {640.0 + step % 40 * 6, 400.0 + step % 40 * 3}, Qt::NoButton,
                    Qt::MiddleButton);
        bench.canvas.repaint();
    }
}

void BM_Zoom(benchmark::State& state) {
    Bench bench(state);
    int step = 0;
    for (auto _ : state) {
        bench.wheel({500, 300}, step++ / 10 % 2 == 0 ? 120 : -120);
        bench.canvas.repaint();
    }
}

// The eye goes round the drawing: each frame is seen from another side.
void BM_Orbit(benchmark::State& state) {
    Bench bench(state);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(640, 400), QPointF(640, 400), Qt::MiddleButton,
                      Qt::MiddleButton, Qt::ShiftModifier);
    QApplication::sendEvent(&bench.canvas, &press);
    int step = 0;
    for (auto _ : state) {
        ++step;
        bench.mouse(QEvent::MouseMove, {640.0 + step % 60, 400.0 - step % 30}, Qt::NoButton,
                    Qt::MiddleButton);
        bench.canvas.repaint();
    }
}

// The exact picture of everything, as it stands when the view has come to rest.
void BM_WholePicture(benchmark::State& state) {
    Bench bench(state);
    bool dark = false;
    for (auto _ : state) {
        bench.canvas.setDark(dark = !dark);
        bench.canvas.repaint();
    }
}

// From the drawing in memory to its first picture.
void BM_FirstPicture(benchmark::State& state) {
    Bench bench(state);
    for (auto _ : state) {
        CountingCanvas canvas;
        canvas.resize(1280, 800);
        canvas.show();
        QApplication::processEvents(); // the window comes up
        canvas.refresh();
        canvas.repaint();
        bench.canvas.frames += canvas.frames > 0;
    }
}

void BM_OneEntityChanges(benchmark::State& state) {
    Bench bench(state);
    AcDbObjectId id;
    {
        AcDbObjectPointer<AcDbBlockTableRecord> space(bench.drawing().modelSpaceId(), AcDb::kForWrite);
        auto* line = new AcDbLine(AcGePoint3d(10, 10, 0), AcGePoint3d(40, 10, 0));
        space->appendAcDbEntity(id, line);
        line->close();
    }
    double y = 0;
    for (auto _ : state) {
        {
            AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
            line->setEndPoint(AcGePoint3d(40, y += 0.1, 0));
        }
        bench.canvas.refresh();
        bench.canvas.repaint();
    }
}

// What a window round a quarter of the drawing takes.
void BM_CrossingWindow(benchmark::State& state) {
    Bench bench(state);
    desk::Scene scene;
    scene.rebuild(bench.drawing(), bench.canvas.map());
    scene.prepare(bench.canvas.map());
    size_t found = 0;
    for (auto _ : state)
        found = desk::entitiesWithin(scene, bench.canvas.map(), QRectF(640, 400, 640, 400), true).size();
    state.counters["found"] = double(found);
    bench.canvas.frames += int(state.iterations());
}

// All of it shines, and is a set that commands take.
void BM_SelectAll(benchmark::State& state) {
    Bench bench(state);
    AcDbObjectPointer<AcDbBlockTableRecord> space(bench.drawing().modelSpaceId(), AcDb::kForRead);
    const std::vector<AcDbObjectId> all = space->entities();
    for (auto _ : state) {
        ads_name set, name;
        acedSSAdd(nullptr, nullptr, set);
        for (const AcDbObjectId id : all)
            if (acdbGetAdsName(name, id) == Acad::eOk) acedSSAdd(name, set, set);
        acedSSSetFirst(nullptr, set);
        acedSSFree(set);
        bench.canvas.setSelected(all);
        bench.canvas.repaint();
    }
}

} // namespace

// The second argument of pans: how far the view has gone in, in wheel events of three notches.
BENCHMARK(BM_Pan)
    ->ArgsProduct({{1000, 10000, 100000}, {0, 3}})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
#define ON_GROWING_DRAWINGS(name)                                                                            \
    BENCHMARK(name)                                                                                          \
        ->Arg(1000)                                                                                          \
        ->Arg(10000)                                                                                         \
        ->Arg(100000)                                                                                        \
        ->Unit(benchmark::kMillisecond)                                                                      \
        ->MeasureProcessCPUTime()                                                                            \
        ->UseRealTime()
ON_GROWING_DRAWINGS(BM_Zoom);
ON_GROWING_DRAWINGS(BM_Orbit);
ON_GROWING_DRAWINGS(BM_WholePicture);
ON_GROWING_DRAWINGS(BM_FirstPicture);
ON_GROWING_DRAWINGS(BM_OneEntityChanges);
ON_GROWING_DRAWINGS(BM_CrossingWindow);
ON_GROWING_DRAWINGS(BM_SelectAll);
