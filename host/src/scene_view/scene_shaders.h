#pragma once

namespace zovhost {

// Light is added up in linear terms and encoded at the end, so the framebuffer is a plain one.
// Directions are those of view space: x to the right, y up, z towards the viewer.

inline constexpr const char* surfaceVertexShader = R"(
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
layout(location = 2) in vec2 texCoord;
layout(location = 3) in vec4 colour;
uniform mat4 matrix;
uniform mat4 modelView;
uniform mat3 normalMatrix;
uniform vec4 materialColour;
uniform vec4 highlight;  // sRGB, and how much of it
out vec3 viewPosition;
out vec3 viewNormal;
out vec2 uv;
out vec4 tint;  // linear

vec3 ToLinear(vec3 c) { return mix(c / 12.92, pow((c + 0.055) / 1.055, vec3(2.4)), step(0.04045, c)); }

void main() {
  viewPosition = (modelView * vec4(position, 1.0)).xyz;
  viewNormal = normalMatrix * normal;
  uv = texCoord;
  vec4 base = materialColour * colour;
  tint = vec4(ToLinear(mix(base.rgb, highlight.rgb, highlight.a)), base.a);
  gl_Position = matrix * vec4(position, 1.0);
}
)";

// With `WITH_PICTURE` or without: a processor that draws would run through both branches of a condition.
inline constexpr const char* surfaceFragmentShader = R"(
uniform sampler2D picture;
uniform vec3 upDirection;  // of the scene
uniform vec3 keyDirection;
uniform vec3 fillDirection;
uniform float blend;       // of the projection: 0 perspective, 1 orthographic
in vec3 viewPosition;
in vec3 viewNormal;
in vec2 uv;
in vec4 tint;
out vec4 fragment;

// Within two steps of 8 bits of the exact curves, and several times as fast on a processor.
vec3 ToLinear(vec3 c) { return c * (c * (c * 0.305306011 + 0.682171111) + 0.012522878); }
vec3 ToSRGB(vec3 c) {
  vec3 root2 = sqrt(c);
  vec3 root4 = sqrt(root2);
  vec3 root8 = sqrt(root4);
  return 0.662002687 * root2 + 0.684122060 * root4 - 0.323583601 * root8 - 0.0225411470 * c;
}
float Power24(float x) {
  float x3 = x * x * x;
  float x6 = x3 * x3;
  float x12 = x6 * x6;
  return x12 * x12;
}

void main() {
  vec4 base = tint;
#ifdef WITH_PICTURE
  vec4 texel = texture(picture, uv);
  base *= vec4(ToLinear(texel.rgb), texel.a);
  if (base.a < 0.02) discard;
#endif

  vec3 facing = cross(dFdx(viewPosition), dFdy(viewPosition));  // of the triangle, to the viewer
  vec3 n = dot(viewNormal, viewNormal) > 1e-8 ? viewNormal : facing;
  n *= inversesqrt(dot(n, n));
  n = dot(n, facing) < 0.0 ? -n : n;

  float sky = 0.5 + 0.5 * dot(n, upDirection);
  vec3 light = mix(vec3(0.20, 0.19, 0.185), vec3(0.44, 0.46, 0.49), sky);
  light += vec3(0.60, 0.585, 0.56) * max(dot(n, keyDirection), 0.0);
  light += vec3(0.10, 0.11, 0.125) * max(dot(n, fillDirection), 0.0);
  vec3 toViewer = mix(normalize(-viewPosition), vec3(0.0, 0.0, 1.0), blend);
  vec3 halfway = keyDirection + toViewer * inversesqrt(dot(toViewer, toViewer));
  float along = max(dot(n, halfway), 0.0);
  float shine = 0.05 * Power24(along * along / dot(halfway, halfway));
  vec3 shaded = ToSRGB(clamp(base.rgb * light + shine, 0.0, 1.0));
  fragment = vec4(shaded * base.a, base.a);
}
)";

// One instance a line; the six corners of its strip come from the number of the vertex: along one side of the
// line, its middle and its other side. Each side lies in the face that is seen there, so that a line is
// hidden where its faces are, however steep they are and however small they are drawn. Lines that are short
// on the screen fade, and so do those whose faces are narrow: a fine mesh far away does not turn black.
inline constexpr const char* edgeVertexShader = R"(
layout(location = 0) in vec3 from;
layout(location = 1) in vec3 to;
layout(location = 2) in vec4 firstFace;  // from the line into it, and how broad it is
layout(location = 3) in vec4 otherFace;
uniform mat4 matrix;
uniform vec2 viewport;   // pixels
uniform float lineWidth; // pixels
uniform float scale;     // pixels a point
uniform float facing;    // of a solid 1, of a mirrored one -1, else 0
uniform float pixelDepth; // by how much a pixel's size changes the depth where w is 1
out float strength;

// How many pixels a face reaches across the line, to the right of it or (below zero) to the left, and by how
// much its depth changes up to there.
vec2 Reach(vec4 face, vec4 middle, vec2 along, float depthAlong) {
  vec4 far = matrix * vec4(face.xyz * (exp2(face.w * 16.0) * distance(from, to)), 0.0);
  vec3 change = (far.xyz - middle.xyz * (far.w / middle.w)) / middle.w;
  vec2 pixels = change.xy * viewport * 0.5;
  return vec2(dot(pixels, vec2(along.y, -along.x)), change.z - depthAlong * dot(pixels, along));
}

// In pixels, seen from before it; of a part that is scaled unequally about that.
float Breadth(vec4 face, float w) {
  vec3 across = vec3(matrix[0].x, matrix[1].x, matrix[2].x);
  return exp2(face.w * 16.0) * distance(from, to) * length(across) * viewport.x * 0.5 / w;
}

