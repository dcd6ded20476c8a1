#include "tests/soak/ProductUse.h"

#include "tests/soak/ModalAnswer.h"
#include "tests/soak/SavedDrawing.h"

#include "editor/sdk/db.h"
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/CmdLineReactor.h"
#include "tessaro/platform/Paths.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <chrono>
#include <filesystem>
#include <memory>

namespace {

constexpr int kMostAnswers = 12; ///< before Escape ends a command

/// Entities of model space; -1 where there is none.
int CountEntities(AcDbDatabase& database) {
    AcDbBlockTable* table = nullptr;
    AcDbSymbolTableRecord* record = nullptr;
    if (database.getBlockTable(table) != 0)
        return -1;
    const int found = table->getAt(ACDB_MODEL_SPACE, record, AcDb::kForRead);
    table->close();
    if (found != 0)
        return -1;
    AcDbBlockTableRecordIterator* made = nullptr;
    dynamic_cast<AcDbBlockTableRecord&>(*record).newIterator(made);
    const std::unique_ptr<AcDbBlockTableRecordIterator> walk(made);
    int count = 0;
    for (; !walk->done(); walk->step())
        ++count;
    record->close();
    return count;
}

std::filesystem::path DrawingOf(BlockDlg& dialog) {
    const Directory* const directory = currentDirectory;
    const std::wstring title = dialog.Controls().blockList->Rows().Text(dialog.SelectedBlockRow(), 0);
    return platform::Join(directory->path, title + L".dwg");
}

} // namespace

ProductUse::ProductUse(editor::Editor& editor, std::mt19937& randomness, std::wstring folder)
    : host(editor), random(randomness), place(std::move(folder)) {
    host.setUserInput(this);
    host.reactors().addReactor(&cmdLineReactor);
}

ProductUse::~ProductUse() {
    host.reactors().removeReactor(&cmdLineReactor);
    host.setUserInput(nullptr);
}

editor::UserEvent ProductUse::next(const editor::Prompt& prompt) {
    using Kind = editor::UserEvent::Kind;
    if (prompt.kind == editor::Prompt::Kind::Command) {
        answers = 0;
        return {};
    }
    if (++answers > kMostAnswers || Chance(8)) {
        ++done["cancels"];
        return {Kind::Cancel, {}, {}};
    }
    ++done["answers"];
    const double x = Below(1000), y = Below(1000);
    switch (prompt.kind) {
    case editor::Prompt::Kind::Number:
    case editor::Prompt::Kind::Angle:
        return {Kind::Text, std::to_wstring(1 + Below(9)) + L"\n", {}};
    case editor::Prompt::Kind::Point:
        return {Kind::Point, {}, {x, y, 0}};
    default:
        return {Kind::Text, L"\n", {}};
    }
}

void ProductUse::UseEditor() {
    answers = 0;
    const std::wstring number = std::to_wstring(Below(20));
    switch (Below(8)) {
    case 0:
        host.execute(L"LINE\n0,0\n" + number + L",7\n\n");
        break;
    case 1:
        host.execute(L"CIRCLE\n" + number + L",3\n2\n");
        break;
    case 2:
        host.execute(L"ERASE\nL\n\n");
        break;
    case 3:
        host.execute(L"U\n");
        break;
    case 4:
        host.execute(L"-LAYER\nM\nLayer" + number + L"\n\n");
        break;
    case 5:
        host.execute(L"ZOOM\nE\n");
        break;
    case 6:
        host.execute(L"PURGE\nA\n*\nN\n");
        break;
    default:
        host.execute(saved ? L"QSAVE\n" : L"SAVEAS\n2000\n" + platform::Join(place, L"plan.dwg") + L"\n");
        saved = true;
    }
    ++done["commands"];
}

bool ProductUse::UseDialog(BlockDlg& dialog) {
    switch (Below(6)) {
    case 0:
        ChangeSettings(dialog);
        return false;
    case 1:
        Describe(dialog);
        return false;
    case 2:
        if (Chance(25))
            Print(dialog);
        return false;
    case 3:
        ChangePreferences(dialog);
        return false;
    default:
        return Place(dialog);
    }
}

bool ProductUse::SelectBlock(BlockDlg& dialog) {
    const int rows = dialog.BlockRowCount();
    if (rows == 0 || !dialog.Controls().blockList->isVisible())
        return false;
    dialog.Controls().blockList->SelectRow(static_cast<int>(Below(static_cast<unsigned>(rows))));
    return dialog.SelectedBlockRow() >= 0;
}

