#include "editor/window/screen_choice.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryFile>

namespace editor {

namespace {

constexpr const char* screens = R"({
  "synchronousWindowSystemEvents": false,
  "windowFrameMargins": false,
  "screens": [
    { "name": "Screen", "x": 0, "y": 0, "width": 1920, "height": 1200,
      "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1 }
  ]
}
)";

} // namespace

void chooseScreen(bool batch) {
    const QByteArray named = qgetenv("QT_QPA_PLATFORM");
    const bool display = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (named.isEmpty() ? display && !batch : named != "offscreen")
        return;
    // Read when the application object is made, and gone with the program.
    static QTemporaryFile file(QDir::tempPath() + "/tessaro-screen-XXXXXX.json");
    if (!file.open() || file.write(screens) < 0 || !file.flush()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file.fileName()));
}

} // namespace editor
