#include "editor/window/program_options.h"

namespace editor {

QString ProgramOptions::usage() {
    return QStringLiteral("usage: tessaro-editor [option...] [DRAWING]\n"
                          "  --batch --script FILE  carry a script out without a user; the transcript goes to the\n"
                          "                         standard output, the exit status is 1 for a script that could\n"
                          "                         not be carried out\n"
                          "  --load MODULE          load an application module; may be given more than once. Without\n"
                          "                         it, tessaro24-64.arx beside the program is loaded if it is there\n"
                          "  --no-load              load no module\n"
                          "  --support DIR          a folder to search for files; may be given more than once\n");
}

ProgramOptions parseOptions(const QStringList& arguments, QString& problem) {
    ProgramOptions options;
    for (qsizetype at = 1; at < arguments.size() && problem.isEmpty(); ++at) {
        const QString& argument = arguments[at];
        const auto value = [&]() -> QString {
            if (at + 1 < arguments.size())
                return arguments[++at];
            problem = argument + " needs a value";
            return {};
        };
        if (argument == "--batch")
            options.batch = true;
        else if (argument == "--script")
            options.script = value();
        else if (argument == "--load")
            options.modules << value();
        else if (argument == "--no-load")
            options.loadModules = false;
        else if (argument == "--support")
            options.folders << value();
        else if (argument == "--help" || argument == "-h")
            options.help = true;
        else if (argument.startsWith('-'))
            problem = "unknown option " + argument;
        else if (options.drawing.isEmpty())
            options.drawing = argument;
        else
            problem = "more than one drawing";
    }
    if (problem.isEmpty() && options.batch != !options.script.isEmpty())
        problem = "--batch and --script belong together";
    return options;
}

} // namespace editor
