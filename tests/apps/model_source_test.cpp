#include "files/model_source.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "../host/scene_files.h"

namespace {

TEST(ModelSource, what_is_left_out_of_a_file_is_told_a_line_each) {
  const TemporaryFolder folder;
  folder.Write("outside.mtl", "newmtl secret\n");
  std::filesystem::create_directories(folder.path / "own");
  const std::string names = "mtllib ../outside.mtl\nmtllib ../../../../../../../../../etc/passwd\n";
  const std::filesystem::path file = folder.Write("own/slab.obj", MakeObjSlab(names));
  testing::internal::CaptureStderr();
  const zovview::LoadedModel model = zovview::LoadModel({file}, {});
  const std::string told = testing::internal::GetCapturedStderr();
  ASSERT_NE(model.scene, nullptr) << model.error;
  EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 2) << told;
  EXPECT_EQ(told.find("zovview: slab.obj: "), 0u) << told;
  EXPECT_NE(told.find("outside.mtl: it lies outside of the model's folder"), std::string::npos) << told;
}

}  // namespace
