#include "tessaro/mapping/dialogs/SchemePrefs.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/dialogs/NewMap.h"
#include "tessaro/mapping/dialogs/SchemeType.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <memory>

MapScheme* currentScheme = nullptr;

namespace {

constexpr int kIgnore = 0, kAsk = 1, kDefault = 2;
constexpr int kBlockName = 3;

QString TypeText(int schemeType) {
    static const char* const texts[]{"Layer->Layer", "Linetype->Layer", "Color->Layer", "BlockName->Layer"};
    return QString::fromLatin1(texts[schemeType]);
}

QString ToText(const std::wstring& to, bool isVariable) {
    const QString text = QString::fromStdWString(to);
    return isVariable ? QStringLiteral("Variable: ") + text : text;
}

std::wstring TextOf(const QTreeWidgetItem& row) {
    return row.text(0).toStdWString();
}

QTreeWidgetItem* SelectedRow(const QTreeWidget& list) {
    const QList<QTreeWidgetItem*> rows = list.selectedItems();
    return rows.isEmpty() ? nullptr : rows.constFirst();
}

template <class T> std::vector<std::wstring> KeysOf(const OrderedTextMap<T>& map) {
    std::vector<std::wstring> keys;
    for (const auto& [key, value] : map)
        keys.push_back(key);
    return keys;
}

} // namespace

SchemePrefs::SchemePrefs(QWidget* owner) : QDialog(owner) {
    setObjectName(QStringLiteral("SchemePrefs"));
    setWindowTitle(QStringLiteral("Tessaro - Layer Mapping Schemes"));
    CreateControls();
}

int SchemePrefs::DoModal() {
    OnInitDialog();
    return exec();
}

QTreeWidget* SchemePrefs::MakeList(const char* name, const QString& first, const QString& second) {
    auto* const list = new QTreeWidget(this);
    list->setObjectName(QString::fromLatin1(name));
    list->setHeaderLabels({first, second});
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->setExpandsOnDoubleClick(false);
    list->setMinimumSize(290, 240);
    list->header()->setStretchLastSection(false);
    return list;
}

QPushButton* SchemePrefs::MakeButton(const char* caption, const char* name, void (SchemePrefs::*handler)()) {
    auto* const button = new QPushButton(QString::fromLatin1(caption), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, handler);
    return button;
}

void SchemePrefs::CreateControls() {
    schemeList = MakeList("schemeList", QStringLiteral("Scheme"), QStringLiteral("Type"));
    mapList = MakeList("mapList", QStringLiteral("From"), QStringLiteral("To"));
    byLayer = new QCheckBox(QStringLiteral("Set default to &ByLayer"), this);
    byLayer->setObjectName(QStringLiteral("setDefaultToByLayer"));
    auto* const unknowns = new QGroupBox(QStringLiteral("Unknowns?"), this);
    ignore = new QRadioButton(QStringLiteral("&Ignore"), unknowns);
    ignore->setObjectName(QStringLiteral("ignore"));
    ask = new QRadioButton(QStringLiteral("As&k for new map"), unknowns);
    ask->setObjectName(QStringLiteral("askForNewMap"));
    // These three carry the values of a scheme that has them from the settings file; nothing shows them.
    defaultTo = new QRadioButton(QStringLiteral("Default to:"), unknowns);
    defaultTo->setObjectName(QStringLiteral("defaultTo"));
    unknownValue = new QLineEdit(unknowns);
    unknownValue->setObjectName(QStringLiteral("unknownValue"));
    unknownIsVariable = new QCheckBox(QStringLiteral("Is Variable"), unknowns);
    unknownIsVariable->setObjectName(QStringLiteral("isVariable"));
    for (QWidget* const control : std::initializer_list<QWidget*>{defaultTo, unknownValue, unknownIsVariable})
        control->hide();

    auto* const group = new QVBoxLayout(unknowns);
    for (QWidget* const control :
         std::initializer_list<QWidget*>{ignore, ask, defaultTo, unknownValue, unknownIsVariable})
        group->addWidget(control);

    auto* const schemeButtons = new QHBoxLayout;
    schemeButtons->addWidget(MakeButton("&Add", "addScheme", &SchemePrefs::OnAdd));
    schemeButtons->addWidget(MakeButton("&Delete", "deleteScheme", &SchemePrefs::OnDelete));
    schemeButtons->addWidget(MakeButton("&Copy", "copyScheme", &SchemePrefs::OnCopy));
    auto* const left = new QVBoxLayout;
    left->addWidget(schemeList, 1);
    left->addLayout(schemeButtons);
    auto* const mapButtons = new QHBoxLayout;
    mapButtons->addWidget(MakeButton("&New", "newMap", &SchemePrefs::OnNewMap));
    mapButtons->addWidget(MakeButton("De&lete", "deleteMap", &SchemePrefs::OnDeleteMap));
    auto* const middle = new QVBoxLayout;
    middle->addWidget(mapList, 1);
    middle->addLayout(mapButtons);
    auto* const right = new QVBoxLayout;
    right->addWidget(byLayer);
    right->addWidget(unknowns);
    right->addStretch();
    QPushButton* const close = MakeButton("Cl&ose", "close", &SchemePrefs::OnClose);
    close->setDefault(true);
    right->addWidget(close);
    auto* const columns = new QHBoxLayout(this);
    columns->addLayout(left, 1);
    columns->addLayout(middle, 1);
    columns->addLayout(right);

    connect(schemeList, &QTreeWidget::itemSelectionChanged, this, &SchemePrefs::OnSelectScheme);
    connect(schemeList, &QTreeWidget::itemDoubleClicked, this, &SchemePrefs::OnChooseScheme);
    connect(mapList, &QTreeWidget::itemDoubleClicked, this, &SchemePrefs::OnEditMap);
    for (QRadioButton* const button : {ignore, ask, defaultTo})
        connect(button, &QRadioButton::clicked, this, &SchemePrefs::EnableUnknownValue);
}

