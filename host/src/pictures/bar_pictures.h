#pragma once

#include "zovhost/image.h"

namespace zovhost {

// The pictures of toolbars and of the navigation bar: line icons from the same drawings as those of the discs
// and the pointers, and the corners of a strip.

bool IsBarPicture(int id);
/// The width at which it is shown as a rule, in points; 0 for a number that is none of them.
double GetBarPoints(int id);
/// How opaque one is drawn for a strip that shows it so: the glyphs of a strip at rest, which shows at 0.3,
/// stand out while its ground stays quiet. What is drawn at 0 or 1 stays so; for other numbers all does.
double FindBarOpacity(int id, double opacity);
/// `pixels` wide and high. False for a number that is none of them.
bool PaintBarPicture(int id, int pixels, Image& image);

}  // namespace zovhost
