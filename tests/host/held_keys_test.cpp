// Keys of the window as the library's.
#include "zovhost/held_keys.h"

#include <SDL_keycode.h>
#include <gtest/gtest.h>

#include <optional>

namespace {

using Korvane::KeyID;
using zovhost::WindowEvent;
using Type = WindowEvent::Type;

class HeldKeysTest : public testing::Test {
 protected:
  std::optional<KeyID> Send(Type type, SDL_Keycode key) {
    WindowEvent event;
    event.type = type;
    event.key = key;
    return keys.OnKey(event);
  }

  zovhost::HeldKeys keys;
};

TEST_F(HeldKeysTest, a_key_is_pressed_and_released_once) {
  EXPECT_EQ(Send(Type::KeyDown, SDLK_UP), Korvane::KEY_UP);
  EXPECT_EQ(Send(Type::KeyDown, SDLK_UP), std::nullopt);  // as the system repeats it
  EXPECT_EQ(Send(Type::KeyUp, SDLK_UP), Korvane::KEY_UP);
  EXPECT_EQ(Send(Type::KeyUp, SDLK_UP), std::nullopt);
}

TEST_F(HeldKeysTest, of_two_keys_for_one_the_first_presses_and_the_last_releases) {
  EXPECT_EQ(Send(Type::KeyDown, SDLK_LSHIFT), Korvane::KEY_SHIFT);
  EXPECT_EQ(Send(Type::KeyDown, SDLK_RSHIFT), std::nullopt);
  EXPECT_EQ(Send(Type::KeyUp, SDLK_LSHIFT), std::nullopt);
  EXPECT_EQ(Send(Type::KeyUp, SDLK_RSHIFT), Korvane::KEY_SHIFT);
}

TEST_F(HeldKeysTest, a_key_that_the_library_does_not_know_is_none) {
  EXPECT_EQ(Send(Type::KeyDown, SDLK_q), std::nullopt);
  EXPECT_EQ(Send(Type::KeyUp, SDLK_q), std::nullopt);
}

TEST_F(HeldKeysTest, letting_go_releases_each_of_the_librarys_keys_once) {
  Send(Type::KeyDown, SDLK_LSHIFT);
  Send(Type::KeyDown, SDLK_RSHIFT);
  Send(Type::KeyDown, SDLK_x);
  EXPECT_EQ(keys.ReleaseNext(), Korvane::KEY_SHIFT);
  EXPECT_EQ(keys.ReleaseNext(), Korvane::KEY_RUN);
  EXPECT_EQ(keys.ReleaseNext(), std::nullopt);
  EXPECT_EQ(Send(Type::KeyUp, SDLK_x), std::nullopt);
}

}  // namespace
