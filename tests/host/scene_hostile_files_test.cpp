// Model files that name what is not theirs, or ask for more than there is. Each is refused in a line, soon.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

#include "../../host/src/scene/contained_import.h"
#include "../../host/src/scene/model_folder.h"
#include "host/scene_files.h"
#include "zovhost/picture.h"
#include "zovhost/read_image.h"

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr double SOON = 10.0;  // seconds, of which a refusal takes a hundredth where nothing else runs
constexpr const char* TEXTURED = R"({"pbrMetallicRoughness":{"baseColorTexture":{"index":0}}})";

class HostileModels : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(own / "below");
    for (const char* name : {"outside.png", "own/inside.png", "own/below/deep.png"})
      ASSERT_TRUE(zovhost::WritePng(folder.path / name, {1, 1, {255, 0, 0, 255}}, error)) << error;
    const std::string bytes(1000, '\0');
    const std::string material = "newmtl secret\nKd 1 0 0\n";
    for (const char* place : {"outside", "own/inside", "own/below/deep"}) {
      folder.Write(std::string(place) + ".bin", bytes);
      folder.Write(std::string(place) + ".mtl", material);
    }
    for (const char* end : {".bin", ".mtl", ".png"}) {
      fs::create_symlink(folder.path / (std::string("outside") + end),
                         own / (std::string("leads_out") + end));
      fs::create_symlink(own / (std::string("inside") + end), own / (std::string("leads_in") + end));
      ASSERT_EQ(mkfifo((own / (std::string("pipe") + end)).c_str(), 0600), 0);
      fs::create_symlink("/dev/zero", own / (std::string("device") + end));
      fs::create_symlink("/proc/self/environ", own / (std::string("kernel") + end));
    }
  }
  void TearDown() override {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(passed.count(), SOON);
  }

  fs::path Write(const std::string& name, const std::string& bytes) {
    return folder.Write("own/" + name, bytes);
  }
  // A model whose one buffer, of `size` bytes, lies in a file.
  fs::path WriteBuffered(const std::string& uri) {
    return Write("buffered.gltf",
                 R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"mesh":0}],
"meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],"buffers":[{"uri":")" +
                     uri + R"(","byteLength":36}],"bufferViews":[{"buffer":0,"byteLength":36}],
"accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,1]}]})");
  }
  fs::path WriteTextured(const std::string& uri) {
    return Write("textured.gltf",
                 MakeGltfSlab(R"([{"mesh":0}])", TEXTURED,
                              R"(,"images":[{"uri":")" + uri + R"("}],"textures":[{"source":0}])"));
  }
  std::string GetOnlyWarning(const fs::path& path) {
    const auto scene = LoadWhole(path);
    if (scene == nullptr) return {};
    EXPECT_TRUE(scene->GetImages().empty());
    EXPECT_EQ(scene->GetWarnings().size(), 1u);
    return scene->GetWarnings().empty() ? "" : scene->GetWarnings()[0];
  }

  // The ways out of the folder, for a file with this ending.
  std::vector<std::string> GetWaysOut(const std::string& end) const {
    return {"../outside" + end, "below/../../outside" + end, "leads_out" + end, "device" + end,
            "kernel" + end};
  }

  TemporaryFolder folder;
  const fs::path own = folder.path / "own";
  const std::chrono::steady_clock::time_point begin = std::chrono::steady_clock::now();
  zovhost::SceneData data;
  std::string error;
};

constexpr const char* OUTSIDE = "outside of the model's folder";
constexpr const char* NO_FILE = "not a regular file";

