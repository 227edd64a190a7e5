#pragma once

#include "korvane/box2.h"
#include "korvane/changing_in_time.h"
#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/resource_ids.h"

namespace Korvane {

/// A flat picture with a place, in viewport pixels, and an opacity that may fade. Hosts may derive from
/// the concrete kinds to keep what they need to draw them.
class ZOVTOOLS_API Icon2D {
 public:
  virtual ~Icon2D();

  bool IsVisible() const { return visible; }
  void SetVisible(bool isVisible) { visible = isVisible; }

  const Box2& GetBounds() const { return bounds; }
  void SetBounds(const Box2& value) { bounds = value; }
  /// The centre of the bounds.
  const Vector2& GetPosition() const { return bounds.center; }
  void SetPosition(const Vector2& position) { bounds.center = position; }
  void Move(const Vector2& offset) { bounds.center += offset; }
  /// Full sizes.
  double GetWidth() const { return 2.0 * bounds.halfExtent.x; }
  double GetHeight() const { return 2.0 * bounds.halfExtent.y; }
  void SetSize(double width, double height) { bounds.halfExtent = Vector2(width / 2.0, height / 2.0); }

  /// 0 to 1, read now.
  double GetOpacity() const { return opacity.GetValue(); }
  void SetOpacity(double value) { opacity.SetValue(value); }
  const ChangingInTimeValueChain& GetChangingInTimeOpacity() const { return opacity; }
  void SetChangingInTimeOpacity(const ChangingInTimeValueChain& value) { opacity = value; }

  /// A pixel in the icon's own scale, -1 to 1 across it. False for an icon without size, whose coordinate
  /// on that axis is 0.
  [[nodiscard]] bool GetIcon2DCoords(const Vector2& point, Vector2& result) const;

  /// For those who show the icon to a host, who may let it go meanwhile.
  Lifeline& GetLifeline() { return lifeline; }

 protected:
  Icon2D();
  Icon2D(const Icon2D&) = default;
  Icon2D& operator=(const Icon2D& other) {
    opacity = other.opacity;  // what may throw comes first
    visible = other.visible;
    bounds = other.bounds;
    return *this;
  }

 private:
  bool visible = true;
  Box2 bounds;
  ChangingInTimeValueChain opacity = 1.0;
  Lifeline lifeline;
};

/// A picture of the host's resources.
class ZOVTOOLS_API ResourceIcon2D : public Icon2D {
 public:
  explicit ResourceIcon2D(TextureID id) : textureID(id) {}
  TextureID GetTextureResourceID() const { return textureID; }

 private:
  TextureID textureID;
};

/// A text or a screenshot, made by the renderer; the number is the host's handle.
class ZOVTOOLS_API DynamicIcon2D : public Icon2D {
 public:
  explicit DynamicIcon2D(int iconID) : id(iconID) {}
  bool GetFlip() const { return flip; }
  void SetFlip(bool value) { flip = value; }
  int GetID() const { return id; }

 private:
  bool flip = false;
  int id;
};

}  // namespace Korvane
