#pragma once

namespace zovview {

/// A tour takes a picture at every so many frames of its clock, and plays back in the time it took.
inline constexpr int FRAMES_PER_PICTURE = 10;
inline constexpr int MILLISECONDS_PER_PICTURE = 167;
/// The same of a glance, which is short and goes smoothly.
inline constexpr int FRAMES_PER_GLANCE_PICTURE = 4;
inline constexpr int MILLISECONDS_PER_GLANCE_PICTURE = 67;

}  // namespace zovview
