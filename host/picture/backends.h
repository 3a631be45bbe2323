// The three ways a page becomes bytes.
#pragma once

#include <string>

#include "host/picture/page.h"

namespace host {

std::string svgBytes(const Page& page);
PictureBytes pngBytes(const Page& page);
PictureBytes pdfBytes(const Page& page);

} // namespace host
