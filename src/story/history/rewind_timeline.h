#pragma once

#include "story/history/rewind_elements.h"
#include "story/history/rewind_painter.h"

namespace Korvane {

/// The film strip from its opening to its end, as the host hears of it and sees it.
class RewindTimeline {
 public:
  RewindTimeline(RewindPartners& historyPartners, RewindElements& history, RewindThumbnails& pictures,
                 RewindStrip& filmStrip)
      : partners(historyPartners), elements(history), thumbnails(pictures), strip(filmStrip) {}

  bool Open(const Vector2& position, const CameraParameters& camera);
  bool Slide(const Vector2& position);
  bool Close();
  void Draw(const CameraParameters& camera);

  /// With the history: nobody is told any more.
  void End() { opening.Cut(); }

  void SetThumbnailSize(float size);
  void SetGapSize(float size);
  /// Pixels for each of these sizes; pictures of another scale are given back.
  void SetScale(double wanted);

 private:
  void Space();
  void PlaceAll() const;
  void DrawStrip(Renderer& target);
  void DrawElement(Renderer& target, int index);
  bool Draws(const Renderer& target) const;

  RewindPartners& partners;
  RewindElements& elements;
  RewindThumbnails& thumbnails;
  RewindStrip& strip;
  RewindPainter painter;
  Lifeline opening;  // cut when the strip closes or opens anew
  bool closing = false;
};

}  // namespace Korvane
