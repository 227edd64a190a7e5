#pragma once

#include "pictures/disc_layout.h"
#include "zovhost/image.h"

namespace zovhost {

/// The whole disc with `highlight`, a wedge of the plan, under the pointer; null: none.
bool PaintDisc(const DiscPlan& plan, const DiscWedge* highlight, const DiscSize& size,
               const FindText& findText, Image& image);

/// The captions alone, which are laid over each of the pictures.
bool PaintDiscCaptions(const DiscPlan& plan, const DiscSize& size, const FindText& findText, Image& image);

/// The disc at rest with its captions, its top left at the origin of the context, which counts pixels.
void DrawRestingDisc(cairo_t* context, const DiscPlan& plan, const DiscSize& size, const FindText& findText);

/// The regions, each in its key, without antialiasing; what lies beside the disc is transparent.
Image PaintDiscMap(const DiscPlan& plan);

}  // namespace zovhost
