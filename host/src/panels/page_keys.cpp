#include "zovhost/page_keys.h"

#include <utility>

#include "zovhost/panel_texts.h"

namespace zovhost {

bool PageKeys::Leave() { return std::exchange(here, false); }

void PageKeys::NoteFirstItem(bool follow) {
  if (std::exchange(entering, false) || follow) FollowKeys();
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
