// Qt's image readers behind limits.
#include "host/picture/images.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <cstring>

#include "host/os/files.h"
#include "host/picture/toolkit.h"

namespace host {
namespace {

constexpr int kLongestSide = 32768;
constexpr std::int64_t kMostPixels = 100'000'000;
constexpr const char* kFormats[] = {"bmp", "jpg", "jpeg", "png", "gif", "tif", "tiff"};

LoadedImage failed(const std::string& path, const std::string& reason) {
    LoadedImage image;
    image.error = "cannot read the image \"" + path + "\": " + reason;
    return image;
}

bool isTooLarge(const QSize& size) {
    return size.width() > kLongestSide || size.height() > kLongestSide ||
           std::int64_t(size.width()) * size.height() > kMostPixels;
}

LoadedImage plain(const QImage& read) {
    const QImage image = read.convertToFormat(QImage::Format_RGBA8888);
    LoadedImage out;
    out.width = image.width();
    out.height = image.height();
    out.dotsPerMillimetre = image.dotsPerMeterX() / 1000.0;
    const auto row = std::size_t(image.width()) * 4;
    out.rgba.resize(row * std::size_t(image.height()));
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(out.rgba.data() + row * std::size_t(y), image.constScanLine(y), row);
    return out;
}

} // namespace

LoadedImage loadImage(const std::string& path) {
    MappedFile file;
    if (const FileError error = file.open(path)) return failed(path, error.message);
    return decodeImage(file.bytes(), path);
}

LoadedImage decodeImage(std::string_view data, const std::string& path) {
    ensureToolkit();
    const QuietToolkit quiet;
    QByteArray bytes = QByteArray::fromRawData(data.data(), qsizetype(data.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    QImageReader::setAllocationLimit(512);
    const std::string format = reader.format().toStdString();
    if (std::find(std::begin(kFormats), std::end(kFormats), format) == std::end(kFormats))
        return failed(path, "it is no BMP, JPEG, PNG, GIF or TIFF image");
    if (isTooLarge(reader.size()))
        return failed(path, "it is larger than 32768 on a side or 100 million pixels");
    const QImage read = reader.read();
    if (read.isNull()) return failed(path, reader.errorString().toStdString());
    if (isTooLarge(read.size()))
        return failed(path, "it is larger than 32768 on a side or 100 million pixels");
    return plain(read);
}

std::string savePng(const std::string& path, int width, int height, const std::vector<std::uint8_t>& rgba) {
    ensureToolkit();
    if (width <= 0 || height <= 0 || std::int64_t(width) * height > kMostPixels ||
        rgba.size() != std::size_t(width) * std::size_t(height) * 4)
        return "cannot write the image \"" + path + "\": its size does not fit its pixels";
    const QImage image(rgba.data(), width, height, width * 4, QImage::Format_RGBA8888);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) return "cannot encode the image \"" + path + "\"";
    return writeWhole(path, std::string_view(bytes.constData(), std::size_t(bytes.size()))).message;
}

} // namespace host
