#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "zovhost/scene.h"

/// A folder of one test for the files that it makes; gone with the test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    path = std::filesystem::temp_directory_path() /
           (std::string("zovhost-") + test->test_suite_name() + "-" + test->name() + "-" +
            std::to_string(std::hash<std::string>()(std::filesystem::current_path().string())));
    std::filesystem::remove_all(path);
    std::filesystem::create_directories(path);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::filesystem::path Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path / name, std::ios::binary) << bytes;
    return path / name;
  }
  std::size_t CountFiles() const {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(path), std::filesystem::directory_iterator()));
  }

  std::filesystem::path path;
};

/// Where Debian's assimp-testmodels puts its files.
inline const std::filesystem::path testModels = "/usr/share/assimp/models";

/// Loads what must load.
inline std::unique_ptr<zovhost::Scene> LoadWhole(const std::filesystem::path& path) {
  std::string error;
  std::unique_ptr<zovhost::Scene> scene = zovhost::LoadScene(path, {}, error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

/// The error of what must not: one line that names the file.
inline std::string GetLoadError(const std::filesystem::path& path) {
  std::string error;
  EXPECT_EQ(zovhost::LoadScene(path, {}, error), nullptr) << path;
  EXPECT_EQ(error.find(path.string() + ": "), 0u) << error;
  EXPECT_GT(error.size(), path.string().size() + 4) << "no reason given";
  EXPECT_EQ(error.find('\n'), std::string::npos) << error;
  return error;
}

// Files of one shape: a slab 4 wide (x), 2 deep and 1 high with its lowest corner at the origin. `upAxis` is
// the index of the axis that its height lies along.

struct SlabShape {
  std::vector<std::array<int, 3>> corners;  // corner i: the bits of i
  std::vector<std::array<int, 4>> faces = {{0, 4, 6, 2}, {1, 3, 7, 5}, {0, 1, 5, 4},
                                           {2, 6, 7, 3}, {0, 2, 3, 1}, {4, 5, 7, 6}};
};

inline SlabShape MakeSlab(int upAxis) {
  SlabShape slab;
  for (int i = 0; i < 8; ++i)
    slab.corners.push_back(upAxis == 1 ? std::array<int, 3>{4 * (i & 1), (i >> 1) & 1, 2 * (i >> 2)}
                                       : std::array<int, 3>{4 * (i & 1), 2 * ((i >> 1) & 1), i >> 2});
  return slab;
}

inline std::string Join(const std::array<int, 3>& point) {
  return std::to_string(point[0]) + " " + std::to_string(point[1]) + " " + std::to_string(point[2]);
}

inline std::string MakeObjSlab(const std::string& head = "", const std::string& last = "") {
  std::string text = head;
  const SlabShape slab = MakeSlab(1);
  for (const auto& corner : slab.corners) text += "v " + Join(corner) + "\n";
  for (const auto& face : slab.faces) {
    text += "f";
    for (const int corner : face) text += " " + std::to_string(corner + 1);
    text += "\n";
  }
  return text + last;
}

inline std::string MakeStlSlab() {
  std::string text = "solid slab\n";
  const SlabShape slab = MakeSlab(2);
  for (const auto& face : slab.faces)
    for (const auto& triangle :
         {std::array<int, 3>{face[0], face[1], face[2]}, {face[0], face[2], face[3]}}) {
      text += "facet normal 0 0 0\nouter loop\n";
      for (const int corner : triangle)
        text += "vertex " + Join(slab.corners[static_cast<std::size_t>(corner)]) + "\n";
      text += "endloop\nendfacet\n";
    }
  return text + "endsolid slab\n";
}

inline std::string MakePlySlab() {
  std::string text =
      "ply\nformat ascii 1.0\nelement vertex 8\nproperty float x\nproperty float y\nproperty float z\n"
      "element face 6\nproperty list uchar int vertex_indices\nend_header\n";
  const SlabShape slab = MakeSlab(1);
  for (const auto& corner : slab.corners) text += Join(corner) + "\n";
  for (const auto& face : slab.faces) {
    text += "4";
    for (const int corner : face) text += " " + std::to_string(corner);
    text += "\n";
  }
  return text;
}

inline std::string MakeDaeSlab(int upAxis) {
  const SlabShape slab = MakeSlab(upAxis);
  std::string points, indices;
  for (const auto& corner : slab.corners) points += Join(corner) + " ";
  for (const auto& face : slab.faces)
    for (const int corner : face) indices += std::to_string(corner) + " ";
  return std::string(R"(<?xml version="1.0"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1"><asset><up_axis>)") +
         (upAxis == 1 ? "Y_UP" : "Z_UP") + R"(</up_axis></asset>
<library_geometries><geometry id="g" name="slab"><mesh><source id="p"><float_array id="f" count="24">)" +
         points + R"(</float_array><technique_common><accessor source="#f" count="8" stride="3">
<param name="X" type="float"/><param name="Y" type="float"/><param name="Z" type="float"/></accessor>
</technique_common></source><vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<polylist count="6"><input semantic="VERTEX" source="#v" offset="0"/><vcount>4 4 4 4 4 4</vcount><p>)" +
         indices + R"(</p></polylist></mesh></geometry></library_geometries>
<library_visual_scenes><visual_scene id="s"><node id="n" name="slab"><instance_geometry url="#g"/></node>
</visual_scene></library_visual_scenes><scene><instance_visual_scene url="#s"/></scene></COLLADA>
)";
}

