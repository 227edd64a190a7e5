// The mouse and the keys.
#include <memory>

#include "story/panel_hand.h"
#include "story/storyboard_parts.h"

namespace Korvane {

namespace {

constexpr int KEY_SCROLL = 5;  // pixels

}  // namespace

// ---- the mouse ----

bool Storyboard::OnMouseMove(int x, int y) {
  const Staying now(parts);
  if (const std::shared_ptr<WalkRecorder> recorder = now->walk.recorder) return recorder->OnMouseMove(x, y);
  StoryboardParts::Mouse& mouse = now->mouse;
  const int before = mouse.x;
  now->MoveMouse(x, y);
  const int by = SubtractPixels(mouse.x, before);
  now->menuMarked = false;
  if (!now->life.visible) return false;
  mouse.dragging = mouse.leftDown && (mouse.dragging || IsDrag(mouse.downX, mouse.x));
  if (mouse.dragging) PanelHand(*this, parts).Drag(by);
  Update();
  return mouse.leftDown;
}

bool Storyboard::OnLeftMouseDown(int x, int y) {
  const Staying now(parts);
  if (const std::shared_ptr<WalkRecorder> recorder = now->walk.recorder) {
    return recorder->OnLeftMouseDown(x, y);
  }
  if (!now->life.visible) return false;
  StoryboardParts::Mouse& mouse = now->mouse;
  now->MoveMouse(x, y);
  now->Refresh();
  if (!mouse.inRegion || mouse.leftDown) return false;
  now->menuMarked = false;
  mouse.leftDown = true;
  mouse.downX = mouse.x;
  mouse.dragging = false;
  mouse.dragInStrip = mouse.y > now->room.y + PanelLayout::STRIP_TOP;
  if (!mouse.controlDown) PanelHand(*this, parts).Press();
  now->RequestUpdate();
  return true;
}

bool Storyboard::OnLeftMouseUp(int x, int y) {
  const Staying now(parts);
  if (const std::shared_ptr<WalkRecorder> recorder = now->walk.recorder) return recorder->OnLeftMouseUp(x, y);
  StoryboardParts::Mouse& mouse = now->mouse;
  if (!mouse.leftDown) return false;
  now->MoveMouse(x, y);
  now->Refresh();
  const bool dragged = mouse.dragging;
  mouse.leftDown = mouse.dragging = mouse.dragInStrip = false;
  if (now->grab.IsDragging()) {
    PanelHand(*this, parts).Land();
  } else if (!dragged) {
    now->grab.Clear();
    PanelHand(*this, parts).Click();
  }
  if (!now) return true;
  now->grab.Clear();
  const std::size_t count = now->story != nullptr ? now->story->GetSequenceCount() : 0;
  now->slides.scrollOffset = LimitScrollOffset(now->room, now->slides.scrollOffset, count);
  Update();
  return true;
}

bool Storyboard::OnRightMouseDown(int x, int y) {
  const Staying now(parts);
  if (!now->life.visible || !now->IsEditing() || IsRecordingWalk()) return false;
  now->MoveMouse(x, y);
  now->Refresh();
  const ShotDisplayElement* const slide = now->slides.GetHighlightedShot();
  return slide != nullptr && slide->shot != nullptr;
}

bool Storyboard::OpenMenu() {
  const Staying now(parts);
  Renderer* const renderer = now->partners.renderer.Get();
  const bool refused = !now->life.visible || !now->IsEditing() || IsRecordingWalk() || now->mouse.leftDown;
  if (refused || renderer == nullptr) return false;
  now->Refresh();
  const ShotDisplayElement* const slide = now->slides.GetHighlightedShot();
  if (slide == nullptr || slide->shot == nullptr) return false;
  now->menuShot.Set(slide->shot);
  now->menuMarked = true;
  Update();
  if (Renderer* const target = now->partners.renderer.Get()) target->OpenMenu(MENU_STORYBOARD);
  return true;
}

// ---- keys ----

/// What each key does on a panel that shows; whether it was used.
struct StoryboardKeys {
  using Action = bool (*)(Storyboard& board, StoryboardParts& parts);

  static bool HoldControl(Storyboard& /*board*/, StoryboardParts& parts) {
    parts.mouse.controlDown = true;
    return false;
  }
  template <int BY>
  static bool Scroll(Storyboard& /*board*/, StoryboardParts& parts) {
    parts.slides.scrollOffset = AddPixels(parts.slides.scrollOffset, BY);
    parts.Refresh();
    parts.RequestUpdate();
    return true;
  }
  static bool Delete(Storyboard& board, StoryboardParts& parts) {
    const Storyboard::ShotDisplayElement* const slide = parts.slides.GetHighlightedShot();
    return slide != nullptr && board.DeleteShot(slide->shot);
  }
  static bool Stop(Storyboard& board, StoryboardParts& /*parts*/) { return board.StopPlayback(); }
  static bool PlayOrPause(Storyboard& board, StoryboardParts& /*parts*/) {
    if (board.IsPlayingBack()) return board.PausePlayback();
    if (board.IsPaused()) return board.ResumePlayback();
    return board.PlaybackStory(board.GetStory());
  }
};

bool Storyboard::OnKeyDown(KeyID key) {
  struct Row {
    KeyID key;
    StoryboardKeys::Action action;
  };
  static constexpr Row ACTIONS[] = {
      {KEY_CONTROL, StoryboardKeys::HoldControl},
      {KEY_RIGHT, StoryboardKeys::Scroll<KEY_SCROLL>},
      {KEY_LEFT, StoryboardKeys::Scroll<-KEY_SCROLL>},
      {KEY_DELETE, StoryboardKeys::Delete},
      {KEY_ESCAPE, StoryboardKeys::Stop},
      {KEY_SPACE, StoryboardKeys::PlayOrPause},
  };
  const Staying now(parts);
  if (const std::shared_ptr<WalkRecorder> recorder = now->walk.recorder) return recorder->OnKeyDown(key);
  if (!now->life.visible) return false;
  for (const Row& row : ACTIONS) {
    if (row.key == key) return row.action(*this, *parts);
  }
  return false;
}

bool Storyboard::OnKeyUp(KeyID key) {
  const Staying now(parts);
  if (const std::shared_ptr<WalkRecorder> recorder = now->walk.recorder) return recorder->OnKeyUp(key);
  now->mouse.controlDown = false;
  return false;
}

}  // namespace Korvane
