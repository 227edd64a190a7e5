// A storm of random calls, with a renderer that fails at random and a host that acts inside of every call:
// nothing breaks, leaks or becomes a NaN. Under the sanitizers this finds a history that goes on in freed
// memory.
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "story/history/rewind_scene.h"
#include "support/random.h"

using namespace Korvane;

namespace {

constexpr int EVENTS = 200000;

// Fails at random, and lets the host act.
struct StormRenderer : RecordingRenderer {
  using RecordingRenderer::Render;
  DynamicIcon2D* CreateSceneScreenshot(int width, int height, const CameraParameters& camera) override {
    return Go() ? RecordingRenderer::CreateSceneScreenshot(width, height, camera) : nullptr;
  }
  bool DestroyIcon(DynamicIcon2D*& icon) override {
    Go();  // what is given back goes
    return RecordingRenderer::DestroyIcon(icon);
  }
  bool BeginRender(const Box2& /*viewport*/, const CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    const bool begins = Go();
    passes += begins;
    return begins;
  }
  bool EndRender() override {
    --passes;
    return Go();
  }
  bool Render(DynamicIcon2D* icon) override {
    drawn += icon->GetID();  // still there
    return Go();
  }
  bool Render(ResourceIcon2D* icon) override {
    const bool done = Go();
    drawn += icon->GetTextureResourceID();
    return done;
  }
  bool Go() const { return go(); }

  std::function<bool()> go = [] { return true; };
  int passes = 0;
  long drawn = 0;
};

struct RewindStorm : ::testing::Test {
  RewindStorm() {
    for (RewindListener* const listener : {&first, &second}) {
      listener->onHear = [this](const std::string&) { Act(); };
    }
    hub.onAsk = hub.onCompare = [this] { Act(); };
    journal.recording = false;
    for (auto& renderer : renderers) MakeRenderer(renderer);
    MakeHistory();
  }
  ~RewindStorm() override {
    chance = 0;
    history.reset();
  }

  void MakeRenderer(std::unique_ptr<StormRenderer>& renderer) {
    renderer = std::make_unique<StormRenderer>();
    renderer->go = [this] {
      Act();
      return chance == 0 || random.Integer(0, 9) > 0;
    };
  }
  void MakeHistory() {
    history = std::make_unique<OpenHistory>();
    Furnish(*history, &hub, renderers[0].get());
    history->SetMaxHistorySize(12);
    history->AddObserver(&first);
  }

  // One time in `chance` the host does something, to a depth of a few calls in each other.
  void Act() {
    if (chance == 0 || depth >= 4 || random.Integer(0, chance - 1) != 0) return;
    ++depth;
    ++acts;
    Do();
    --depth;
  }

  CameraParameters AnyCamera() {
    const int kind = random.Integer(0, 19);
    if (kind == 0) return BrokenCamera(random);
    if (kind == 1) return ExtremeCamera(random);
    return At(random.Integer(-3, 10));
  }
  Vector2 AnyPosition() {
    if (random.Integer(0, 49) == 0) return {std::nan(""), 0};
    return {double(random.Integer(-400, 1200)), double(random.Integer(0, 600))};
  }
  int AnyIndex() { return random.Integer(-1, history->GetElementCount()); }
  StormRenderer* AnyRenderer() {
    const int which = random.Integer(0, 2);
    return which == 2 ? nullptr : renderers[which].get();
  }

