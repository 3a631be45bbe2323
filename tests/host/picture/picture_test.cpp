// Pictures: what stands where, in which colour, and that the three formats show the same.
#include "host/picture/picture.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

#include "host/os/clock.h"
#include "host/os/files.h"
#include "host/picture/fonts.h"
#include "tests/host/picture/lists.h"

using namespace host;
using namespace lists;

namespace {

// A white line frame 0..100 by 0..50, a red square at its lower left, a blue ribbon above, and text.
DisplayList sample() {
    installTextMetrics();
    DisplayList list = empty();
    list.layers.push_back({L"墙 <1>", true});
    add(list, Kind::line, {{0, 0, 0}, {100, 0, 0}, {100, 50, 0}, {0, 50, 0}, {0, 0, 0}});
    add(list, Kind::area, {{0, 0, 0}, {20, 0, 0}, {20, 20, 0}, {0, 20, 0}}, {0xFF0000, false}, 1);
    add(list, Kind::ribbon, {{40, 30, 0}, {90, 30, 0}, {90, 40, 0}, {40, 40, 0}}, {0x0000FF, false}, 1);
    addText(list, L"Ab曲", {40, 10, 0}, 8);
    return list;
}

std::string made(const DisplayList& list, PictureFormat format, const PictureOptions& options) {
    const PicturePanel panel{.list = &list};
    const PictureBytes result = pictureBytes(std::span(&panel, 1), format, options);
    EXPECT_EQ(result.error, "");
    return result.bytes;
}

QImage png(const DisplayList& list, const PictureOptions& options) {
    const std::string bytes = made(list, PictureFormat::png, options);
    return QImage::fromData(QByteArray(bytes.data(), qsizetype(bytes.size())))
        .convertToFormat(QImage::Format_RGB32);
}

QImage renderedSvg(const std::string& svg, QSize size) {
    QSvgRenderer renderer(QByteArray(svg.data(), qsizetype(svg.size())));
    EXPECT_TRUE(renderer.isValid());
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::green);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

const AcDbExtents2d kWhole({0, 0}, {100, 50});

} // namespace

TEST(Picture, EverythingStandsInItsPlaceAndColour) {
    const QImage image = png(sample(), {.width = 1000, .height = 500, .window = kWhole});
    ASSERT_EQ(image.size(), QSize(1000, 500));
    EXPECT_EQ(image.pixel(100, 400), qRgb(255, 0, 0)); // 10,10: up is up
    EXPECT_EQ(image.pixel(100, 100), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(650, 150), qRgb(0, 0, 255));
    EXPECT_LT(qGray(image.pixel(500, 0)), 140); // the frame, half of it seen, is black on light ground
    const QImage dark =
        png(sample(), {.width = 1000, .height = 500, .ground = Ground::dark, .window = kWhole});
    EXPECT_GT(qGray(dark.pixel(500, 0)), 140);
    EXPECT_LT(qGray(dark.pixel(300, 300)), 60);
}

TEST(Picture, SvgShowsWhatPngShows) {
    const PictureOptions options{.width = 200, .height = 100, .window = kWhole};
    const QImage fromSvg = renderedSvg(made(sample(), PictureFormat::svg, options), {1000, 500});
    const QImage painted = png(sample(), {.width = 1000, .height = 500, .window = kWhole});
    int different = 0;
    for (int y = 0; y < 500; ++y)
        for (int x = 0; x < 1000; ++x)
            different += std::abs(qGray(fromSvg.pixel(x, y)) - qGray(painted.pixel(x, y))) > 80;
    EXPECT_LT(different, 1500); // lines differ by a part of a pixel in width
}

TEST(Picture, SvgIsWellFormedWithOneGroupALayerAndRealSize) {
    const std::string svg = made(sample(), PictureFormat::svg, {});
    QXmlStreamReader reader(QByteArray(svg.data(), qsizetype(svg.size())));
    QStringList titles;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == u"title") titles << reader.readElementText();
        if (reader.isStartElement() && reader.name() == u"svg") {
            EXPECT_EQ(reader.attributes().value("width"), u"280mm");
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_EQ(titles, QStringList({"0", QString::fromUtf8("墙 <1>")}));
    EXPECT_LT(svg.size(), 4000u);
}

TEST(Picture, TheSameDrawingGivesTheSameBytes) {
    setClock(ClockSetting{1700000000});
    for (PictureFormat format : {PictureFormat::svg, PictureFormat::png, PictureFormat::pdf}) {
        const std::string once = made(sample(), format, {});
        EXPECT_EQ(once, made(sample(), format, {}));
        EXPECT_GT(once.size(), 500u);
    }
    EXPECT_NE(made(sample(), PictureFormat::pdf, {}).find("D:20231114221320"), std::string::npos);
    setClock(std::nullopt);
}

