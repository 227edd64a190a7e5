#pragma once

#include "korvane/navigation_bar.h"
#include "tour/tour_script.h"

namespace zovview {

// The moves of a tour, as its tables write them.

constexpr TourMove MakeCommand(const char* caption, double seconds, std::string_view command) {
  TourMove move = {caption, TourMove::Kind::Command, seconds};
  move.command = command;
  return move;
}

constexpr TourMove MakeCubeClick(const char* caption, double seconds, int part) {
  TourMove move = {caption, TourMove::Kind::Click, seconds, 0.0, 0.0, 0.0, 0.0};
  move.cubePart = part;
  return move;
}
constexpr TourMove MakeOverlayClick(const char* caption, double seconds, int part) {
  TourMove move = {caption, TourMove::Kind::Click, seconds, 0.0, 0.0, 0.0, 0.0};
  move.overlayPart = part;
  return move;
}
constexpr TourMove MakeCubeDrag(const char* caption, double seconds, int part, double toX, double toY) {
  TourMove move = {caption, TourMove::Kind::Drag, seconds, 0.0, 0.0, toX, toY};
  move.cubePart = part;
  return move;
}

constexpr TourMove MakeWedgeHover(const char* caption, double seconds, Korvane::HelmDiscZone zone) {
  TourMove move = {caption, TourMove::Kind::Hover, seconds, 0.0, 0.0, 0.0, 0.0};
  move.wedge = static_cast<int>(zone);
  return move;
}
constexpr TourMove MakeWelcome(const char* caption, TourMove::Kind kind, double seconds, int part) {
  TourMove move = {caption, kind, seconds, 0.0, 0.0, 0.0, 0.0};
  move.welcomePart = part;
  return move;
}
constexpr TourMove MakeWedgeClick(const char* caption, double seconds, Korvane::HelmDiscZone zone) {
  TourMove move = MakeWedgeHover(caption, seconds, zone);
  move.kind = TourMove::Kind::Click;
  return move;
}
constexpr TourMove MakeWedgeDrag(const char* caption, double seconds, Korvane::HelmDiscZone zone, double toX,
                                 double toY) {
  TourMove move = {caption, TourMove::Kind::Drag, seconds, 0.0, 0.0, toX, toY};
  move.wedge = static_cast<int>(zone);
  move.arrival = 0.9;
  return move;
}

constexpr TourMove MakeBarMove(const char* caption, TourMove::Kind kind, double seconds, int tag) {
  TourMove move = {caption, kind, seconds, 0.0, 0.0, 0.0, 0.0};
  move.barItem = tag;
  return move;
}
constexpr TourMove MakeArrowClick(const char* caption, double seconds, int tag) {
  TourMove move = MakeBarMove(caption, TourMove::Kind::Click, seconds, tag);
  move.onArrow = true;
  return move;
}
constexpr TourMove MakeBarDrag(const char* caption, double seconds, double toX, double toY) {
  TourMove move = MakeBarMove(caption, TourMove::Kind::Drag, seconds, Korvane::NavigationBar::TAG_GRIP);
  move.toX = toX;
  move.toY = toY;
  return move;
}

constexpr TourMove MakeDeviceMove(const char* caption, double seconds, const zovhost::SixAxes& axes) {
  TourMove move = {caption, TourMove::Kind::Device, seconds};
  move.axes = axes;
  return move;
}

constexpr TourMove MakeStoryMove(const char* caption, TourMove::Kind kind, double seconds, StoryPart part,
                                 int index = 0) {
  TourMove move = {caption, kind, seconds, 0.0, 0.0, 0.0, 0.0};
  move.storyPart = part;
  move.storyIndex = index;
  return move;
}
constexpr TourMove MakeStoryDrag(const char* caption, double seconds, StoryPart part, int index, double toX) {
  TourMove move = MakeStoryMove(caption, TourMove::Kind::Drag, seconds, part, index);
  move.toX = toX;
  move.arrival = 0.8;
  return move;
}

inline constexpr int HOME_ITEM = 201;  // of the navigation bar, the viewer's own

}  // namespace zovview