TEST_F(HostileModels, buffers_lie_in_the_folder_of_the_model) {
  for (const std::string& way : GetWaysOut(".bin"))
    EXPECT_NE(GetLoadError(WriteBuffered(way)).find(OUTSIDE), std::string::npos) << way;
  EXPECT_NE(GetLoadError(WriteBuffered("pipe.bin")).find(NO_FILE), std::string::npos);
  for (const std::string absolute :
       {"/dev/zero", "file:///dev/zero", "file:///etc/passwd", "/proc/self/environ"})
    GetLoadError(WriteBuffered(absolute));
  // Zeros make no triangles, so these are read.
  for (const char* name : {"inside.bin", "leads_in.bin", "below/deep.bin"})
    EXPECT_NE(GetLoadError(WriteBuffered(name)).find("triangle"), std::string::npos) << name;
}

// A model that is opened by its bare name has no folder in its path to join an absolute name to.
TEST_F(HostileModels, a_model_of_the_working_folder_has_no_further_way) {
  const fs::path before = fs::current_path();
  WriteBuffered("/dev/zero");
  fs::current_path(own);
  EXPECT_NE(GetLoadError("buffered.gltf").find(OUTSIDE), std::string::npos);
  fs::current_path(before);
}

TEST_F(HostileModels, materials_lie_in_the_folder_of_the_model) {
  const auto write = [&](const std::string& name) {
    return Write("slab.obj", MakeObjSlab("mtllib " + name + "\nusemtl secret\n"));
  };
  for (const std::string& way : GetWaysOut(".mtl"))
    EXPECT_NE(GetOnlyWarning(write(way)).find(OUTSIDE), std::string::npos) << way;
  EXPECT_NE(GetOnlyWarning(write("pipe.mtl")).find(NO_FILE), std::string::npos);
  for (const std::string& absolute :
       {std::string("/dev/zero"), std::string("//dev/zero"), std::string("/proc/self/environ"),
        (folder.path / "outside.mtl").string()}) {
    const std::string line = GetOnlyWarning(write(absolute));
    EXPECT_NE(line.find(OUTSIDE), std::string::npos) << absolute;
    EXPECT_EQ(line.find(fs::path(absolute).lexically_normal().string()), 0u) << line;
  }
  for (const std::string& name : {std::string("inside.mtl"), std::string("leads_in.mtl"),
                                  std::string("below/deep.mtl"), (own / "inside.mtl").string()}) {
    const auto scene = LoadWhole(write(name));
    ASSERT_NE(scene, nullptr);
    EXPECT_TRUE(scene->GetWarnings().empty()) << name;
    const auto material = static_cast<std::size_t>(scene->GetMeshes()[0].material);
    EXPECT_EQ(scene->GetMaterials()[material].name, "secret") << name;
  }
}

TEST_F(HostileModels, a_pipe_without_a_name_of_its_own_is_refused) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  std::string reason;
  const zovhost::ModelFolder modelFolder(Write("slab.obj", MakeObjSlab("")));
  EXPECT_TRUE(modelFolder.Find("/proc/self/fd/" + std::to_string(ends[0]), reason).empty());
  EXPECT_NE(reason.find(NO_FILE), std::string::npos);
  for (const int end : ends) close(end);
}

TEST_F(HostileModels, pictures_lie_in_the_folder_of_the_model) {
  std::vector<std::string> ways = GetWaysOut(".png");
  ways.push_back((folder.path / "outside.png").string());
  for (const char* absolute : {"/dev/zero", "/dev/stdin", "/proc/kmsg"}) ways.push_back(absolute);
  for (const std::string& way : ways) {
    const std::string line = GetOnlyWarning(WriteTextured(way));
    EXPECT_NE(line.find(way), std::string::npos) << line;
  }
  EXPECT_NE(GetOnlyWarning(WriteTextured("../outside.png")).find(OUTSIDE), std::string::npos);
  EXPECT_NE(GetOnlyWarning(WriteTextured("pipe.png")).find(NO_FILE), std::string::npos);
  for (const char* name : {"inside.png", "leads_in.png", "below/deep.png", "/elsewhere/inside.png"}) {
    const auto scene = LoadWhole(WriteTextured(name));
    ASSERT_NE(scene, nullptr);
    EXPECT_EQ(scene->GetImages().size(), 1u) << name;
  }
}

