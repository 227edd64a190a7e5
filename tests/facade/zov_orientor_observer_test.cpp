#include "zov/zov_orientor_observer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "facade/facade_scene.h"
#include "korvane/camera_operations.h"
#include "support/virtual_slot.h"

namespace {

using Told = std::vector<std::pair<std::string, int>>;

TEST(ZovOrientorObserver, has_its_operations_in_the_order_that_hosts_know) {
  using O = zovOrientorObserver;
  EXPECT_EQ(VirtualSlot(&O::on_clicked), 0);
  EXPECT_EQ(VirtualSlot(&O::on_drag_begin), 1);
  EXPECT_EQ(VirtualSlot(&O::on_drag_end), 2);
  EXPECT_EQ(VirtualSlot(&O::on_position_change), 3);
  struct Longer : FacadeListener {
    using FacadeListener::FacadeListener;
    virtual void Next() {}
  };
  EXPECT_EQ(VirtualSlot(&Longer::Next), 6);  // the destructor takes 4 and 5
}

TEST(ZovOrientorObserver, is_one_of_the_inner_classes_too) {
  FacadeScene<zovOrientor> scene;
  const auto listener = std::make_shared<FacadeListener>(*scene.cube);
  EXPECT_TRUE(scene.cube->korvane().AddObserver(&listener->korvane()));
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  EXPECT_EQ(listener->told, (Told{{"clicked", 24}}));
  scene.cube->korvane().RemoveObserver(&listener->korvane());
}

TEST(ZovOrientorObserver, is_told_what_the_user_does) {
  FacadeScene<zovOrientor> scene;
  const auto listener = std::make_shared<FacadeListener>(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer(listener));
  EXPECT_EQ(listener->Cube(), scene.cube.get());
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  scene.hub->korvane().EndShot();
  scene.cube->on_left_mouse_down(scene.x, scene.y);
  scene.cube->on_mouse_move(scene.x + 20, scene.y);
  EXPECT_TRUE(scene.cube->is_drag_active());
  scene.cube->on_left_mouse_up(scene.x + 20, scene.y);
  scene.cube->get_parameters().set_screen_location(zovOrientorLocation::BottomLeft);
  scene.cube->set_viewport_size(WIDTH, HEIGHT);
  EXPECT_EQ(listener->told, (Told{{"clicked", 24}, {"drag begin", 24}, {"drag end", 0}, {"position", 3}}));
}

TEST(ZovOrientorObserver, is_told_once_however_often_it_was_added_and_not_after_it_left) {
  FacadeScene<zovOrientor> scene;
  const auto listener = std::make_shared<FacadeListener>(*scene.cube);
  EXPECT_FALSE(scene.cube->add_observer(nullptr));
  EXPECT_TRUE(scene.cube->add_observer(listener));
  EXPECT_TRUE(scene.cube->add_observer(listener));
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  EXPECT_EQ(listener->told.size(), 1U);
  scene.cube->remove_observer(nullptr);
  scene.cube->remove_observer(listener);
  scene.cube->remove_observer(listener);
  scene.hub->korvane().EndShot();
  scene.Click();
  EXPECT_EQ(listener->told.size(), 1U);
  EXPECT_EQ(listener.use_count(), 1);
}

TEST(ZovOrientorObserver, lives_with_the_cube_when_the_host_lets_it_go) {
  const int before = FacadeListener::alive;
  {
    FacadeScene<zovOrientor> scene;
    int clicks = 0;
    auto listener = std::make_shared<FacadeListener>(*scene.cube);
    listener->then = [&clicks] { ++clicks; };
    EXPECT_TRUE(scene.cube->add_observer(listener));
    listener = nullptr;
    EXPECT_EQ(FacadeListener::alive, before + 1);
    scene.PointAt(FRONT_RIGHT_TOP);
    scene.Click();
    EXPECT_EQ(clicks, 1);
  }
  EXPECT_EQ(FacadeListener::alive, before);
}

// The last pointer to it goes while it is being told; it goes when it has been told.
TEST(ZovOrientorObserver, may_leave_from_within_its_own_call) {
  const int before = FacadeListener::alive;
  FacadeScene<zovOrientor> scene;
  auto listener = std::make_shared<FacadeListener>(*scene.cube);
  FacadeListener* const raw = listener.get();
  int alive = 0;
  bool stillWhole = false;
  raw->then = [&, raw] {
    scene.cube->remove_observer(std::static_pointer_cast<zovOrientorObserver>(raw->shared_from_this()));
    alive = FacadeListener::alive;
    stillWhole = raw->told.size() == 1;
  };
  EXPECT_TRUE(scene.cube->add_observer(listener));
  const auto second = std::make_shared<FacadeListener>(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer(second));
  listener = nullptr;
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  EXPECT_EQ(alive, before + 2);
  EXPECT_TRUE(stillWhole);
  EXPECT_EQ(FacadeListener::alive, before + 1);
  EXPECT_EQ(second->told.size(), 1U);
}

// A part of another object, which is what the pointer owns.
struct Holder {
  explicit Holder(zovOrientor& cube) : listener(cube) {}
  FacadeListener listener;
};

TEST(ZovOrientorObserver, may_leave_from_within_its_own_call_though_another_object_owns_it) {
  const int before = FacadeListener::alive;
  for (const bool byTheCube : {true, false}) {
    FacadeScene<zovOrientor> scene;
    auto holder = std::make_shared<Holder>(*scene.cube);
    FacadeListener* const listener = &holder->listener;
    bool stillWhole = false;
    listener->then = [&, listener] {
      scene.cube->remove_observer({std::shared_ptr<void>(), listener});
      stillWhole = FacadeListener::alive == before + 1 && listener->told.size() == 1;
    };
    EXPECT_TRUE(scene.cube->add_observer({holder, listener}));
    holder = nullptr;
    if (byTheCube) {
      scene.PointAt(FRONT_RIGHT_TOP);
      scene.Click();
    } else {
      scene.cube->get_parameters().set_screen_location(zovOrientorLocation::BottomLeft);
      scene.cube->korvane().SetViewportSize(WIDTH, HEIGHT);
    }
    EXPECT_TRUE(stillWhole);
    EXPECT_EQ(FacadeListener::alive, before);
  }
}

// It is told of the end of a drag while it is told that the drag has begun.
TEST(ZovOrientorObserver, stays_until_the_outermost_of_its_calls_is_over) {
  const int before = FacadeListener::alive;
  FacadeScene<zovOrientor> scene;
  auto holder = std::make_shared<Holder>(*scene.cube);
  FacadeListener* const listener = &holder->listener;
  int aliveWithin = 0;
  listener->then = [&, listener] {
    if (listener->told.size() > 1) {
      scene.cube->remove_observer({std::shared_ptr<void>(), listener});
      return;
    }
    scene.cube->korvane().CancelGesture();
    aliveWithin = FacadeListener::alive;
  };
  EXPECT_TRUE(scene.cube->add_observer({holder, listener}));
  holder = nullptr;
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.cube->on_left_mouse_down(scene.x, scene.y);
  scene.cube->on_mouse_move(scene.x + 20, scene.y);
  EXPECT_EQ(aliveWithin, before + 1);
  EXPECT_EQ(FacadeListener::alive, before);
}

// Nothing owns it, so nothing can keep it.
TEST(ZovOrientorObserver, may_be_ended_by_the_host_from_within_its_own_call) {
  const int before = FacadeListener::alive;
  FacadeScene<zovOrientor> scene;
  auto listener = std::make_unique<FacadeListener>(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), listener.get()}));
  const std::function<void()> end = [&] { listener = nullptr; };
  listener->then = std::ref(end);
  scene.PointAt(FRONT_RIGHT_TOP);
  EXPECT_TRUE(scene.Click());
  EXPECT_EQ(FacadeListener::alive, before);
}

