#include "tessaro/browser/BlockDlgControls.h"

#include "tessaro/browser/DialogLayout.h"
#include "tessaro/browser/EmptyHint.h"
#include "tessaro/browser/QtText.h"
#include "tessaro/platform/Text.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QPainter>
#include <QShortcut>
#include <QStyleOptionButton>

#include <algorithm>

namespace {

/// A check box whose caption goes over two lines where it is too wide for one.
class WrappingCheckBox : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        option.text.clear();
        style()->drawControl(QStyle::CE_CheckBox, &option, &painter, this);
        const QRect place = style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this);
        style()->drawItemText(&painter, place.adjusted(0, -2, 0, 2),
                              Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, palette(), isEnabled(), text(),
                              QPalette::WindowText);
    }
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }
};

template <class T> T* Named(T* control, const char* name) {
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

QString Caption(const char* name) {
    return QString::fromLatin1(name);
}

QPushButton* Button(QWidget& window, const char* caption, char key, const char* tip) {
    auto* button = new QPushButton(Caption(caption), &window);
    button->setObjectName(Caption(caption).remove(QLatin1Char(' ')));
    button->setAutoDefault(false);
    if (key != 0)
        button->setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(key)));
    const QString hint =
        key == 0 ? QString() : QStringLiteral(" (%1)").arg(button->shortcut().toString(QKeySequence::NativeText));
    button->setToolTip(Caption(tip) + hint);
    button->setAccessibleDescription(Caption(tip));
    return button;
}

template <class Box> QCheckBox* CheckBox(QWidget& window, const char* caption, char key, const char* tip) {
    auto* box = new Box(Caption(caption), &window);
    box->setObjectName(Caption(caption).remove(QLatin1Char(' ')));
    box->setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(key)));
    box->setToolTip(Caption(tip) + QStringLiteral(" (%1)").arg(box->shortcut().toString(QKeySequence::NativeText)));
    box->setAccessibleDescription(Caption(tip));
    return box;
}

/// What is said of a control without a caption of its own, and of the edit box inside of it.
void Describe(QWidget* control, const char* name, const char* description) {
    control->setAccessibleName(Caption(name));
    control->setAccessibleDescription(Caption(description));
    if (auto* box = qobject_cast<QComboBox*>(control)) {
        box->view()->setAccessibleName(Caption(name));
        if (QLineEdit* inner = box->lineEdit()) {
            inner->setAccessibleName(Caption(name));
            inner->setAccessibleDescription(Caption(description));
        }
    }
}

/// A label left of a control: its text ends there and stands on the control's line. `spare` is how much the label is
/// higher than the control, or lower where it is negative.
QLabel* SideLabel(QWidget& window, const char* caption, const char* name, int spare) {
    auto* label = Named(new QLabel(Caption(caption), &window), name);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setContentsMargins(0, std::max(0, -spare), 0, std::max(0, spare));
    return label;
}

void FocusKey(QWidget& window, QWidget* target, char key) {
    const auto* shortcut = new QShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(key)), &window);
    QObject::connect(shortcut, &QShortcut::activated, target, [target] { target->setFocus(Qt::ShortcutFocusReason); });
}

QComboBox* ComboBox(QWidget& window, const char* name, const char* tip, bool editable,
                    std::initializer_list<const wchar_t*> texts) {
    auto* box = Named(new QComboBox(&window), name);
    box->setToolTip(Caption(tip));
    box->setEditable(editable);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    if (editable)
        box->setCompleter(nullptr);
    for (const wchar_t* text : texts)
        AddSorted(*box, text);
    if (editable)
        box->setEditText({});
    return box;
}

/// A closed box takes one line; the rest of its rectangle says how long its list may be.
void LimitList(QComboBox& box, const DialogUnits& units, const QRect& rectangle) {
    const int line = box.fontMetrics().height() + 2;
    box.setMaxVisibleItems(std::max(1, units.Y(rectangle.height() - kClosedCombo) / line));
}

/// What the letter in the column "Status" says.
QString DirectoryCellMeaning(int column, const QString& text) {
    constexpr int kStatus = 2;
    if (column != kStatus || text.isEmpty())
        return {};
    switch (text[0].unicode()) {
    case u'D':
        return QStringLiteral("The folder is being scanned");
    case u'L':
        return QStringLiteral("The blocks are being listed");
    case u'V':
        return QStringLiteral("The blocks are being compared with their files");
    case u'S':
        return QStringLiteral("The catalogue of this directory is being saved");
    default:
        return {};
    }
}

QFrame* Curtain(QWidget& window) {
    auto* curtain = Named(new QFrame(&window), "curtainList");
    curtain->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    curtain->setBackgroundRole(QPalette::Base);
    curtain->setAutoFillBackground(true);
    curtain->hide();
    return curtain;
}

} // namespace

void AddSorted(QComboBox& box, const std::wstring& text) {
    int place = 0;
    while (place < box.count() && platform::CompareNoCase(FromQt(box.itemText(place)), text) <= 0)
        ++place;
    box.insertItem(place, ToQt(text));
}

void SetCaption(QPushButton& button, const std::wstring& text) {
    const QKeySequence key = button.shortcut();
    button.setText(ToQt(text));
    button.setShortcut(key);
}

