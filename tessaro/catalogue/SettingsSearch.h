#pragma once

/// Sets `iniPath` and `cachePath`: on the host's support path, else beside the module, else in the user's folder,
/// whether a file exists there or not.
void FindSettings();
