// A host that knows the library by its facade alone: the orientation cube over an empty view. A click on the
// cube turns the camera, a drag orbits it, and every camera is printed.
//   facade_host [--check]   to check: without a display, with clicks of its own
#include <cstdio>
#include <cstring>
#include <memory>

#include "kit_view.h"
#include "zov/zovtools.h"

namespace {

// The camera is the host's. What moves it asks for frames, and hands the new camera over in each.
class Camera : public zovCameraOperations {
 public:
  explicit Camera(KitView& shown) : view(shown), now(get_home_camera()) {}

  void apply_camera_parameters(const zovCameraParameters& camera) override {
    now = camera;
    const qmPoint3 eye = now.eye();
    std::printf("eye (%6.3f, %6.3f, %6.3f)\n", eye.x(), eye.y(), eye.z());
  }
  void query_camera_parameters(zovCameraParameters& camera) const override { camera = now; }
  void request_application_update() override { view.RequestFrame(); }

  qmPoint3 GetEye() const { return now.eye(); }

 private:
  KitView& view;
  zovCameraParameters now;
};

// Any step of the cube may be stood before by a host: here, the button with the house says so.
class Cube : public zovOrientor {
 public:
  void go_to_home_view() override {
    std::puts("home");
    zovOrientor::go_to_home_view();
  }
};

class Listener : public zovOrientorObserver {
 public:
  using zovOrientorObserver::zovOrientorObserver;

  void on_clicked(zovOrientorPart part) override {
    std::printf("clicked %d: %s\n", static_cast<int>(part),
                get_orientor()->get_active_part_name().convert(qmStringUTF8).c_str());
  }
  void on_drag_begin(zovOrientorPart) override { std::puts("a drag begins"); }
  void on_drag_end() override { std::puts("a drag ends"); }
  void on_position_change(zovOrientorLocation) override {}
};

// What the user does with the mouse goes to the cube, which sees its position with y from the top.
void Connect(KitView& view, Camera& camera, zovOrientor& cube) {
  const auto point = [&](int x, int y) {
    cube.on_mouse_move(x, y);
    cube.set_viewport_mouse_position(x, view.GetHeight() - y - 1);
  };
  view.onMove = point;
  view.onPress = [&, point](int x, int y) {
    point(x, y);
    cube.on_left_mouse_down(x, y);
  };
  view.onRelease = [&](int x, int y) { cube.on_left_mouse_up(x, y); };
  view.onResize = [&] {
    camera.get_application_parameters().set_viewport_width(view.GetWidth());
    camera.get_application_parameters().set_viewport_height(view.GetHeight());
    cube.set_viewport_size(view.GetWidth(), view.GetHeight());
  };
  view.onDraw = [&] {
    camera.perform_operations();
    cube.draw();
  };
}

void Rest(KitView& view) {
  while (view.Step()) {
  }
}

// A click into the middle of the cube, and one on a part by its name.
bool Check(KitView& view, const Camera& camera, zovOrientor& cube) {
  Rest(view);
  const qmPoint3 start = camera.GetEye();
  const int x = view.GetWidth() - cube.get_screen_size() / 2;
  const int y = view.GetHeight() - cube.get_screen_size() / 2;
  view.onPress(x, y);
  const bool isOnCube = cube.is_mouse_on_geometry_part();
  view.onRelease(x, y);
  Rest(view);
  const qmPoint3 clicked = camera.GetEye();
  cube.inject_click(zovOrientorPart::Top);
  Rest(view);
  const bool fromAbove = cube.get_closest_geometry_part() == static_cast<int>(zovOrientorPart::Top);
  cube.inject_click(zovOrientorPart::Home);
  Rest(view);
  return isOnCube && fromAbove && start != clicked && camera.GetEye() != clicked && view.ShowsAnything();
}

}  // namespace

int main(int argc, char** argv) {
  const bool check = argc > 1 && std::strcmp(argv[1], "--check") == 0;
  const std::unique_ptr<KitView> view = KitView::Open(check);
  if (view == nullptr || !view->GetRenderer()->create()) return 1;
  const auto camera = std::make_shared<Camera>(*view);
  Cube cube;
  cube.set_camera_operations(camera);
  cube.set_renderer(view->GetRenderer());
  if (!cube.create() || !cube.add_observer(std::make_shared<Listener>(cube))) return 1;

  Connect(*view, *camera, cube);
  view->onResize();
  bool done = true;
  if (check) {
    done = Check(*view, *camera, cube);
  } else {
    view->Run();
  }
  cube.destroy();
  view->GetRenderer()->destroy();
  return done ? 0 : 1;
}
