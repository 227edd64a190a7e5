#include <webp/encode.h>
#include <webp/mux.h>

#include <limits>

#include "picture_files/image_check.h"
#include "zovhost/picture.h"
#include "zovhost/whole_file.h"

namespace zovhost {

struct AnimationWriter::State {
  WebPAnimEncoder* encoder = nullptr;
  WebPConfig config{};
  int width = 0;
  int height = 0;
  int time = 0;  // milliseconds, where the next frame begins
  bool ended = false;

  State() = default;
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() { Drop(); }

  void Drop() {
    WebPAnimEncoderDelete(encoder);
    encoder = nullptr;
  }
  bool Begin(const Image& first);
  bool Encode(const Image& frame);
};

bool AnimationWriter::State::Begin(const Image& first) {
  WebPAnimEncoderOptions options;
  if (WebPAnimEncoderOptionsInit(&options) == 0) return false;
  options.anim_params.loop_count = 0;  // for ever
  width = first.width;
  height = first.height;
  encoder = WebPAnimEncoderNew(width, height, &options);
  return encoder != nullptr;
}

bool AnimationWriter::State::Encode(const Image& frame) {
  WebPPicture picture;
  if (WebPPictureInit(&picture) == 0) return false;
  picture.use_argb = 1;
  picture.width = width;
  picture.height = height;
  const bool added = WebPPictureImportRGBA(&picture, frame.rgba.data(), 4 * width) != 0 &&
                     WebPAnimEncoderAdd(encoder, &picture, time, &config) != 0;
  WebPPictureFree(&picture);
  return added;
}

AnimationWriter::AnimationWriter(float quality) : state(std::make_unique<State>()) {
  const bool usable = quality >= 0.0f && quality <= 100.0f;
  WebPConfigPreset(&state->config, WEBP_PRESET_DRAWING, usable ? quality : 80.0f);
  state->config.method =
      2;  // of 0 (fast) to 6 (small): a tour of frames should not take longer than drawing it
}

AnimationWriter::~AnimationWriter() = default;

bool AnimationWriter::Add(const Image& frame, int milliseconds, std::string& error) {
  const auto fail = [&error](const char* reason) {
    error = reason;
    return false;
  };
  if (state->ended) return fail("the animation has ended already");
  if (milliseconds < 1 || milliseconds > std::numeric_limits<int>::max() - state->time)
    return fail("a frame of the animation has no duration");
  if (!IsDrawable(frame, error)) return false;
  if (frame.width > WEBP_MAX_DIMENSION || frame.height > WEBP_MAX_DIMENSION)
    return fail("the picture is too large for an animation");
  if (state->encoder == nullptr && !state->Begin(frame)) return fail("the animation cannot be begun");
  if (frame.width != state->width || frame.height != state->height)
    return fail("a frame differs in size from the first of the animation");
  if (!state->Encode(frame)) return fail("a frame of the animation cannot be encoded");
  state->time += milliseconds;
  return true;
}

bool AnimationWriter::Write(const std::filesystem::path& path, std::string& error) {
  const auto fail = [&](const char* reason) {
    error = path.string() + ": " + reason;
    return false;
  };
  if (state->ended) return fail("the animation has been written already");
  if (state->encoder == nullptr) return fail("the animation has no frames");
  state->ended = true;
  WebPData bytes;
  WebPDataInit(&bytes);
  // The empty frame says when the last one ends.
  const bool assembled = WebPAnimEncoderAdd(state->encoder, nullptr, state->time, nullptr) != 0 &&
                         WebPAnimEncoderAssemble(state->encoder, &bytes) != 0;
  state->Drop();
  if (!assembled) return fail("the animation cannot be put together");
  WholeFile file(path);
  file.Write(bytes.bytes, bytes.size);
  WebPDataClear(&bytes);
  return file.Finish(error);
}

}  // namespace zovhost