BlockDlgControls MakeBlockDlgControls(QWidget& window) {
    const DialogUnits units(window.font());
    BlockDlgControls made{};
    made.preferences = Button(window, "Preferences", 'P', "Options of the browser");
    made.close = Button(window, "Close", 'C', "Close the browser");
    made.scheme = ComboBox(window, "schemeCombo", "Layer-mapping scheme of this directory", false, {});
    made.schemes = Button(window, "Schemes", 'S', "Edit the layer-mapping schemes");
    made.viewButton = Named(new ViewButton(&window), "viewButton");
    made.viewButton->setAutoDefault(false);
    made.viewButton->setShortcut(QKeySequence(Qt::ALT | Qt::Key_V));
    made.viewButton->setToolTip(QStringLiteral("Next view of the block list; the arrow picks one (Alt+V)"));
    made.quickFindLabel = SideLabel(window, "Quick Find:", "quickFindLabel", -units.Y(kClosedCombo - 12));
    made.quickFind = Named(new MyCEdit(&window), "quickFind");
    made.quickFind->setToolTip(QStringLiteral("Find a block by name or comment; Enter finds the next one (Alt+Q)"));
    made.help = Button(window, "Help", 'H', "Help");
    made.help->setToolTip(QStringLiteral("Help (F1)"));
    made.print = Button(window, "Print", 'N', "Print a catalogue sheet of this directory");
    made.editDescription = Button(window, "Edit Descrip.", 'E', "Edit the description of the selected block");
    made.scaleLabel = SideLabel(window, "Scale:", "scaleLabel", units.Y(20 - kClosedCombo));
    made.scale = ComboBox(window, "scaleCombo", "Scale to insert with (Alt+A)", true, {L"1:1", L"Drawing", L"Prompt"});
    made.rotationLabel = SideLabel(window, "Rotation:", "rotationLabel", units.Y(1));
    made.rotation = ComboBox(window, "rotationCombo", "Rotation to insert with, in degrees (Alt+R)", true,
                             {L"0", L"90", L"180", L"270", L"Prompt"});
    made.insert = Button(window, "Insert", 'I', "Insert the selected block");
    made.insert->setDefault(true);
    made.open = Button(window, "Open", 'O', "Open the selected block's drawing");
    made.xref = Button(window, "Xref/A", 'X', "Attach the selected block's drawing as an external reference");
    made.amCatalog = Button(window, "AmCatalog", 0, "Catalogue");
    made.amCatalog->hide();
    made.explode = CheckBox<QCheckBox>(window, "Explode", 'L', "Explode what is inserted");
    made.multipleInsert =
        CheckBox<WrappingCheckBox>(window, "Multiple Insert", 'M', "Insert the block again and again");
    made.repeat = CheckBox<QCheckBox>(window, "Repeat", 'T', "Come back to the browser after the insertion");
    made.localize = CheckBox<QCheckBox>(window, "Localize", 'Z', "Localize");
    made.localize->hide();
    made.directoryList = Named(new MyList2(&window), "directoryList");
    made.add = Button(window, "Add", 'D', "Add a folder of drawings");
    made.remove = Button(window, "Delete", 'K', "Take the selected directory out of the catalogue");
    made.moveUp = Button(window, "Move Up", 'U', "Move the current directory up");
    made.moveDown = Button(window, "Move Down", 'W', "Move the current directory down");
    made.itemPropertiesLabel = Named(new QLabel(QStringLiteral("Item Properties"), &window), "itemPropertiesLabel");
    made.itemPropertiesLabel->setAlignment(Qt::AlignCenter);
    made.properties = Named(new QLabel(QStringLiteral("No Block Selected"), &window), "properties");
    made.properties->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    made.properties->setTextFormat(Qt::PlainText);
    made.properties->setWordWrap(true);
    made.properties->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    made.properties->setMargin(4);
    made.blockList = Named(new MyList(&window), "blockList");
    made.curtainList = Curtain(window);
    new EmptyHint(*made.blockList, *made.directoryList);

    Describe(made.scheme, "Scheme", "Layer-mapping scheme of this directory");
    Describe(made.viewButton, "View",
             "Goes to the next view of the block list; the key Down opens a menu of all views");
    Describe(made.quickFind, "Quick Find", "Finds a block by name or comment; Enter finds the next one");
    Describe(made.scale, "Scale", "Scale to insert with: 1:1, Drawing, Prompt or a number");
    Describe(made.rotation, "Rotation", "Rotation to insert with: degrees or Prompt");
    Describe(made.directoryList, "Directories", "The folders of the catalogue; F2 renames the current one");
    Describe(made.blockList, "Blocks", "The drawings of the current directory");
    made.directoryList->Rows().meaning = DirectoryCellMeaning;
    made.quickFindLabel->setBuddy(made.quickFind);
    made.scaleLabel->setBuddy(made.scale);
    made.rotationLabel->setBuddy(made.rotation);
    made.itemPropertiesLabel->setBuddy(made.properties);
    FocusKey(window, made.quickFind, 'Q');
    FocusKey(window, made.scale, 'A');
    FocusKey(window, made.rotation, 'R');
    QWidget* previous = nullptr;
    for (const auto& [name, rectangle] : ControlPlaces()) {
        auto* control = window.findChild<QWidget*>(QString::fromLatin1(name));
        if (previous != nullptr)
            QWidget::setTabOrder(previous, control);
        previous = control;
        if (auto* box = qobject_cast<QComboBox*>(control))
            LimitList(*box, units, rectangle);
    }
    return made;
}
