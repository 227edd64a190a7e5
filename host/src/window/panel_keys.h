#pragma once

#include <SDL.h>

#include <deque>
#include <functional>
#include <utility>

struct ImGuiContext;

namespace zovhost {

struct PanelState;

/// The keys of panels: which of them are theirs, what is typed, and the frames in which the library that
/// draws them sees a key go down and up. Of the context that is the present one.
class PanelKeys {
 public:
  /// `onSettle` asks for the frames in which what has happened shows.
  PanelKeys(ImGuiContext& ofContext, PanelState& ofPanels, std::function<void()> onSettle)
      : context(ofContext), panels(ofPanels), settle(std::move(onSettle)) {}

  /// True: no key of others.
  bool OnEvent(const SDL_Event& event);
  /// Before a frame of the library begins.
  void BeginFrame();
  /// Before what is drawn is put together.
  void SettleMark();
  /// After a frame.
  void EndFrame();
  /// A text has the keys.
  bool IsTyping() const;
  /// The panels have the keys no more.
  void Leave();

 private:
  void Type();
  SDL_Event TurnArrow(SDL_Event event);
  void Lead();
  bool DoesTabWait() const;
  void ComeAgain();
  bool IsStep(const SDL_Event& event) const;
  void LeaveText();
  bool IsToPress() const;
  bool LeadsOut(const SDL_KeyboardEvent& event) const;
  bool LeadsThroughPanels(const SDL_KeyboardEvent& event) const;
  bool Queue(const SDL_Event& event);

  ImGuiContext& context;
  PanelState& panels;
  const std::function<void()> settle;
  bool ledThrough = false;      // keys have gone through the popup that is open
  bool hadKeys = false;         // a panel, in the last frame
  bool wasTyping = false;       // in the last frame
  bool arrowsTurned = false;    // of a text that is read from the right
  std::deque<SDL_Event> typed;  // for the text that is active
  std::deque<SDL_Event> keys;   // that lead through panels, one a frame: the library looks at what is down
};

}  // namespace zovhost
