#include "tessaro/host/entry/Registry.h"

namespace {

template <class Service> Service* Find(const wchar_t* name) {
    AcRxSysRegistry* const registry = acrxSysRegistry();
    return registry != nullptr ? dynamic_cast<Service*>(registry->at(name)) : nullptr;
}

} // namespace

AcRxDynamicLinker* DynamicLinker() {
    return Find<AcRxDynamicLinker>(ACRX_DYNAMIC_LINKER);
}

AcEdCommandStack* CommandStack() {
    return Find<AcEdCommandStack>(ACRX_COMMAND_DOCK);
}

AcEditor* Editor() {
    return Find<AcEditor>(ACED_EDITOR_OBJECT);
}
