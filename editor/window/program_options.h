#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace editor {

struct ProgramOptions {
    bool batch = false;
    QString script;
    QStringList modules; ///< to load, in this order; the module beside the program where none is named
    bool loadModules = true;
    QStringList folders; ///< of the support path
    QString drawing;     ///< empty for a new one
    bool help = false;

    static QString usage();
};

/// Reads the command line. What is wrong with it comes back in `problem`.
ProgramOptions parseOptions(const QStringList& arguments, QString& problem);

} // namespace editor
