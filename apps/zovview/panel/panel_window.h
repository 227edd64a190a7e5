#pragma once

#include <imgui.h>

namespace zovview {

// What the panel and its strip have in common. Points.

constexpr float MARGIN = 12.0F;
constexpr float STRIP_PADDING = 6.0F;
constexpr float STRIP_BUTTON = 32.0F;
constexpr float STRIP_WIDTH = STRIP_BUTTON + 2.0F * STRIP_PADDING;
constexpr int FOLD = 2'000'000;  // the button that folds and unfolds; above the numbers of all others
constexpr int MORE = 2'000'001;

constexpr ImGuiWindowFlags STILL = ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize |
                                   ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoFocusOnAppearing |
                                   ImGuiWindowFlags_NoNav;

}  // namespace zovview