void SchemePrefs::OnInitDialog() {
    currentScheme = nullptr;
    const Directory* const directory = currentDirectory;
    QTreeWidgetItem* selected = nullptr;
    for (const auto& [name, scheme] : schemes) {
        QTreeWidgetItem* const row = AppendScheme(name, scheme->schemeType);
        if (directory != nullptr && name == directory->schemeName)
            selected = row;
    }
    if (selected != nullptr)
        schemeList->setCurrentItem(selected);
}

void SchemePrefs::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    layout()->activate();
    for (QTreeWidget* const list : {schemeList, mapList})
        for (int column = 0; column < list->columnCount(); ++column)
            list->setColumnWidth(column, list->viewport()->width() / 2 - 10);
}

QTreeWidgetItem* SchemePrefs::AppendScheme(const std::wstring& name, int schemeType) {
    return new QTreeWidgetItem(schemeList, {QString::fromStdWString(name), TypeText(schemeType)});
}

void SchemePrefs::StoreSettings() {
    if (currentScheme == nullptr)
        return;
    currentScheme->defaultToByLayer = byLayer->isChecked();
    currentScheme->unknownValue = unknownValue->text().toStdWString();
    currentScheme->unknownIsVariable = unknownIsVariable->isChecked();
    if (ignore->isChecked())
        currentScheme->unknownMode = kIgnore;
    else if (ask->isChecked())
        currentScheme->unknownMode = kAsk;
    else if (defaultTo->isChecked())
        currentScheme->unknownMode = kDefault;
}

void SchemePrefs::OnSelectScheme() {
    const QTreeWidgetItem* const row = SelectedRow(*schemeList);
    if (row == nullptr)
        return;
    StoreSettings();
    mapList->clear();
    MapScheme** const found = schemes.Lookup(TextOf(*row));
    currentScheme = found == nullptr ? nullptr : *found;
    if (currentScheme != nullptr)
        ShowScheme();
}

void SchemePrefs::ShowScheme() {
    const MapScheme& scheme = *currentScheme;
    for (const auto& [from, to] : scheme.maps)
        new QTreeWidgetItem(mapList,
                            {QString::fromStdWString(from), ToText(to, scheme.variableMaps.Lookup(from) != nullptr)});
    QRadioButton* const modes[]{ignore, ask, defaultTo};
    modes[scheme.unknownMode]->setChecked(true);
    EnableUnknownValue();
    unknownValue->setText(QString::fromStdWString(scheme.unknownValue));
    unknownIsVariable->setChecked(scheme.unknownIsVariable);
    // A scheme by block name moves no entities.
    const bool movesEntities = scheme.schemeType != kBlockName;
    byLayer->setEnabled(movesEntities);
    byLayer->setChecked(movesEntities && scheme.defaultToByLayer);
}

