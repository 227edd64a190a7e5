#include "zovhost/touch_navigation.h"

#include <cmath>
#include <utility>

#include "korvane/platform.h"
#include "zovhost/window_view_manager.h"

namespace zovhost {

using Korvane::Vector2;
using Type = WindowEvent::Type;

namespace {

constexpr int FRAMES_TO_FOLLOW = 2;  // of a disc: it goes there, and finds its wedge

Vector2 ToVector(const WindowEvent& event) {
  return {static_cast<double>(event.x), static_cast<double>(event.y)};
}

PixelPosition ToPixel(const Vector2& at) {
  return {static_cast<int>(std::floor(at.x)), static_cast<int>(std::floor(at.y))};
}

double GetDistance(PixelPosition a, PixelPosition b) {
  return std::hypot(static_cast<double>(a.x) - b.x, static_cast<double>(a.y) - b.y);
}

}  // namespace

TouchNavigation::TouchNavigation(WindowViewManager& viewManager, Korvane::CameraOperations& ofHub,
                                 Korvane::Renderer& renderer, std::function<void(const WindowEvent&)> toSend)

    : manager(viewManager), hub(ofHub), send(std::move(toSend)), camera(ofHub, renderer) {}

TouchNavigation::~TouchNavigation() = default;

bool TouchNavigation::OnEvent(const WindowEvent& event) {
  switch (event.type) {
    case Type::FingerDown:
      OnDown(event);
      return true;
    case Type::FingerMove:
      OnMove(event);
      return true;
    case Type::FingerUp:
      OnUp(event);
      return true;
    case Type::FingersLost:
      Cancel();
      return true;
    case Type::FocusLost:
      Cancel();
      return false;
    default:
      return false;
  }
}

std::optional<PixelPosition> TouchNavigation::GetPlace() const {
  return IsActive() && !IsPointer() ? std::optional(place) : std::nullopt;
}

// ---- fingers ----

// Beside a finger that is the pointer no other counts.
void TouchNavigation::OnDown(const WindowEvent& event) {
  if (state == State::Pointing || !gestures.Press(event.finger, ToVector(event))) return;
  if (state != State::Idle) return BeginMoving();
  press = pointer = {event.x, event.y};
  offset = {0, 0};
  clicks = CountTap(event);
  const bool isFree = manager.IsFreeAt(event.x, event.y);
  if (event.pen || !isFree) return BeginPointing(event.pen);
  state = State::Waiting;
  place = press;
  camera.SetPivotBall(manager.GetPivotBall());
  camera.Mark();
  restCounts = true;
  rest.Start(LONG_PRESS, false);
}

void TouchNavigation::OnMove(const WindowEvent& event) {
  if (!gestures.Move(event.finger, ToVector(event))) return;
  if (restCounts && HasMoved()) {
    restCounts = false;
    rest.Stop();
  }
  if (state == State::Pointing) {
    pointer = {event.x + offset.x, event.y + offset.y};
    return framesToPress > 0 ? void() : Send(Type::MouseMove, pointer);
  }
  if ((state == State::Waiting || state == State::Resting) && HasMoved()) return BeginMoving();
  if (state == State::Moving) camera.Follow(gestures);
}

void TouchNavigation::OnUp(const WindowEvent& event) {
  if (!gestures.IsDown(event.finger)) return;
  if (state == State::Pointing) OnMove(event);
  gestures.Release(event.finger);
  if (state == State::Waiting) return Tap();
  if (state == State::Pointing) return LiftPointer();
  if (gestures.GetFingerCount() == 0) return Cancel();
  camera.Pause();
  state = State::Resting;
}

bool TouchNavigation::HasMoved() const {
  const TouchMotion motion = gestures.GetMotion();
  return motion.GetTranslation().Length() > REACH * scale;
}

// A walk that begins in a view that stays parallel, and a story that plays, take no fingers.
void TouchNavigation::BeginMoving() {
  rest.Stop();
  restCounts = false;
  lastTap.reset();
  if (!camera.IsMoving() && state != State::Resting && !manager.TakeView()) return Cancel();
  if (state != State::Waiting) place = ToPixel(gestures.GetMotion().to);
  camera.SetRewindHistory(manager.GetRewindHistory());
  camera.SetPivotBall(manager.GetPivotBall());
  state = State::Moving;
  camera.Begin(gestures);
}

void TouchNavigation::Cancel() {
  const bool wasPointing = state == State::Pointing;
  const bool wasActive = IsActive();
  Settle();
  camera.End();
  if (wasPointing) manager.Cancel();
  if (wasActive) SendLeave();
}

void TouchNavigation::Settle() {
  state = State::Idle;
  camera.Unmark();
  framesToPress = 0;
  liftsThen = false;
  restCounts = false;
  rest.Stop();
  gestures.ReleaseAll();
}

// ---- the pointer ----

// A wedge of a disc may be held for as long as one likes.
void TouchNavigation::BeginPointing(bool ofPen) {
  state = State::Pointing;
  const bool ofDisc = manager.IsDiscAt(press.x, press.y);
  restCounts = !ofPen && !ofDisc;
  if (restCounts) rest.Start(LONG_PRESS, false);
  Send(Type::MouseMove, press);
  framesToPress = ofDisc ? FRAMES_TO_FOLLOW : 0;
  if (!ofDisc) return PressPointer();
  hub.RequestApplicationUpdate();
}

void TouchNavigation::PressPointer() {
  Send(Type::MouseDown, press, MouseButton::Left, clicks);
  if (state == State::Pointing && pointer != press) Send(Type::MouseMove, pointer);
}

void TouchNavigation::OnFrame() {
  if (framesToPress == 0) return;
  if (--framesToPress > 0) return hub.RequestApplicationUpdate();
  PressPointer();
  if (std::exchange(liftsThen, false)) LiftPointer();
}

// What was pressed hears of the release when the fingers are forgotten: it may do anything.
void TouchNavigation::LiftPointer() {
  if (framesToPress > 0) {
    liftsThen = true;
    return;
  }
  Settle();
  Send(Type::MouseUp, pointer);
  SendLeave();
}

bool TouchNavigation::OnPointerSet(int x, int y) {
  if (state != State::Pointing) return false;
  offset = {offset.x + x - pointer.x, offset.y + y - pointer.y};
  pointer = {x, y};
  manager.OnPointerSet(x, y);
  return true;
}

void TouchNavigation::Tap() {
  const PixelPosition at = press;
  Settle();
  Send(Type::MouseMove, at);
  if (manager.IsDiscOpen()) return;
  Send(Type::MouseDown, at, MouseButton::Left, clicks);
  Send(Type::MouseUp, at);
  SendLeave();
}

void TouchNavigation::OnLongPress() {
  const PixelPosition at = press;
  const bool wasPointing = state == State::Pointing;
  Settle();
  lastTap.reset();
  if (wasPointing) manager.Cancel();
  Send(Type::MouseMove, at);
  Send(Type::MouseDown, at, MouseButton::Right, 1);
  Send(Type::MouseUp, at, MouseButton::Right);
  SendLeave();
}

int TouchNavigation::CountTap(const WindowEvent& event) {
  const std::uint32_t now = Korvane::GetPlatform().GetTickCount();
  const PixelPosition at = {event.x, event.y};
  const bool isSecond = lastTap.has_value() && now - lastTap->time <= DOUBLE_TAP &&
                        GetDistance(at, lastTap->at) <= DOUBLE_TAP_REACH * scale;
  lastTap = Press{now, at};
  return isSecond ? clicks + 1 : 1;
}

void TouchNavigation::Send(Type type, PixelPosition at, MouseButton button, int count) {
  WindowEvent event;
  event.type = type;
  event.x = at.x;
  event.y = at.y;
  event.button = button;
  event.clicks = count;
  event.ofTouch = true;
  send(event);
}

// A finger that is lifted points at nothing, but a disc stays where it is.
void TouchNavigation::SendLeave() {
  if (!manager.IsDiscOpen()) Send(Type::MouseLeave, {-1, -1});
}

}  // namespace zovhost
