#pragma once

#include "tessaro/mapping/dialogs/NewMap.h"
#include "tessaro/mapping/dialogs/SchemePrefs.h"
#include "tessaro/mapping/dialogs/SchemeType.h"
#include "tests/mapping_dialogs/DialogTest.h"

namespace tests {

/// The list of schemes and what its buttons open.
class SchemePrefsTest : public DialogTest {
protected:
    /// Opens the dialog and carries the script out in it.
    int Run(const std::function<void()>& script) {
        SchemePrefs dialog;
        shown = &dialog;
        InNext<SchemePrefs>([&](SchemePrefs&) { script(); });
        return dialog.DoModal();
    }
    QTreeWidget& Schemes() { return *Find<QTreeWidget>(*shown, "schemeList"); }
    QTreeWidget& MapRows() { return *Find<QTreeWidget>(*shown, "mapList"); }
    template <class Control> Control& Get(const char* name) { return *Find<Control>(*shown, name); }

    /// Names a new scheme in the dialog that the button opens.
    void NameScheme(const char* button, const QString& name, const char* kind = nullptr) {
        InNext<SchemeType>([=](SchemeType& dialog) {
            if (kind != nullptr)
                Click(dialog, kind);
            Type(*Find<QLineEdit>(dialog, "name"), name);
            Press(dialog, "OK");
        });
        Click(*shown, button);
    }
    /// Enters a map in the dialog that comes up next.
    void EnterMap(const QString& from, const QString& to, bool isVariable = false) {
        InNext<NewMap>([=](NewMap& dialog) {
            Type(*Find<QComboBox>(dialog, "from"), from);
            Type(*Find<QComboBox>(dialog, "to"), to);
            Find<QCheckBox>(dialog, "isAVariable")->setChecked(isVariable);
            Press(dialog, "OK");
        });
    }

    SchemePrefs* shown = nullptr;
};

} // namespace tests
