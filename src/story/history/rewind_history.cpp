#include "korvane/rewind_history.h"

#include "foundation/one_thread.h"
#include "story/history/rewind_interpolation.h"
#include "story/history/rewind_parts.h"

namespace Korvane {

namespace {

bool angularInterpolation = true;

// Holds on to what a history works with, for as long as a call into it goes on.
using Kept = std::shared_ptr<RewindParts>;

}  // namespace

RewindHistoryObserver::RewindHistoryObserver() = default;
RewindHistoryObserver::~RewindHistoryObserver() = default;

RewindHistory::RewindHistory() : parts(std::make_shared<RewindParts>()) {}

RewindHistory::~RewindHistory() {
  lifeline.Cut();
  parts->timeline.End();
  parts->elements.End();
}

// ---- recording ----

bool RewindHistory::BeginElementRecord(const CameraParameters& camera) {
  const Kept kept = parts;
  return kept->recorder.Begin(camera);
}

bool RewindHistory::EndElementRecord(const CameraParameters& camera) {
  const Kept kept = parts;
  return kept->recorder.End(camera);
}

bool RewindHistory::AddElementSubrecord(const CameraParameters& /*camera*/) { return true; }

bool RewindHistory::GetRecordEnabled() const { return parts->recorder.enabled; }
void RewindHistory::SetRecordEnabled(bool enabled) { parts->recorder.enabled = enabled; }

// ---- elements ----

int RewindHistory::AddHistoryElement(const CameraParameters& camera, DynamicIcon2D* thumbnail) {
  const Kept kept = parts;
  return kept->elements.Add(camera, thumbnail);
}

bool RewindHistory::UpdateCurrentElement(const CameraParameters& given) {
  const Kept kept = parts;
  const CameraParameters camera = given;
  const RewindStrip& strip = kept->strip;
  RewindElements& elements = kept->elements;
  if (strip.open || elements.GetCount() == 0 || !camera.IsFinite()) return false;
  const Lifeline::Watch lives(kept->partners.life);
  if (kept->partners.IsSceneOutsideView(camera) || !lives) return false;
  return elements.Update(elements.GetCurrent(), camera);
}

bool RewindHistory::UpdateLastElement(const CameraParameters& camera) {
  const Kept kept = parts;
  return kept->elements.UpdateLast(camera);
}

bool RewindHistory::UpdateHistoryElement(int index, const CameraParameters& camera) {
  const Kept kept = parts;
  return kept->elements.Update(index, camera);
}

int RewindHistory::RemoveHistoryElements(int count) {
  const Kept kept = parts;
  return kept->elements.RemoveOldest(count);
}

void RewindHistory::ClearHistory() {
  const Kept kept = parts;
  kept->elements.Clear();
}

int RewindHistory::GetElementCount() const { return parts->elements.GetCount(); }

bool RewindHistory::GetElementCamera(int index, CameraParameters& camera) const {
  if (!parts->elements.Holds(index)) return false;
  camera = parts->elements.At(index).camera;
  return true;
}

DynamicIcon2D* RewindHistory::GetElementThumbnail(int index) const {
  return parts->elements.Holds(index) ? parts->thumbnails.Get(parts->elements.At(index)) : nullptr;
}

bool RewindHistory::SetElementThumbnail(int index, DynamicIcon2D* thumbnail) {
  const Kept kept = parts;
  return kept->elements.SetThumbnail(index, thumbnail);
}

void RewindHistory::UpdateThumbnails() {
  const Kept kept = parts;
  kept->elements.MakeThumbnails();
}

unsigned int RewindHistory::GetMaxHistorySize() const { return parts->elements.GetLimit(); }

void RewindHistory::SetMaxHistorySize(unsigned int count) {
  const Kept kept = parts;
  kept->elements.SetLimit(count);
}

// ---- the current element ----

int RewindHistory::GetCurrentElementIndex() const {
  return IsTimelineEmpty() ? -1 : parts->elements.GetCurrent();
}

bool RewindHistory::SetCurrentElementIndex(int index) {
  const Kept kept = parts;
  if (kept->strip.open || !kept->elements.Holds(index)) return false;
  kept->elements.Choose(index);
  return true;
}

bool RewindHistory::ShiftBackOneElement() {
  const Kept kept = parts;
  return kept->elements.Step(-1);
}

bool RewindHistory::ShiftForwardOneElement() {
  const Kept kept = parts;
  return kept->elements.Step(1);
}

bool RewindHistory::GetTransitionCamera(CameraParameters& camera) const {
  return GetElementCamera(GetCurrentElementIndex(), camera);
}

// ---- the film strip ----

bool RewindHistory::IsTimelineEmpty() const { return GetElementCount() == 0; }
bool RewindHistory::IsTimelineOpen() const { return parts->strip.open; }

bool RewindHistory::OpenTimeline(const Vector2& position, const CameraParameters& camera) {
  const Kept kept = parts;
  return kept->timeline.Open(position, camera);
}

bool RewindHistory::SlideTimeline(const Vector2& position) {
  const Kept kept = parts;
  return kept->timeline.Slide(position);
}

bool RewindHistory::CloseTimeline(const Vector2& /*position*/) {
  const Kept kept = parts;
  return kept->timeline.Close();
}

bool RewindHistory::GetInterpolatedCamera(CameraParameters& camera) const {
  return InterpolateElements(parts->elements.GetList(), angularInterpolation, camera);
}

const Vector2& RewindHistory::GetBracketPosition() const { return parts->strip.bracketPosition; }

void RewindHistory::Draw(const CameraParameters& camera) {
  const Kept kept = parts;
  kept->timeline.Draw(camera);
}

bool RewindHistory::GetSnapEnabled() const { return parts->strip.snapEnabled; }
void RewindHistory::SetSnapEnabled(bool enabled) { parts->strip.snapEnabled = enabled; }
void RewindHistory::SetThumbnailSize(float size) { parts->timeline.SetThumbnailSize(size); }
void RewindHistory::SetThumbnailGapSize(float size) { parts->timeline.SetGapSize(size); }
void RewindHistory::SetScale(double scale) {
  const Kept kept = parts;
  kept->timeline.SetScale(scale);
}

void RewindHistory::SetViewportSize(int width, int height) {
  if (width < 0 || height < 0) return;
  parts->strip.viewportWidth = width;
  parts->strip.viewportHeight = height;
}

bool RewindHistory::GetAngularInterpolation() { return angularInterpolation; }
void RewindHistory::SetAngularInterpolation(bool enabled) {
  AssertOneThread();
  angularInterpolation = enabled;
}

// ---- collaborators ----

void RewindHistory::SetKorvane(CameraOperations* hub) { parts->partners.hub.Set(hub); }

void RewindHistory::SetRenderer(Renderer* renderer) {
  const Kept kept = parts;
  kept->elements.SetRenderer(renderer);
}

bool RewindHistory::AddObserver(RewindHistoryObserver* observer) {
  return parts->partners.observers.Add(observer);
}

void RewindHistory::RemoveObserver(RewindHistoryObserver* observer) {
  parts->partners.observers.Remove(observer);
}

bool RewindHistory::CamerasAreEqual(CameraParameters a, CameraParameters b) const {
  const Kept kept = parts;
  return kept->partners.AreEqual(a, b);
}

bool RewindHistory::IsSceneOutsideView(const CameraParameters& camera) const {
  const Kept kept = parts;
  return kept->partners.IsSceneOutsideView(camera);
}

}  // namespace Korvane
