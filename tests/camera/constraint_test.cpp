#include "camera/constraint.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

using namespace Korvane;

static_assert(!std::is_default_constructible_v<Constraint>);
static_assert(std::has_virtual_destructor_v<Constraint>);
static_assert(std::is_enum_v<Constraint::ConstraintType>);

TEST(ConstraintFactory, makes_none_of_any_kind) {
  for (const int kind :
       {-1, 0, 1, 2, 10, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(Constraint::CreateConstraint(static_cast<Constraint::ConstraintType>(kind)), nullptr) << kind;
  }
}

TEST(ConstraintFactory, a_constraint_of_a_host_is_destroyed_through_the_base) {
  class Own : public Constraint {
   public:
    explicit Own(bool& flag) : destroyed(flag) {}
    ~Own() override { destroyed = true; }

   private:
    bool& destroyed;
  };
  bool destroyed = false;
  std::unique_ptr<Constraint>(std::make_unique<Own>(destroyed)).reset();
  EXPECT_TRUE(destroyed);
}
