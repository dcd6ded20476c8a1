#include "tessaro/mapping/dialogs/NewMap.h"

#include "tessaro/mapping/dialogs/LayerVariables.h"
#include "tessaro/mapping/engine/ResBuf.h"
#include "tessaro/mapping/engine/Walk.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

#include "editor/sdk/editor.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int kLayer = 0, kLinetype = 1, kColor = 2, kBlockName = 3;
constexpr const wchar_t* kTexts = L"*TEXT OBJECTS";
constexpr const wchar_t* kDimensions = L"*DIMENSION OBJECTS";
constexpr const wchar_t* kTextsAndDimensions = L"*TEXT AND DIMENSION OBJECTS";

std::vector<std::wstring> NamesOf(const AcDbSymbolTable& table) {
    std::vector<std::wstring> names;
    ForEachRecord(table, [&](const AcDbSymbolTableRecord& record) { record.getName(names.emplace_back()); });
    return names;
}

/// Names of a table of the current drawing, in its order; none without a drawing.
template <class Table> std::vector<std::wstring> NamesInDrawing(int (AcDbDatabase::*open)(Table*&, AcDb::OpenMode)) {
    AcDbDatabase* const drawing = acdbHostApplicationServices()->workingDatabase();
    Table* table = nullptr;
    if (drawing == nullptr || (drawing->*open)(table, AcDb::kForRead) != eOk)
        return {};
    const Opened<Table> opened(table);
    return NamesOf(*table);
}

/// Lets the user pick a colour, from `start` on; `start` itself where none was picked.
int PickedColour(int start) {
    ResBuf arguments;
    arguments.AppendString(L"acad_colordlg");
    arguments.AppendShort(static_cast<short>(start));
    arguments.AppendNil();
    resbuf* answer = nullptr;
    const int result = acedInvoke(arguments.Head(), &answer);
    const ResBuf list(answer);
    return result == RTNORM && list.Count() > 0 && list.IsType(0, RTSHORT) ? list.At(0).resval.rint : start;
}

QComboBox* EditableBox(QWidget* window, const char* name) {
    auto* const box = new QComboBox(window);
    box->setObjectName(QString::fromLatin1(name));
    box->setEditable(true);
    box->setCompleter(nullptr);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(30);
    return box;
}

QCheckBox* CheckBox(QWidget* window, const char* caption, const char* name) {
    auto* const box = new QCheckBox(QString::fromLatin1(caption), window);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

void ShowEntries(QComboBox& box, const std::vector<std::wstring>& entries) {
    for (const std::wstring& entry : entries)
        box.addItem(QString::fromStdWString(entry));
    box.setCurrentIndex(-1);
}

} // namespace

NewMap::NewMap(QWidget* owner) : QDialog(owner) {
    setObjectName(QStringLiteral("NewMap"));
    setWindowTitle(QStringLiteral("Tessaro - New Map"));
    CreateControls();
}

int NewMap::DoModal() {
    OnInitDialog();
    return exec();
}

void NewMap::CreateControls() {
    from = EditableBox(this, "from");
    color = new QPushButton(QStringLiteral("&Color"), this);
    color->setObjectName(QStringLiteral("color"));
    color->setAutoDefault(false);
    text = CheckBox(this, "Te&xt", "text");
    dimension = CheckBox(this, "&Dimension", "dimension");
    to = EditableBox(this, "to");
    variable = CheckBox(this, "Is A &Variable", "isAVariable");
    auto* const fromLabel = new QLabel(QStringLiteral("&From:"), this);
    fromLabel->setBuddy(from);
    auto* const toLabel = new QLabel(QStringLiteral("&To:"), this);
    toLabel->setBuddy(to);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);

    auto* const fromRow = new QHBoxLayout;
    fromRow->addWidget(from, 1);
    fromRow->addWidget(color);
    auto* const kinds = new QHBoxLayout;
    kinds->addWidget(text);
    kinds->addWidget(dimension);
    kinds->addStretch();
    auto* const grid = new QGridLayout(this);
    grid->addWidget(fromLabel, 0, 0);
    grid->addLayout(fromRow, 0, 1);
    grid->addLayout(kinds, 1, 1);
    grid->addWidget(toLabel, 2, 0);
    grid->addWidget(to, 2, 1);
    grid->addWidget(variable, 3, 1);
    grid->addWidget(buttons, 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setSizeConstraint(QLayout::SetFixedSize);

    connect(text, &QCheckBox::clicked, this, &NewMap::OnSpecialEntry);
    connect(dimension, &QCheckBox::clicked, this, &NewMap::OnSpecialEntry);
    connect(color, &QPushButton::clicked, this, &NewMap::OnColor);
    connect(to, &QComboBox::activated, variable, [this] { variable->setEnabled(false); });
    connect(to->lineEdit(), &QLineEdit::textEdited, variable, [this] { variable->setEnabled(true); });
    connect(buttons, &QDialogButtonBox::accepted, this, &NewMap::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &NewMap::reject);
}

