#include "tessaro/browser/EditDesc.h"

#include "tessaro/browser/DialogForm.h"
#include "tessaro/browser/QtText.h"
#include "tessaro/platform/UserInterface.h"

#include <QLineEdit>

namespace {

constexpr qsizetype kLongest = 70; ///< in UTF-16 units

} // namespace

EditDesc::EditDesc(QWidget* owner) : QDialog(owner) {
    const DialogForm form(*this, "EditDesc", "Edit Block Description", {205, 41});
    edit = form.Edit("description", "Description", {7, 5, 191, 14});
    form.OkAndCancel({94, 23, 50, 14}, {148, 23, 50, 14});
}

int EditDesc::exec() {
    edit->setText(ToQt(description));
    edit->selectAll();
    edit->setFocus();
    return QDialog::exec();
}

void EditDesc::accept() {
    if (edit->text().size() > kLongest) {
        platform::MessageBox(L"Enter no more than 70 characters.", L"Tessaro", platform::MessageButtons::Ok,
                             platform::MessageIcon::Exclamation);
        edit->setFocus();
        edit->selectAll();
        return;
    }
    description = FromQt(edit->text());
    QDialog::accept();
}
