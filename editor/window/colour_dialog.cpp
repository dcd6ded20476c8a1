#include "editor/window/colour_dialog.h"

#include "editor/database/colours.h"

#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <functional>

namespace editor {

namespace {

constexpr int lowest = 1, highest = 255;

/// All indices as fields: above 24 hues of ten shades each, below the nine standard colours and the six greys.
class ColourTable : public QWidget {
public:
    explicit ColourTable(QWidget* owner) : QWidget(owner) {
        setObjectName("colourTable");
        setFixedSize(hues * field + 1, (shades + 3) * field + 1);
    }

    void select(int index) {
        selected = index;
        update();
    }

    std::function<void(int)> picked, taken;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        for (int index = lowest; index <= highest; ++index) {
            const Rgb colour = colourOfIndex(static_cast<std::uint16_t>(index));
            painter.setBrush(QColor(colour.red, colour.green, colour.blue));
            painter.setPen(palette().color(QPalette::Mid));
            painter.drawRect(place(index));
        }
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
        painter.drawRect(place(selected).adjusted(1, 1, 0, 0));
    }
    void mousePressEvent(QMouseEvent* event) override { tell(picked, event); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { tell(taken, event); }

private:
    static constexpr int field = 17, hues = 24, shades = 10, firstHue = 10, firstGrey = 250;
    // The brightest stand in the middle: full colours darken upwards, pale ones downwards.
    static constexpr int rowOfShade[shades] = {4, 5, 3, 6, 2, 7, 1, 8, 0, 9};

    static QRect place(int index) {
        int column = index - lowest, row = shades;
        if (index >= firstGrey) {
            column = index - firstGrey;
            row = shades + 2;
        } else if (index >= firstHue) {
            column = (index - firstHue) / 10;
            row = rowOfShade[index % 10];
        } else {
            ++row;
        }
        return {column * field, row * field, field, field};
    }

    static void tell(const std::function<void(int)>& who, const QMouseEvent* event) {
        for (int index = lowest; index <= highest; ++index) {
            if (place(index).contains(event->position().toPoint()))
                who(index);
        }
    }

    int selected = lowest;
};

} // namespace

ColourDialog::ColourDialog(QWidget* owner, int start) : QInputDialog(owner) {
    setObjectName("colourDialog");
    setWindowTitle("Select Color");
    setInputMode(IntInput);
    setLabelText("Color index (1 to 255):");
    setIntRange(lowest, highest);
    auto* const table = new ColourTable(this);
    sizeHint(); // makes the layout
    if (auto* const column = qobject_cast<QVBoxLayout*>(layout()))
        column->insertWidget(0, table);
    connect(this, &QInputDialog::intValueChanged, table, &ColourTable::select);
    table->picked = [this](int index) { setIntValue(index); };
    table->taken = [this](int index) {
        setIntValue(index);
        accept();
    };
    setIntValue(start);
    table->select(intValue());
}

std::optional<int> ColourDialog::pick(QWidget* owner, int start) {
    ColourDialog dialog(owner, start);
    return dialog.exec() == Accepted ? std::optional(dialog.intValue()) : std::nullopt;
}

} // namespace editor
