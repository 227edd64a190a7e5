#pragma once

#include <functional>

#include "zovhost/image.h"

namespace zovhost {

/// Draws a picture of a panel, white and as opaque as it covers each pixel, `pixels` wide and high; as
/// PaintIcon of host_pictures.h does. False for none.
using IconPainter = std::function<bool(int picture, int pixels, bool fromRight, Image& image)>;

/// Beside a word, and alone on a button.
enum class IconSize : int { BesideWord, Alone };

/// The side of an icon, in points.
constexpr float GetIconPoints(IconSize size) { return size == IconSize::BesideWord ? 18.0F : 24.0F; }

/// Within a frame of the Gui, into the present panel: a picture that Gui::SetIcons was given, in the colour
/// of words, drawn for the density of the display. Its left top in points, as imgui.h counts them. False, and
/// nothing drawn, for a picture that the Gui does not have.
bool DrawPanelIcon(int picture, IconSize size, float x, float y);

}  // namespace zovhost
