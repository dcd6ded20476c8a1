#include "tessaro/browser/ComboAccessible.h"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QLineEdit>

namespace {

class Combo : public QAccessibleWidget {
public:
    explicit Combo(QComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox), combo(box) {}

    /// The edit box is the only part that a person comes to while the list is closed; the open list is a window.
    int childCount() const override { return combo->lineEdit() == nullptr ? 0 : 1; }
    QAccessibleInterface* child(int index) const override {
        return index == 0 && combo->lineEdit() != nullptr ? QAccessible::queryAccessibleInterface(combo->lineEdit())
                                                          : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* other) const override {
        return other != nullptr && combo->lineEdit() != nullptr && other->object() == combo->lineEdit() ? 0 : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        QLineEdit* const edit = combo->lineEdit();
        return edit != nullptr && edit->rect().contains(edit->mapFromGlobal(QPoint(x, y))) ? child(0) : nullptr;
    }
    QString text(QAccessible::Text which) const override {
        if (which == QAccessible::Name)
            return combo->accessibleName().isEmpty() ? combo->currentText() : combo->accessibleName();
        return which == QAccessible::Value ? combo->currentText() : QAccessibleWidget::text(which);
    }
    QStringList actionNames() const override {
        return QStringList{showMenuAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == showMenuAction())
            combo->showPopup();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    QComboBox* const combo;
};

QAccessibleInterface* MakeCombo(const QString&, QObject* object) {
    auto* const box = qobject_cast<QComboBox*>(object);
    return box == nullptr ? nullptr : new Combo(box);
}

} // namespace

void InstallComboAccessibility() {
    QAccessible::installFactory(MakeCombo);
}
