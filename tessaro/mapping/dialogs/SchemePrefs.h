#pragma once

#include "tessaro/mapping/MapScheme.h"

#include <QDialog>

#include <string>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTreeWidget;
class QTreeWidgetItem;

/// The scheme whose maps the dialog shows; null while none is selected.
extern MapScheme* currentScheme;

/// The list of schemes and of a scheme's maps. Works on the records themselves: what was done stays done, and only the
/// settings at the right side wait for the next selection or for Close.
class SchemePrefs : public QDialog {
public:
    explicit SchemePrefs(QWidget* owner = nullptr);

    int DoModal();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void CreateControls();
    QTreeWidget* MakeList(const char* name, const QString& first, const QString& second);
    QPushButton* MakeButton(const char* caption, const char* name, void (SchemePrefs::*handler)());
    void OnInitDialog();

    void StoreSettings();
    void ShowScheme();
    void EnableUnknownValue();
    void OnSelectScheme();
    void OnChooseScheme();
    void OnAdd();
    void OnDelete();
    void OnCopy();
    void OnNewMap();
    void OnEditMap(QTreeWidgetItem* row);
    void OnDeleteMap();
    void OnClose();
    QTreeWidgetItem* AppendScheme(const std::wstring& name, int schemeType);

    QTreeWidget *schemeList, *mapList;
    QCheckBox* byLayer;
    QRadioButton *ignore, *ask, *defaultTo;
    QLineEdit* unknownValue;
    QCheckBox* unknownIsVariable;
};
