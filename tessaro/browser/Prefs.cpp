#include "tessaro/browser/Prefs.h"

#include "tessaro/browser/DialogForm.h"
#include "tessaro/browser/QtText.h"
#include "tessaro/platform/UserInterface.h"

#include <QButtonGroup>

#include <initializer_list>
#include <utility>

namespace {

/// Radio buttons of one question; the ids are the values of its setting.
QButtonGroup* Choice(QDialog* dialog, const DialogForm& form,
                     std::initializer_list<std::pair<const char*, QRect>> entries) {
    auto* group = new QButtonGroup(dialog);
    int value = 0;
    for (const auto& [caption, place] : entries)
        group->addButton(form.Radio(caption, place), value++);
    return group;
}

void Select(QButtonGroup& group, int value) {
    if (QAbstractButton* const button = group.button(value))
        button->setChecked(true);
}

} // namespace

Prefs::Prefs(QWidget* owner) : QDialog(owner) {
    const DialogForm form(*this, "Prefs", "Tessaro - Preferences", {305, 180});
    QLabel* const label = form.Label("Cache File Location:", {7, 5, 100, 10}, nullptr);
    cacheFile = form.Edit("cacheFile", "Cache File Location", {7, 16, 235, 14});
    label->setBuddy(cacheFile);
    QPushButton* const browse = form.Button("Browse", {248, 16, 50, 14});

    form.Group("Existing Block Resolution", {7, 33, 170, 58});
    blockInsertGroup = Choice(this, form,
                              {{"Ask to update", {13, 47, 160, 12}},
                               {"Ask to update once per block per drawing", {13, 61, 160, 12}},
                               {"Always update", {13, 75, 160, 12}}});
    form.Group("Directory Reading", {183, 33, 115, 36});
    readingGroup =
        Choice(this, form,
               {{"Read Only Once Per Session", {189, 46, 106, 10}}, {"Read Every Time Showed", {189, 57, 106, 10}}});
    form.Group("X-Ref", {183, 68, 115, 23});
    xrefGroup = Choice(this, form, {{"Attach", {189, 80, 48, 10}}, {"Overlay", {241, 80, 50, 10}}});

    form.Group("Cache Memory Options", {7, 92, 291, 62});
    compressionBox = form.Box("Use Compression", {13, 105, 280, 11});
    demandLoadBox = form.Box("Only load clicked directories.", {13, 117, 280, 11});
    onlyCurrentBox = form.Box("Delete directory cache from memory when not the current directory.", {23, 129, 270, 11});
    delOnCloseBox = form.Box("Delete all directory caches from memory when Tessaro closes.", {23, 141, 270, 11});
    backupBox = form.Box("Create backups of the ini file.", {13, 160, 170, 12});
    form.OkAndCancel({190, 159, 50, 14}, {248, 159, 50, 14});

    connect(browse, &QAbstractButton::clicked, this, [this] { OnBrowse(); });
    connect(demandLoadBox, &QAbstractButton::clicked, this, [this] { OnDemandLoad(); });
}

int Prefs::exec() {
    FillControls();
    OnDemandLoad();
    return QDialog::exec();
}

void Prefs::FillControls() {
    cacheFile->setText(ToQt(cacheFileText));
    Select(*blockInsertGroup, blockInsert);
    Select(*readingGroup, readEveryTime);
    Select(*xrefGroup, overlay);
    compressionBox->setChecked(useCompression);
    demandLoadBox->setChecked(demandLoad);
    onlyCurrentBox->setChecked(onlyCurrent);
    delOnCloseBox->setChecked(delOnClose);
    backupBox->setChecked(backup);
}

void Prefs::accept() {
    cacheFileText = FromQt(cacheFile->text());
    blockInsert = blockInsertGroup->checkedId();
    readEveryTime = readingGroup->checkedId();
    overlay = xrefGroup->checkedId();
    useCompression = compressionBox->isChecked();
    demandLoad = demandLoadBox->isChecked();
    onlyCurrent = onlyCurrentBox->isChecked();
    delOnClose = delOnCloseBox->isChecked();
    backup = backupBox->isChecked();
    QDialog::accept();
}

void Prefs::OnDemandLoad() {
    const bool governs = demandLoadBox->isChecked();
    for (QCheckBox* box : {onlyCurrentBox, delOnCloseBox}) {
        if (!governs)
            box->setChecked(false);
        box->setEnabled(governs);
    }
}

void Prefs::OnBrowse() {
    if (const auto file = platform::PickSaveFile(L"Save As", FromQt(cacheFile->text())))
        cacheFile->setText(ToQt(*file));
}
