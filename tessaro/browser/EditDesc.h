#pragma once

#include <QDialog>

#include <string>

class QLineEdit;

/// Asks for a block's description. A text of more than 70 characters is refused with a message, and the dialog stays.
class EditDesc : public QDialog {
public:
    explicit EditDesc(QWidget* owner);

    std::wstring description; ///< filled before exec, read after it was accepted

    int exec() override;
    void accept() override;

private:
    QLineEdit* edit;
};
