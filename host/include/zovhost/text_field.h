#pragma once

#include <string>

namespace zovhost {

/// A field of imgui.h that a text of any language is typed in, of the width that SetNextItemWidth has asked
/// for; `flags` are those of ImGui::InputText, and so is the result. Within a frame of the Gui.
///
/// A text that has letters which are read from the right shows them joined and in their order, also while it
/// is typed: where panels are mirrored and it begins with such a letter it stands at the right, with the
/// caret, what is selected, and the place of a click where they belong. Left and right then lead on the
/// screen.
bool DrawTextField(const char* id, std::string& text, int flags = 0);

}  // namespace zovhost
