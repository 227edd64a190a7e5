// The focus of a view: the cube, its buttons, its compass.
#include <algorithm>
#include <array>
#include <utility>

#include "focus/cube_steps.h"
#include "focus/focus_things.h"
#include "korvane/application_parameters.h"
#include "korvane/camera_operations.h"
#include "korvane/helm_disc.h"
#include "korvane/orientor_observer.h"
#include "korvane/renderer.h"
#include "zovhost/host_texts.h"
#include "zovhost/phrases.h"
#include "zovhost/view_focus.h"

namespace zovhost {

using Korvane::Box2;
using Korvane::Orientor;
using Korvane::OrientorObserver;
using Korvane::Vector2;
using Korvane::Vector3;
using Type = WindowEvent::Type;

namespace {

// Halves of the frames: of the size of the cube for its faces, edges and corners, in points for others.
constexpr std::array<double, 3> PART_SIZES = {0.16, 0.1, 0.08};
constexpr double BUTTON_SIZE = 11.0;
constexpr double FAR = 1e6;  // pixels

struct CubeButton {
  Orientor::OverlayPart part;
  OrientorObserver::OrientorPart number;
  FocusRole role;
  int text;          // of the renderer; 0: none
  const char* name;  // a phrase, where there is none
  bool isArrow;
};
constexpr std::array<CubeButton, 6> CUBE_BUTTONS = {{
    {Orientor::OVERLAY_HOME, OrientorObserver::PART_HOME, FocusRole::Button, Korvane::STRING_CUBE_HOME, "",
     false},
    {Orientor::OVERLAY_ROTATE_COUNTER_CLOCKWISE, OrientorObserver::PART_ROTATE_COUNTER_CLOCKWISE,
     FocusRole::Button, 0, "Turn counterclockwise", true},
    {Orientor::OVERLAY_ROTATE_CLOCKWISE, OrientorObserver::PART_ROTATE_CLOCKWISE, FocusRole::Button, 0,
     "Turn clockwise", true},
    {Orientor::OVERLAY_LOCK, OrientorObserver::PART_LOCK, FocusRole::ToggleButton, Korvane::STRING_CUBE_LOCK,
     "", false},
    {Orientor::OVERLAY_CONTEXT_MENU, OrientorObserver::PART_CONTEXT_MENU, FocusRole::MenuButton,
     Korvane::STRING_CUBE_MENU, "", false},
    {Orientor::OVERLAY_UCS_MENU, OrientorObserver::PART_NONE, FocusRole::MenuButton,
     Korvane::STRING_UCS_DEFAULT, "", false},
}};

// The letters of the compass, in the order of their parts.
constexpr std::array<int, 4> LETTERS = {HOST_TEXT_WEST, HOST_TEXT_EAST, HOST_TEXT_NORTH, HOST_TEXT_SOUTH};
constexpr int ARROWS = 100;  // the numbers of the arrows to the faces, after those of the letters
constexpr double LETTER_SIZE = 9.0;
constexpr double ARROW_SIZE = 7.0;
constexpr double DEEPER = 0.91;  // the arrows lie as deep as the middle of the cube, its edges at the front

double GetPartSize(int part) {
  if (part < Orientor::FACE_COUNT) return PART_SIZES[0];
  return part < OrientorObserver::PART_BACK_RIGHT_BOTTOM ? PART_SIZES[1] : PART_SIZES[2];
}

Vector2 GetMiddleInSight(const std::vector<FocusThing>& things) {
  Vector2 least(FAR, FAR);
  Vector2 most(-FAR, -FAR);
  for (const FocusThing& thing : things) {
    if (!thing.inSight) continue;
    const Vector2 place = thing.bounds.center;
    least = {std::min(least.x, place.x), std::min(least.y, place.y)};
    most = {std::max(most.x, place.x), std::max(most.y, place.y)};
  }
  return (least + most) / 2.0;
}

}  // namespace

// ---- its parts ----

// By the faces that meet there.
std::string ViewFocus::NamePart(int part) const {
  static constexpr std::array<int, 3> ORDER = {3, 1, 5};  // top, front and left, each after its opposite
  std::string name;
  const Vector3 direction = widgets.cube.GetGeometryPartDirection(part);
  for (const int pair : ORDER) {
    for (const int face : {pair, pair - 1}) {
      if (!(widgets.cube.GetGeometryPartDirection(face).Dot(direction) > 0.0)) continue;
      const std::string word = LoadText(HOST_TEXT_BACK + face);
      name = name.empty() ? word : GetPhrases().SayPlain("{}, {}", {name, word});
    }
  }
  return name;
}

FocusThing ViewFocus::MakePart(int part) {
  PressableOrientor& cube = widgets.cube;
  FocusThing thing;
  thing.id = part;
  thing.group = GetPhrases().SayPlain("Cube");
  thing.name = NamePart(part);
  thing.on = part == cube.GetClosestGeometryPart() && cube.ViewOnPartAxis();
  PixelPosition at;
  thing.inSight = cube.GetPartPosition(part, at.x, at.y);
  thing.bounds = MakeBox(at, GetPartSize(part) * cube.GetScreenSize());
  thing.press = [this, part](bool pressed) {
    if (pressed) widgets.cube.Press(part);
  };
  thing.key = OnMenuKey([this] { widgets.cube.Press(OrientorObserver::PART_CONTEXT_MENU); });
  return thing;
}

// Where that on the other side stands, mirrored at the middle of those that show.
void ViewFocus::PlaceHidden(std::vector<FocusThing>& parts) const {
  const Vector2 middle = GetMiddleInSight(parts);
  for (FocusThing& thing : parts) {
    if (thing.inSight) continue;
    const Vector3 direction = widgets.cube.GetGeometryPartDirection(thing.id);
    const int opposite = widgets.cube.GetGeometryPartIndex(-direction);
    const FocusThing& other = parts[static_cast<std::size_t>(opposite)];
    thing.bounds.center = other.inSight ? middle * 2.0 - other.bounds.center : middle;
  }
}

// The part that the view looks at comes first.
std::vector<FocusThing> ViewFocus::ListCube() {
  std::vector<FocusThing> things;
  if (!widgets.cube.GetParameters().visible) return things;
  for (int part = 0; part < Orientor::GEOMETRY_PART_COUNT; ++part) things.push_back(MakePart(part));
  PlaceHidden(things);
  const int closest = widgets.cube.GetClosestGeometryPart();
  if (closest > 0) std::swap(things[0], things[static_cast<std::size_t>(closest)]);
  return things;
}

std::optional<int> ViewFocus::SteerCube(int part, FocusStep step) const {
  const Korvane::ApplicationParameters& parameters = widgets.hub.GetApplicationParameters();
  Korvane::CameraParameters camera;
  widgets.hub.QueryCameraParameters(camera);
  const Vector3 front = parameters.scene_front_direction.Normalized();
  const Vector3 top = parameters.scene_up_direction.Normalized();
  const CubeAxes axes{front, top, front.Cross(top)};
  const Vector3 direction = widgets.cube.GetGeometryPartDirection(part);
  const int next = widgets.cube.GetGeometryPartIndex(StepOnCube(direction, step, axes, camera));
  return next >= 0 ? std::optional(next) : std::nullopt;
}

// ---- its buttons ----

std::vector<FocusThing> ViewFocus::ListCubeButtons() {
  PressableOrientor& cube = widgets.cube;
  std::vector<FocusThing> things;
  if (!cube.GetParameters().visible) return things;
  for (const CubeButton& button : CUBE_BUTTONS) {
    PixelPosition at;
    if (button.isArrow && !cube.ViewOnPrincipalAxis()) continue;
    if (!cube.GetOverlayPartPosition(button.part, at.x, at.y)) continue;
    FocusThing thing;
    thing.id = button.part;
    thing.group = GetPhrases().SayPlain("Cube");
    thing.name = button.text != 0 ? LoadText(button.text) : GetPhrases().SayPlain(button.name);
    thing.role = button.role;
    thing.on =
        button.part == Orientor::OVERLAY_LOCK && widgets.hub.GetApplicationParameters().lock_to_selection;
    thing.bounds = MakeBox(at, BUTTON_SIZE * scale);
    thing.press = [this, number = button.number](bool pressed) {
      if (pressed) widgets.cube.Press(number);
    };
    if (button.number == OrientorObserver::PART_NONE) AddClick(thing, at, false);
    thing.key = OnMenuKey([this] { widgets.cube.Press(OrientorObserver::PART_CONTEXT_MENU); });
    things.push_back(std::move(thing));
  }
  AddLetters(things);
  AddArrows(things);
  return things;
}

FocusThing ViewFocus::MakeCubeThing(int id, const char* kind, int text) {
  FocusThing thing;
  thing.id = id;
  thing.group = GetPhrases().SayPlain("Cube");
  thing.name = GetPhrases().SayPlain("{}, {}", {GetPhrases().SayPlain(kind), LoadText(text)});
  thing.key = OnMenuKey([this] { widgets.cube.Press(OrientorObserver::PART_CONTEXT_MENU); });
  return thing;
}

// What is behind the cube stands across from the letter on the other side.
void ViewFocus::AddLetters(std::vector<FocusThing>& things) {
  PressableOrientor& cube = widgets.cube;
  if (!cube.GetParameters().draw_compass) return;
  const Vector2 middle = FindCubeMiddle();
  std::array<std::optional<Vector2>, LETTERS.size()> places;
  for (std::size_t i = 0; i < LETTERS.size(); ++i) {
    PixelPosition at;
    const int part = Orientor::COMPASS_LETTERS_BEGIN + static_cast<int>(i);
    if (cube.GetPartPosition(part, at.x, at.y)) places[i] = Vector2(at.x + 0.5, at.y + 0.5);
  }
  for (std::size_t i = 0; i < LETTERS.size(); ++i) {
    const auto number = static_cast<int>(i);
    const std::optional<Vector2>& across = places[i ^ 1U];
    FocusThing thing = MakeCubeThing(Orientor::COMPASS_LETTERS_BEGIN + number, "Compass", LETTERS[i]);
    thing.inSight = places[i].has_value();
    const Vector2 behind = across.has_value() ? middle * 2.0 - *across : middle;
    thing.bounds = Box2(places[i].value_or(behind), Vector2(LETTER_SIZE * scale));
    thing.press = [this, number](bool pressed) {
      if (pressed) widgets.cube.Press(OrientorObserver::PART_COMPASS_FRONT + number);
    };
    things.push_back(std::move(thing));
  }
}

// Beside a face that the view looks along: beyond the edges of it.
void ViewFocus::AddArrows(std::vector<FocusThing>& things) {
  PressableOrientor& cube = widgets.cube;
  if (!cube.ViewOnPrincipalAxis()) return;
  const Korvane::OrientorParameters& shape = cube.GetParameters();
  const double half = shape.face_size + shape.gap_size + shape.edge_size;
  const double reach = (half + shape.arrow_offset + 0.5 * shape.arrow_size) / (half - 0.5 * shape.edge_size);
  const Vector3 looked = cube.GetClosestViewDirection();
  const Vector2 middle = FindCubeMiddle();
  for (int face = 0; face < Orientor::FACE_COUNT; ++face) {
    const Vector3 direction = cube.GetGeometryPartDirection(face);
    PixelPosition edge;
    const bool isBeside = direction.Dot(looked) == 0.0;
    if (!isBeside || !cube.GetPartPosition(cube.GetGeometryPartIndex(looked + direction), edge.x, edge.y))
      continue;
    FocusThing thing = MakeCubeThing(ARROWS + face, "Arrow", HOST_TEXT_BACK + face);
    const Vector2 way = Vector2(edge.x + 0.5, edge.y + 0.5) - middle;
    thing.bounds = Box2(middle + way * (reach * DEEPER), Vector2(ARROW_SIZE * scale));
    thing.press = [this, face](bool pressed) {
      if (pressed) widgets.cube.Press(face);
    };
    things.push_back(std::move(thing));
  }
}

Vector2 ViewFocus::FindCubeMiddle() {
  std::vector<FocusThing> parts;
  for (int part = 0; part < Orientor::GEOMETRY_PART_COUNT; ++part) {
    FocusThing& thing = parts.emplace_back();
    PixelPosition at;
    thing.inSight = widgets.cube.GetPartPosition(part, at.x, at.y);
    thing.bounds = MakeBox(at, 0.0);
  }
  return GetMiddleInSight(parts);
}

// They show under a pointer otherwise.
void ViewFocus::ShowCubeButtons() {
  const bool wanted = focus.GetGroup() == CUBE_BUTTONS_GROUP;
  if (wanted == overlayBefore.has_value()) return;
  bool& shown = widgets.cube.GetParameters().overlay_always_on;
  if (wanted) overlayBefore = shown;
  shown = wanted || *overlayBefore;
  if (!wanted) overlayBefore.reset();
  widgets.hub.RequestApplicationUpdate();
}

// The arrows show where the pointer is near; a disc that is open would come along with it. A mouse that moves
// has the pointer from then on, and it is not taken from the view when the focus goes.
void ViewFocus::PointAtButton(const FocusThing* thing) {
  const bool isButton = thing != nullptr && thing->inSight && focus.GetGroup() == CUBE_BUTTONS_GROUP;
  const bool wanted = isButton && widgets.disc.GetActiveDisc() == Korvane::DiscType::None;
  const std::optional<PixelPosition> place = wanted ? std::optional(GetMiddle(thing->bounds)) : std::nullopt;
  if (std::exchange(pointedAt, place) == place) return;
  const bool wasPointing = std::exchange(pointing, wanted);
  if (!wanted && !wasPointing) return;
  Send(wanted ? Type::MouseMove : Type::MouseLeave, place.value_or(PixelPosition{-1, -1}));
  widgets.hub.RequestApplicationUpdate();
}

}  // namespace zovhost
