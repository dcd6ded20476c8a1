#include "tessaro/browser/DialogLayout.h"

#include <QFontMetrics>
#include <QString>

#include <array>

namespace {

constexpr int kNarrowing = 20;
constexpr std::array kNarrowed{"blockList", "curtainList", "Repeat", "Xref/A", "AmCatalog", "Localize"};

} // namespace

DialogUnits::DialogUnits(const QFont& font) {
    const QFontMetrics metrics(font);
    const int letters =
        metrics.horizontalAdvance(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
    baseX = std::max(4, (letters / 26 + 1) / 2);
    baseY = std::max(8, metrics.height());
}

QRect DialogUnits::Pixels(const QRect& units) const {
    const int left = X(units.x());
    const int top = Y(units.y());
    return {left, top, X(units.x() + units.width()) - left, Y(units.y() + units.height()) - top};
}

QFont DialogFont() {
    QFont font(QStringLiteral("MS Sans Serif"), 8);
    font.setStyleHint(QFont::SansSerif);
    return font;
}

const std::vector<ControlPlace>& ControlPlaces() {
    static const std::vector<ControlPlace> places{
        {"Preferences", {2, 5, 48, 14}},      {"Close", {2, 25, 48, 15}},
        {"schemeCombo", {55, 5, 77, 91}},     {"Schemes", {55, 25, 45, 15}},
        {"viewButton", {105, 24, 27, 16}},    {"quickFindLabel", {132, 5, 38, 12}},
        {"quickFind", {175, 5, 105, 14}},     {"Help", {137, 25, 33, 15}},
        {"Print", {175, 25, 50, 15}},         {"EditDescrip.", {230, 25, 50, 15}},
        {"scaleLabel", {280, 5, 30, 20}},     {"scaleCombo", {315, 5, 45, 51}},
        {"rotationLabel", {280, 25, 30, 15}}, {"rotationCombo", {315, 25, 45, 82}},
        {"Insert", {365, 5, 50, 14}},         {"Open", {420, 5, 45, 14}},
        {"Xref/A", {470, 5, 48, 14}},         {"AmCatalog", {495, 5, 23, 14}},
        {"Explode", {365, 25, 50, 15}},       {"MultipleInsert", {420, 25, 45, 15}},
        {"Repeat", {470, 25, 48, 15}},        {"Localize", {470, 25, 48, 15}},
        {"directoryList", {2, 45, 98, 170}},  {"Add", {2, 220, 48, 14}},
        {"Delete", {55, 220, 45, 14}},        {"MoveUp", {2, 240, 48, 14}},
        {"MoveDown", {55, 240, 45, 14}},      {"itemPropertiesLabel", {2, 260, 98, 8}},
        {"properties", {2, 270, 98, 74}},     {"blockList", {105, 45, 413, 299}},
        {"curtainList", {105, 45, 413, 299}},
    };
    return places;
}

DialogLayout LayOutDialog(const DialogUnits& units, int desktopWidth) {
    DialogLayout layout;
    layout.size = {units.X(kDialogUnits.width()), units.Y(kDialogUnits.height())};
    for (const auto& [name, rectangle] : ControlPlaces()) {
        QRect closed = rectangle;
        if (std::string(name).ends_with("Combo"))
            closed.setHeight(kClosedCombo);
        layout.places[name] = units.Pixels(closed);
    }
    if (layout.size.width() > desktopWidth) {
        for (const char* name : kNarrowed)
            layout.places[name].adjust(0, 0, -kNarrowing, 0);
        layout.size.rwidth() -= kNarrowing;
    }
    return layout;
}
