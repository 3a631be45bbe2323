// "convert": a drawing as another version of DXF, or as a picture.
#include "apps/corvane/drawing_files.h"
#include "apps/corvane/pictures.h"
#include "apps/corvane/report.h"
#include "apps/corvane/session.h"
#include "apps/corvane/subcommands.h"
#include "host/os/text.h"
#include "host/picture/picture.h"

namespace app {
namespace {

bool isDrawingPath(const std::string& path) { return host::lower(host::wide(path)).ends_with(L".dxf"); }

} // namespace

ExitStatus convertDrawing(const Arguments& arguments) {
    const std::string &from = arguments.positional()[0], &to = arguments.positional()[1];
    SaveOptions options;
    options.binary = arguments.has("--binary");
    if (!readVersion(arguments, options.version)) return ExitStatus::usage;
    const bool picture = host::pictureFormat(to).has_value();
    if (!picture && !isDrawingPath(to)) {
        complain(to + ": the ending must be .dxf, .svg, .png or .pdf");
        return ExitStatus::usage;
    }
    if (picture && (options.binary || arguments.has("--version"))) {
        complain("--version and --binary are for drawings; " + to + " is a picture");
        return ExitStatus::usage;
    }
    Session session;
    OpenedDrawing opened = openDrawing(from, arguments);
    if (!opened.database) return ExitStatus::file;
    session.open(std::move(opened.database));
    return picture ? drawPicture(to, session.drawing()) : saveDrawing(to, session.drawing(), options);
}

} // namespace app
