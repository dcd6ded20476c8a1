#pragma once

/// Tells assistive programs of combo boxes: the name that was given to them, the chosen text as value, the edit box
/// inside. Qt's own answer on this platform gives the chosen text for the name. Repeated calls do nothing. Main thread.
void InstallComboAccessibility();