  void Do() {
    if (!history) return;
    static constexpr void (RewindStorm::*KINDS[])() = {
        &RewindStorm::Record,   &RewindStorm::Record,    &RewindStorm::Change, &RewindStorm::Remove,
        &RewindStorm::Choose,   &RewindStorm::OpenStrip, &RewindStorm::Follow, &RewindStorm::Follow,
        &RewindStorm::Follow,   &RewindStorm::Draw,      &RewindStorm::Close,  &RewindStorm::Rewire,
        &RewindStorm::Pictures,
    };
    (this->*random.OneOf(KINDS))();
  }
  void Record() {
    history->BeginElementRecord(AnyCamera());
    if (history) history->EndElementRecord(AnyCamera());
  }
  void Change() {
    const int kind = random.Integer(0, 3);
    if (kind == 0) history->UpdateCurrentElement(AnyCamera());
    if (kind == 1) history->UpdateLastElement(AnyCamera());
    if (kind == 2) history->UpdateHistoryElement(AnyIndex(), AnyCamera());
    if (kind == 3) history->AddHistoryElement(AnyCamera(), nullptr);
  }
  void Remove() {
    const int kind = random.Integer(0, 9);
    if (kind == 0) history->ClearHistory();
    if (kind == 1) history->SetMaxHistorySize(static_cast<unsigned>(random.Integer(0, 12)));
    if (kind > 1) history->RemoveHistoryElements(random.Integer(-1, 3));
  }
  void Choose() {
    const int kind = random.Integer(0, 2);
    if (kind == 0) history->SetCurrentElementIndex(AnyIndex());
    if (kind == 1) history->ShiftBackOneElement();
    if (kind == 2) history->ShiftForwardOneElement();
  }
  void OpenStrip() { history->OpenTimeline(AnyPosition(), AnyCamera()); }
  void Follow() { history->SlideTimeline(AnyPosition()); }
  void Draw() { history->Draw(hub.view); }
  void Close() { history->CloseTimeline(AnyPosition()); }
  void Pictures() {
    const int kind = random.Integer(0, 2);
    if (kind == 0) history->UpdateThumbnails();
    if (kind == 1) history->SetElementThumbnail(AnyIndex(), nullptr);
    if (kind == 2) history->SetThumbnailSize(static_cast<float>(random.Integer(0, 100)));
  }
  void Rewire() {
    const int kind = random.Integer(0, 19);
    if (kind < 4) history->SetRenderer(AnyRenderer());
    if (kind == 4) history->SetKorvane(nullptr);
    if (kind == 5 || kind == 6) history->SetKorvane(&hub);
    if (kind == 7) history->AddObserver(&second);
    if (kind == 8) history->RemoveObserver(&second);
    if (kind == 9) history->RemoveObserver(&first);
    if (kind == 10) history->AddObserver(&first);
    if (kind == 11) history->SetSnapEnabled(random.Coin());
    if (kind == 12) history->SetRecordEnabled(random.Integer(0, 3) > 0);
    if (kind == 13) history->SetViewportSize(random.Integer(-10, 1500), random.Integer(0, 600));
    if (kind == 14) history->SetThumbnailGapSize(static_cast<float>(random.Integer(-20, 20)));
    if (kind == 15 && depth > 0) history.reset();
  }

  // Between two events, when nothing runs.
  void Check() {
    const RewindElements& elements = history->GetParts().elements;
    const RewindStrip& strip = history->GetParts().strip;
    const int count = elements.GetCount();
    ASSERT_TRUE(count == 0 ? elements.GetCurrent() == 0 : elements.Holds(elements.GetCurrent()));
    for (const auto& element : elements.GetList()) {
      ASSERT_TRUE(element.bounds.center.IsFinite() && element.bounds.halfExtent.IsFinite());
      ASSERT_TRUE(element.camera.IsFinite());
      ASSERT_TRUE(element.weight >= 0.0 && element.weight <= 1.0);
    }
    ASSERT_TRUE(strip.bracketPosition.IsFinite() && strip.mouseCorrection.IsFinite());
    ASSERT_TRUE(strip.bracketOffset.IsFinite() && std::isfinite(strip.pendingShift));
    CameraParameters camera;
    history->GetInterpolatedCamera(camera);
    ASSERT_TRUE(camera.IsFinite());
    for (const auto& renderer : renderers) {
      ASSERT_EQ(renderer->passes, 0);
      ASSERT_EQ(renderer->GetForeignDestroyCount(), 0);
    }
    ASSERT_EQ(renderers[0]->GetLiveIconCount() + renderers[1]->GetLiveIconCount(), CountPictures());
  }
  int CountPictures() {
    const auto& list = history->GetParts().elements.GetList();
    return static_cast<int>(std::count_if(list.begin(), list.end(),
                                          [](const auto& element) { return element.thumbnail != nullptr; }));
  }

  Random random;
  Journal journal;
  RewindHub hub;
  std::unique_ptr<StormRenderer> renderers[2];
  RewindListener first{journal};
  RewindListener second{journal};
  std::unique_ptr<OpenHistory> history;
  int chance = 12;
  int depth = 0;
  long acts = 0;
};

}  // namespace

TEST_F(RewindStorm, breaks_nothing) {
  int ended = 0;
  for (int i = 0; i < EVENTS; ++i) {
    Do();
    ended += history == nullptr;
    if (!history) MakeHistory();
    Check();
    if (HasFatalFailure()) FAIL() << "at event " << i;
    for (const auto& renderer : renderers) renderer->ClearCalls();
  }
  EXPECT_GT(acts, EVENTS / 20);
  EXPECT_GT(ended, 20);
}

// A renderer that goes takes its pictures along.
TEST_F(RewindStorm, outlives_its_renderers) {
  chance = 0;
  for (int i = 0; i < EVENTS / 4; ++i) {
    Do();
    if (random.Integer(0, 19) == 0) MakeRenderer(renderers[random.Integer(0, 1)]);
    if (random.Integer(0, 9) == 0) history->SetRenderer(AnyRenderer());
    for (const auto& renderer : renderers) {
      ASSERT_EQ(renderer->GetForeignDestroyCount(), 0) << i;
      renderer->ClearCalls();
    }
  }
}
