#pragma once

#include "pictures/svg_painter.h"
#include "zovhost/image.h"

namespace zovhost {

// Pictures that are painted from a plan and not from a drawing of their own: those of the discs, of their
// welcome screen, of the bars and of the storyboard.

bool IsPainted(int id);
/// The width at which a picture is shown as a rule, in points; 0 for one that is not painted.
double GetUsualPoints(int id);
/// For a width of `points` at `scale` pixels a point; words come from `findText`. False for a number that is
/// not painted and a size that cannot be.
bool PaintPicture(int id, double points, double scale, const FindText& findText, Image& image);
/// A region map: each pixel is wholly of one region or transparent. False for what is none.
bool PaintMap(int id, Image& image);

}  // namespace zovhost
