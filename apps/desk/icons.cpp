// The drawings as path data: what comes behind a bar is in the accent's colour.
#include "apps/desk/icons.h"

#include <QPainter>
#include <QSvgRenderer>

namespace desk {
namespace {

struct Drawing {
    const char* name;
    const char* paths;
};

// clang-format off
constexpr Drawing kDrawings[] = {
    {"new", "M6 3h8l4 4v14H6z M14 3v4h4"},
    {"open", "M3 19V6h6l2 2h8v3 M3 19l3-8h16l-3 8z"},
    {"save", "M4 4h13l3 3v13H4z M8 4v5h7V4 M7 20v-7h10v7"},
    {"export", "M5 13v7h14v-7 M12 3v11|M8 10l4 4 4-4"},
    {"undo", "M9 5L4 10l5 5 M4 10h10a5 5 0 0 1 0 10h-4"},
    {"redo", "M15 5l5 5-5 5 M20 10H10a5 5 0 0 0 0 10h4"},
    {"erase", "M5 7h14 M9 7V4h6v3 M7 7l1 13h8l1-13"},
    {"zoomExtents", "M4 9V4h5 M15 4h5v5 M20 15v5h-5 M9 20H4v-5|M9 9h6v6H9z"},
    {"zoomIn", "M10 4a6 6 0 1 0 0 12a6 6 0 1 0 0-12 M14.5 14.5L20 20|M10 7v6 M7 10h6"},
    {"zoomOut", "M10 4a6 6 0 1 0 0 12a6 6 0 1 0 0-12 M14.5 14.5L20 20|M7 10h6"},
    {"layers", "M12 4l9 5-9 5-9-5z|M3 13l9 5 9-5"},
    {"LINE", "M5 19L19 5|M3.5 17.5h3v3h-3z M17.5 3.5h3v3h-3z"},
    {"PLINE", "M4 19V8h9l7 9|M2.5 17.5h3v3h-3z M11.5 6.5h3v3h-3z M18.5 15.5h3v3h-3z"},
    {"CIRCLE", "M12 4a8 8 0 1 0 0 16a8 8 0 1 0 0-16|M10.5 12h3 M12 10.5v3"},
    {"ARC", "M4 18A14 14 0 0 1 20 9|M2.5 16.5h3v3h-3z M18.5 7.5h3v3h-3z"},
    {"ELLIPSE", "M12 7c5 0 9 2.2 9 5s-4 5-9 5-9-2.2-9-5 4-5 9-5|M10.5 12h3 M12 10.5v3"},
    {"SPLINE", "M3 18C8 18 7 6 12 6s5 10 9 6|M1.5 16.5h3v3h-3z M10.5 4.5h3v3h-3z M19.5 10.5h3v3h-3z"},
    {"POINT", "M12 4v16 M4 12h16"},
    {"TEXT", "M5 19L12 4l7 15 M8 14h8"},
    {"MOVE", "M12 3v18 M3 12h18 M9 6l3-3 3 3 M9 18l3 3 3-3 M6 9l-3 3 3 3 M18 9l3 3-3 3"},
    {"COPY", "M4 4h11v11H4z|M9 19v1h11V9h-1"},
    {"ROTATE", "M19 12a7 7 0 1 1-3-5.7|M12 3l4.5 3.3-3.5 4"},
    {"SCALE", "M4 12h8v8H4z|M4 4h16v16h-5 M12 12l5-5"},
    {"MIRROR", "M4 6v12l6-6z|M12 3v3 M12 9v3 M12 15v3 M20 6v12l-6-6z"},
    {"STRETCH", "M4 8h8v8H4z|M14 8h6v8h-6 M15 12h5 M18 10l2 2-2 2"},
    {"OFFSET", "M4 19c0-8 6-13 15-13|M9 20c0-5 4-8.5 10-8.5"},
    {"EXPLODE", "M10 4H4v6 M14 20h6v-6|M14 4h6v6 M4 14v6h6 M9 12h6 M12 9v6"},
    {"PEDIT", "M3 18l6-9 5 5 3-4|M15 16l5-5 2 2-5 5-3 1z"},
    {"SCVN_PLYH", "M2 8l3-3 2 4 3-4 2 4 3-4 2 4 3-4 2 3|M2 18C7 14 16 14 22 18"},
    {"SCVN_PLYH2", "M3 7h18 M6 5v4 M9 5v4 M12 5v4 M18 5v4|M3 17h18 M6 15v4 M18 15v4"},
    {"SCVN_SPL2ARC", "M3 9c5-8 12 8 18-1|M3 19a6 6 0 0 1 9-1.5a6 6 0 0 0 9-1.5 M12 15.5v4"},
    {"SCVN_spline2pline", "M3 8C8 1 15 14 21 6|M3 19l5-4 4 1 4 2 5-4"},
    {"SCVN_pline2spline", "M3 8l5-4 4 1 4 3 5-4|M3 19c5-7 12 6 18-2"},
    {"SCVN_PLDevide", "M3 17C7 5 17 5 21 17|M5.5 10.5l3 2 M12 6v4 M18.5 10.5l-3 2"},
    {"SCVN_PLReverse", "M3 8h14 M13 4l4 4-4 4|M21 16H7 M11 12l-4 4 4 4"},
    {"SCVN_DevideLine3", "M12 3a9 9 0 1 0 0 18a9 9 0 1 0 0-18|M12 3l6.4 15.4 M21 12L5.6 18.4 M12 21L5.6 5.6 M3 12l15.4-6.4"},
    {"SCVN_ArrayAlignCurve", "M2 19C8 19 8 8 22 8|M3 13.5l3.5-1 1 3.5-3.5 1z M9 8.5l3-1.5 1.5 3-3 1.5z M16 3.5l3.5-.5.5 3.5-3.5.5z"},
    {"SCVN_PLBLENDS", "M3 6c6-5 12 5 18 0 M3 20c6 0 12-4 18 0|M3 10.5c6-3.5 12 2.5 18 0 M3 15.5c6-2 12-1 18 0"},
    {"SCVN_VECTORIZE", "M3 4h18v16H3z M7 8.5h.1|M5 18l5-6 4 4 3-3 2 2"},
    {"SCVN_VerticalInsert", "M3 18C8 6 16 6 21 18|M12 9V2 M9.5 4.5L12 2l2.5 2.5"},
    {"SCVN_mcopy", "M3 9h6v6H3z|M12 4h5v5h-5z M12 15h5v5h-5z M19 9h3v5h-3"},
    {"SCVN_PLINTERSECT", "M4 4l16 16 M4 20L20 4|M12 8.5a3.5 3.5 0 1 0 0 7a3.5 3.5 0 1 0 0-7"},
};
// clang-format on

QByteArray group(const QString& paths, const QColor& color) {
    return "<path fill='none' stroke='" + color.name().toLatin1() +
           "' stroke-width='1.5' stroke-linejoin='round' stroke-linecap='round' d='" + paths.toLatin1() +
           "'/>";
}

QPixmap drawn(const QString& paths, int size, const QColor& ink, const QColor& accent) {
    const QByteArray picture = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24'>" +
                               group(paths.section('|', 0, 0), ink) +
                               group(paths.section('|', 1, 1), accent) + "</svg>";
    QPixmap pixels(size, size);
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    QSvgRenderer(picture).render(&painter);
    return pixels;
}

} // namespace

QIcon iconOf(const QString& name, const QColor& ink, const QColor& accent) {
    QIcon icon;
    for (const Drawing& drawing : kDrawings)
        if (name == drawing.name)
            for (const int size : {24, 48}) icon.addPixmap(drawn(drawing.paths, size, ink, accent));
    return icon;
}

} // namespace desk