bool ProductUse::Place(BlockDlg& dialog) {
    if (!SelectBlock(dialog))
        return false;
    BlockDlgControls& controls = dialog.Controls();
    QPushButton* const button = Chance(75) ? controls.insert : controls.xref;
    if (!button->isEnabled())
        return false;
    ++done[button == controls.insert ? "insertions" : "references"];
    button->click();
    return true;
}

void ProductUse::ChangeSettings(BlockDlg& dialog) {
    BlockDlgControls& controls = dialog.Controls();
    controls.explode->setChecked(Chance(30));
    controls.multipleInsert->setChecked(Chance(30));
    controls.repeat->setChecked(Chance(30));
    controls.scale->setEditText(Chance(50) ? QStringLiteral("1:1") : QString::number(1 + Below(5)));
    controls.rotation->setEditText(Chance(50) ? QStringLiteral("0") : QString::number(Below(360)));
    if (controls.scheme->isEnabled() && controls.scheme->count() > 0) {
        controls.scheme->setCurrentIndex(static_cast<int>(Below(static_cast<unsigned>(controls.scheme->count()))));
        emit controls.scheme->activated(controls.scheme->currentIndex());
    }
    ++done["settings"];
}

void ProductUse::Describe(BlockDlg& dialog) {
    if (!SelectBlock(dialog) || !dialog.Controls().editDescription->isEnabled())
        return;
    const std::filesystem::path drawing = DrawingOf(dialog);
    // Where the writing fails the new text stays in the catalogue, which a quiet pass would not have.
    if (AcDbDatabase probe(false, false); probe.readDwgFile(drawing.wstring().c_str()) != 0)
        return;
    const QString text = QStringLiteral("described %1").arg(++lastNumber);
    const ModalAnswer answer([&text](QDialog& window) {
        auto* const edit = window.findChild<QLineEdit*>(QStringLiteral("description"));
        if (edit == nullptr)
            return false;
        edit->setText(text);
        window.accept();
        return true;
    });
    dialog.Controls().editDescription->click();
    // A change within the second of the last look, of the same length, would go unseen.
    std::error_code gone;
    std::filesystem::last_write_time(
        drawing, std::filesystem::file_time_type::clock::now() - std::chrono::minutes(1 + lastNumber), gone);
    ++done["descriptions"];
}

void ProductUse::Print(BlockDlg& dialog) {
    if (!dialog.Controls().print->isEnabled())
        return;
    const auto sheet = QString::fromStdWString(platform::Join(place, L"sheet.pdf"));
    QFile::remove(sheet);
    const ModalAnswer answer([&sheet](QDialog& window) {
        auto* const name = window.findChild<QLineEdit*>(QStringLiteral("filename"));
        if (name == nullptr)
            return false;
        name->setText(sheet);
        window.accept();
        return true;
    });
    dialog.Controls().print->click();
    ++done["sheets"];
}

void ProductUse::ChangePreferences(BlockDlg& dialog) {
    if (!dialog.Controls().preferences->isEnabled())
        return;
    const auto folder = platform::Join(place, L"caches" + std::to_wstring(Below(3)));
    std::filesystem::create_directory(folder);
    const auto cache = QString::fromStdWString(platform::Join(folder, L"tessaro35.cache"));
    const ModalAnswer answer([&](QDialog& window) {
        auto* const file = window.findChild<QLineEdit*>();
        if (window.objectName() != QStringLiteral("Prefs") || file == nullptr)
            return false;
        if (Chance(30))
            file->setText(cache);
        for (QRadioButton* choice : window.findChildren<QRadioButton*>())
            if (Chance(30))
                choice->click();
        // Which of them drop pictures is the plan's to say.
        for (QCheckBox* box : window.findChildren<QCheckBox*>())
            if (box->text().contains(QStringLiteral("ackups")) && Chance(50))
                box->click();
        window.accept();
        return true;
    });
    dialog.Controls().preferences->click();
    ++done["preferences"];
}

std::string ProductUse::CheckSavedDrawing() {
    if (!saved)
        return {};
    host.execute(L"QSAVE\n");
    const std::filesystem::path plan = platform::Join(place, L"plan.dwg");
    if (std::string broken = BrokenInDrawing(plan); !broken.empty())
        return broken;
    AcDbDatabase read(false, false);
    if (read.readDwgFile(plan.wstring().c_str()) != 0)
        return "the editor can't read the saved drawing";
    const int there = CountEntities(read), open = CountEntities(*host.documents().current()->database());
    if (there != open)
        return "the saved drawing has " + std::to_string(there) + " entities, the open one " + std::to_string(open);
    return {};
}
