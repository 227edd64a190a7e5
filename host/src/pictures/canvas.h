#pragma once

#include <cairo.h>

#include <memory>

#include "zovhost/image.h"

namespace zovhost {

struct CairoDeleter {
  void operator()(cairo_t* context) const { cairo_destroy(context); }
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};

/// A transparent picture in memory to draw on with Cairo.
class Canvas {
 public:
  /// Sizes in pixels. IsValid is false for a size that Cairo refuses.
  Canvas(int width, int height);

  bool IsValid() const;
  cairo_t* GetContext() const { return context.get(); }
  /// What has been drawn, with straight alpha.
  Image MakeImage() const;

 private:
  std::unique_ptr<cairo_surface_t, CairoDeleter> surface;
  std::unique_ptr<cairo_t, CairoDeleter> context;
};

/// Adds a rectangle with rounded corners to the path.
void AddRoundedRectangle(cairo_t* context, double x, double y, double width, double height, double radius);

}  // namespace zovhost
