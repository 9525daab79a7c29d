#include "displays.h"

#include <cstdlib>
#include <fstream>

namespace kirolane::bench {

namespace {

/// The offscreen platform warns of what it cannot do (raising a window); the table is to stand alone.
void Quieten(const std::string& folder) {
    ::setenv("QT_LOGGING_RULES", "*.warning=false", 1);
    ::setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
}

void UseOffscreenDisplays(const std::string& folder) {
    const std::string path = folder + "/screens.json";
    std::ofstream file(path);
    file
        << R"({"synchronousWindowSystemEvents":false,"windowFrameMargins":false,"screens":[)"
        << R"({"name":"L","x":0,"y":0,"width":1920,"height":1080,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1},)"
        << R"({"name":"R","x":1920,"y":0,"width":1920,"height":1080,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})";
    file.close();
    ::setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + path).c_str(), 1);
}

} // namespace

void Use(Displays displays, const std::string& folder) {
    Quieten(folder);
    if (displays == Displays::Offscreen)
        UseOffscreenDisplays(folder);
    else
        ::setenv("QT_QPA_PLATFORM", "xcb", 1);
}

} // namespace kirolane::bench