// Whoever opens a link means what it leads to; the files of the model are those beside the link.
TEST_F(HostileModels, a_model_may_itself_be_a_link) {
  folder.Write("outside.gltf", MakeGltfSlab(R"([{"mesh":0}])"));
  fs::create_symlink(folder.path / "outside.gltf", own / "link.gltf");
  EXPECT_NE(LoadWhole(own / "link.gltf"), nullptr);
}

TEST_F(HostileModels, no_number_of_refusals_fills_the_screen) {
  std::string head;
  for (int i = 0; i < 500; ++i) {
    const std::string name = "many" + std::to_string(i) + ".mtl";
    fs::create_symlink("/dev/zero", own / name);
    head += "mtllib " + name + "\n";
  }
  const auto scene = LoadWhole(Write("slab.obj", MakeObjSlab(head)));
  ASSERT_NE(scene, nullptr);
  EXPECT_GE(scene->GetWarnings().size(), 10u);
  EXPECT_LE(scene->GetWarnings().size(), 30u);
}

// ---- more than there is ----

std::uint32_t GetCheckSum(const std::string& bytes) {
  std::uint32_t sum = ~0u;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ ((sum & 1u) != 0 ? 0xedb88320u : 0u);
  }
  return ~sum;
}

std::string GetBigEndian(std::uint32_t value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 255u);
  return bytes;
}

// The first bytes of a picture of that size; the pixels do not come.
std::string MakePngHeader(std::uint32_t width, std::uint32_t height) {
  const std::string header =
      "IHDR" + GetBigEndian(width) + GetBigEndian(height) + std::string("\x08\x06\0\0\0", 5);
  return "\x89PNG\r\n\x1a\n" + GetBigEndian(13) + header + GetBigEndian(GetCheckSum(header)) +
         GetBigEndian(100000) + "IDAT" + std::string(1000, 'x');
}

bool Decode(const std::string& bytes, std::size_t room, std::string& error) {
  zovhost::Image image;
  return zovhost::DecodeImage(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), image, error,
                              room);
}

TEST_F(HostileModels, a_picture_is_refused_by_its_header) {
  EXPECT_FALSE(Decode(MakePngHeader(16000, 16000), zovhost::LARGEST_IMAGE, error));
  EXPECT_NE(error.find("16000 x 16000"), std::string::npos) << error;
  EXPECT_FALSE(Decode(MakePngHeader(65535, 2), zovhost::LARGEST_IMAGE, error));
  EXPECT_NE(error.find("65535 x 2"), std::string::npos) << error;
  EXPECT_FALSE(Decode(MakePngHeader(64, 64), 4 * 64 * 64 - 1, error));
  EXPECT_NE(error.find("64 x 64"), std::string::npos) << error;
  EXPECT_TRUE(Decode(MakePngHeader(64, 64), 4 * 64 * 64, error)) << error;
  // Within limits that hold no such picture.
  Write("bomb.png", MakePngHeader(16000, 16000));
  ASSERT_TRUE(zovhost::ImportContained(WriteTextured("bomb.png"), {5s, 60s, 5e8}, {}, data, error)) << error;
  EXPECT_TRUE(data.images.empty());
  ASSERT_EQ(data.warnings.size(), 1u);
  EXPECT_NE(data.warnings[0].find("16000 x 16000"), std::string::npos) << data.warnings[0];
}

