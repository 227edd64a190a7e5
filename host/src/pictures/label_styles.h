#pragma once

#include "pictures/text_painter.h"

namespace zovhost {

/// The kinds of text that the renderer sets, each with a look of its own.
enum class LabelKind : int { Tooltip, TooltipHUD, MessageHUD, PivotLabel, MiniWheelLabel, Plain };

const TextStyle& GetLabelStyle(LabelKind kind);

/// The cube's list of coordinate systems: a pill around the text, fitted into a room of `width` points.
TextStyle MakeMenuLabelStyle(bool highlighted, double width);

}  // namespace zovhost
