// The lines of the guide for hosts with a six-axis device.
#include "controller/controller_scene.h"
#include "korvane/view_manager.h"

using namespace Korvane;

namespace {

// What the host's reader of the device calls.
struct DeviceReader {
  void OnDeviceMoved(Korvane::Vector3 translation, Korvane::Vector3 rotation) {
    device.On3DControllerInput(translation, rotation);  // leaves in both what is used of them
  }
  void OnDeviceButton(int button, bool pressed) {
    pressed ? device.On3DControllerKeyDown(button) : device.On3DControllerKeyUp(button);
  }
  void Walk() { device.SetNavigationMode(Korvane::Cam3DControllerParameters::MODE_WALK); }

  Cam3DController& device;
};

}  // namespace

TEST(DocumentedDevice, moves_the_view_and_presses_its_buttons) {
  ManualPlatform platform;
  Journal journal;
  RecordingRenderer renderer;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  ControllerObserver deviceObserver{journal};
  ViewManager manager;
  manager.SetKorvane(&hub);
  manager.SetRenderer(&renderer);

  Korvane::Cam3DController device;
  device.MapKey(0, Korvane::CAM3D_KEY_FIT);  // the device's own numbers
  device.MapKey(1, Korvane::CAM3D_KEY_PAN_MODE);
  device.AddObserver(&deviceObserver);
  manager.SetCam3DController(&device);  // before Create

  manager.Create();
  DeviceReader reader{device};
  for (int i = 0; i < 3; ++i) {
    reader.OnDeviceMoved({0, 0, -300}, {});
    hub.PerformOperations();
  }
  reader.OnDeviceMoved({}, {});
  EXPECT_LT(hub.view.eye.z, 9.9);  // towards the model
  EXPECT_FALSE(device.IsOperating());
  reader.OnDeviceButton(1, true);
  reader.OnDeviceButton(1, false);
  EXPECT_EQ(device.GetNavigationMode(), Cam3DControllerParameters::MODE_PAN);
  reader.OnDeviceButton(0, true);
  EXPECT_TRUE(hub.IsShotActive());
  reader.Walk();
  EXPECT_EQ(device.GetNavigationMode(), Cam3DControllerParameters::MODE_WALK);
  EXPECT_EQ(journal.Count("key down 21"), 1);
  EXPECT_EQ(journal.Count("key up 21"), 1);
  EXPECT_EQ(journal.Count("key down 15"), 1);
  manager.Destroy();
}