TEST(ZovOrientorObserver, may_change_everything_while_it_is_told) {
  FacadeScene<zovOrientor> scene;
  const auto listener = std::make_shared<FacadeListener>(*scene.cube);
  const auto late = std::make_shared<FacadeListener>(*scene.cube);
  listener->then = [&] {
    EXPECT_TRUE(scene.cube->add_observer(late));
    scene.cube->set_camera_operations(nullptr);
    scene.cube->set_renderer(nullptr);
    scene.cube->get_parameters().set_visible(false);
  };
  EXPECT_TRUE(scene.cube->add_observer(listener));
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  EXPECT_FALSE(scene.hub->is_shot_active());
  EXPECT_EQ(listener->told.size(), 1U);
}

TEST(ZovOrientorObserver, may_outlive_the_cube) {
  auto scene = std::make_unique<FacadeScene<zovOrientor>>();
  const auto listener = std::make_shared<FacadeListener>(*scene->cube);
  EXPECT_TRUE(scene->cube->add_observer(listener));
  scene = nullptr;
  EXPECT_EQ(listener->Cube(), nullptr);
  EXPECT_EQ(listener.use_count(), 1);
}

// A host may share what it does not give away: an observer on the stack.
TEST(ZovOrientorObserver, that_goes_first_is_forgotten) {
  FacadeScene<zovOrientor> scene;
  {
    FacadeListener listener(*scene.cube);
    EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), &listener}));
    scene.PointAt(FRONT_RIGHT_TOP);
    scene.Click();
    EXPECT_EQ(listener.told.size(), 1U);
  }
  scene.hub->korvane().EndShot();
  EXPECT_TRUE(scene.Click());
}

