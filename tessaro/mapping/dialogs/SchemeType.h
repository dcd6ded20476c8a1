#pragma once

#include <QDialog>

#include <string>
#include <vector>

class QButtonGroup;
class QLineEdit;

/// Names a new scheme and says of what kind it is.
///
/// A caller sets the fields, runs DoModal and reads `name` and `typeIndex` where that gave Accepted.
class SchemeType : public QDialog {
public:
    explicit SchemeType(QWidget* owner = nullptr);

    int DoModal();

    std::vector<std::wstring> existingNames; ///< refused, whatever their case
    bool typeLocked = false;                 ///< the kind is given
    std::wstring name;
    int typeIndex = -1; ///< 0 layer, 1 linetype, 2 colour, 3 block name; -1 none

protected:
    void accept() override;

private:
    void OnInitDialog();
    void ShowCaption();

    QButtonGroup* types;
    QLineEdit* nameBox;
};

/// Widths in pixels that decide how far the two texts of a caption stand apart.
struct CaptionWidths {
    int window = 0;
    int left = 0, right = 0; ///< of the texts
    int frame = 0;           ///< of the window, at one side
    int button = 0;          ///< of a button in the caption
    int blank = 0;           ///< of one blank
};
/// As many blanks as fit between the texts; 0 where they don't fit themselves.
int CaptionBlanks(const CaptionWidths& widths);
