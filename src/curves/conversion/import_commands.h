// Handlers of the commands that make polylines of coordinate files and of text.
#pragma once

namespace corvane {

void CoordinateFileCommand(); // ZB2PL
void TextOutlinesCommand();   // txt2PL

} // namespace corvane