inline std::string MakeFbxSlab(int upAxis) {
  const SlabShape slab = MakeSlab(upAxis);
  std::string points, indices;
  for (const auto& corner : slab.corners)
    for (const int coordinate : corner) points += (points.empty() ? "" : ",") + std::to_string(coordinate);
  for (const auto& face : slab.faces)
    for (std::size_t i = 0; i < 4; ++i)  // the last corner of a face is stored as its complement
      indices += (indices.empty() ? "" : ",") + std::to_string(i == 3 ? ~face[i] : face[i]);
  return R"(; FBX 7.4.0 project file
FBXHeaderExtension:  {
	FBXHeaderVersion: 1003
	FBXVersion: 7400
}
GlobalSettings:  {
	Version: 1000
	Properties70:  {
		P: "UpAxis", "int", "Integer", "",)" +
         std::to_string(upAxis) + R"(
		P: "UpAxisSign", "int", "Integer", "",1
	}
}
Objects:  {
	Geometry: 1000, "Geometry::slab", "Mesh" {
		Vertices: *24 {
			a: )" +
         points + R"(
		}
		PolygonVertexIndex: *24 {
			a: )" +
         indices + R"(
		}
		GeometryVersion: 124
	}
	Model: 2000, "Model::slab", "Mesh" {
		Version: 232
	}
}
Connections:  {
	C: "OO",2000,0
	C: "OO",1000,2000
}
)";
}

