#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "commands/view_commands.h"
#include "korvane/camera_parameters.h"
#include "korvane/fit_margins.h"
#include "recordings/recorded_rays.h"
#include "settings/device_settings.h"
#include "zovhost/six_axis_settings.h"
#include "zovhost/window.h"

namespace zovview {

/// Something that came from a six-axis device, or a setting of it.
struct DeviceEvent {
  enum class Kind : int { Axes, Press, Release, Setting };
  Kind kind = Kind::Axes;
  zovhost::SixAxes axes{};                 ///< As its settings have led them; 0 at rest.
  int command = 0;                         ///< Korvane::Cam3DControllerKeyID, of a button.
  const DeviceSetting* setting = nullptr;  ///< That has another value now.
  double value = 0.0;
};

/// Something that happened to a view, in a recording.
struct RecordedEvent {
  std::uint32_t time = 0;  ///< Milliseconds from the start of the recording.
  /// Of a window. Resized: to `x` by `y` pixels. FileDropped: the file has been opened.
  zovhost::WindowEvent event;
  const ViewCommand* command = nullptr;    ///< Instead of an event, where it is not null.
  std::optional<DeviceEvent> device = {};  ///< Instead of both.
  /// Instead of all: what fits leave free from now on, beside a panel for instance.
  std::optional<Korvane::FitMargins> margins = {};
  /// Instead of all: the view travels to this camera.
  std::optional<Korvane::CameraParameters> flight = {};
};

/// What a user did, and with what; docs/recordings.md tells the format of the file.
struct Recording {
  std::string model;  ///< "house", "building", or "file" and a path.
  int width = 0;      ///< Pixels.
  int height = 0;
  bool orthographic = false;
  /// Pixels for one point, and the cube as the kit has it; 0 in recordings of before, where sizes are pixels
  /// and the cube is the library's.
  double scale = 0.0;
  /// What the start view and fits leave free.
  Korvane::FitMargins margins = {};
  std::vector<RecordedEvent> events;  ///< In the order of time.
  /// What rays met in each model, in the order in which models are shown; may end before the last one.
  std::vector<RaysOfModel> rays;
  std::uint32_t end = 0;  ///< Milliseconds.
};

constexpr int LARGEST_RECORDED_SIDE = 8192;
constexpr std::uint32_t LONGEST_RECORDING = 3'600'000;  // milliseconds

/// False for a recording that is broken anywhere; `error` then holds the line and what is wrong with it.
bool ReadRecording(std::istream& input, Recording& recording, std::string& error);

/// A recording is written once more, with these rays in place of those that it has. False where it has not as
/// many models.
bool CompleteRecording(std::istream& input, const std::vector<RaysOfModel>& rays, std::string& text);

/// Not a story.
bool IsModelOpened(const RecordedEvent& recorded);
/// Repetitions of a key, keys without a name, closing and such paths as no line holds have none.
bool HasWords(const zovhost::WindowEvent& event);

std::string FormatHeader(const Recording& recording);
/// One line.
std::string FormatEvent(const RecordedEvent& event);
std::string FormatEnd(std::uint32_t time);

}  // namespace zovview
