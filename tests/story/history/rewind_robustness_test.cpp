// Numbers that are none, collaborators that fail or go, hosts that act inside of what they are told, and what
// a slide and a draw cost.
#include <limits>
#include <memory>
#include <utility>

#include "story/history/rewind_scene.h"
#include "support/allocation_counter.h"
#include "support/counting_renderer.h"
#include "support/random.h"

using namespace Korvane;

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

// Calls back from what a history asks of a renderer.
struct ActingRenderer : RecordingRenderer {
  using RecordingRenderer::Render;
  DynamicIcon2D* CreateSceneScreenshot(int width, int height, const CameraParameters& camera) override {
    Act("screenshot");
    return RecordingRenderer::CreateSceneScreenshot(width, height, camera);
  }
  bool DestroyIcon(DynamicIcon2D*& icon) override {
    const bool destroyed = RecordingRenderer::DestroyIcon(icon);
    Act("destroy");
    return destroyed;
  }
  bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
    Act("begin");
    return RecordingRenderer::BeginRender(viewport, camera, mode);
  }
  bool Render(DynamicIcon2D* icon) override {
    const bool drawn = RecordingRenderer::Render(icon);
    Act("thumbnail");
    return drawn;
  }
  bool Render(ResourceIcon2D* icon) override {
    Act("picture");
    return RecordingRenderer::Render(icon);
  }
  bool EndRender() override {
    Act("end");
    return RecordingRenderer::EndRender();
  }

  void Act(const char* where) const {
    if (onCall) onCall(where);
  }
  std::function<void(const std::string& where)> onCall;
};

}  // namespace

struct RewindRobustness : RewindScene {};

// ---- numbers ----

