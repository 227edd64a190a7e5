#pragma once

#include "commands/view_commands.h"

namespace zovview {

/// One entry of the rewind history; what moved the camera before ends. False for a camera that shows nothing.
bool FlyTo(const ViewTarget& target, const Korvane::CameraParameters& camera);

// Nothing where the target has no list of views.

void KeepView(const ViewTarget& target);
void ImportViews(const ViewTarget& target);
void ExportViews(const ViewTarget& target);

}  // namespace zovview
