// What dialogs painted becomes pixels: recordings drawn by Qt Gui, and image files decoded for dialogs.
#pragma once

#include "host/ui/recording.h"

namespace host {

// Makes this room's services those of pictureServices().
void installDialogPictures();

} // namespace host
