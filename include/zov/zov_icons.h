#pragma once

#include <memory>

#include "korvane/export.h"
#include "zov/qmcore.h"
#include "zov/qu_observer_ptr.h"
#include "zov/zov_enums.h"
#include "zov/zov_material_parameters.h"

namespace Korvane {
class DynamicIcon2D;
class Icon2D;
class Icon3D;
class PixelIcon2D;
class ResourceIcon2D;
class ResourceIcon3D;
}  // namespace Korvane

// Things to draw. Each kind is made in one of two ways: by its values, and then it holds an icon of the
// library; or over an icon that the library, or a host of both layers, has made, which it only borrows and
// must not outlive. A host may derive from the kinds to keep what it needs to draw them: the same object
// comes back to it.

/// A flat picture with a place, in viewport pixels from the bottom left, and an opacity that may fade.
class ZOVTOOLS_API zovIcon2D : public std::enable_shared_from_this<zovIcon2D> {
 public:
  virtual ~zovIcon2D();
  zovIcon2D(const zovIcon2D&) = delete;
  zovIcon2D& operator=(const zovIcon2D&) = delete;

  qmBox2 bounds() const;
  void set_bounds(const qmBox2& value);
  /// The centre of the bounds.
  qmPoint2 position() const;
  void set_position(const qmPoint2& value);
  void move(const qmVector2& offset);
  /// Full sizes.
  double width() const;
  double height() const;
  void set_size(double width, double height);
  /// 0 to 1, read now.
  double opacity() const;
  void set_opacity(double value);
  bool visible() const;
  void set_visible(bool value);

  /// The icon within, which is of the kind of this one.
  Korvane::Icon2D& korvane() const { return *inner; }

 protected:
  explicit zovIcon2D(std::unique_ptr<Korvane::Icon2D> owned);
  explicit zovIcon2D(Korvane::Icon2D& borrowed);

 private:
  friend class zovRendererP;
  // What was borrowed is about to go.
  void take(std::unique_ptr<Korvane::Icon2D> owned);

  std::unique_ptr<Korvane::Icon2D> own;
  quObserverPtr<Korvane::Icon2D> inner;
};

/// A text or a screenshot, made by the host's renderer; the number is the host's handle.
class ZOVTOOLS_API zovDynamicIcon2D : public zovIcon2D {
 public:
  explicit zovDynamicIcon2D(int id);
  explicit zovDynamicIcon2D(Korvane::DynamicIcon2D& borrowed);
  ~zovDynamicIcon2D() override;

  int id() const;
  /// Upside down.
  bool flip() const;
  void set_flip(bool value);
};

/// A picture of the host's resources.
class ZOVTOOLS_API zovResourceIcon2D : public zovIcon2D {
 public:
  explicit zovResourceIcon2D(zovTextureID id);
  explicit zovResourceIcon2D(Korvane::ResourceIcon2D& borrowed);
  ~zovResourceIcon2D() override;

  zovTextureID texture_resource_id() const;
};

/// An image that is asked and not drawn: the hit map of a menu's regions, shaped by its opacity.
class ZOVTOOLS_API zovPixelIcon2D : public zovIcon2D {
 public:
  /// Copies width * height * 4 bytes, rows from the top. A size below 1, null pixels, or more pixels than
  /// memory holds: no image.
  zovPixelIcon2D(int width, int height, const unsigned char* pixels, zovPixelFormat format);
  explicit zovPixelIcon2D(Korvane::PixelIcon2D& borrowed);
  ~zovPixelIcon2D() override;

  /// Red, green, blue, each 0 to 1, under a viewport pixel, into an array of three. False, with the array
  /// untouched, outside the image, where it is transparent, and for null.
  [[nodiscard]] bool colour(const qmPoint2& point, float rgb[3]) const;
  int image_width() const;
  int image_height() const;
  /// The icon's own; null without an image.
  [[nodiscard]] const unsigned char* image_pixels() const;
  zovPixelFormat pixel_format() const;
};

/// A model at a place of the scene.
class ZOVTOOLS_API zovIcon3D : public std::enable_shared_from_this<zovIcon3D> {
 public:
  virtual ~zovIcon3D();
  zovIcon3D(const zovIcon3D&) = delete;
  zovIcon3D& operator=(const zovIcon3D&) = delete;

  /// A copy; what is changed in it counts when it is set.
  zovMaterialParameters material() const;
  void set_material(const zovMaterialParameters& value);
  /// World units.
  qmPoint3 position() const;
  void set_position(const qmPoint3& value);
  void move(const qmVector3& offset);
  double size() const;
  void set_size(double value);
  bool visible() const;
  void set_visible(bool value);

  /// The icon within, which is of the kind of this one.
  Korvane::Icon3D& korvane() const { return *inner; }

 protected:
  explicit zovIcon3D(std::unique_ptr<Korvane::Icon3D> owned);
  explicit zovIcon3D(Korvane::Icon3D& borrowed);

 private:
  friend class zovRendererP;
  void take(std::unique_ptr<Korvane::Icon3D> owned);

  std::unique_ptr<Korvane::Icon3D> own;
  quObserverPtr<Korvane::Icon3D> inner;
};

/// A model of the host's resources.
class ZOVTOOLS_API zovResourceIcon3D : public zovIcon3D {
 public:
  explicit zovResourceIcon3D(zovModelID id);
  explicit zovResourceIcon3D(Korvane::ResourceIcon3D& borrowed);
  ~zovResourceIcon3D() override;

  zovModelID model_resource_id() const;
};
