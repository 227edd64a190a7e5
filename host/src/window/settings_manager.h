#pragma once

#include <X11/Xlib.h>

namespace zovhost {

/// Who keeps the settings of all programs on a display owns this selection of it.
Atom FindSettingsSelection(Display* display);

/// Pixels for one point, as that tells now; see ParseXSettings. 0 where there is nobody.
double FindManagedScale(Display* display);

}  // namespace zovhost
