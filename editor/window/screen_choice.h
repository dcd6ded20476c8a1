#pragma once

namespace editor {

/// Chooses Qt's platform before the application object is made: without a display, and in batch mode, windows live on a
/// screen of 1920 by 1200 pixels in memory. A platform that the user names in QT_QPA_PLATFORM stays, but for the bare
/// word "offscreen", which gets that screen.
void chooseScreen(bool batch);

} // namespace editor
