#include "zovhost/page_keys.h"

#include <utility>

#include "zovhost/panel_texts.h"

namespace zovhost {

bool PageKeys::Leave() { return std::exchange(here, false); }

void PageKeys::NoteFirstItem(bool follow) {
  const bool asked = std::exchange(entering, false);
  if (asked || follow) FollowKeys(asked);
}

bool PageKeys::End() {
  here = HasKeys();
  return TakeEscape();
}

void PageKeys::Skip() {
  entering = false;
  if (std::exchange(here, false)) GiveKeysBack();
}

}  // namespace zovhost