TEST(ZovOrientorObserver, that_goes_first_is_forgotten_by_every_cube) {
  FacadeScene<zovOrientor> scene;
  zovOrientor other;
  {
    FacadeListener listener(other);
    EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), &listener}));
    {
      zovOrientor brief;
      EXPECT_TRUE(brief.add_observer({std::shared_ptr<void>(), &listener}));
    }
    scene.PointAt(FRONT_RIGHT_TOP);
    scene.Click();
    EXPECT_EQ(listener.told.size(), 1U);
    EXPECT_EQ(listener.Cube(), &other);
  }
  scene.hub->korvane().EndShot();
  EXPECT_TRUE(scene.Click());
}

TEST(ZovOrientorObserver, is_kept_once_a_pointer_is_added_that_owns_it) {
  const int before = FacadeListener::alive;
  FacadeScene<zovOrientor> scene;
  auto listener = std::make_shared<FacadeListener>(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), listener.get()}));
  EXPECT_EQ(listener.use_count(), 1);
  EXPECT_TRUE(scene.cube->add_observer(listener));
  listener = nullptr;
  EXPECT_EQ(FacadeListener::alive, before + 1);
}

TEST(ZovOrientorObserver, stays_when_a_pointer_is_added_that_does_not_own_it) {
  const int before = FacadeListener::alive;
  FacadeScene<zovOrientor> scene;
  auto listener = std::make_shared<FacadeListener>(*scene.cube);
  FacadeListener* const there = listener.get();
  EXPECT_TRUE(scene.cube->add_observer(listener));
  listener = nullptr;
  EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), there}));
  EXPECT_EQ(FacadeListener::alive, before + 1);
  scene.PointAt(FRONT_RIGHT_TOP);
  EXPECT_TRUE(scene.Click());
  EXPECT_EQ(there->told.size(), 1U);
  scene.cube->remove_observer({std::shared_ptr<void>(), there});
  EXPECT_EQ(FacadeListener::alive, before);
}

// What the pointer to it owned goes with it, and takes another observer out as it goes.
TEST(ZovOrientorObserver, may_take_others_along_when_it_is_forgotten) {
  const int before = FacadeListener::alive;
  FacadeScene<zovOrientor> scene;
  std::vector<std::shared_ptr<FacadeListener>> others;
  bool isGone = false;
  for (int i = 0; i < 3; ++i) others.push_back(std::make_shared<FacadeListener>(*scene.cube));
  {
    FacadeListener listener(*scene.cube);
    const std::shared_ptr<void> owned(nullptr, [&](void*) {
      for (const auto& each : others) scene.cube->remove_observer(each);
      isGone = true;
    });
    EXPECT_TRUE(scene.cube->add_observer(others[0]));
    EXPECT_TRUE(scene.cube->add_observer({owned, &listener}));
    EXPECT_TRUE(scene.cube->add_observer(others[1]));
    EXPECT_TRUE(scene.cube->add_observer(others[2]));
  }
  EXPECT_TRUE(isGone);
  for (const auto& each : others) EXPECT_EQ(each.use_count(), 1);
  EXPECT_EQ(FacadeListener::alive, before + 3);
  scene.PointAt(FRONT_RIGHT_TOP);
  EXPECT_TRUE(scene.Click());
  EXPECT_TRUE(others[0]->told.empty());
}

// One after another at the same address, of which the cube keeps the second.
TEST(ZovOrientorObserver, is_not_taken_for_one_that_has_gone) {
  const int before = FacadeListener::alive;
  FacadeScene<zovOrientor> scene;
  alignas(FacadeListener) std::byte place[sizeof(FacadeListener)];
  auto* const first = new (place) FacadeListener(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), first}));
  first->~FacadeListener();
  std::shared_ptr<FacadeListener> second(new (place) FacadeListener(*scene.cube),
                                         [](FacadeListener* each) { each->~FacadeListener(); });
  EXPECT_TRUE(scene.cube->add_observer(second));
  EXPECT_EQ(second.use_count(), 2);
  second = nullptr;
  EXPECT_EQ(FacadeListener::alive, before + 1);
  scene.cube = nullptr;
  EXPECT_EQ(FacadeListener::alive, before);
}

}  // namespace