void NewMap::OnInitDialog() {
    text->setEnabled(false);
    dimension->setEnabled(false);
    FillBoxes();
    EnableForType();
    ShowSpecialEntry();
    WriteFields();
}

void NewMap::FillBoxes() {
    const std::vector<std::wstring> layers = NamesInDrawing(&AcDbDatabase::getLayerTable);
    toChoices = LayerVariableEntries();
    toChoices.insert(toChoices.end(), layers.begin(), layers.end());
    ShowEntries(*to, toChoices);
    if (askMode)
        return;
    if (schemeType == kLayer)
        ShowEntries(*from, layers);
    if (schemeType == kLinetype) {
        std::vector<std::wstring> linetypes = NamesInDrawing(&AcDbDatabase::getLinetypeTable);
        std::erase_if(linetypes, [](const std::wstring& name) { return name == L"BYBLOCK" || name == L"BYLAYER"; });
        ShowEntries(*from, linetypes);
    }
}

void NewMap::EnableForType() {
    from->setEnabled(!askMode);
    color->setVisible(schemeType == kColor);
    if (schemeType == kLinetype && !askMode) {
        text->setEnabled(true);
        dimension->setEnabled(true);
    }
    if (schemeType == kColor) {
        color->setEnabled(!askMode);
        from->setEnabled(false);
    }
    if (schemeType == kBlockName) {
        text->hide();
        dimension->hide();
        // Only layers and linetypes take the button's room.
        QSizePolicy kept = color->sizePolicy();
        kept.setRetainSizeWhenHidden(true);
        color->setSizePolicy(kept);
    }
}

void NewMap::ShowSpecialEntry() {
    const bool both = fromText == kTextsAndDimensions;
    if (!both && fromText != kTexts && fromText != kDimensions)
        return;
    textChecked = both || fromText == kTexts;
    dimensionChecked = both || fromText == kDimensions;
    from->setEnabled(false);
}

void NewMap::ReadFields() {
    fromText = from->currentText().toStdWString();
    toText = to->currentText().toStdWString();
    textChecked = text->isChecked() ? 1 : 0;
    dimensionChecked = dimension->isChecked() ? 1 : 0;
    isVariable = variable->isChecked() ? 1 : 0;
}

void NewMap::WriteFields() {
    from->setEditText(QString::fromStdWString(fromText));
    to->setEditText(QString::fromStdWString(toText));
    text->setChecked(textChecked != 0);
    dimension->setChecked(dimensionChecked != 0);
    variable->setChecked(isVariable != 0);
}

void NewMap::OnSpecialEntry() {
    ReadFields();
    const bool special = textChecked != 0 || dimensionChecked != 0;
    if (textChecked != 0)
        fromText = dimensionChecked != 0 ? kTextsAndDimensions : kTexts;
    else if (dimensionChecked != 0)
        fromText = kDimensions;
    else if (fromText.starts_with(L'*'))
        fromText.clear();
    from->setEnabled(!special);
    WriteFields();
}

void NewMap::OnColor() {
    constexpr int kByLayer = 256, kForeground = 7;
    const int given = platform::ToInt(from->currentText().toStdWString());
    const int colour = PickedColour(given > 0 && given != kByLayer ? given : kForeground);
    from->setEditText(QString::fromStdWString(platform::Format(L"%d", colour)));
}

void NewMap::accept() {
    const bool typed = variable->isEnabled();
    ReadFields();
    fromText = platform::Trim(platform::ToUpper(fromText));
    toText = platform::Trim(platform::ToUpper(toText));
    WriteFields();
    if (fromText.empty()) {
        platform::MessageBox(L"The 'From' field must not be empty.");
        return;
    }
    if (std::find(existingMaps.begin(), existingMaps.end(), fromText) != existingMaps.end()) {
        platform::MessageBox(L"This map already exists.");
        return;
    }
    if (toText.empty()) {
        platform::MessageBox(L"The 'To' field must not be empty.");
        return;
    }
    if (!typed)
        isVariable = ReplaceByVariable(toText) ? 1 : 0;
    QDialog::accept();
}

std::optional<NewMapAnswer> AskForNewMap(int schemeType, const std::wstring& fromText) {
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
        return std::nullopt;
    NewMap dialog(static_cast<QWidget*>(adsw_acadMainWnd()));
    dialog.schemeType = schemeType;
    dialog.askMode = true;
    dialog.fromText = fromText;
    if (dialog.DoModal() != QDialog::Accepted)
        return std::nullopt;
    return NewMapAnswer{dialog.toText, dialog.isVariable != 0};
}
