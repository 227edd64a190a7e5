#include "torture/whole_view.h"

#include <initializer_list>
#include <new>
#include <utility>

#include "disc/helm_disc_parts.h"
#include "korvane/center_tool.h"
#include "korvane/look_at_tool.h"
#include "korvane/look_move_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/walk_tool.h"
#include "korvane/zoom_tool.h"
#include "support/cameras.h"

using namespace Korvane;

namespace torture {

namespace {

constexpr int ITEM_TAG = 1000;
constexpr int ITEM_SIZE = 28;

CameraParameters GetStart() {
  return WithSymmetricFrustum(LookAt({3, 4, 10}, {0, 0, 0}, {0, 1, 0}), 26.565051177078, 20.556045219583);
}

}  // namespace

// ---- the host's side ----

View::View() { Reset(); }

void View::Reset() {
  shown = GetStart();
  ApplicationParameters& parameters = GetApplicationParameters();
  parameters = ApplicationParameters();
  parameters.viewport_width = WholeView::WIDTH;
  parameters.viewport_height = WholeView::HEIGHT;
  parameters.home_camera = shown;
  parameters.global_bound_radius = parameters.scene_bound_radius = 4.0;
  parameters.global_bound_box = parameters.scene_bound_box = Box3(Vector3(-2, -2, -2), Vector3(2, 2, 2));
}

void View::ApplyCameraParameters(const CameraParameters& camera) {
  const HostCode host;
  ++applied;
  broken = broken || !camera.IsFinite();
  shown = camera;
  if (isFilming) film.push_back(camera);
}

OpenDisc::OpenDisc() : record(new BracketedHistory) { GetParts().history.reset(record); }
OpenDisc::~OpenDisc() = default;

// ---- life ----

WholeView::WholeView(void* clock, Pass passTime) : time(clock), pass(passTime) {
  disc.GetParameters().alwaysShowWelcome = true;
  cube.GetParameters().size = OrientorParameters::SIZE_NORMAL;
  cube.GetParameters().draw_compass = true;
  cube.GetParameters().draw_ucs_menu = true;
  ToolbarItem item;
  for (int i = 0; i < 3; ++i) {
    item.SetTag(ITEM_TAG + i);
    item.SetSize(ITEM_SIZE, ITEM_SIZE);
    item.SetIcon(TEXTURE_CUBE_FACES, ITEM_SIZE, ITEM_SIZE);
    strip.GetItems().Append(item);
  }
  for (int button = 0; button < CAM3D_KEY_COUNT; ++button) {
    device.MapKey(button, static_cast<Cam3DControllerKeyID>(button));
  }
  board.SetShotEditor(&editor);
  board.SetUndoQueue(&queue);
  manager.SetKorvane(&hub);
  manager.SetRenderer(&renderer);
  manager.SetHelmDisc(&disc);
  manager.SetOrientor(&cube);
  manager.SetNavigationBar(&bar);
  manager.SetStoryboard(&board);
  manager.SetCam3DController(&device);
  manager.AddToolbar(&strip);
  AddTools();
}

WholeView::~WholeView() {
  manager.Destroy();
  manager.SetHelmDisc(nullptr);
  manager.SetOrientor(nullptr);
}

void WholeView::AddTools() {
  const auto add = [this](int id, std::unique_ptr<Tool> tool) {
    if (!manager.AddTool(id, tool.get())) throw std::bad_alloc();
    (void)tool.release();
  };
  auto rectangle = std::make_unique<RectZoomTool>();
  rectangle->SetFlyToRectangle(true);
  add(RECT_ZOOM, std::move(rectangle));
  add(ORBIT, std::make_unique<OrbitTool>());
  add(PAN, std::make_unique<PanTool>());
  add(ZOOM, std::make_unique<ZoomTool>());
  add(LOOK, std::make_unique<LookTool>());
  add(LOOK_MOVE, std::make_unique<LookMoveTool>());
  add(LOOK_AT, std::make_unique<LookAtTool>());
  add(CENTER, std::make_unique<CenterTool>(nullptr, nullptr, STRING_PIVOT));
  add(WALK, std::make_unique<WalkTool>());
}

bool WholeView::Create() {
  const bool created = manager.Create();
  manager.SetViewportSize(WIDTH, HEIGHT);
  strip.SetVisible(true);
  return created;
}

bool WholeView::Destroy() { return manager.Destroy(); }

void WholeView::LetGo() {
  manager.CancelGesture();
  manager.OnMiddleMouseUp(1, 1);
  for (const KeyID key : {KEY_SHIFT, KEY_CONTROL, KEY_RUN, KEY_UP}) manager.OnKeyUp(key);
  Vector3 still;
  device.On3DControllerInput(still, still);
  board.CancelRecordWalk();
  board.StopPlayback();
  board.StopPlayback();
  board.CloseShotEditor();
  board.SetMode(Storyboard::MODE_EDITING);
  board.ResetToEmptyStory();
  board.SetVisible(false);
  queue.Clear();
  manager.SetActiveTool(0);
  disc.SetActiveDisc(DiscType::FullNavigation);  // closes the welcome screen
  disc.SetActiveDisc(DiscType::None);
  hub.EndShot();
  hub.EndOperation(OPERATION_ALL);
  manager.SetActiveTool(LOOK_AT);  // one that was left in its flight finds it over when it is drawn again
  Frame();
  manager.SetActiveTool(0);
  Move(400, 300);
  Frames(2);
  pass(time, 10000);
  Frames(2);
  disc.GetHistory()->ClearHistory();
}

std::string WholeView::DescribeRemains() const {
  std::string remains;
  const auto note = [&remains](bool stays, const char* what) {
    if (stays) remains.append(remains.empty() ? "" : ", ").append(what);
  };
  note(hub.broken, "a broken camera");
  note(hub.IsOperationActive(OPERATION_ALL), "an operation");
  note(hub.IsShotActive(), "a shot");
  note(disc.record->open, "an open record");
  note(disc.GetHistory()->IsTimelineOpen(), "an open film strip");
  note(board.IsPlayingBack() || board.IsPaused(), "a playback");
  note(board.IsRecordingWalk(), "a recording");
  note(cube.IsDragActive(), "a drag of the cube");
  note(disc.IsDragActive(), "a drag of the disc");
  note(device.IsOperating(), "a motion of the device");
  note(manager.GetPivotBall() == nullptr, "no pivot ball");
  return remains;
}

std::vector<double> WholeView::GetSettings() const {
  const ApplicationParameters& p = hub.GetApplicationParameters();
  std::vector<double> values = {p.fly_turn_multiplier,
                                static_cast<double>(p.fly_dead_zone_radius),
                                p.fly_ramp_up_radius,
                                static_cast<double>(p.fly_planar_motion),
                                p.fly_up_down_sensitivity,
                                static_cast<double>(p.cam3d_controller_mode),
                                p.look_invert_tolerance,
                                p.pan_multiplier,
                                p.look_multiplier,
                                p.orbit_multiplier,
                                p.dolly_multiplier,
                                p.height_multiplier,
                                p.slide_multiplier,
                                p.zoom_sensitivity,
                                p.zoom_min_limit,
                                static_cast<double>(p.zoom_min_limit_motion),
                                p.zoom_min_limit_multiplier,
                                p.zoom_back_distance,
                                static_cast<double>(p.zoom_out_snap_size),
                                static_cast<double>(p.zoom_in_snap_size),
                                static_cast<double>(p.zoom_sense_reversed),
                                static_cast<double>(p.look_invert_vertical_axis),
                                static_cast<double>(p.use_look_at_obstruction_detection),
                                p.scene_scale,
                                static_cast<double>(p.scene_is_world),
                                static_cast<double>(p.preserve_orbit_up_direction),
                                static_cast<double>(p.align_orbit_up_direction),
                                static_cast<double>(p.constrain_orbit_horizontal),
                                static_cast<double>(p.constrain_orbit_vertical),
                                static_cast<double>(p.do_custom_orbit),
                                static_cast<double>(p.do_snap_orbit),
                                static_cast<double>(p.lock_to_selection),
                                static_cast<double>(p.auto_switch_projection),
                                static_cast<double>(p.tool_selection_sensitivity),
                                static_cast<double>(p.use_projection_transitions),
                                static_cast<double>(p.viewport_width),
                                static_cast<double>(p.viewport_height),
                                static_cast<double>(p.mouse_drag),
                                p.GetFlyMoveMultiplier()};
  for (const Vector3* vector :
       {&p.scene_up_direction, &p.scene_front_direction, &p.world_up_direction, &p.world_front_direction,
        &p.custom_orbit_up, &p.custom_orbit_front, &p.home_camera.eye}) {
    values.insert(values.end(), {vector->x, vector->y, vector->z});
  }
  return values;
}

}  // namespace torture