TEST(Picture, PanelsShowTheSamePartAndNothingReachesOver) {
    const DisplayList list = sample();
    DisplayList wide = sample();
    add(wide, Kind::area, {{-500, 22, 0}, {500, 22, 0}, {500, 25, 0}, {-500, 25, 0}}, {0x00FF00, false});
    const PicturePanel panels[] = {
        {.list = &wide, .caption = L"before"},
        {.list = &list, .caption = L"after", .vertices = {{50, 25, 0}, {900, 0, 0}}}};
    const PictureOptions options{.width = 1015, .height = 300, .window = kWhole};
    const PictureBytes bytes = pictureBytes(panels, PictureFormat::png, options);
    ASSERT_EQ(bytes.error, "");
    const QImage image = QImage::fromData(QByteArray(bytes.bytes.data(), qsizetype(bytes.bytes.size())));
    int greenRight = 0, greenLeft = 0, blueMarks = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            (x < 508 ? greenLeft : greenRight) += pixel == qRgb(0, 255, 0);
            blueMarks += x > 508 && qBlue(pixel) > 150 && qRed(pixel) < 80 && qGreen(pixel) > 80;
        }
    }
    EXPECT_GT(greenLeft, 4000);
    EXPECT_EQ(greenRight, 0);
    EXPECT_GT(blueMarks, 8);
    EXPECT_LT(blueMarks, 60); // one small square; the vertex outside has none
}

TEST(Picture, EmptyFlatAndFarDrawingsStillGivePictures) {
    DisplayList flat = empty(), far = empty(), dot = empty(), endless = empty();
    add(flat, Kind::line, {{0, 5, 0}, {1e5, 5, 0}});
    add(far, Kind::line, {{1e9, 1e9, 0}, {1e9 + 1, 1e9 + 1, 0}});
    add(dot, Kind::line, {{3, 3, 0}});
    add(endless, Kind::xline, {{0, 0, 0}, {1, 1, 0}});
    for (const DisplayList& list : {empty(), flat, far, dot, endless}) {
        const QImage image = png(list, {.width = 400});
        ASSERT_FALSE(image.isNull());
        EXPECT_GE(image.height(), 40);
        int ink = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) ink += qGray(image.pixel(x, y)) < 200;
        EXPECT_EQ(ink > 0, !list.primitives.empty());
    }
}

TEST(Picture, LinesFarOutsideTheWindowTakeNoTimeAndLeaveNoTrace) {
    DisplayList list = empty();
    add(list, Kind::line, {{-1e12, 5, 0}, {1e12, 5, 0}});
    add(list, Kind::area, {{-1e12, 1e3, 0}, {1e12, 1e3, 0}, {0, 1e12, 0}});
    const QImage image = png(list, {.width = 200, .height = 100, .window = AcDbExtents2d({0, 0}, {20, 10})});
    EXPECT_EQ(image.pixel(0, 50), image.pixel(199, 50));
    EXPECT_LT(qGray(image.pixel(100, 50)), 128);
    EXPECT_EQ(image.pixel(100, 20), qRgb(255, 255, 255));
}

TEST(Picture, RefusesWhatCannotBeDrawnAndSaysWhy) {
    const double nan = std::nan(""), infinite = std::numeric_limits<double>::infinity();
    const DisplayList list = sample();
    struct Row {
        PictureOptions options;
        const char* reason;
    };
    const Row rows[] = {
        {{.path = "x.bmp"}, ".svg, .png or .pdf"},
        {{.path = "x.png", .width = 40000}, "32767"},
        {{.path = "x.png", .width = -1}, "32767"},
        {{.path = "x.pdf", .height = nan}, "5000 mm"},
        {{.path = "x.svg", .width = infinite}, "5000 mm"},
        {{.path = "x.png", .width = 30000, .height = 30000}, "200 million"},
        {{.path = "x.svg", .window = AcDbExtents2d({0, 0}, {infinite, 1})}, "finite"},
        {{.path = "/no/such/folder/x.svg"}, "/no/such/folder/x.svg"},
    };
    for (const Row& row : rows) {
        const PictureResult result = writePicture(list, row.options);
        EXPECT_NE(result.error.find(row.reason), std::string::npos) << result.error;
    }
    EXPECT_FALSE(fileExists("x.png"));
}