TEST_F(RewindRobustness, a_camera_that_is_none_is_not_taken) {
  Fill(3);
  Random random;
  for (int i = 0; i < 50; ++i) {
    const CameraParameters broken = BrokenCamera(random);
    EXPECT_FALSE(history.BeginElementRecord(broken));
    EXPECT_FALSE(history.EndElementRecord(broken));
    EXPECT_FALSE(history.UpdateCurrentElement(broken));
    EXPECT_FALSE(history.UpdateLastElement(broken));
    EXPECT_FALSE(history.UpdateHistoryElement(0, broken));
    EXPECT_FALSE(history.UpdateHistoryElement(7, broken));
    EXPECT_EQ(history.AddHistoryElement(broken, nullptr), -1);
  }
  EXPECT_EQ(Eyes(), (Numbers{1, 2, 3}));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(RewindRobustness, a_picture_that_is_not_taken_stays_the_callers) {
  CameraParameters broken = At(1);
  broken.eye.y = NOT_A_NUMBER;
  EXPECT_EQ(history.AddHistoryElement(broken, renderer.CreateTooltip(L"a picture")), -1);
  EXPECT_EQ(renderer.GetLiveIconCount(), 1);
}

TEST_F(RewindRobustness, the_end_of_a_record_with_a_camera_that_is_none_arms_the_next) {
  Fill(1);
  history.SetRecordEnabled(false);
  CameraParameters broken = At(1);
  broken.up.z = ENDLESS;
  EXPECT_FALSE(history.BeginElementRecord(broken));
  history.SetRecordEnabled(true);
  EXPECT_FALSE(history.EndElementRecord(broken));
  EXPECT_TRUE(Move(1, 2));
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
}

TEST_F(RewindRobustness, a_view_that_is_broken_opens_the_strip_all_the_same) {
  Fill(2);
  CameraParameters broken = At(1);
  broken.eye.y = NOT_A_NUMBER;
  EXPECT_TRUE(history.OpenTimeline({400, 300}, broken));
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
  CameraParameters camera;
  EXPECT_TRUE(Slide(332));
  EXPECT_TRUE(history.GetInterpolatedCamera(camera));
  EXPECT_EQ(camera.eye.x, 1.0);
}

TEST_F(RewindRobustness, a_position_that_is_no_pixel_is_refused) {
  Fill(3);
  for (const Vector2& nowhere : {Vector2(NOT_A_NUMBER, 0), Vector2(0, NOT_A_NUMBER), Vector2(ENDLESS, 0),
                                 Vector2(0, -ENDLESS), Vector2(1e300, 0)}) {
    EXPECT_FALSE(history.OpenTimeline(nowhere, At(3)));
    EXPECT_FALSE(history.IsTimelineOpen());
  }
  Open(400);
  journal.Take();
  const Numbers places = Places();
  for (const double nowhere : {NOT_A_NUMBER, ENDLESS, -ENDLESS, 1e300}) EXPECT_FALSE(Slide(nowhere));
  EXPECT_EQ(Places(), places);
  EXPECT_EQ(Bracket(), 400.0);
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(RewindRobustness, pixels_as_far_as_an_int_goes_are_pixels) {
  Fill(5);
  Open(400);
  for (const int x : {std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 0}) {
    EXPECT_TRUE(Slide(x));
    EXPECT_GE(Bracket(), Places().front());
    EXPECT_LE(Bracket(), Places().back());
  }
}

TEST_F(RewindRobustness, sizes_that_are_none_are_refused) {
  Fill(2);
  for (const float size :
       {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), -1.0F}) {
    history.SetThumbnailSize(size);
    EXPECT_EQ(Strip().thumbnailSize, 64.0F);
  }
  for (const float gap : {std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity()}) {
    history.SetThumbnailGapSize(gap);
    EXPECT_EQ(Strip().thumbnailGapSize, 4.0F);
  }
  history.SetViewportSize(-1, 10);
  history.SetViewportSize(10, -1);
  EXPECT_EQ(Strip().viewportWidth, 800);
  EXPECT_EQ(Strip().viewportHeight, 600);
}

TEST_F(RewindRobustness, any_sizes_give_numbers) {
  Random random;
  const float sizes[] = {0.0F, 1e-38F, 1.0F, 64.0F, 1e30F, 3e38F};
  const float gaps[] = {0.0F, -64.0F, -100.0F, 1e-38F, 4.0F, 3e38F};
  const double scales[] = {1e-300, 0.5, 1.0, 2.0, 1e6, 1e300};
  const int widths[] = {0, 1, 300, 4096, std::numeric_limits<int>::max()};
  renderer.FailAlways("CreateSceneScreenshot");
  Fill(7);
  for (int round = 0; round < 2000; ++round) {
    history.SetThumbnailSize(random.OneOf(sizes));
    history.SetThumbnailGapSize(random.OneOf(gaps));
    history.SetScale(random.OneOf(scales));
    history.SetViewportSize(random.OneOf(widths), 600);
    if (random.Coin()) Open(random.Integer(-100, 1000));
    Slide(random.Integer(-1000, 5000));
    for (const auto& element : List()) {
      ASSERT_TRUE(element.bounds.center.IsFinite());
      ASSERT_TRUE(element.weight >= 0.0 && element.weight <= 1.0);
    }
    ASSERT_TRUE(history.GetBracketPosition().IsFinite());
    CameraParameters camera;
    history.GetInterpolatedCamera(camera);
    ASSERT_TRUE(camera.IsFinite());
  }
}

TEST_F(RewindRobustness, a_view_without_size_is_slid_and_drawn) {
  Fill(4);
  history.SetViewportSize(0, 0);
  Open(0);
  for (const double x : {5.0, -50.0, 200.0}) {
    EXPECT_TRUE(Slide(x));
    EXPECT_GE(Bracket(), Places().front());
    EXPECT_LE(Bracket(), Places().back());
  }
  history.Draw(hub.view);
  EXPECT_EQ(renderer.CountCalls("EndRender"), 1);
}

// ---- collaborators that go ----

TEST_F(RewindRobustness, a_history_that_ends_gives_its_pictures_back_and_tells_nobody) {
  auto ending = std::make_unique<RewindHistory>();
  ending->SetRenderer(&renderer);
  ending->AddHistoryElement(At(1), nullptr);
  ending->AddHistoryElement(At(2), nullptr);
  ending->AddObserver(&listener);
  EXPECT_EQ(renderer.GetLiveIconCount(), 2);
  ending.reset();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(RewindRobustness, pictures_go_back_to_the_renderer_that_made_them) {
  Fill(3);
  RecordingRenderer other;
  history.SetRenderer(&other);
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(history.GetElementThumbnail(0), nullptr);
  history.UpdateThumbnails();
  EXPECT_EQ(other.GetLiveIconCount(), 3);
  history.SetRenderer(&other);  // as it is
  EXPECT_EQ(other.GetLiveIconCount(), 3);
  history.SetRenderer(nullptr);
  EXPECT_EQ(other.GetLiveIconCount(), 0);
  EXPECT_EQ(renderer.GetForeignDestroyCount() + other.GetForeignDestroyCount(), 0);
}

TEST_F(RewindRobustness, the_pictures_of_a_renderer_that_is_gone_are_not_touched) {
  auto going = std::make_unique<RecordingRenderer>();
  history.SetRenderer(going.get());
  Fill(3);
  going.reset();
  EXPECT_EQ(history.GetElementThumbnail(0), nullptr);
  Open(400);
  Slide(366);
  history.SetThumbnailSize(32.0F);
  history.Draw(hub.view);
  Close();
  Move(3, 4);
  history.UpdateHistoryElement(1, At(9));
  history.RemoveHistoryElements(1);
  history.SetRenderer(&renderer);
  history.UpdateThumbnails();
  EXPECT_EQ(renderer.GetLiveIconCount(), history.GetElementCount());
  history.ClearHistory();
  EXPECT_EQ(renderer.GetForeignDestroyCount(), 0);
}

/// Ends while it is asked for a picture, and leaves one that is nobody's.
struct LastRenderer : RecordingRenderer {
  LastRenderer(std::unique_ptr<LastRenderer>& holder, DynamicIcon2D& icon) : self(holder), left(icon) {}
  DynamicIcon2D* CreateSceneScreenshot(int /*width*/, int /*height*/,
                                       const CameraParameters& /*camera*/) override {
    DynamicIcon2D* const answer = &left;
    self.reset();
    return answer;
  }
  std::unique_ptr<LastRenderer>& self;
  DynamicIcon2D& left;
};

TEST_F(RewindRobustness, a_picture_of_a_renderer_that_ends_with_it_is_not_kept) {
  history.SetRenderer(nullptr);
  Fill(3);
  DynamicIcon2D icon(1);
  std::unique_ptr<LastRenderer> last;
  last = std::make_unique<LastRenderer>(last, icon);
  history.SetRenderer(last.get());
  history.UpdateThumbnails();
  EXPECT_EQ(last, nullptr);
  for (const auto& element : List()) EXPECT_EQ(element.thumbnail, nullptr);
}

TEST_F(RewindRobustness, pictures_go_back_one_by_one_where_there_is_no_memory_to_take_them_together) {
  Fill(3);
  RecordingRenderer other;
  {
    const AllocationFault fault(1, 1);
    history.SetRenderer(&other);
  }
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  history.UpdateThumbnails();
  EXPECT_EQ(other.GetLiveIconCount(), 3);
  EXPECT_EQ(renderer.GetForeignDestroyCount() + other.GetForeignDestroyCount(), 0);
}

TEST_F(RewindRobustness, a_picture_given_before_there_is_a_renderer_goes_to_the_first_one) {
  RewindHistory bare;
  DynamicIcon2D* const given = renderer.CreateTooltip(L"a picture");
  bare.AddHistoryElement(At(1), given);
  EXPECT_EQ(bare.GetElementThumbnail(0), given);
  bare.SetRenderer(&renderer);
  EXPECT_EQ(bare.GetElementThumbnail(0), given);
  bare.ClearHistory();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
}

TEST_F(RewindRobustness, a_hub_that_is_gone_is_forgotten) {
  auto going = std::make_unique<RewindHub>();
  history.SetKorvane(going.get());
  Fill(1);
  going.reset();
  EXPECT_FALSE(history.CamerasAreEqual(At(1), At(1)));
  EXPECT_TRUE(Move(1, -1));
  EXPECT_FALSE(List().back().outsideView);
}

// ---- hosts that act in the middle ----

TEST_F(RewindRobustness, an_observer_that_removes_itself_hears_no_more) {
  Fill(2);
  RewindListener second(journal);
  history.AddObserver(&second);
  listener.onHear = [&](const std::string&) { history.RemoveObserver(&listener); };
  history.AddHistoryElement(At(3), nullptr);
  EXPECT_EQ(journal.Take(), (Lines{"added 2 at 3", "added 2 at 3"}));
  history.AddHistoryElement(At(4), nullptr);
  EXPECT_EQ(journal.Take(), Lines{"added 3 at 4"});
}

TEST_F(RewindRobustness, a_host_may_clear_while_the_picture_of_an_element_that_changes_goes) {
  ActingRenderer acting;
  history.SetRenderer(&acting);
  Fill(2);
  acting.onCall = [&](const std::string& where) {
    if (where != "destroy") return;
    acting.onCall = nullptr;
    history.ClearHistory();
  };
  history.UpdateHistoryElement(1, At(9));
  EXPECT_EQ(history.GetElementCount(), 0);
  history.SetRenderer(&renderer);
}

TEST_F(RewindRobustness, a_host_that_clears_when_it_is_told_of_a_clearing_is_told_once) {
  Fill(2);
  listener.onHear = [&](const std::string&) { history.ClearHistory(); };
  history.ClearHistory();
  EXPECT_EQ(journal.Take(), Lines{"cleared"});
}

TEST_F(RewindRobustness, a_host_that_closes_when_it_is_told_of_a_closing_is_told_once) {
  Fill(2);
  Open(400);
  Slide(332);
  journal.Take();
  listener.onHear = [&](const std::string&) { Close(); };
  Close();
  EXPECT_EQ(journal.Take(), (Lines{"current 0", "closed"}));
  EXPECT_FALSE(history.IsTimelineOpen());
}

TEST_F(RewindRobustness, while_an_element_goes_no_other_goes) {
  Fill(4);
  int within = -1;
  listener.onHear = [&](const std::string& what) {
    if (what == "removed") within = history.RemoveHistoryElements(2);
  };
  EXPECT_EQ(history.RemoveHistoryElements(1), 1);
  EXPECT_EQ(within, 0);
  EXPECT_EQ(Eyes(), (Numbers{2, 3, 4}));
}

TEST_F(RewindRobustness, while_an_element_goes_no_update_cuts_others_off) {
  Fill(4);
  bool within = true;
  listener.onHear = [&](const std::string& what) {
    if (what == "removed") within = history.UpdateHistoryElement(1, At(9));
  };
  history.RemoveHistoryElements(1);
  EXPECT_FALSE(within);
  EXPECT_EQ(Eyes(), (Numbers{2, 3, 4}));
  EXPECT_EQ(journal.Count("removed 0"), 1);
}

TEST_F(RewindRobustness, elements_added_while_others_go_stay) {
  Fill(4);
  history.SetCurrentElementIndex(1);
  int added = 0;
  listener.onHear = [&](const std::string& what) {
    if (what == "removed" && added < 5) history.AddHistoryElement(At(100 + ++added), nullptr);
  };
  history.UpdateHistoryElement(1, At(2));
  EXPECT_EQ(Eyes(), (Numbers{1, 2, 101, 102}));
}

TEST_F(RewindRobustness, a_history_that_is_cleared_while_its_elements_go_stays_cleared) {
  for (const char* const moment : {"removed", "current"}) {
    history.SetMaxHistorySize(100);
    Fill(5);
    listener.onHear = [&](const std::string& what) {
      if (what == moment) history.ClearHistory();
    };
    history.RemoveHistoryElements(3);
    EXPECT_EQ(history.GetElementCount(), 0) << moment;
    EXPECT_EQ(history.GetCurrentElementIndex(), -1) << moment;
    EXPECT_EQ(renderer.GetLiveIconCount(), 0) << moment;
    listener.onHear = nullptr;
  }
}

TEST_F(RewindRobustness, a_later_choice_is_the_last_that_is_told) {
  Fill(5);
  RewindListener second(journal);
  history.AddObserver(&second);
  listener.onHear = [&](const std::string&) {
    listener.onHear = nullptr;
    history.SetCurrentElementIndex(3);
  };
  history.SetCurrentElementIndex(0);
  EXPECT_EQ(journal.Take(), (Lines{"current 0", "current 3", "current 3"}));
}

TEST_F(RewindRobustness, a_picture_that_is_no_longer_wanted_is_given_back) {
  ActingRenderer acting;
  RecordingRenderer other;
  const std::function<void()> acts[] = {
      [&] { history.ClearHistory(); },
      [&] { history.UpdateLastElement(At(50)); },
      [&] { history.SetRenderer(nullptr); },
      [&] { history.SetRenderer(&other); },
      [&] { history.UpdateThumbnails(); },
      [&] { history.SetElementThumbnail(0, acting.CreateTooltip(L"a picture")); },
  };
  for (const auto& act : acts) {
    history.SetRenderer(&acting);
    acting.onCall = [&](const std::string& where) {
      if (where != "screenshot") return;
      acting.onCall = nullptr;
      act();
    };
    history.AddHistoryElement(At(1), nullptr);
    acting.onCall = nullptr;
    history.ClearHistory();
    EXPECT_EQ(acting.GetLiveIconCount(), 0);
    EXPECT_EQ(other.GetLiveIconCount(), 0);
  }
  EXPECT_EQ(acting.GetForeignDestroyCount() + other.GetForeignDestroyCount(), 0);
  history.SetRenderer(nullptr);
}

TEST_F(RewindRobustness, an_element_that_takes_another_camera_has_no_picture_of_the_one_before) {
  ActingRenderer acting;
  history.SetRenderer(&acting);
  acting.onCall = [&](const std::string& where) {
    acting.onCall = nullptr;
    if (where == "screenshot") history.UpdateLastElement(At(50));
  };
  history.AddHistoryElement(At(1), nullptr);
  EXPECT_EQ(Eyes(), Numbers{50});
  EXPECT_EQ(history.GetElementThumbnail(0), nullptr);
  history.SetRenderer(nullptr);
}

TEST_F(RewindRobustness, a_renderer_that_is_exchanged_while_it_draws_gets_no_picture_of_the_other) {
  ActingRenderer acting;
  history.SetRenderer(&acting);
  Fill(3);
  Open(400);
  acting.ClearCalls();
  acting.onCall = [&](const std::string& where) {
    if (where != "thumbnail") return;
    acting.onCall = nullptr;
    history.SetRenderer(&renderer);
    history.UpdateThumbnails();
    acting.ClearCalls();
  };
  history.Draw(hub.view);
  EXPECT_EQ(acting.TakeCalls(), Lines{"EndRender()"});
}

TEST_F(RewindRobustness, a_scene_that_asks_for_pictures_while_it_is_drawn_for_one_gets_none) {
  ActingRenderer acting;
  history.SetRenderer(&acting);
  acting.onCall = [&](const std::string&) { history.UpdateThumbnails(); };
  history.AddHistoryElement(At(1), nullptr);
  history.AddHistoryElement(At(2), nullptr);
  EXPECT_EQ(acting.CountCalls("CreateSceneScreenshot"), 2);
  history.SetRenderer(nullptr);
}

// ---- each act at each moment ----

namespace {

// A history of five elements of which the third is the current one, with everything that calls a host.
struct Stage {
  Stage() {
    history = std::make_unique<OpenHistory>();
    Furnish(*history, &hub, &renderer);
    for (int i = 1; i <= 5; ++i) history->AddHistoryElement(At(i), nullptr);
    history->SetCurrentElementIndex(2);
    history->AddObserver(&first);
    history->AddObserver(&second);
    journal.recording = false;
  }
  ~Stage() { history.reset(); }

  // At the `moment`th call out of the history, once.
  void ActAt(int moment, const std::function<void(Stage&)>& act) {
    const auto hear = [this, act, left = moment](const std::string&) mutable {
      if (left-- == 0) act(*this);
    };
    const auto shared = std::make_shared<std::function<void(const std::string&)>>(hear);
    const auto call = [shared](const std::string& where) { (*shared)(where); };
    renderer.onCall = call;
    first.onHear = second.onHear = [this, call](const std::string& what) {
      heardAfterEnd += history == nullptr;
      call(what);
    };
    hub.onAsk = hub.onCompare = [call] { call("hub"); };
  }
  void Quiet() {
    first.onHear = second.onHear = renderer.onCall = nullptr;
    hub.onAsk = hub.onCompare = nullptr;
  }

  Journal journal;
  RewindHub hub;
  ActingRenderer renderer;
  ActingRenderer other;
  RewindListener first{journal};
  RewindListener second{journal};
  std::unique_ptr<OpenHistory> history;
  int heardAfterEnd = 0;
};

struct Act {
  const char* name;
  void (*run)(Stage& stage);
};

constexpr Act OPERATIONS[] = {
    {"move",
     [](Stage& s) {
       s.history->BeginElementRecord(At(3.5));
       if (s.history) s.history->EndElementRecord(At(-6));
       if (s.history) s.history->BeginElementRecord(At(-6));
       if (s.history) s.history->EndElementRecord(At(7));
     }},
    {"add to a full history",
     [](Stage& s) {
       s.history->SetMaxHistorySize(5);
       s.history->AddHistoryElement(At(6), nullptr);
     }},
    {"update", [](Stage& s) { s.history->UpdateCurrentElement(At(8)); }},
    {"update the last",
     [](Stage& s) {
       s.history->SetCurrentElementIndex(4);
       if (s.history) s.history->UpdateLastElement(At(8));
     }},
    {"remove", [](Stage& s) { s.history->RemoveHistoryElements(4); }},
    {"clear", [](Stage& s) { s.history->ClearHistory(); }},
    {"lower the limit", [](Stage& s) { s.history->SetMaxHistorySize(2); }},
    {"step", [](Stage& s) { s.history->ShiftBackOneElement(); }},
    {"slide",
     [](Stage& s) {
       s.history->OpenTimeline({400, 300}, At(9));
       for (const double x : {350.0, 290.0, 100.0}) {
         if (s.history) s.history->SlideTimeline({x, 300});
         if (s.history) s.history->Draw(s.hub.view);
       }
       if (s.history) s.history->CloseTimeline({0, 0});
     }},
    {"open at the last",
     [](Stage& s) {
       s.history->SetCurrentElementIndex(4);
       if (s.history) s.history->OpenTimeline({400, 300}, At(9));
     }},
    {"exchange the renderer",
     [](Stage& s) {
       s.history->SetRenderer(&s.other);
       if (s.history) s.history->UpdateThumbnails();
     }},
    {"another scale", [](Stage& s) { s.history->SetScale(2.0); }},
    {"move on from between two",
     [](Stage& s) {
       s.history->SetSnapEnabled(false);
       s.history->OpenTimeline({400, 300}, At(3));
       if (s.history) s.history->SlideTimeline({420, 300});
       if (s.history) s.history->CloseTimeline({0, 0});
       if (s.history) s.history->BeginElementRecord(At(3.3));
       if (s.history) s.history->EndElementRecord(At(7));
     }},
    {"exchange a picture", [](Stage& s) { s.history->SetElementThumbnail(1, nullptr); }},
};

constexpr Act ACTS[] = {
    {"end the history", [](Stage& s) { s.history.reset(); }},
    {"clear", [](Stage& s) { s.history->ClearHistory(); }},
    {"remove", [](Stage& s) { s.history->RemoveHistoryElements(2); }},
    {"add", [](Stage& s) { s.history->AddHistoryElement(At(20), nullptr); }},
    {"move",
     [](Stage& s) {
       s.history->BeginElementRecord(At(30));
       s.history->EndElementRecord(At(31));
     }},
    {"update the first", [](Stage& s) { s.history->UpdateHistoryElement(0, At(40)); }},
    {"take the renderer away", [](Stage& s) { s.history->SetRenderer(nullptr); }},
    {"exchange the renderer", [](Stage& s) { s.history->SetRenderer(&s.other); }},
    {"take the hub away", [](Stage& s) { s.history->SetKorvane(nullptr); }},
    {"remove an observer", [](Stage& s) { s.history->RemoveObserver(&s.second); }},
    {"remove all observers",
     [](Stage& s) {
       s.history->RemoveObserver(&s.first);
       s.history->RemoveObserver(&s.second);
     }},
    {"open",
     [](Stage& s) {
       s.history->OpenTimeline({300, 200}, At(50));
     }},
    {"slide",
     [](Stage& s) {
       s.history->SlideTimeline({200, 200});
     }},
    {"close",
     [](Stage& s) {
       s.history->CloseTimeline({0, 0});
     }},
    {"choose", [](Stage& s) { s.history->SetCurrentElementIndex(0); }},
    {"draw", [](Stage& s) { s.history->Draw(s.hub.view); }},
    {"another size", [](Stage& s) { s.history->SetThumbnailSize(10.0F); }},
};

constexpr int MOMENTS = 40;  // more than any of the operations has

void CheckState(Stage& stage) {
  if (!stage.history) return;
  const RewindElements& elements = stage.history->GetParts().elements;
  const int count = elements.GetCount();
  ASSERT_TRUE(count == 0 ? elements.GetCurrent() == 0 : elements.Holds(elements.GetCurrent()));
  int pictures = 0;
  for (const auto& element : elements.GetList()) pictures += element.thumbnail != nullptr;
  ASSERT_EQ(stage.renderer.GetLiveIconCount() + stage.other.GetLiveIconCount(), pictures);
}

}  // namespace

TEST(RewindHosts, may_do_anything_at_any_moment) {
  for (const Act& operation : OPERATIONS) {
    for (const Act& act : ACTS) {
      SCOPED_TRACE(std::string(operation.name) + ", in it " + act.name);
      for (int moment = 0; moment < MOMENTS; ++moment) {
        Stage stage;
        stage.ActAt(moment, act.run);
        operation.run(stage);
        stage.Quiet();
        CheckState(stage);
        EXPECT_EQ(stage.heardAfterEnd, 0) << moment;
        EXPECT_EQ(stage.renderer.CountCalls("BeginRender"), stage.renderer.CountCalls("EndRender"));
        stage.history.reset();
        ASSERT_EQ(stage.renderer.GetLiveIconCount(), 0) << moment;
        ASSERT_EQ(stage.other.GetLiveIconCount(), 0) << moment;
        ASSERT_EQ(stage.renderer.GetForeignDestroyCount() + stage.other.GetForeignDestroyCount(), 0);
      }
    }
  }
}

// ---- cost ----

TEST_F(RewindRobustness, a_slide_and_a_draw_allocate_nothing) {
  CountingRenderer counting;
  history.SetRenderer(&counting);
  Fill(100);
  journal.recording = false;
  Open(400);
  const AllocationCounter allocations;
  CameraParameters camera;
  for (int x = 400; x > -3000; x -= 7) {
    Slide(x);
    history.GetInterpolatedCamera(camera);
    history.Draw(camera);
  }
  EXPECT_EQ(allocations.GetAllocations(), 0U);
  EXPECT_EQ(counting.begun, counting.ended);
  EXPECT_GT(counting.icons, 100000);
  history.SetRenderer(nullptr);
}

TEST_F(RewindRobustness, a_sample_allocates_nothing) {
  Fill(3);
  const AllocationCounter allocations;
  for (int i = 0; i < 100; ++i) history.AddElementSubrecord(At(i));
  EXPECT_EQ(allocations.GetAllocations(), 0U);
}
