#pragma once

#include "tessaro/mapping/engine/NewMapQuestion.h"

#include <QDialog>

#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QPushButton;

/// Enters one map of a scheme: what its From side speaks of, and the layer or variable it goes to. Opened by the list
/// of schemes, or by a placement that comes upon an unknown name, where From is fixed.
///
/// A caller sets the fields, runs DoModal and reads `fromText`, `toText` and `isVariable` where that gave Accepted.
class NewMap : public QDialog {
public:
    explicit NewMap(QWidget* owner = nullptr);

    int DoModal();

    std::vector<std::wstring> toChoices;    ///< entries of the To box, filled at the opening
    std::vector<std::wstring> existingMaps; ///< keys that may not be entered again
    int schemeType = 0;
    bool askMode = false;
    int isVariable = 0, textChecked = 0, dimensionChecked = 0; ///< check boxes, 0 or 1
    std::wstring fromText, toText;

protected:
    void accept() override;

private:
    void CreateControls();
    void OnInitDialog();
    void FillBoxes();
    void EnableForType();
    void ShowSpecialEntry();
    void ReadFields();
    void WriteFields();
    void OnSpecialEntry();
    void OnColor();

    QComboBox *from, *to;
    QCheckBox *text, *dimension, *variable;
    QPushButton* color;
};

/// Asks by a NewMap that is modal over the host's window; nothing on cancel or where no window can be shown.
std::optional<NewMapAnswer> AskForNewMap(int schemeType, const std::wstring& fromText);
