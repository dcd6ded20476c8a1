#pragma once

#include "tessaro/browser/DialogLayout.h"

#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

/// A small dialog of fixed size whose controls stand at places in dialog units. Controls are made in tab order and are
/// owned by the dialog; each has its caption without blanks, or the name given, as object name.
class DialogForm {
public:
    DialogForm(QDialog& window, const char* name, const char* title, QSize units);

    QLabel* Label(const char* caption, QRect place, QWidget* buddy) const;
    /// `meaning` is what assistive programs call it.
    QLineEdit* Edit(const char* name, const char* meaning, QRect place) const;
    QPushButton* Button(const char* caption, QRect place) const;
    QCheckBox* Box(const char* caption, QRect place) const;
    QRadioButton* Radio(const char* caption, QRect place) const;
    QGroupBox* Group(const char* caption, QRect place) const;
    /// "OK" accepts and is the default, "Cancel" rejects.
    void OkAndCancel(QRect ok, QRect cancel) const;
    void Place(QWidget* control, QRect place) const;

private:
    template <class T> T* Captioned(T* control, const char* caption, QRect place) const;

    QDialog& dialog;
    DialogUnits units;
};
