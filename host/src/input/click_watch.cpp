#include "zovhost/click_watch.h"

#include <cstdlib>
#include <utility>

namespace zovhost {

// Another button during the press makes something else of it.
void ClickWatch::OnMouseDown(const WindowEvent& event) {
  clicks = event.button == watched ? event.clicks : 0;
  x = event.x;
  y = event.y;
}

void ClickWatch::OnMouseMove(const WindowEvent& event) {
  if (std::abs(event.x - x) > reach || std::abs(event.y - y) > reach) Cancel();
}

int ClickWatch::OnMouseUp(const WindowEvent& event) {
  if (event.button != watched) return 0;
  OnMouseMove(event);
  return std::exchange(clicks, 0);
}

}  // namespace zovhost