void SchemePrefs::EnableUnknownValue() {
    unknownValue->setEnabled(defaultTo->isChecked());
    unknownIsVariable->setEnabled(defaultTo->isChecked());
}

void SchemePrefs::OnChooseScheme() {
    const QTreeWidgetItem* const row = SelectedRow(*schemeList);
    Directory* const directory = currentDirectory;
    if (row != nullptr && directory != nullptr)
        directory->schemeName = TextOf(*row);
    OnClose();
}

void SchemePrefs::OnAdd() {
    SchemeType dialog(this);
    dialog.existingNames = KeysOf(schemes);
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    auto scheme = std::make_unique<MapScheme>();
    scheme->schemeType = dialog.typeIndex;
    schemes.SetAt(dialog.name, scheme.release());
    schemeList->setCurrentItem(AppendScheme(dialog.name, dialog.typeIndex));
}

void SchemePrefs::OnDelete() {
    QTreeWidgetItem* const row = SelectedRow(*schemeList);
    if (row == nullptr)
        return;
    const std::wstring name = TextOf(*row);
    const int place = schemeList->indexOfTopLevelItem(row);
    if (place > 0) {
        schemeList->setCurrentItem(schemeList->topLevelItem(place - 1));
    } else if (schemeList->topLevelItemCount() < 2) {
        currentScheme = nullptr;
        mapList->clear();
    } else {
        schemeList->setCurrentItem(schemeList->topLevelItem(1));
    }
    delete row;
    MapScheme** const found = schemes.Lookup(name);
    if (found == nullptr)
        return;
    // After a copy under the same name two rows stand for one record.
    if (currentScheme == *found) {
        currentScheme = nullptr;
        mapList->clear();
    }
    delete *found;
    schemes.RemoveKey(name);
}

void SchemePrefs::OnCopy() {
    if (SelectedRow(*schemeList) == nullptr || currentScheme == nullptr)
        return;
    SchemeType dialog(this);
    dialog.typeLocked = true;
    dialog.typeIndex = currentScheme->schemeType;
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    // A record that had the name stays, since the settings on the right may still belong to it.
    schemes.SetAt(dialog.name, std::make_unique<MapScheme>(*currentScheme).release());
    schemeList->setCurrentItem(AppendScheme(dialog.name, currentScheme->schemeType));
}

void SchemePrefs::OnNewMap() {
    if (currentScheme == nullptr)
        return;
    NewMap dialog(this);
    dialog.schemeType = currentScheme->schemeType;
    dialog.existingMaps = KeysOf(currentScheme->maps);
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    currentScheme->maps.SetAt(dialog.fromText, dialog.toText);
    if (dialog.isVariable != 0)
        currentScheme->variableMaps.SetAt(dialog.fromText, 1);
    new QTreeWidgetItem(mapList,
                        {QString::fromStdWString(dialog.fromText), ToText(dialog.toText, dialog.isVariable != 0)});
}

void SchemePrefs::OnEditMap(QTreeWidgetItem* row) {
    if (currentScheme == nullptr)
        return;
    const std::wstring from = TextOf(*row);
    const std::wstring* const to = currentScheme->maps.Lookup(from);
    NewMap dialog(this);
    dialog.schemeType = currentScheme->schemeType;
    dialog.fromText = from;
    dialog.toText = to == nullptr ? L"" : *to;
    dialog.isVariable = currentScheme->variableMaps.Lookup(from) != nullptr;
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    // The key that the row had before stays in the scheme.
    currentScheme->maps.SetAt(dialog.fromText, dialog.toText);
    if (dialog.isVariable != 0)
        currentScheme->variableMaps.SetAt(dialog.fromText, 1);
    else
        currentScheme->variableMaps.RemoveKey(dialog.fromText);
    row->setText(0, QString::fromStdWString(dialog.fromText));
    row->setText(1, ToText(dialog.toText, dialog.isVariable != 0));
}

void SchemePrefs::OnDeleteMap() {
    QTreeWidgetItem* const row = SelectedRow(*mapList);
    if (row == nullptr || currentScheme == nullptr)
        return;
    currentScheme->maps.RemoveKey(TextOf(*row));
    const int place = mapList->indexOfTopLevelItem(row);
    delete row;
    if (QTreeWidgetItem* const next = mapList->topLevelItem(place > 0 ? place - 1 : 0))
        mapList->setCurrentItem(next);
}

void SchemePrefs::OnClose() {
    StoreSettings();
    accept();
}
