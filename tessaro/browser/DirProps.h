#pragma once

#include <QDialog>

class BlockDlg;
class QCheckBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTimerEvent;

/// The properties of the current Directory. Works on `currentDirectory` itself, whichever that is by then: what is
/// changed here reaches it at "OK" and at "Reload Blocks". A timer of one second follows the loader meanwhile.
class DirProps : public QDialog {
public:
    explicit DirProps(BlockDlg& owner);
    ~DirProps() override;

    /// Writes the boxes into the Directory; true where its path changed, which has read it anew.
    bool ApplyDirProps();
    void accept() override;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void FillControls();
    void FillBlockCounts();
    void OnBrowse();
    void OnReloadBlocks();
    void OnSavePending();
    void OnUseLargeImages();

    BlockDlg& mainDialog;
    QLineEdit *description, *path;
    QPushButton *browse, *savePending, *reloadBlocks;
    QListWidget* blockCounts;
    QCheckBox *useCache, *showInsPts, *useLargeImages;
};

/// The open one, or null.
extern DirProps* theDirProps;
