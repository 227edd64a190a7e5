#pragma once

#include "support/recording_renderer.h"

/// Texts that are as large as they are on a display of `scale` pixels a point, and where the last one was
/// drawn.
class PlacedNotes : public RecordingRenderer {
 public:
  static constexpr double WIDTH = 40.0;  // points
  static constexpr double HEIGHT = 16.0;

  explicit PlacedNotes(double displayScale) : scale(displayScale) {}

  using RecordingRenderer::Render;

  Korvane::DynamicIcon2D* CreateTooltip(const wchar_t* text) override {
    return Resized(RecordingRenderer::CreateTooltip(text));
  }
  Korvane::DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
    return Resized(RecordingRenderer::CreateTooltipHUD(text));
  }
  bool Render(Korvane::DynamicIcon2D* icon) override {
    place = icon->GetPosition() / scale;
    return RecordingRenderer::Render(icon);
  }

  /// Its middle, in points from the bottom left.
  const Korvane::Vector2& GetPlace() const { return place; }

 private:
  Korvane::DynamicIcon2D* Resized(Korvane::DynamicIcon2D* icon) const {
    if (icon != nullptr) icon->SetSize(WIDTH * scale, HEIGHT * scale);
    return icon;
  }

  double scale;
  Korvane::Vector2 place;
};