// How much room for a line its faces give. Where one alone tells of it, at a border or where many faces meet,
// from before that face: the line is all that is seen of a sheet from its edge.
float FindRoom(vec2 first, vec2 other, float w) {
  return firstFace == otherFace ? Breadth(firstFace, w) : max(abs(first.x), abs(other.x));
}

// Half a line's width into a face. Of one that is all but seen from its side that is not far, since where such
// a face begins and ends falls into one pixel.
float DepthAt(vec2 reach, float w) {
  float width = 0.5 * lineWidth;
  float most = 6.0 * width * pixelDepth / w;
  return clamp(reach.y * min(width / max(abs(reach.x), 1e-6), 1.0), -most, most);
}

// On the side `right` (1 or -1): of the faces that are there the nearest; the other side's goes on where there
// is none.
float DepthOfSide(vec2 a, vec2 b, float right, float w) {
  bool hasA = a.x * right > 0.0;
  bool hasB = b.x * right > 0.0;
  float depthA = DepthAt(a, w);
  float depthB = DepthAt(b, w);
  if (hasA && hasB) return min(depthA, depthB);
  if (hasA || hasB) return hasA ? depthA : depthB;
  return -min(depthA, depthB);
}

void main() {
  vec4 a = matrix * vec4(from, 1.0);
  vec4 b = matrix * vec4(to, 1.0);
  // Cut at the near plane, where z = -w.
  float da = a.z + a.w;
  float db = b.z + b.w;
  if (da < 0.0 && db < 0.0) {
    strength = 0.0;
    gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
    return;
  }
  if (da < 0.0) a = mix(a, b, da / (da - db));
  if (db < 0.0) b = mix(b, a, db / (db - da));
  vec2 along = (b.xy / b.w - a.xy / a.w) * viewport * 0.5;
  float size = length(along);
  float depthAlong = size > 1e-4 ? (b.z / b.w - a.z / a.w) / size : 0.0;
  along = size > 1e-4 ? along / size : vec2(1.0, 0.0);
  // In its middle, so that all corners come to the same.
  vec4 middle = 0.5 * (a + b);
  vec2 first = Reach(firstFace, middle, along, depthAlong);
  vec2 other = Reach(otherFace, middle, along, depthAlong);
  strength = smoothstep(2.0, 14.0, size / scale) *
             smoothstep(1.0, 4.0, FindRoom(first, other, middle.w) / scale);
  if (strength == 0.0 || (facing * first.x > 0.0 && facing * other.x < 0.0)) {
    gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
    return;
  }
  float right = float(gl_VertexID / 2 - 1);
  gl_Position = gl_VertexID % 2 == 0 ? a : b;
  if (right == 0.0) return;
  gl_Position.z += DepthOfSide(first, other, right, middle.w) * gl_Position.w;
  gl_Position.xy += vec2(along.y, -along.x) * (right * lineWidth) / viewport * gl_Position.w;
}
)";

inline constexpr const char* edgeFragmentShader = R"(
uniform vec4 colour;
in float strength;
out vec4 fragment;
void main() {
  float alpha = colour.a * strength;
  fragment = vec4(colour.rgb * alpha, alpha);
}
)";

inline constexpr const char* backgroundVertexShader = R"(
out float height;
void main() {
  vec2 corner = vec2(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0);
  height = corner.y * 0.5 + 0.5;
  gl_Position = vec4(corner, 1.0, 1.0);
}
)";

// A grain finer than one step of the display's scale keeps a gradient from showing bands; a plain ground has
// none.
inline constexpr const char* backgroundFragmentShader = R"(
uniform vec3 top;
uniform vec3 bottom;
in float height;
out vec4 fragment;
void main() {
  float grain = fract(52.9829189 * fract(dot(gl_FragCoord.xy, vec2(0.06711056, 0.00583715)))) - 0.5;
  vec3 colour = mix(bottom, top, smoothstep(0.0, 1.0, height));
  float strength = top == bottom ? 0.0 : 1.0;
  fragment = vec4(colour + grain / 255.0 * strength, 1.0);
}
)";

inline constexpr const char* shadowVertexShader = R"(
layout(location = 0) in vec2 corner;  // 0 to 1 across the shadow
uniform mat4 matrix;
out vec2 uv;
void main() {
  uv = corner;
  gl_Position = matrix * vec4(corner, 0.0, 1.0);
}
)";

inline constexpr const char* shadowFragmentShader = R"(
uniform sampler2D picture;
uniform float strength;
in vec2 uv;
out vec4 fragment;
void main() {
  fragment = vec4(0.03, 0.035, 0.05, 1.0) * (texture(picture, uv).r * strength);
}
)";

// What stands over the ground, seen from below: the nearer to the ground, the darker its shadow.
inline constexpr const char* castVertexShader = R"(
layout(location = 0) in vec3 position;
uniform mat4 matrix;
out float height;
void main() {
  gl_Position = matrix * vec4(position, 1.0);
  height = gl_Position.z * 0.5 + 0.5;
}
)";

inline constexpr const char* castFragmentShader = R"(
in float height;
out vec4 fragment;
void main() {
  fragment = vec4(exp(-2.2 * max(height, 0.0)), 0.0, 0.0, 1.0);
}
)";

// A tint over a face, premultiplied.
inline constexpr const char* faceVertexShader = R"(
layout(location = 0) in vec3 position;
uniform mat4 matrix;
void main() { gl_Position = matrix * vec4(position, 1.0); }
)";

inline constexpr const char* faceFragmentShader = R"(
uniform vec4 tint;
out vec4 fragment;
void main() { fragment = tint; }
)";

}  // namespace zovhost
