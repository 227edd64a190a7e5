// The declarations come first and alone: a header of a host that takes them needs nothing else, and the
// classes must agree with them.
#include "korvane/fwd.h"

namespace {

class View {
 public:
  View(Korvane::CameraParameters& value, Korvane::KeyID keyValue, Korvane::DiscType discValue)
      : camera(&value), key(keyValue), disc(discValue) {}

  double GetEyeHeight() const;
  bool IsRunning() const;
  bool HasDisc() const;

 private:
  Korvane::CameraParameters* camera;
  Korvane::KeyID key;
  Korvane::DiscType disc;
};

}  // namespace

#include <gtest/gtest.h>

#include "korvane/korvane.h"

namespace {

double View::GetEyeHeight() const { return camera->eye.y; }
bool View::IsRunning() const { return key == Korvane::KEY_RUN; }
bool View::HasDisc() const { return disc != Korvane::DiscType::None; }

TEST(ForwardDeclarations, suffice_for_a_header_and_agree_with_the_classes) {
  Korvane::CameraParameters camera;
  camera.eye = {1, 2, 3};
  const View view(camera, Korvane::KEY_RUN, Korvane::DiscType::None);
  EXPECT_EQ(view.GetEyeHeight(), 2.0);
  EXPECT_TRUE(view.IsRunning());
  EXPECT_FALSE(view.HasDisc());
}

}  // namespace
