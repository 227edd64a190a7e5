#pragma once

#include <array>

namespace zovhost {

/// Keeps the OpenGL state that the kit's drawing touches and puts it back when destroyed. It also sets what
/// the kit's drawing takes for granted: no stencil, no scissor, all colours written, pixels unpacked from
/// memory without gaps.
///
/// Needs a current context, at both ends of its life. Allocates nothing.
class GLStateGuard {
 public:
  GLStateGuard();
  ~GLStateGuard();
  GLStateGuard(const GLStateGuard&) = delete;
  GLStateGuard& operator=(const GLStateGuard&) = delete;

  static constexpr int capabilityCount = 16;
  static constexpr int pixelStoreCount = 10;

 private:
  void SaveTables();
  void SaveBindings();
  void SaveDrawing();
  void SetDefaults();
  void RestoreTables();
  void RestoreBindings();
  void RestoreDrawing();

  std::array<unsigned char, capabilityCount> capabilities{};
  std::array<int, pixelStoreCount> pixelStore{};
  int drawFramebuffer = 0;
  int readFramebuffer = 0;
  int renderbuffer = 0;
  int program = 0;
  int vertexArray = 0;
  int arrayBuffer = 0;
  int pixelUnpackBuffer = 0;
  int pixelPackBuffer = 0;
  int activeTexture = 0;
  int texture = 0;  // of unit 0, the only one that the kit uses
  int sampler = 0;  // of unit 0
  int blendFactors[4] = {};
  int blendEquations[2] = {};
  int depthFunction = 0;
  int cullFace = 0;
  int frontFace = 0;
  int viewport[4] = {};
  int scissorBox[4] = {};
  int polygonMode[2] = {};
  float depthRange[2] = {};
  float clearColour[4] = {};
  float clearDepth = 1.0F;
  float lineWidth = 1.0F;
  float polygonOffset[2] = {};
  unsigned char depthMask = 0;
  unsigned char colourMask[4] = {};
  bool desktop = true;
};

}  // namespace zovhost
