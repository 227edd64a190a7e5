// The renderer without a context, and a picture of the kit.
#include "zovhost/gl_renderer.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/image.h"
#include "zovhost/resource_pack.h"

int main() {
  zovhost::GLRenderer renderer;
  zovhost::GLSceneView view;
  zovhost::Image picture;
  const bool drawn = renderer.GetResources().RenderPicture(Korvane::TEXTURE_CUBE_FACES, 1.0, picture);
  return drawn && picture.width > 0 && !renderer.LoadStringResource(Korvane::STRING_PIVOT).empty() ? 0 : 1;
}
