// Recordings. One that is read is written, with what rays met, and read as the same again.
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "recordings/recording.h"

namespace {

std::string Write(const zovview::Recording& recording) {
  std::string text = zovview::FormatHeader(recording);
  for (const zovview::RecordedEvent& event : recording.events) text += zovview::FormatEvent(event);
  std::istringstream bare(text + zovview::FormatEnd(recording.end));
  std::string whole;
  if (!zovview::CompleteRecording(bare, recording.rays, whole)) std::abort();
  return whole;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  std::istringstream input(std::string(reinterpret_cast<const char*>(bytes), count));
  zovview::Recording recording;
  std::string error;
  if (!zovview::ReadRecording(input, recording, error)) {
    if (error.empty() || error.find('\n') != std::string::npos) std::abort();
    return 0;
  }
  const std::string text = Write(recording);
  std::istringstream written(text);
  zovview::Recording again;
  if (!zovview::ReadRecording(written, again, error) || Write(again) != text) std::abort();
  return 0;
}