inline std::string MakeIfcSlab() {
  return R"(ISO-10303-21;
HEADER;
FILE_DESCRIPTION((''),'2;1');
FILE_NAME('slab.ifc','2024-01-01T00:00:00',(''),(''),'','','');
FILE_SCHEMA(('IFC2X3'));
ENDSEC;
DATA;
#1=IFCCARTESIANPOINT((0.,0.,0.));
#2=IFCDIRECTION((0.,0.,1.));
#3=IFCDIRECTION((1.,0.,0.));
#4=IFCAXIS2PLACEMENT3D(#1,#2,#3);
#5=IFCGEOMETRICREPRESENTATIONCONTEXT($,'Model',3,1.E-05,#4,$);
#6=IFCSIUNIT(*,.LENGTHUNIT.,$,.METRE.);
#7=IFCUNITASSIGNMENT((#6));
#8=IFCPROJECT('0YvctVUKr0kugbFTf53O9L',#34,'Project',$,$,$,$,(#5),#7);
#9=IFCLOCALPLACEMENT($,#4);
#10=IFCBUILDING('1YvctVUKr0kugbFTf53O9L',#34,'Building',$,$,#9,$,$,.ELEMENT.,$,$,$);
#11=IFCRELAGGREGATES('2YvctVUKr0kugbFTf53O9L',#34,$,$,#8,(#10));
#12=IFCCARTESIANPOINT((2.,1.));
#13=IFCDIRECTION((1.,0.));
#14=IFCAXIS2PLACEMENT2D(#12,#13);
#15=IFCRECTANGLEPROFILEDEF(.AREA.,$,#14,4.,2.);
#16=IFCEXTRUDEDAREASOLID(#15,#4,#2,1.);
#17=IFCSHAPEREPRESENTATION(#5,'Body','SweptSolid',(#16));
#18=IFCPRODUCTDEFINITIONSHAPE($,$,(#17));
#19=IFCLOCALPLACEMENT(#9,#4);
#20=IFCBUILDINGELEMENTPROXY('3YvctVUKr0kugbFTf53O9L',#34,'Slab',$,$,#19,#18,$,$);
#21=IFCRELCONTAINEDINSPATIALSTRUCTURE('4YvctVUKr0kugbFTf53O9L',#34,$,$,(#20),#10);
#30=IFCPERSON($,$,'',$,$,$,$,$);
#31=IFCORGANIZATION($,'',$,$,$);
#32=IFCPERSONANDORGANIZATION(#30,#31,$);
#33=IFCAPPLICATION(#31,'1','','');
#34=IFCOWNERHISTORY(#32,#33,$,.ADDED.,$,$,$,0);
ENDSEC;
END-ISO-10303-21;
)";
}

inline std::string EncodeBase64(const std::string& bytes) {
  static constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k)
      group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
    for (std::size_t k = 0; k < 4; ++k)
      text += i + k <= bytes.size() ? digits[group >> (18 - 6 * k) & 63u] : '=';
  }
  return text;
}

/// `nodes`: the array of nodes, whose mesh is 0; `more` goes behind the last member of the root.
inline std::string MakeGltfSlab(const std::string& nodes, const std::string& material = "{}",
                                const std::string& more = "") {
  const SlabShape slab = MakeSlab(1);
  std::vector<float> floats;  // positions, then texture coordinates
  for (const auto& corner : slab.corners)
    for (const int coordinate : corner) floats.push_back(static_cast<float>(coordinate));
  for (int i = 0; i < 16; ++i) floats.push_back(i % 2 == 0 ? 0.25f : 0.125f);
  std::vector<std::uint16_t> indices;
  for (const auto& f : slab.faces)
    for (const int corner : {f[0], f[1], f[2], f[0], f[2], f[3]})
      indices.push_back(static_cast<std::uint16_t>(corner));
  const std::string bytes = std::string(reinterpret_cast<const char*>(floats.data()), 4 * floats.size()) +
                            std::string(reinterpret_cast<const char*>(indices.data()), 2 * indices.size());
  return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":)" + nodes +
         R"(,"meshes":[{"name":"slab","primitives":[{"attributes":{"POSITION":0,"TEXCOORD_0":1},"indices":2,"material":0}]}],
"materials":[)" +
         material +
         R"(],"accessors":[
{"bufferView":0,"componentType":5126,"count":8,"type":"VEC3","min":[0,0,0],"max":[4,1,2]},
{"bufferView":1,"componentType":5126,"count":8,"type":"VEC2"},
{"bufferView":2,"componentType":5123,"count":36,"type":"SCALAR"}],
"bufferViews":[{"buffer":0,"byteOffset":0,"byteLength":96},{"buffer":0,"byteOffset":96,"byteLength":64},
{"buffer":0,"byteOffset":160,"byteLength":72}],
"buffers":[{"byteLength":232,"uri":"data:application/octet-stream;base64,)" +
         EncodeBase64(bytes) + "\"}]" + more + "}";
}
