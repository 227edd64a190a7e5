#pragma once

#include <vector>

namespace zovview {

struct ViewCommand;

/// The picture that a panel shows of it, a number of the kit's pictures, the same as on the bars; -1: it has
/// none.
int FindCommandIcon(const ViewCommand& command);
/// All pictures that panels of the viewer draw, for zovhost::Gui::SetIcons.
std::vector<int> GetPanelIcons();

}  // namespace zovview
