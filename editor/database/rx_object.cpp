#include "editor/sdk/rx.h"

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
    for (const AcRxClass* walk = this; walk != nullptr; walk = walk->parent) {
        if (walk == other)
            return true;
    }
    return false;
}

AcRxClass* AcRxObject::desc() {
    static AcRxClass rxClass(L"AcRxObject", nullptr);
    return &rxClass;
}

const AcRxClass* AcRxObject::isA() const {
    return desc();
}
