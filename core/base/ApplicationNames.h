#pragma once

#include "core/base/Applications.h"
#include "core/base/Text.h"

/// Display names of the applications, as the session stores them.
namespace ApplicationNames {

inline QString AppName(Application application) {
    return toQString(infoOf(application).name);
}
inline QString AppNameExpansion() {
    return AppName(Application::Expansion);
}
inline QString AppNameThermal() {
    return AppName(Application::Thermal);
}
inline QString AppNameHydro() {
    return AppName(Application::Hydropneumatic);
}
inline QString AppNameShock() {
    return AppName(Application::Shock);
}
inline QString AppNamePackage() {
    return AppName(Application::Package);
}

} // namespace ApplicationNames
