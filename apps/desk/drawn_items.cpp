// Painting of items.
#include "apps/desk/drawn_items.h"

#include <QAbstractItemView>
#include <QStylePainter>
#include <QStyledItemDelegate>

#include "host/ui/recording.h"
#include "host/ui/windows.h"

namespace desk {
namespace {

void paintItem(QPainter& painter, const QRect& place, HWND control, int item, bool selected) {
    const auto drawn = host::paintItem(control, item, place.width(), place.height(), selected);
    if (drawn) painter.drawImage(place.topLeft(), imageOf(*drawn));
}

class ByParent final : public QStyledItemDelegate {
public:
    ByParent(HWND control, QObject* parent) : QStyledItemDelegate(parent), control_(control) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        paintItem(*painter, option.rect, control_, index.row(), option.state & QStyle::State_Selected);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const bool combo = host::windowOf(control_) && host::windowOf(control_)->hasClass(L"ComboBox");
        const int height =
            int(SendMessageW(control_, combo ? CB_GETITEMHEIGHT : LB_GETITEMHEIGHT, WPARAM(index.row()), 0));
        return {QStyledItemDelegate::sizeHint(option, index).width(), std::max(height, 1)};
    }

private:
    HWND control_;
};

} // namespace

QImage imageOf(const host::Recording& recording, Ground ground) {
    host::PictureServices* services = host::pictureServices();
    if (!services || recording.width <= 0 || recording.height <= 0) return {};
    const size_t bytes = size_t(recording.width) * size_t(recording.height) * 4;
    host::ImagePixels pixels{recording.width, recording.height,
                             std::vector<std::uint8_t>(bytes, ground == Ground::white ? 255 : 0)};
    services->draw(recording, pixels);
    return QImage(pixels.rgba.data(), pixels.width, pixels.height, pixels.width * 4, QImage::Format_RGBA8888)
        .copy();
}

void paintModel(QPainter& painter, HWND window) {
    if (const auto painted = host::paintWindow(window)) painter.drawImage(0, 0, imageOf(*painted));
    const host::Window* model = host::windowOf(window);
    if (model && model->overlay) painter.drawImage(0, 0, imageOf(*model->overlay, Ground::clear));
}

void drawItemsByParent(QAbstractItemView* view, HWND control) {
    view->setItemDelegate(new ByParent(control, view));
}

DrawnCombo::DrawnCombo(HWND control, QWidget* parent) : QComboBox(parent), control_(control) {
    drawItemsByParent(view(), control);
}

void DrawnCombo::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    if (currentIndex() >= 0) paintItem(painter, field, control_, currentIndex(), false);
}

} // namespace desk
