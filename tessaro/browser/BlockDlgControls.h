#pragma once

#include "tessaro/browser/MyCEdit.h"
#include "tessaro/browser/MyList.h"
#include "tessaro/browser/ViewButton.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include <string>

/// The controls of the browser window. Each has its caption without blanks as object name, or a name of its kind; Qt
/// owns them through their parent.
struct BlockDlgControls {
    QPushButton *preferences, *close, *schemes, *help, *print, *editDescription, *insert, *open, *xref, *amCatalog;
    QPushButton *add, *remove, *moveUp, *moveDown;
    QCheckBox *explode, *multipleInsert, *repeat, *localize;
    QComboBox *scheme, *scale, *rotation;
    ViewButton* viewButton;
    MyCEdit* quickFind;
    QLabel *quickFindLabel, *scaleLabel, *rotationLabel, *itemPropertiesLabel, *properties;
    MyList2* directoryList;
    MyList* blockList;
    QFrame* curtainList;
};

/// Makes the controls of a window, at the places and in the tab order of its layout, with their Alt keys.
BlockDlgControls MakeBlockDlgControls(QWidget& window);

/// Adds a text to a combo box at its place in the order of texts, ignoring case.
void AddSorted(QComboBox& box, const std::wstring& text);
/// Gives a button another caption; its Alt key stays.
void SetCaption(QPushButton& button, const std::wstring& text);
