#include "editor/application/commands.h"
#include "editor/application/editor.h"
#include "editor/application/numbers.h"

#include <cmath>

namespace editor {

namespace {

constexpr std::size_t viewsKept = 10;

/// Changes what the window shows, and keeps what it showed for Previous.
class ViewCommand {
public:
    explicit ViewCommand(Editor& running)
        : editor(running), line(running.commandLine()), document(*running.documents().current()),
          present(running.window().view()) {}

    void zoom() {
        PromptOptions options;
        options.mayBeEmpty = true;
        options.takesText = true;
        options.keywords = Keywords(L"All Center Extents Previous Scale Window");
        while (true) {
            const auto answer = line.getPoint(L"Specify corner of window, enter a scale factor (nX), or "
                                              L"[All/Center/Extents/Previous/Scale/Window] <Extents>: ",
                                              options);
            if (answer.value)
                return window(*answer.value);
            if (!answer.text.empty()) {
                if (scaleBy(answer.text))
                    return;
                editor.console().printFault(L"Requires a point, a number, or option keyword.");
                continue;
            }
            return carryOut(answer.keyword);
        }
    }

    void pan() {
        const AcGePoint3d from = *line.getPoint(L"Specify base point or displacement: ").value;
        PromptOptions options;
        options.mayBeEmpty = true;
        options.base = from;
        const auto to = line.getPoint(L"Specify second point: ", options);
        if (!present)
            return;
        // A single point is the displacement itself.
        const AcGeVector3d by = to.value ? *to.value - from : from - AcGePoint3d::kOrigin;
        show({present->center + by * -1, present->width, present->height});
    }

private:
    void carryOut(const std::wstring& option) {
        if (option == L"Previous")
            return previous();
        if (option == L"Window")
            return window(*line.getPoint(L"Specify first corner: ").value);
        if (option == L"Center")
            return center();
        if (option == L"Scale") {
            while (!scaleBy(line.getText(L"Enter a scale factor (nX): ", false)))
                editor.console().printLine(L"Requires numeric value.");
            return;
        }
        keep();
        editor.window().zoomExtents();
    }

    void keep() {
        if (!present)
            return;
        document.views.push_back(*present);
        if (document.views.size() > viewsKept)
            document.views.erase(document.views.begin());
    }

    void show(const View& view) {
        keep();
        editor.window().setView(view);
    }

    void previous() {
        if (document.views.empty())
            return editor.console().printLine(L"No previous view saved.");
        editor.window().setView(document.views.back());
        document.views.pop_back();
    }

    void window(const AcGePoint3d& corner) {
        PromptOptions options;
        options.base = corner;
        options.rectangle = true;
        while (true) {
            const AcGePoint3d opposite = *line.getPoint(L"Specify opposite corner: ", options).value;
            const AcGeVector3d reach = opposite - corner;
            if (reach.x != 0 && reach.y != 0)
                return show({corner + reach * 0.5, std::abs(reach.x), std::abs(reach.y)});
            editor.console().printLine(L"The window has no size.");
        }
    }

    void center() {
        const AcGePoint3d middle = *line.getPoint(L"Specify center point: ").value;
        PromptOptions options;
        options.mayBeEmpty = true;
        options.positive = true;
        const auto height = line.getNumber(L"Enter height <as it is>: ", options).value;
        if (!present)
            return;
        const double factor = height ? *height / present->height : 1;
        show({middle, present->width * factor, present->height * factor});
    }

    /// "2" and "2x" alike: things look twice as large.
    bool scaleBy(const std::wstring& text) {
        const bool isRelative = !text.empty() && (text.back() == L'x' || text.back() == L'X');
        const auto factor = parseNumber(isRelative ? text.substr(0, text.size() - 1) : text);
        if (!factor || !(*factor > 0))
            return false;
        if (present)
            show({present->center, present->width / *factor, present->height / *factor});
        return true;
    }

    Editor& editor;
    CommandLine& line;
    Document& document;
    const std::optional<View> present;
};

} // namespace

void addViewCommands(Editor& editor) {
    const auto add = [&editor](const wchar_t* name, int flags, std::function<void()> function) {
        editor.commands().addOwn({L"EDITOR", name, name, flags, std::move(function)});
    };
    add(L"ZOOM", ACRX_CMD_TRANSPARENT, [&editor] { ViewCommand(editor).zoom(); });
    add(L"PAN", ACRX_CMD_TRANSPARENT, [&editor] { ViewCommand(editor).pan(); });
    add(L"REGEN", ACRX_CMD_MODAL, [&editor] {
        editor.console().printLine(L"Regenerating model.");
        editor.window().regenerate();
    });
}

} // namespace editor
