#include "korvane/pivot_ball.h"

#include "camera/camera_frame.h"
#include "camera/view_size.h"
#include "korvane/aspect_ratio_adjuster.h"
#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/icon3d.h"
#include "korvane/interval_timer.h"
#include "korvane/renderer.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

constexpr double VIEW_FRACTION = 0.025;  // of the greater side of the view, at the depth of the ball
constexpr double OPAQUE_RATIO = 0.25;    // of the proper size to the size: the ball fades below it
constexpr float SHADOW_OPACITY = 0.5F;   // of the opacity of the ball
constexpr double LABEL_GAP = 0.25;       // of the size of the ball, and of the height of the label

std::unique_ptr<ResourceIcon3D> MakeHiddenIcon(ModelID model, float green, float opacity) {
  auto icon = std::make_unique<ResourceIcon3D>(model);
  icon->SetVisible(false);
  float* const colour = icon->GetMaterial().colour;
  colour[0] = 0.0F;
  colour[1] = green;
  colour[2] = 0.0F;
  colour[3] = opacity;
  return icon;
}

double ProperSize(const CameraParameters& camera, const Vector3& position) {
  const double depth = (position - camera.eye).Dot(ViewDirection(camera));
  const Vector2 view = ViewSizeAtDepth(camera, depth);
  return Math::Max(view.x, view.y) * VIEW_FRACTION;
}

}  // namespace

class PivotBallHideTimer : public IntervalTimer {
 public:
  explicit PivotBallHideTimer(PivotBall* owner) : ball(owner) {}

 protected:
  void Timeout() override {
    ball->SetVisible(false);
    if (CameraOperations* const hub = ball->GetKorvane()) hub->RequestApplicationUpdate();
  }

 private:
  PivotBall* ball;
};

PivotBall::PivotBall()
    : ball(MakeHiddenIcon(MODEL_PIVOT_BALL, 1.0F, 1.0F)),
      shadowBall(MakeHiddenIcon(MODEL_PIVOT_SHADOW, 0.25F, 0.5F)),
      hideTimer(std::make_unique<PivotBallHideTimer>(this)) {}

PivotBall::~PivotBall() = default;

bool PivotBall::Create() {
  if (renderer == nullptr) return false;
  if (label.Get() == nullptr) label.Take(renderer, labelString);
  return true;
}

bool PivotBall::Destroy() {
  hideTimer->Stop();
  if (renderer == nullptr) return false;
  if (label.Get() == nullptr) return true;
  label.GiveBack();
  renderer->ApplyTextureUsage();
  return true;
}

void PivotBall::SetPosition(const Vector3& position) { ball->SetPosition(position); }
const Vector3& PivotBall::GetPosition() const { return ball->GetPosition(); }
double PivotBall::GetSize() const { return ball->GetSize(); }
bool PivotBall::IsVisible() const { return ball->IsVisible(); }

void PivotBall::SetVisible(bool visible) {
  hideTimer->Stop();
  ball->SetVisible(visible);
}

bool PivotBall::Hide(double delay) {
  if (!IsVisible()) return false;
  if (delay > 0.0) {
    hideTimer->Stop();
    hideTimer->Start(delay, false);
  } else {
    SetVisible(false);
  }
  return true;
}

void PivotBall::SetLabel(StringID string) {
  if (string == labelString) return;
  labelString = string;
  label.Take(renderer, string);
}

void PivotBall::UpdateSize(const CameraParameters& camera) {
  ball->SetSize(ProperSize(camera, ball->GetPosition()));
}

void PivotBall::UpdateOpacity(const CameraParameters& camera) {
  const double size = ball->GetSize();
  const double ratio = size > Math::EPSILON_VALUE ? ProperSize(camera, ball->GetPosition()) / size : 0.0;
  const double opacity = ratio > 0.0 ? Math::EaseClamp(ratio, 0.0, OPAQUE_RATIO) : 0.0;
  ball->GetMaterial().colour[3] = static_cast<float>(opacity);
}

void PivotBall::Draw() {
  if (!IsVisible() || cameraOperations == nullptr || renderer == nullptr) return;
  const CameraParameters& camera = cameraOperations->GetCameraParameters();
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  ball->SetPosition(camera.pivot);
  shadowBall->SetVisible(true);
  shadowBall->SetPosition(ball->GetPosition());
  shadowBall->SetSize(ball->GetSize());
  UpdateOpacity(camera);
  shadowBall->GetMaterial().colour[3] = ball->GetMaterial().colour[3] * SHADOW_OPACITY;
  if (label.Get() != nullptr) {
    UpdateLabelPosition(camera, parameters.viewport_width, parameters.viewport_height);
  }
  const Lifeline::Watch alive(lifeline);
  DrawBall();
  if (alive) DrawLabel();
}

// A disc that the host destroys while it draws takes its ball with it.
void PivotBall::DrawBall() {
  const Lifeline::Watch alive(lifeline);
  const FullViewPass pass(renderer, *cameraOperations, Renderer::RENDER_SCENE);
  for (const int drawMode : {Renderer::DRAW_THROUGH, Renderer::DRAW_QUADS}) {
    if (!pass || !alive) return;
    shadowBall->GetMaterial().drawMode = drawMode;
    pass->Render(shadowBall.get());
  }
  if (alive) pass->Render(ball.get());
}

void PivotBall::DrawLabel() {
  if (label.Get() == nullptr || cameraOperations == nullptr) return;
  const Lifeline::Watch alive(lifeline);
  const FullViewPass pass(renderer, *cameraOperations);
  DynamicIcon2D* const text = alive ? label.Get() : nullptr;
  if (pass && text != nullptr) pass->Render(text);
}

void PivotBall::UpdateLabelPosition(const CameraParameters& camera, int width, int height) {
  DynamicIcon2D* const text = label.Get();
  const Vector3 view = camera.centre - camera.eye;
  const Vector3 left = camera.up.Cross(view).Normalized();
  const Vector3 upward = view.Cross(left).Normalized();
  const Vector3 toBall = ball->GetPosition() - camera.eye;
  const double depth = toBall.Dot(view.Normalized());
  const Vector2 offScreen(-text->GetWidth(), -text->GetHeight());
  if (!(depth > 0.0)) {
    text->SetPosition(offScreen);
    return;
  }

  const FrustumTangents tangents(camera);
  Vector2 half = HalfViewAtDepth(camera, tangents, depth);
  AdjustForAspectRatio(camera, width, height, half.x, half.y);
  const double toLeft = toBall.Dot(left) / half.x;
  const double toTop = toBall.Dot(upward) / half.y;
  const double axisX = tangents.left / (tangents.left + tangents.right);  // fractions of the viewport
  const double axisY = tangents.bottom / (tangents.bottom + tangents.top);
  const double gap = ball->GetSize() * LABEL_GAP / half.y * height + text->GetHeight() * LABEL_GAP;
  const Vector2 pixel((axisX - toLeft * axisX) * width, (toTop * axisY + axisY) * height + gap);
  text->SetPosition(pixel.IsFinite() ? pixel : offScreen);
}

}  // namespace Korvane
