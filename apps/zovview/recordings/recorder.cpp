#include "recordings/recorder.h"

#include <system_error>
#include <utility>

#include "korvane/platform.h"
#include "zovhost/whole_file.h"

namespace zovview {

namespace fs = std::filesystem;

Recorder::Recorder(fs::path path)
    : file(std::move(path)), target(zovhost::FollowLinks(file)), partial(target) {
  partial += ".partial";
  output.open(partial, std::ios::binary | std::ios::trunc);
}

Recorder::~Recorder() {
  output.close();
  std::error_code ignored;
  fs::remove(partial, ignored);
}

std::unique_ptr<Recorder> Recorder::Create(const fs::path& file, std::string& error) {
  std::unique_ptr<Recorder> recorder(new Recorder(file));
  if (recorder->output.good()) return recorder;
  error = file.string() + " cannot be written";
  return nullptr;
}

void Recorder::Begin(const Recording& header) {
  output << FormatHeader(header);
  start = Korvane::GetPlatform().GetTickCount();
  begun = true;
}

std::uint32_t Recorder::GetTime() const { return Korvane::GetPlatform().GetTickCount() - start; }

void Recorder::Add(const zovhost::WindowEvent& event) {
  if (begun && HasWords(event)) output << FormatEvent({GetTime(), event, nullptr});
}

void Recorder::Add(const ViewCommand& command) {
  if (begun) output << FormatEvent({GetTime(), {}, &command});
}

void Recorder::Add(const DeviceEvent& event) {
  if (begun) output << FormatEvent({GetTime(), {}, nullptr, event});
}

void Recorder::Add(const Korvane::FitMargins& margins) {
  if (begun) output << FormatEvent({GetTime(), {}, nullptr, {}, margins});
}

void Recorder::Add(const Korvane::CameraParameters& camera) {
  if (begun) output << FormatEvent({GetTime(), {}, nullptr, {}, {}, camera});
}

bool Recorder::Finish(std::string& error) {
  if (!begun) {
    error = file.string() + ": no model was shown, so there is nothing to record";
    return false;
  }
  output << FormatEnd(GetTime());
  output.close();
  std::error_code failure;
  if (output.good()) fs::rename(partial, target, failure);
  if (output.good() && !failure) return true;
  error = file.string() + " cannot be written";
  return false;
}

}  // namespace zovview
