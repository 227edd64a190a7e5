#pragma once

#include "zovhost/image.h"

namespace zovhost {

// The pictures of the storyboard: its frame and title bar, the cards of slides, their states and buttons.

bool IsStoryPicture(int id);
/// The width at which it is shown as a rule, in points; 0 for a number that is none of them.
double GetStoryPoints(int id);
/// `pixels` wide, and as high as its shape asks for. False for a number that is none of them.
bool PaintStoryPicture(int id, int pixels, Image& image);

}  // namespace zovhost
