// The host that docs/embedding.md shows.
#include <gtest/gtest.h>

#include "korvane/orbit_tool.h"
#include "korvane/orientor.h"
#include "korvane/pan_tool.h"
#include "korvane/view_manager.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"

namespace {

enum ToolNumber { ORBIT = 1, PAN = 2 };

class DocumentedHost {
 public:
  ~DocumentedHost() { manager.Destroy(); }

  void Open(int viewportWidth, int viewportHeight) {
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetOrientor(&cube);
    manager.AddTool(ORBIT, new Korvane::OrbitTool);  // the manager owns it now
    manager.AddTool(PAN, new Korvane::PanTool);
    manager.Create();
    manager.SetViewportSize(viewportWidth, viewportHeight);
    height = viewportHeight;
    manager.SetActiveTool(ORBIT);
  }

  void OnPress(int x, int yFromTop) {
    if (!manager.OnLeftMouseDown(x, height - yFromTop - 1)) SelectAt(x, yFromTop);
  }
  void OnMove(int x, int yFromTop) { manager.OnMouseMove(x, height - yFromTop - 1); }
  void OnRelease(int x, int yFromTop) { manager.OnLeftMouseUp(x, height - yFromTop - 1); }

  void Paint() {
    hub.PerformOperations();
    // the host draws its scene here
    manager.OnDraw();
  }

  void SelectAt(int /*x*/, int /*y*/) { ++selections; }

  int height = 0;
  int selections = 0;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  RecordingRenderer renderer;
  Korvane::Orientor cube;
  Korvane::ViewManager manager;
};

TEST(DocumentedHost, orbits_by_a_drag) {
  ManualPlatform platform;
  DocumentedHost host;
  host.Open(800, 600);
  host.Paint();
  host.OnPress(400, 300);
  host.OnMove(460, 300);
  platform.Advance(16);
  host.Paint();
  host.OnRelease(460, 300);
  EXPECT_EQ(host.selections, 0);
  EXPECT_GT((host.hub.view.eye - Korvane::Vector3(0, 0, 10)).Length(), 0.1);
  host.manager.SetActiveTool(0);
  host.OnPress(400, 300);
  host.OnRelease(400, 300);
  EXPECT_EQ(host.selections, 1);
}

}  // namespace
