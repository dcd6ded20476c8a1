#include "tests/mapping_dialogs/DialogTest.h"

#include "tests/database/database_support.h"

#include "tessaro/host/ModuleState.h"

#include <QDialogButtonBox>
#include <QPushButton>

#include <algorithm>

namespace tests {

DialogTest::DialogTest() : drawing(*host.documents().create().database()) {
    host.setWindow(this);
    platform::SetUserInterface(this);
    currentDirectory = &directory;
}

DialogTest::~DialogTest() {
    EXPECT_EQ(waiting, 0) << "a dialog did not come up";
    currentDirectory = nullptr;
    platform::SetUserInterface(nullptr);
    host.setWindow(nullptr);
    DeleteSchemes();
}

void DialogTest::WithoutDialog(const std::function<void()>& action) {
    const QWidget* const before = QApplication::activeModalWidget();
    bool opened = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()); dialog != before) {
            opened = true;
            dialog->reject();
        }
    });
    watch.start(0);
    action();
    QApplication::processEvents();
    EXPECT_FALSE(opened);
}

void DialogTest::Press(const QWidget& dialog, const QString& caption) {
    for (QPushButton* const button : dialog.findChild<QDialogButtonBox*>()->findChildren<QPushButton*>())
        if (button->text().remove(QLatin1Char('&')) == caption) {
            button->click();
            return;
        }
    FAIL() << "no button " << caption.toStdString();
}

void DialogTest::Type(QLineEdit& edit, const QString& text) {
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    // Keys are simulated for plain letters only.
    const bool isPlain = std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.unicode() < 0x80; });
    if (isPlain)
        QTest::keyClicks(&edit, text);
    else
        edit.insert(text);
}

void DialogTest::Pick(QComboBox& box, const QString& entry) {
    const int wanted = box.findText(entry, Qt::MatchExactly | Qt::MatchCaseSensitive);
    ASSERT_GE(wanted, 0) << entry.toStdString();
    // Up or down with the arrow keys, as a user does; where it stands there already, away and back.
    if (box.currentIndex() == wanted)
        QTest::keyClick(&box, wanted > 0 ? Qt::Key_Up : Qt::Key_Down);
    while (box.currentIndex() != wanted)
        QTest::keyClick(&box, box.currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
}

std::vector<std::string> DialogTest::Entries(const QComboBox& box) {
    std::vector<std::string> entries;
    for (int i = 0; i < box.count(); ++i)
        entries.push_back(box.itemText(i).toStdString());
    return entries;
}

std::vector<std::string> DialogTest::Rows(const QTreeWidget& list) {
    std::vector<std::string> rows;
    for (int i = 0; i < list.topLevelItemCount(); ++i)
        rows.push_back(
            (list.topLevelItem(i)->text(0) + QLatin1Char('|') + list.topLevelItem(i)->text(1)).toStdString());
    return rows;
}

void DialogTest::DoubleClick(QTreeWidget& list, int row) {
    const QPoint place = list.visualItemRect(list.topLevelItem(row)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
}

int DialogTest::SelectedRow(const QTreeWidget& list) {
    const QList<QTreeWidgetItem*> rows = list.selectedItems();
    return rows.isEmpty() ? -1 : list.indexOfTopLevelItem(rows.constFirst());
}

MapScheme& DialogTest::AddScheme(const std::wstring& name, int schemeType) {
    auto* const scheme = new MapScheme;
    scheme->schemeType = schemeType;
    SetScheme(name, scheme);
    return *scheme;
}

void DialogTest::AddLinetype(const std::wstring& name) {
    dwg::Linetype body;
    body.head.name = name;
    dwg::Object object;
    object.type = dwg::object_type::linetype;
    object.body = std::move(body);
    AcDbDatabase::Impl& database = *drawing.impl();
    object.handle = database.drawing.newHandle();
    database.enter(*database.table(dwg::object_type::linetypeControl), database.drawing.add(std::move(object))->handle);
}

} // namespace tests
