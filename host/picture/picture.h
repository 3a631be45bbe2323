// Pictures of drawings: SVG, PNG and PDF files of one display list, or of several side by side with
// captions, as before and after a change.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/view/display_list.h"

namespace host {

enum class PictureFormat { svg, png, pdf };
enum class Ground { light, dark, none }; // none: transparent, drawn as on light

struct PictureOptions {
    std::string path{}; // the ending tells the format unless it is given
    std::optional<PictureFormat> format{};
    // Size: millimetres for SVG and PDF, pixels for PNG. 0: from the drawing's proportions, with the longer
    // side 280 mm or 1600 pixels.
    double width = 0, height = 0;
    Ground ground = Ground::light;
    double margin = 0.03; // part of the picture left free on each side; not used with a window
    ViewFrame view{};     // where from; its centre, height and aspect are chosen to fit
    std::optional<AcDbExtents2d> window{}; // the part to be shown, display coordinates of the view; else all
    bool lineWeights = true;               // false: all lines thin
};

// One part of a picture.
struct PicturePanel {
    const DisplayList* list = nullptr;
    std::wstring caption{};              // below the panel; no line is kept free when all are empty
    std::vector<AcGePoint3d> vertices{}; // marked by small squares, world coordinates
};

struct PictureResult {
    std::string error;            // what went wrong and where; empty when the file is written
    std::string note;             // what the reader of the picture should know, such as parts left out
    double width = 0, height = 0; // as drawn, units as in the options
    explicit operator bool() const { return error.empty(); }
};

// The format for a path's ending, without regard to case; nothing for others.
std::optional<PictureFormat> pictureFormat(std::string_view path);

// Draws the list into the file, which is replaced whole or stays as it was. A list with nothing in it gives
// an empty picture. Sizes above 32 767 pixels or 5 000 mm, and numbers that are none, give an error.
PictureResult writePicture(const DisplayList& list, const PictureOptions& options);

// Panels side by side, all showing the same part of the world at the same scale.
PictureResult writePicture(std::span<const PicturePanel> panels, const PictureOptions& options);

// The same as bytes in memory; the path is not used.
struct PictureBytes {
    std::string bytes, error;
};
PictureBytes pictureBytes(std::span<const PicturePanel> panels, PictureFormat format,
                          const PictureOptions& options);

} // namespace host
