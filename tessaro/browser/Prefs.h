#pragma once

#include <QDialog>

#include <string>

class QButtonGroup;
class QCheckBox;
class QLineEdit;

/// The settings of the whole module. The caller fills the fields, runs the dialog and reads them after it was accepted;
/// nothing is taken over here.
class Prefs : public QDialog {
public:
    explicit Prefs(QWidget* owner);

    std::wstring cacheFileText;
    int blockInsert = 0;   ///< 0 ask, 1 ask once per block, 2 always; -1 where no radio button is set
    int readEveryTime = 0; ///< likewise
    int overlay = 0;       ///< likewise
    bool useCompression = false;
    bool demandLoad = false;
    bool onlyCurrent = false;
    bool delOnClose = false;
    bool backup = false;

    int exec() override;
    void accept() override;

private:
    void FillControls();
    /// The boxes that mean something only with "Only load clicked directories." go off without it.
    void OnDemandLoad();
    void OnBrowse();

    QLineEdit* cacheFile;
    QButtonGroup *blockInsertGroup, *readingGroup, *xrefGroup;
    QCheckBox *compressionBox, *demandLoadBox, *onlyCurrentBox, *delOnCloseBox, *backupBox;
};
