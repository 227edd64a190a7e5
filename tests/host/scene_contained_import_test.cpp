#include <chrono>
#include <thread>

#include "../../host/src/scene/contained_import.h"
#include "host/scene_files.h"

namespace {

using namespace std::chrono_literals;

class ContainedImport : public testing::Test {
 protected:
  TemporaryFolder folder;
  zovhost::SceneData data;
  std::string error;
};

// Each node has the next one twice for a child.
std::string MakeEndlessTree() {
  std::string nodes = "[";
  for (int i = 1; i < 40; ++i)
    nodes += R"({"children":[)" + std::to_string(i) + "," + std::to_string(i) + "]},";
  return MakeGltfSlab(nodes + R"({"mesh":0}])");
}

TEST_F(ContainedImport, gives_up_on_a_file_that_takes_for_ever) {
  const std::filesystem::path path = folder.Write("endless.gltf", MakeEndlessTree());
  int beats = 0;  // a window serves its events in each
  const zovhost::Progress progress = [&](double, const char*) { return ++beats > 0; };
  EXPECT_FALSE(zovhost::ImportContained(path, {60s, 300ms, 8e9}, progress, data, error));
  EXPECT_NE(error.find("longer than 1 s"), std::string::npos) << error;
  EXPECT_GE(beats, 1);
}

TEST_F(ContainedImport, gives_up_on_a_file_that_keeps_the_processor_for_nothing) {
  const std::filesystem::path path = folder.Write("endless.gltf", MakeEndlessTree());
  EXPECT_FALSE(zovhost::ImportContained(path, {200ms, 60s, 8e9}, {}, data, error));
  EXPECT_NE(error.find("no further for 1 s"), std::string::npos) << error;
}

// A window draws a frame in each report.
TEST_F(ContainedImport, is_not_held_up_by_its_own_reports) {
  std::string objects;
  constexpr int count = 500;
  for (int i = 0; i < count; ++i) {
    objects += "o part" + std::to_string(i) + "\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf -3 -2 -1\n";
  }
  const std::filesystem::path path = folder.Write("parts.obj", objects);
  constexpr auto frame = 60ms;
  int reports = 0;
  const zovhost::Progress progress = [&](double, const char*) {
    std::this_thread::sleep_for(frame);
    return ++reports > 0;
  };
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_TRUE(zovhost::ImportContained(path, {60s, 60s, 1e9}, progress, data, error)) << error;
  const auto passed = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(data.meshes.size(), std::size_t{count});
  EXPECT_LE(2 * (reports - 1) * frame, passed + frame) << reports;
}

// Whatever part of a file arrives, it is read or it fails cleanly. Some cuts make an importer turn in
// circles.
TEST_F(ContainedImport, survives_files_cut_off_anywhere) {
  const std::pair<const char*, std::string> whole[] = {
      {"cut.obj", MakeObjSlab()},
      {"cut.stl", MakeStlSlab()},
      {"cut.ply", MakePlySlab()},
      {"cut.dae", MakeDaeSlab(2)},
      {"cut.fbx", MakeFbxSlab(2)},
      {"cut.ifc", MakeIfcSlab()},
      {"cut.gltf", MakeGltfSlab(R"([{"mesh":0}])")},
  };
  constexpr std::size_t cuts = 6;
  for (const auto& [name, bytes] : whole)
    for (std::size_t cut = 1; cut < cuts; ++cut) {
      SCOPED_TRACE(std::string(name) + " at " + std::to_string(cut));
      const std::filesystem::path path = folder.Write(name, bytes.substr(0, bytes.size() * cut / cuts));
      data = {};
      error.clear();
      if (!zovhost::ImportContained(path, {200ms, 60s, 1e9}, {}, data, error)) {
        EXPECT_NE(error, "");
        continue;
      }
      const auto scene = zovhost::MakeScene(std::move(data), error);
      ASSERT_NE(scene, nullptr) << error;
      EXPECT_TRUE(scene->GetMin().IsFinite() && scene->GetMax().IsFinite());
    }
}

// The importer walks the tree by recursion and runs out of stack.
TEST_F(ContainedImport, survives_a_crash_of_the_importer) {
  std::string nodes = "[";
  constexpr int depth = 300000;
  for (int i = 1; i < depth; ++i) nodes += R"({"children":[)" + std::to_string(i) + "]},";
  const std::filesystem::path path = folder.Write("deep.gltf", MakeGltfSlab(nodes + R"({"mesh":0}])"));
  EXPECT_NE(GetLoadError(path).find("crashed"), std::string::npos);
}

// The header asks for more vertices than any memory holds.
TEST_F(ContainedImport, survives_a_file_that_asks_for_all_memory) {
  const std::filesystem::path path = folder.Write("huge.off", "OFF\n2000000000 2000000000 0\n0 0 0\n");
  EXPECT_FALSE(zovhost::ImportContained(path, {30s, 30s, 1e9}, {}, data, error));
  EXPECT_NE(error, "");
}

TEST_F(ContainedImport, leaves_no_process_and_no_file_descriptor_behind) {
  const auto countDescriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
  };
  const auto listChildren = [] {
    std::ifstream children("/proc/thread-self/children");
    return std::string{std::istreambuf_iterator<char>(children), std::istreambuf_iterator<char>()};
  };
  const std::filesystem::path good = folder.Write("slab.obj", MakeObjSlab());
  const std::filesystem::path bad = folder.Write("bad.obj", "f 1 2 3\n");
  const std::string others = listChildren();  // such as the bus of another test
  LoadWhole(good);
  const auto before = countDescriptors();
  for (int i = 0; i < 5; ++i) {
    LoadWhole(good);
    GetLoadError(bad);
  }
  EXPECT_EQ(countDescriptors(), before);
  EXPECT_EQ(listChildren(), others);
}

}  // namespace
