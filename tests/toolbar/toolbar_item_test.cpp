#include "korvane/toolbar_item.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Korvane;

namespace {

ToolbarItem Tagged(int tag) {
  ToolbarItem item;
  item.SetTag(tag);
  return item;
}

std::string Tags(const ToolbarItem::List& list) {
  std::string tags;
  for (int i = 0; i < list.GetCount(); ++i) tags += std::to_string(list.GetAt(i).GetTag()) + " ";
  return tags;
}

TEST(ToolbarItem, starts_as_an_empty_button) {
  const ToolbarItem item;
  EXPECT_EQ(item.GetWidth(), 0);
  EXPECT_EQ(item.GetHeight(), 0);
  EXPECT_EQ(item.GetFlyoutIconSize(), 0);
  EXPECT_EQ(item.GetIcon().GetTextureResourceID(), 185);
  EXPECT_TRUE(item.IsEnabled());
  EXPECT_FALSE(item.IsSelected());
  EXPECT_FALSE(item.IsHidden());
  EXPECT_FALSE(item.IsExcluded());
  EXPECT_EQ(item.GetType(), 0);
  EXPECT_EQ(item.GetState(), 1);
  EXPECT_EQ(item.GetTag(), 0);
  EXPECT_TRUE(item.GetTooltip().empty());
  EXPECT_EQ(item.GetData(), nullptr);
  for (const Box2& box : {item.GetBounds(), item.GetFlyoutIconBounds(), item.GetNonFlyoutIconBounds()}) {
    EXPECT_EQ(box.center, Vector2());
    EXPECT_EQ(box.halfExtent, Vector2());
  }
  EXPECT_TRUE(item.GetFlyoutItems().IsEmpty());
  EXPECT_FALSE(item.HasFlyoutItems());
}

TEST(ToolbarItem, numbers_its_types_and_states) {
  EXPECT_EQ(ToolbarItem::TYPE_BUTTON, 0);
  EXPECT_EQ(ToolbarItem::TYPE_FLYOUT_BUTTON, 1);
  EXPECT_EQ(ToolbarItem::TYPE_PLAIN, 2);
  EXPECT_EQ(ToolbarItem::TYPE_HEAD_CORNER, 3);
  EXPECT_EQ(ToolbarItem::TYPE_TAIL_CORNER, 4);
  EXPECT_EQ(ToolbarItem::TYPE_GRIP, 5);
  EXPECT_EQ(ToolbarItem::TYPE_MORE_CONTROLS, 6);
  EXPECT_EQ(ToolbarItem::TYPE_SEPARATOR, 7);
  EXPECT_EQ(ToolbarItem::STATE_DISABLED, 0);
  EXPECT_EQ(ToolbarItem::STATE_NORMAL, 1);
  EXPECT_EQ(ToolbarItem::STATE_SELECTED, 2);
  EXPECT_EQ(ToolbarItem::STATE_MOUSE_OVER, 3);
  EXPECT_EQ(ToolbarItem::STATE_MOUSE_OVER_FLYOUT, 4);
  EXPECT_EQ(ToolbarItem::STATE_PRESSED, 5);
  EXPECT_EQ(ToolbarItem::STATE_PRESSED_FLYOUT, 6);
}

TEST(ToolbarItem, takes_a_picture_with_its_size) {
  ToolbarItem item;
  item.SetIcon(static_cast<TextureID>(154), 32, 24);
  EXPECT_EQ(item.GetIcon().GetTextureResourceID(), 154);
  EXPECT_EQ(item.GetIcon().GetWidth(), 32);
  EXPECT_EQ(item.GetIcon().GetHeight(), 24);
}

TEST(ToolbarItemList, appends_inserts_and_removes) {
  ToolbarItem::List list;
  EXPECT_TRUE(list.IsEmpty());
  list.Append(Tagged(1));
  list.Append(Tagged(3));
  EXPECT_TRUE(list.InsertAt(1, Tagged(2)));
  EXPECT_TRUE(list.InsertAt(3, Tagged(4)));
  EXPECT_TRUE(list.InsertAt(0, Tagged(0)));
  EXPECT_EQ(Tags(list), "0 1 2 3 4 ");
  EXPECT_TRUE(list.RemoveAt(2));
  EXPECT_TRUE(list.RemoveAt(3));
  EXPECT_EQ(Tags(list), "0 1 3 ");
  list.RemoveAll();
  EXPECT_EQ(list.GetCount(), 0);
}

TEST(ToolbarItemList, ignores_an_index_out_of_range) {
  ToolbarItem::List list;
  list.Append(Tagged(1));
  for (const int index : {-1, 2, 1000000, -2147483647}) {
    EXPECT_FALSE(list.InsertAt(index, Tagged(9)));
    EXPECT_FALSE(list.RemoveAt(index));
    list.GetAt(index).SetTag(7);
    EXPECT_EQ(list.GetAt(index).GetTag(), 0);
    EXPECT_EQ(std::as_const(list).GetAt(index).GetTag(), 0);
    EXPECT_EQ(list.Share(index), nullptr);
  }
  EXPECT_EQ(Tags(list), "1 ");
}

TEST(ToolbarItemList, holds_values) {
  ToolbarItem item = Tagged(1);
  item.GetFlyoutItems().Append(Tagged(2));
  ToolbarItem::List list;
  list.Append(item);
  item.SetTag(5);
  item.GetFlyoutItems().GetAt(0).SetTag(6);
  EXPECT_EQ(list.GetAt(0).GetTag(), 1);
  EXPECT_EQ(list.GetAt(0).GetFlyoutItems().GetAt(0).GetTag(), 2);

  ToolbarItem::List copy(list);
  copy.GetAt(0).SetTag(8);
  EXPECT_EQ(Tags(list), "1 ");
  list = copy;
  copy.RemoveAll();
  EXPECT_EQ(Tags(list), "8 ");
}

TEST(ToolbarItemList, takes_what_is_part_of_itself) {
  ToolbarItem::List list;
  list.Append(Tagged(1));
  for (int i = 0; i < 10; ++i) list.Append(list.GetAt(0));
  EXPECT_EQ(list.GetCount(), 11);
  list.GetAt(0).GetFlyoutItems().Append(Tagged(2));
  list.GetAt(0).GetFlyoutItems().Append(Tagged(3));
  list = list.GetAt(0).GetFlyoutItems();
  EXPECT_EQ(Tags(list), "2 3 ");
  const ToolbarItem::List& same = list;
  list = same;
  EXPECT_EQ(Tags(list), "2 3 ");
}

TEST(ToolbarItemList, keeps_an_item_that_somebody_shares) {
  ToolbarItem::List list;
  list.Append(Tagged(4));
  const std::shared_ptr<ToolbarItem> shared = list.Share(0);
  list.RemoveAll();
  ASSERT_NE(shared, nullptr);
  EXPECT_EQ(shared->GetTag(), 4);
}

TEST(ToolbarItem, is_copied_with_what_flies_out_of_it) {
  ToolbarItem item = Tagged(5);
  item.SetTooltip(L"tools");
  item.GetFlyoutItems().Append(Tagged(6));
  ToolbarItem other = Tagged(7);
  other = item;
  item.GetFlyoutItems().RemoveAll();
  EXPECT_EQ(other.GetTag(), 5);
  EXPECT_EQ(other.GetTooltip(), L"tools");
  EXPECT_EQ(Tags(other.GetFlyoutItems()), "6 ");
}

}  // namespace
