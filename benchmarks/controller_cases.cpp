// An input of a six-axis device and the frame that follows, in each of its modes.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <utility>

#include "bare_device.h"
#include "benchmark_case.h"
#include "benchmark_hub.h"
#include "conversions.h"
#include "korvane/cam3d_controller.h"

using namespace Korvane;

namespace {

// Swings of the device, which come back to where they began.
class Swings {
 public:
  struct Input {
    Vector3 translation;
    Vector3 rotation;
  };

  Swings() {
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      const double angle = 2.0 * Math::PI * static_cast<double>(i) / static_cast<double>(inputs.size());
      inputs[i].translation = {60.0 * std::sin(angle), 50.0 * std::cos(angle), 40.0 * std::sin(2.0 * angle)};
      inputs[i].rotation = {20.0 * std::cos(2.0 * angle), 40.0 * std::sin(angle), 30.0 * std::cos(angle)};
    }
  }
  void Restart() { next = 0; }
  const Input& Next() { return inputs[next++ % inputs.size()]; }

 private:
  std::array<Input, 256> inputs;
  std::size_t next = 0;
};

class DeviceCase : public BenchmarkCase {
 public:
  using NavigationMode = Cam3DControllerParameters::NavigationMode;

  DeviceCase(std::string caseName, NavigationMode caseMode) : name(std::move(caseName)), mode(caseMode) {}

  std::string GetName() const override { return name; }

  void Restart() override {
    controller = std::make_unique<Cam3DController>();
    hub = std::make_unique<BenchmarkHub>();
    hub->view = GetBenchmarkCamera();
    hub->GetApplicationParameters().global_bound_radius = 1000.0;
    controller->SetKorvane(hub.get());
    controller->SetNavigationMode(mode);
    ReadSettings();
    bareView = ::ToBare(hub->view);
    bare = std::make_unique<BareDevice>(static_cast<BareDevice::Mode>(mode), settings, bareView);
    libraryPath.Restart();
    barePath.Restart();
    Vector3 first(100.0, 0.0, 0.0);  // begins the motion
    Vector3 still;
    controller->On3DControllerInput(first, still);
  }

  void StepLibrary() override {
    Swings::Input input = libraryPath.Next();
    controller->On3DControllerInput(input.translation, input.rotation);
    hub->PerformOperations();
    benchmark::DoNotOptimize(std::as_const(hub->view));
  }

  // The frame reads the host's camera, and writes it back only when that made a difference.
  void StepBare() override {
    const Swings::Input& input = barePath.Next();
    BareCamera camera = bareView;
    const BareCamera snapshot = camera;
    bare->Step(::ToBare(input.translation), ::ToBare(input.rotation), camera);
    if (!IsSameView(camera, snapshot)) bareView = camera;
    benchmark::DoNotOptimize(&bareView);
    benchmark::ClobberMemory();
  }

  bool Agrees() const override {
    const double tolerance = 1e-8;  // over a thousand steps of lengths around 20, each upon the last
    return (::ToBare(hub->view.eye) - bareView.eye).norm() < tolerance &&
           (::ToBare(hub->view.centre) - bareView.centre).norm() < tolerance &&
           (::ToBare(hub->view.up) - bareView.up).norm() < tolerance;
  }

 private:
  void ReadSettings() {
    const ApplicationParameters& p = hub->GetApplicationParameters();
    double translation[3];
    double rotation[3];
    controller->GetTranslationMultipliers(mode, translation);
    controller->GetRotationMultipliers(mode, rotation);
    settings = {controller->GetSensitivity(),
                controller->GetInputThreshold(),
                Eigen::Vector3d(translation),
                Eigen::Vector3d(rotation),
                ::ToBare(p.scene_up_direction),
                ::ToBare(p.scene_front_direction),
                ::ToBare(p.global_bound_centre),
                p.global_bound_radius,
                p.scene_scale,
                p.pan_multiplier,
                p.look_multiplier,
                p.dolly_multiplier,
                p.look_invert_tolerance};
  }

  const std::string name;
  const NavigationMode mode;
  std::unique_ptr<BenchmarkHub> hub;
  std::unique_ptr<Cam3DController> controller;  // goes before its hub
  BareDevice::Settings settings;
  BareCamera bareView;
  std::unique_ptr<BareDevice> bare;
  Swings libraryPath;
  Swings barePath;
};

}  // namespace

std::vector<BenchmarkCase*> GetControllerCases() {
  static DeviceCase object("device turns the model", Cam3DControllerParameters::MODE_OBJECT);
  static DeviceCase walk("device walks", Cam3DControllerParameters::MODE_WALK);
  static DeviceCase fly("device flies", Cam3DControllerParameters::MODE_FLY);
  static DeviceCase pan("device pans", Cam3DControllerParameters::MODE_PAN);
  return {&object, &walk, &fly, &pan};
}
