// Image files: each kind, damage, and sizes that are a trap.
#include "host/picture/images.h"

#include <QImage>
#include <QImageWriter>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "host/os/files.h"
#include "host/picture/toolkit.h"

using namespace host;

namespace {

class Images : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "corvane-img-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }
    std::string path(const std::string& name) const { return folder_ + "/" + name; }
    std::string folder_;
};

} // namespace

TEST_F(Images, PixelsSurviveAPngWithTheirAlpha) {
    const std::vector<std::uint8_t> rgba{255, 0, 0, 255, 0, 255, 0, 128, 1, 2, 3, 0,
                                         9,   8, 7, 255, 0, 0,   0, 255, 5, 5, 5, 1};
    ASSERT_EQ(savePng(path("a.png"), 3, 2, rgba), "");
    const LoadedImage image = loadImage(path("a.png"));
    ASSERT_TRUE(image) << image.error;
    EXPECT_EQ(image.width, 3);
    EXPECT_EQ(image.height, 2);
    EXPECT_EQ(image.rgba, rgba);
}

TEST_F(Images, EveryKindIsToldByItsContents) {
    ensureToolkit();
    QImage picture(16, 8, QImage::Format_RGB32);
    picture.fill(qRgb(200, 100, 50));
    for (const char* format : {"bmp", "jpg", "png", "tiff"}) {
        if (!QImageWriter::supportedImageFormats().contains(format)) continue; // TIFF comes with a plugin
        ASSERT_TRUE(picture.save(QString::fromStdString(path("x.dat")), format));
        const LoadedImage image = loadImage(path("x.dat"));
        ASSERT_TRUE(image) << format << ": " << image.error;
        EXPECT_EQ(image.width * 100 + image.height, 1608);
        EXPECT_NEAR(image.rgba[0], 200, 4);
        EXPECT_NEAR(image.rgba[2], 50, 4);
    }
    // The smallest GIF there is: one red pixel.
    const unsigned char gif[] = {'G', 'I',  'F', '8', '9', 'a', 1, 0, 1, 0, 0x80, 0, 0, 255,  0, 0, 0,   0,
                                 0,   0x2C, 0,   0,   0,   0,   1, 0, 1, 0, 0,    2, 2, 0x44, 1, 0, 0x3B};
    ASSERT_FALSE(writeWhole(path("g"), std::string_view(reinterpret_cast<const char*>(gif), sizeof gif)));
    const LoadedImage image = loadImage(path("g"));
    ASSERT_TRUE(image) << image.error;
    EXPECT_EQ(image.rgba, (std::vector<std::uint8_t>{255, 0, 0, 255}));
}

TEST_F(Images, DamageAndTrapsGiveAMessageAndNoPixels) {
    const std::vector<std::uint8_t> rgba(64 * 64 * 4, 77);
    ASSERT_EQ(savePng(path("a.png"), 64, 64, rgba), "");
    std::string bytes;
    ASSERT_FALSE(readWhole(path("a.png"), bytes));
    // A header that promises 100 000 by 100 000 pixels: 40 GB if it were believed.
    std::string huge = "BM" + std::string(52, '\0');
    huge[10] = 54, huge[14] = 40, huge[26] = 1, huge[28] = 24;
    for (int at : {18, 22}) huge[at] = char(0xA0), huge[at + 1] = char(0x86), huge[at + 2] = 1;
    const struct {
        const char* name;
        std::string bytes;
        const char* reason;
    } rows[] = {{"cut.png", bytes.substr(0, 60), ""},
                {"huge.bmp", huge, ""},
                {"empty.png", "", "no BMP"},
                {"text.png", "hello", "no BMP"},
                {"vector.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", "no BMP"}};
    for (const auto& row : rows) {
        ASSERT_FALSE(writeWhole(path(row.name), row.bytes));
        const LoadedImage image = loadImage(path(row.name));
        EXPECT_FALSE(image) << row.name;
        EXPECT_TRUE(image.rgba.empty());
        EXPECT_NE(image.error.find(row.name), std::string::npos);
        EXPECT_NE(image.error.find(row.reason), std::string::npos) << image.error;
    }
    ASSERT_EQ(savePng(path("long.png"), 40000, 1, std::vector<std::uint8_t>(160000, 9)), "");
    EXPECT_NE(loadImage(path("long.png")).error.find("larger"), std::string::npos);
    EXPECT_FALSE(loadImage(path("missing.png")));
    EXPECT_NE(savePng(path("b.png"), 3, 3, {1, 2, 3}), "");
}
