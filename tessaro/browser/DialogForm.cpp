#include "tessaro/browser/DialogForm.h"

namespace {

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

} // namespace

DialogForm::DialogForm(QDialog& window, const char* name, const char* title, QSize size)
    : dialog(window), units(DialogFont()) {
    window.setObjectName(Text(name));
    window.setWindowTitle(Text(title));
    window.setFont(DialogFont());
    window.setFixedSize(units.X(size.width()), units.Y(size.height()));
}

void DialogForm::Place(QWidget* control, QRect place) const {
    control->setGeometry(units.Pixels(place));
}

template <class T> T* DialogForm::Captioned(T* control, const char* caption, QRect place) const {
    control->setObjectName(Text(caption).remove(QLatin1Char(' ')));
    Place(control, place);
    return control;
}

QLabel* DialogForm::Label(const char* caption, QRect place, QWidget* buddy) const {
    auto* label = Captioned(new QLabel(Text(caption), &dialog), caption, place);
    label->setBuddy(buddy);
    return label;
}

QLineEdit* DialogForm::Edit(const char* name, const char* meaning, QRect place) const {
    auto* edit = new QLineEdit(&dialog);
    edit->setObjectName(Text(name));
    edit->setAccessibleName(Text(meaning));
    Place(edit, place);
    return edit;
}

QPushButton* DialogForm::Button(const char* caption, QRect place) const {
    auto* button = Captioned(new QPushButton(Text(caption), &dialog), caption, place);
    button->setAutoDefault(false);
    return button;
}

QCheckBox* DialogForm::Box(const char* caption, QRect place) const {
    return Captioned(new QCheckBox(Text(caption), &dialog), caption, place);
}

QRadioButton* DialogForm::Radio(const char* caption, QRect place) const {
    return Captioned(new QRadioButton(Text(caption), &dialog), caption, place);
}

QGroupBox* DialogForm::Group(const char* caption, QRect place) const {
    return Captioned(new QGroupBox(Text(caption), &dialog), caption, place);
}

void DialogForm::OkAndCancel(QRect ok, QRect cancel) const {
    QPushButton* const accept = Button("OK", ok);
    accept->setDefault(true);
    QObject::connect(accept, &QAbstractButton::clicked, &dialog, &QDialog::accept);
    QObject::connect(Button("Cancel", cancel), &QAbstractButton::clicked, &dialog, &QDialog::reject);
}
