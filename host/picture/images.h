// Image files as plain arrays of pixels.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct LoadedImage {
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgba; // four bytes a pixel, rows from the top; alpha is not multiplied in
    double dotsPerMillimetre = 0;   // as the file says; 0 when it doesn't
    std::string error;              // what is wrong with the file; empty when all is well

    explicit operator bool() const { return error.empty(); }
};

// Reads a BMP, JPEG, PNG, GIF (its first picture) or TIFF file, told by its contents rather than its name.
// Pictures turned by their camera's mark are turned upright. Files that aren't such images, are damaged, or
// are larger than 32 768 on a side or 100 million pixels give an error and no pixels.
LoadedImage loadImage(const std::string& path);

// The same from the bytes of such a file; `name` is for the message.
LoadedImage decodeImage(std::string_view bytes, const std::string& name);

// Writes a PNG file; the message is empty when it went well.
std::string savePng(const std::string& path, int width, int height, const std::vector<std::uint8_t>& rgba);

} // namespace host
