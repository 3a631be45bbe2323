// What was painted, as shapes: device contexts write it, host/picture and the desk draw it. Coordinates
// are pixels of the recording, y downwards, the pixel (0, 0) reaching from 0 to 1.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/ge/point2d.h"
#include "host/gi/text_metrics.h"
#include "host/ui/rect.h"

namespace host {

// Four bytes a pixel: red, green, blue, alpha (not multiplied in); rows from the top.
struct ImagePixels {
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgba{};
    bool empty() const { return rgba.empty(); }
};

struct StrokePen {
    COLORREF color = 0;
    double width = 1;
    int style = 0; // PS_SOLID, PS_DASH, PS_DOT, PS_DASHDOT
};

struct Recording;

struct Primitive {
    enum class Kind { polyline, polygon, rectangle, ellipse, text, image, recording } kind = Kind::polyline;
    CRect clip;                        // nothing is drawn outside
    std::vector<AcGePoint2d> points{}; // rectangle, ellipse, image, recording: two corners
    std::vector<std::uint32_t> ends{}; // of a polygon's contours; empty for a single one
    bool winding = false;              // how overlapping contours fill
    double rounding = 0;               // radius of a rectangle's corners
    std::optional<StrokePen> pen{};
    std::optional<COLORREF> fill{};
    // text: one line from points[0], on its baseline; `height` is a capital's.
    std::wstring text{};
    TextFace face{};
    double height = 0;
    bool underlined = false;
    std::shared_ptr<const ImagePixels> image{};
    std::shared_ptr<const Recording> recording{};
    CRect source{};     // of the image or recording
    bool smooth = true; // an image that changes its size is averaged
};

struct Recording {
    int width = 0, height = 0;
    std::vector<Primitive> primitives{};
};

// What this room asks of one that knows image files and can fill pixels; host/picture fills it at start-up.
class PictureServices {
public:
    virtual ~PictureServices() = default;
    // Decodes a file's bytes. Empty, with the reason, when they are no image or too large.
    virtual ImagePixels decode(std::string_view bytes, std::string& error) = 0;
    // Draws over the pixels that are there, which are as large as the recording.
    virtual void draw(const Recording& recording, ImagePixels& onto) = 0;
    // Writes a PNG file with `scale` pixels for one of the recording. What went wrong; empty when all is
    // well.
    virtual std::string save(const Recording& recording, double scale, const std::string& path) = 0;
};
PictureServices* pictureServices(); // null until someone fills it
void setPictureServices(PictureServices* services);

} // namespace host
