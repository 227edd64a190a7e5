#pragma once

#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/renderer.h"
#include "korvane/resource_ids.h"
#include "korvane/vector3.h"

namespace Korvane {

/// A model at a place of the scene.
class ZOVTOOLS_API Icon3D {
 public:
  virtual ~Icon3D();

  bool IsVisible() const { return visible; }
  void SetVisible(bool isVisible) { visible = isVisible; }

  Renderer::MaterialParams& GetMaterial() { return material; }
  const Renderer::MaterialParams& GetMaterial() const { return material; }
  /// World units.
  const Vector3& GetPosition() const { return position; }
  void SetPosition(const Vector3& value) { position = value; }
  void Move(const Vector3& offset) { position += offset; }
  double GetSize() const { return size; }
  void SetSize(double value) { size = value; }

  /// For those who show the icon to a host, who may let it go meanwhile.
  Lifeline& GetLifeline() { return lifeline; }

 protected:
  Icon3D();
  Icon3D(const Icon3D&) = default;
  Icon3D& operator=(const Icon3D&) = default;

 private:
  bool visible = true;
  Vector3 position;
  double size = 0.0;
  Renderer::MaterialParams material;
  Lifeline lifeline;
};

/// A model of the host's resources.
class ZOVTOOLS_API ResourceIcon3D : public Icon3D {
 public:
  explicit ResourceIcon3D(ModelID id) : modelID(id) {}
  ModelID GetModelResourceID() const { return modelID; }

 private:
  ModelID modelID;
};

}  // namespace Korvane
