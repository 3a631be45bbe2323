// Text metrics and outlines by Qt's raw fonts. Fonts that are not there are replaced, characters a font
// lacks are taken from another; each replacement is told once.
#pragma once

#include <functional>
#include <string>

#include "host/gi/text_metrics.h"

namespace host {

// Told the font asked for and the family used in its place.
struct FontReplacement {
    std::wstring wanted, used;
};
using FontListener = std::function<void(const FontReplacement&)>;

// Makes this room's metrics those of textMetrics(). The listener hears each replaced font once in the
// process; it may be empty. Starts the toolkit.
void installTextMetrics(FontListener listener = {});

} // namespace host