TEST_F(HostileModels, the_pictures_of_a_model_share_one_room) {
  constexpr int side = 100;
  const zovhost::Image image{side, side, std::vector<std::uint8_t>(4 * side * side, 200)};
  std::string head, materials;
  for (const std::string name : {"a", "b", "c"}) {
    ASSERT_TRUE(zovhost::WritePng(own / (name + ".png"), image, error)) << error;
    materials += "newmtl " + name + "\nmap_Kd " + name + ".png\n";
    head += "v 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl " + name + "\nf -3 -2 -1\n";
  }
  Write("three.mtl", materials);
  const fs::path path = Write("three.obj", "mtllib three.mtl\n" + head);
  ASSERT_TRUE(zovhost::ImportContained(path, {5s, 60s, 1e9, 1e8, 2 * image.rgba.size()}, {}, data, error))
      << error;
  EXPECT_EQ(data.images.size(), 2u);
  ASSERT_EQ(data.warnings.size(), 1u);
  EXPECT_NE(data.warnings[0].find("100 x 100"), std::string::npos) << data.warnings[0];
}

TEST_F(HostileModels, a_scene_takes_no_more_than_it_may) {
  const fs::path path = Write("slab.obj", MakeObjSlab());
  EXPECT_FALSE(zovhost::ImportContained(path, {5s, 60s, 1e9, 500.0}, {}, data, error));
  EXPECT_NE(error.find("unfolds"), std::string::npos) << error;
}

TEST_F(HostileModels, a_small_file_has_small_limits) {
  const zovhost::ImportLimits limits = zovhost::GetImportLimits(Write("slab.obj", MakeObjSlab()));
  EXPECT_LE(limits.work, 5s);
  EXPECT_LE(limits.memory, 4.1 * 1024 * 1024 * 1024);
  EXPECT_LE(limits.scene, limits.memory / 2.0);
}

TEST_F(HostileModels, a_ply_file_without_an_end_of_its_header_is_not_read) {
  const std::string whole = MakePlySlab();
  const std::size_t end = whole.find("end_header");
  for (std::size_t size = 3; size < end; size += 11)
    EXPECT_NE(GetLoadError(Write("cut.ply", whole.substr(0, size))).find("header"), std::string::npos)
        << size;
  const std::string name = "renamed";  // it is known by its first bytes
  EXPECT_NE(GetLoadError(Write(name, "ply\nformat ascii 1.0\n")).find("header"), std::string::npos);
  EXPECT_NE(LoadWhole(Write("whole.ply", whole)), nullptr);
}

// What each claims is not there, or points nowhere.
TEST_F(HostileModels, numbers_that_lie_are_refused) {
  const std::string ply =
      "ply\nformat ascii 1.0\nelement vertex 2000000000\nproperty float x\nproperty float y\n"
      "property float z\nelement face 2000000000\nproperty list uchar int vertex_indices\nend_header\n0 0 "
      "0\n";
  const std::string stl = std::string(80, 'x') + "\xff\xff\xff\x3f";
  const auto slab = [](const std::string& nodes) { return MakeGltfSlab(nodes); };
  const std::pair<const char*, std::string> files[] = {
      {"most.ply", ply},
      {"most.stl", stl},
      {"index.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 2000000000\n"},
      {"mesh.gltf", slab(R"([{"mesh":7}])")},
      {"child.gltf", slab(R"([{"children":[99999]}])")},
      {"self.gltf", slab(R"([{"children":[0],"mesh":0}])")},
      {"circle.gltf", slab(R"([{"children":[1],"mesh":0},{"children":[0]}])")},
      {"flat.gltf", slab(R"([{"mesh":0,"scale":[0,0,0]}])")},
      {"far.gltf", slab(R"([{"mesh":0,"scale":[1e999,1e308,1e308]}])")},
      {"laughs.dae",
       R"(<?xml version="1.0"?><!DOCTYPE l [<!ENTITY a "aaaa"><!ENTITY b "&a;&a;">]><COLLADA>&b;</COLLADA>)"},
      {"outside.dae",
       R"(<?xml version="1.0"?><!DOCTYPE l [<!ENTITY a SYSTEM "file:///dev/zero">]><COLLADA>&a;</COLLADA>)"},
  };
  for (const auto& [name, bytes] : files) GetLoadError(Write(name, bytes));
}

}  // namespace
