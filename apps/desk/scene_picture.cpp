// Bands of rows, each with the primitives that the index finds for it.
#include "apps/desk/scene_picture.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

namespace desk {
namespace {

constexpr int kBandRows = 64;    // fewer are more work than they are worth
constexpr int kBandsAThread = 3; // so that none waits long for the others
constexpr double kWidest = 12;   // pixels: half the width of the widest lines, which reach beyond their boxes

class Bands {
public:
    Bands(QImage& picture, Scene& scene, const ScreenMap& map, const PaintLook& look, TextOutlines& texts,
          const QRect& part, const std::vector<bool>* only)
        : pixels_(reinterpret_cast<std::uint32_t*>(picture.bits())), stride_(picture.bytesPerLine() / 4),
          ratio_(picture.devicePixelRatio()), scene_(scene), map_(map), look_(look), texts_(texts),
          only_(only), part_(part & picture.rect()), next_(part_.top()) {
        scene.prepare(map);
        texts.prepare(scene.list(), map,
                      QRectF(QPointF(part_.topLeft()) / ratio_, QSizeF(part_.size()) / ratio_));
        const int threads = std::max(1, int(std::thread::hardware_concurrency()));
        rows_ = std::max(kBandRows, part_.height() / (threads * kBandsAThread) + 1);
        const int bands = (part_.height() + rows_ - 1) / rows_;
        std::vector<std::jthread> others;
        for (int i = 1; i < std::min(threads, bands); ++i) others.emplace_back([this] { work(); });
        work();
    }

private:
    void work() {
        std::vector<std::uint32_t> found;
        const int end = part_.bottom() + 1;
        for (int top = next_.fetch_add(rows_); top < end; top = next_.fetch_add(rows_))
            paintBand(top, std::min(end, top + rows_), found);
    }
    void paintBand(int top, int bottom, std::vector<std::uint32_t>& found) {
        RasterBand band(pixels_, stride_, {part_.left(), part_.right() + 1, top, bottom});
        ListPainter painter(band, map_, ratio_, look_, texts_);
        const QRectF seen(part_.left() / ratio_, top / ratio_, part_.width() / ratio_,
                          (bottom - top) / ratio_);
        scene_.find(map_.covered(seen.adjusted(-kWidest, -kWidest, kWidest, kWidest)), found);
        const host::DisplayList& list = scene_.list();
        const double perUnit = map_.view().perspective ? HUGE_VAL : map_.pixelsPerUnit() * ratio_;
        for (const std::uint32_t i : found)
            if (!only_ || (*only_)[i]) painter.paint(list, list.primitives[i], scene_.contours(i, perUnit));
    }

    std::uint32_t* pixels_;
    std::ptrdiff_t stride_;
    int rows_ = 0;
    double ratio_;
    const Scene& scene_;
    const ScreenMap& map_;
    const PaintLook& look_;
    const TextOutlines& texts_;
    const std::vector<bool>* only_;
    QRect part_;
    std::atomic<int> next_;
};

} // namespace

void paintScene(QImage& picture, Scene& scene, const ScreenMap& map, const PaintLook& look,
                TextOutlines& texts, const QRect& part) {
    Bands(picture, scene, map, look, texts, part, nullptr);
}

void paintEntities(QImage& picture, Scene& scene, const ScreenMap& map, const PaintLook& look,
                   TextOutlines& texts, const std::vector<AcDbObjectId>& entities) {
    std::vector<bool> only(scene.list().primitives.size());
    for (const AcDbObjectId id : entities) {
        const PrimitiveRange range = scene.of(id);
        std::fill(only.begin() + range.first, only.begin() + range.end, true);
    }
    Bands(picture, scene, map, look, texts, picture.rect(), &only);
}

} // namespace desk
