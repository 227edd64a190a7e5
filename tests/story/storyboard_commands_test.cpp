#include "story/storyboard_commands.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "story/new_shot.h"
#include "story/open_storyboard.h"
#include "support/random.h"

using namespace Korvane;

namespace {

Sequence* NewSequence(const std::wstring& name, int shots) {
  auto sequence = std::make_unique<Sequence>();
  sequence->SetName(name);
  for (int i = 0; i < shots; ++i) sequence->AddShot(NewShot(name + std::to_wstring(i)));
  return sequence.release();
}

/// The shots of the sequence that is selected, and the commands for them.
struct OfShots {
  using List = Sequence;
  using Element = ShotSpecification;
  using Add = AddShotCommand;
  using Delete = DeleteShotCommand;
  using Move = MoveShotCommand;
  static List* MakeList(StoryboardStage& stage) {
    Sequence* const sequence = stage.AddSequence();
    stage.board->SetSelectedSequence(sequence);
    return sequence;
  }
  static void EndList(StoryboardStage& stage, List* list) { stage.board->GetStory()->DeleteSequence(list); }
  static Element* Make(const std::wstring& name) { return NewShot(name); }
  static void Append(List& list, Element* each) { list.AddShot(each); }
  static Element* Remove(List& list, const Element* each) { return list.RemoveShot(each); }
  static Element* At(const List& list, std::uint64_t index) { return list.GetShot(index); }
  static ShotSpecification* ToEdit(const Element* each) { return const_cast<Element*>(each); }
  static std::size_t CountSlides(const StoryboardParts& parts) { return parts.slides.shots.size(); }
};

/// The sequences of the story, each of one shot.
struct OfSequences {
  using List = Story;
  using Element = Sequence;
  using Add = AddSequenceCommand;
  using Delete = DeleteSequenceCommand;
  using Move = MoveSequenceCommand;
  static List* MakeList(StoryboardStage& stage) { return stage.board->GetStory(); }
  static void EndList(StoryboardStage& stage, const List* /*list*/) { stage.board->SetStory(new Story); }
  static Element* Make(const std::wstring& name) { return NewSequence(name, 1); }
  static void Append(List& list, Element* each) { list.AddSequence(each); }
  static Element* Remove(List& list, const Element* each) { return list.RemoveSequence(each); }
  static Element* At(const List& list, std::uint64_t index) { return list.GetSequence(index); }
  static ShotSpecification* ToEdit(const Element* each) { return each->GetFirstShot(); }
  static std::size_t CountSlides(const StoryboardParts& parts) { return parts.slides.sequences.size(); }
};

enum class Edit { Added, Deleted, Moved };

/// A list of a, b and c that the storyboard shows. The queue ends before what it edits.
template <class Kind>
struct CommandsStage : StoryboardStage {
  using Element = typename Kind::Element;
  using AddCommand = typename Kind::Add;
  using DeleteCommand = typename Kind::Delete;
  using MoveCommand = typename Kind::Move;

  CommandsStage() {
    for (Element* const each : {a, b, c}) Kind::Append(*list, each);
    Frame();
    Forget();
  }

  std::wstring Names() const {
    std::wstring names;
    for (std::uint64_t i = 0; Kind::At(*list, i) != nullptr; ++i) names += Kind::At(*list, i)->GetName();
    return names;
  }
  bool Has(const Element* each) const { return Names().find(each->GetName()) != std::wstring::npos; }
  void Add(Element* each) { edits->Add(new AddCommand(board.get(), list, each), true); }
  void Delete(Element* each) { edits->Add(new DeleteCommand(board.get(), list, each), true); }
  void Move(Element* each, Element* before) {
    edits->Add(new MoveCommand(board.get(), list, each, before), true);
  }
  void Make(Edit edit, Element* each) {
    if (edit != Edit::Added) Kind::Append(*list, each);
    if (edit == Edit::Added) Add(each);
    if (edit == Edit::Deleted) Delete(each);
    if (edit == Edit::Moved) Move(each, a);
  }
  /// An undo, a redo, an undo ...
  void Step(int steps) {
    for (int i = 0; i < steps && edits != nullptr; ++i) i % 2 == 0 ? edits->Undo() : edits->Redo();
  }
  /// Drops what can be redone.
  void AddIdle() { edits->Add(new MoveCommand(nullptr, nullptr, nullptr, nullptr), true); }

  typename Kind::List* list = Kind::MakeList(*this);
  Element* a = Kind::Make(L"a");
  Element* b = Kind::Make(L"b");
  Element* c = Kind::Make(L"c");
  std::unique_ptr<UndoQueue> edits = std::make_unique<UndoQueue>();
};
template <class Kind>
struct CommandsTest : ::testing::Test, CommandsStage<Kind> {};
using Kinds = ::testing::Types<OfShots, OfSequences>;
TYPED_TEST_SUITE(CommandsTest, Kinds, );

// ---- what each does ----

TYPED_TEST(CommandsTest, an_add_appends_and_its_undo_takes_out) {
  auto* const d = TypeParam::Make(L"d");
  this->Add(d);
  EXPECT_EQ(this->Names(), L"abcd");
  EXPECT_TRUE(this->edits->Undo());
  EXPECT_EQ(this->Names(), L"abc");
  EXPECT_TRUE(this->edits->Redo());
  EXPECT_EQ(this->Names(), L"abcd");
  EXPECT_EQ(TypeParam::At(*this->list, 3), d);
}

TYPED_TEST(CommandsTest, an_add_of_what_is_there_already_takes_it_out_and_puts_it_back) {
  auto* const d = TypeParam::Make(L"d");
  TypeParam::Append(*this->list, d);
  this->edits->Add(new typename TypeParam::Add(this->board.get(), this->list, d), false);
  this->edits->Undo();
  EXPECT_EQ(this->Names(), L"abc");
  this->edits->Redo();
  EXPECT_EQ(this->Names(), L"abcd");
}

TYPED_TEST(CommandsTest, the_undo_of_a_delete_puts_back_at_the_old_index) {
  const std::wstring without[] = {L"bc", L"ac", L"ab"};
  for (std::uint64_t index = 0; index < 3; ++index) {
    this->Delete(TypeParam::At(*this->list, index));
    EXPECT_EQ(this->Names(), without[index]);
    EXPECT_TRUE(this->edits->Undo());
    EXPECT_EQ(this->Names(), L"abc");
    EXPECT_TRUE(this->edits->Redo());
    EXPECT_EQ(this->Names(), without[index]);
    EXPECT_TRUE(this->edits->Undo());
  }
}

TYPED_TEST(CommandsTest, deletes_of_all_come_back_in_their_order) {
  this->Delete(this->b);
  this->Delete(this->c);
  this->Delete(this->a);
  EXPECT_EQ(this->Names(), L"");
  for (const std::wstring names : {L"a", L"ac", L"abc"}) {
    EXPECT_TRUE(this->edits->Undo());
    EXPECT_EQ(this->Names(), names);
  }
}

TYPED_TEST(CommandsTest, a_move_goes_before_the_other_and_back) {
  struct Row {
    int moved;
    int before;  // 3: the end
    std::wstring names;
  };
  const Row rows[] = {{0, 1, L"abc"}, {0, 2, L"bac"}, {0, 3, L"bca"}, {1, 0, L"bac"}, {1, 2, L"abc"},
                      {1, 3, L"acb"}, {2, 0, L"cab"}, {2, 1, L"acb"}, {2, 3, L"abc"}};
  typename TypeParam::Element* const all[] = {this->a, this->b, this->c, nullptr};
  for (const Row& row : rows) {
    this->Move(all[row.moved], all[row.before]);
    EXPECT_EQ(this->Names(), row.names) << row.moved << row.before;
    EXPECT_TRUE(this->edits->Undo());
    EXPECT_EQ(this->Names(), L"abc") << row.moved << row.before;
    EXPECT_TRUE(this->edits->Redo());
    EXPECT_EQ(this->Names(), row.names) << row.moved << row.before;
    EXPECT_TRUE(this->edits->Undo());
  }
}

TYPED_TEST(CommandsTest, a_move_before_its_own_neighbour_moves_nothing_and_is_queued) {
  this->Move(this->a, this->b);
  EXPECT_EQ(this->Names(), L"abc");
  EXPECT_TRUE(this->edits->CanUndo());
  EXPECT_TRUE(this->edits->Undo());
  EXPECT_EQ(this->Names(), L"abc");
}

TYPED_TEST(CommandsTest, the_undo_of_a_move_of_the_last_goes_to_the_end) {
  this->Move(this->c, this->a);
  TypeParam::Append(*this->list, TypeParam::Make(L"d"));
  EXPECT_EQ(this->Names(), L"cabd");
  this->edits->Undo();
  EXPECT_EQ(this->Names(), L"abdc");
}

// ---- who owns it ----

enum class Ending { Dropped, Cleared, Destroyed };

struct Fate {
  Edit edit;
  int steps;  // an undo, a redo, an undo ... after it was done
  Ending ending;
  bool lives;
};
// What was added ends with its command where that is undone, what was deleted where it is not; only what is
// undone can be dropped by another edit.
constexpr Fate FATES[] = {
    {Edit::Added, 0, Ending::Cleared, true},      {Edit::Added, 0, Ending::Destroyed, true},
    {Edit::Added, 1, Ending::Cleared, false},     {Edit::Added, 1, Ending::Destroyed, false},
    {Edit::Added, 1, Ending::Dropped, false},     {Edit::Added, 2, Ending::Cleared, true},
    {Edit::Added, 2, Ending::Destroyed, true},    {Edit::Added, 3, Ending::Cleared, false},
    {Edit::Added, 3, Ending::Destroyed, false},   {Edit::Added, 3, Ending::Dropped, false},
    {Edit::Deleted, 0, Ending::Cleared, false},   {Edit::Deleted, 0, Ending::Destroyed, false},
    {Edit::Deleted, 1, Ending::Cleared, true},    {Edit::Deleted, 1, Ending::Destroyed, true},
    {Edit::Deleted, 1, Ending::Dropped, true},    {Edit::Deleted, 2, Ending::Cleared, false},
    {Edit::Deleted, 2, Ending::Destroyed, false}, {Edit::Deleted, 3, Ending::Cleared, true},
    {Edit::Deleted, 3, Ending::Destroyed, true},  {Edit::Deleted, 3, Ending::Dropped, true},
    {Edit::Moved, 0, Ending::Cleared, true},      {Edit::Moved, 0, Ending::Destroyed, true},
    {Edit::Moved, 1, Ending::Cleared, true},      {Edit::Moved, 1, Ending::Destroyed, true},
    {Edit::Moved, 1, Ending::Dropped, true},      {Edit::Moved, 2, Ending::Cleared, true},
    {Edit::Moved, 2, Ending::Destroyed, true},
};

TYPED_TEST(CommandsTest, a_command_takes_with_it_what_is_out_of_the_list) {
  for (const Fate& fate : FATES) {
    this->edits = std::make_unique<UndoQueue>();
    auto* const edited = TypeParam::Make(L"e");
    const Lifeline::Watch alive(edited->GetLifeline());
    this->Make(fate.edit, edited);
    this->Step(fate.steps);
    EXPECT_TRUE(alive);
    if (fate.ending == Ending::Dropped) this->AddIdle();
    if (fate.ending == Ending::Cleared) this->edits->Clear();
    if (fate.ending == Ending::Destroyed) this->edits.reset();
    const std::string row = ::testing::PrintToString(&fate - FATES);
    ASSERT_EQ(static_cast<bool>(alive), fate.lives) << row;
    ASSERT_EQ(this->Names().find(L'e') != std::wstring::npos, fate.lives) << row;
    if (fate.lives) delete TypeParam::Remove(*this->list, edited);
  }
}

TYPED_TEST(CommandsTest, what_is_moved_before_itself_leaves_the_list_for_its_command) {
  const Lifeline::Watch alive(this->a->GetLifeline());
  this->Move(this->a, this->a);
  EXPECT_EQ(this->Names(), L"bc");
  EXPECT_TRUE(alive);
  this->edits->Undo();
  EXPECT_EQ(this->Names(), L"abc");
  this->edits->Redo();
  EXPECT_EQ(this->Names(), L"bc");
  this->edits->Clear();
  EXPECT_FALSE(alive);
}

TYPED_TEST(CommandsTest, what_is_moved_before_a_stranger_leaves_the_list_too) {
  const std::unique_ptr<typename TypeParam::Element> stranger(TypeParam::Make(L"s"));
  const Lifeline::Watch alive(this->b->GetLifeline());
  this->Move(this->b, stranger.get());
  EXPECT_EQ(this->Names(), L"ac");
  EXPECT_TRUE(alive);
  this->edits.reset();
  EXPECT_FALSE(alive);
}

// Two commands never own the same.
TYPED_TEST(CommandsTest, what_one_command_holds_no_other_puts_into_the_list) {
  const Lifeline::Watch alive(this->a->GetLifeline());
  this->Move(this->a, this->a);
  this->Delete(this->a);
  this->edits->Undo();
  EXPECT_EQ(this->Names(), L"bc");
  this->edits->Redo();
  this->edits->Undo();
  this->edits->Undo();
  EXPECT_EQ(this->Names(), L"abc");
  this->edits->Clear();
  EXPECT_TRUE(alive);
}

TYPED_TEST(CommandsTest, what_the_host_has_taken_out_stays_out) {
  auto* const d = TypeParam::Make(L"d");
  this->Add(d);
  this->Delete(this->a);
  this->edits->Undo();
  const std::unique_ptr<typename TypeParam::Element> kept(TypeParam::Remove(*this->list, this->a));
  const std::unique_ptr<typename TypeParam::Element> other(TypeParam::Remove(*this->list, d));
  this->edits->Redo();
  this->edits->Undo();
  EXPECT_EQ(this->Names(), L"bc");
  this->edits->Undo();
  this->edits->Redo();
  EXPECT_EQ(this->Names(), L"bc");
}

// ---- what goes in between ----

enum class Gone { List, Board, Element };

template <class Kind>
void TakeAway(Gone gone, Edit edit, int steps) {
  CommandsStage<Kind> stage;
  auto* const edited = Kind::Make(L"e");
  const Lifeline::Watch alive(edited->GetLifeline());
  stage.Make(edit, edited);
  stage.Step(steps);
  const bool there = stage.Has(edited);
  if (gone == Gone::Element && !there) return stage.edits.reset();
  if (gone == Gone::List) Kind::EndList(stage, stage.list);
  if (gone == Gone::Board) stage.board.reset();
  if (gone == Gone::Element) delete Kind::Remove(*stage.list, edited);
  EXPECT_EQ(static_cast<bool>(alive), !there);
  while (stage.edits->Undo()) EXPECT_EQ(static_cast<bool>(alive), !there);
  while (stage.edits->Redo()) EXPECT_EQ(static_cast<bool>(alive), !there);
  stage.edits.reset();
  EXPECT_FALSE(alive);
}

TYPED_TEST(CommandsTest, what_a_command_was_made_for_may_be_gone_in_every_state) {
  for (const Gone gone : {Gone::List, Gone::Board, Gone::Element}) {
    for (const Edit edit : {Edit::Added, Edit::Deleted, Edit::Moved}) {
      for (int steps = 0; steps < 4; ++steps) TakeAway<TypeParam>(gone, edit, steps);
    }
  }
}

TYPED_TEST(CommandsTest, null_is_ignored_throughout) {
  using Add = typename TypeParam::Add;
  using Delete = typename TypeParam::Delete;
  using Move = typename TypeParam::Move;
  OpenStoryboard* const panel = this->board.get();
  for (UndoCommand* const command : std::initializer_list<UndoCommand*>{
           new Add(nullptr, nullptr, nullptr), new Delete(nullptr, nullptr, nullptr),
           new Move(nullptr, nullptr, nullptr, nullptr), new Add(panel, this->list, nullptr),
           new Delete(panel, this->list, nullptr), new Move(panel, this->list, nullptr, this->a),
           new Delete(panel, nullptr, this->a), new Move(panel, nullptr, this->a, this->b)}) {
    this->edits->Add(command, true);
  }
  while (this->edits->Undo()) {
  }
  while (this->edits->Redo()) {
  }
  EXPECT_EQ(this->Names(), L"abc");
}

TYPED_TEST(CommandsTest, without_a_storyboard_the_list_is_edited_all_the_same) {
  this->edits->Add(new typename TypeParam::Delete(nullptr, this->list, this->a), true);
  this->edits->Add(new typename TypeParam::Add(nullptr, this->list, TypeParam::Make(L"d")), true);
  this->edits->Add(new typename TypeParam::Move(nullptr, this->list, this->c, this->b), true);
  EXPECT_EQ(this->Names(), L"cbd");
  while (this->edits->Undo()) {
  }
  EXPECT_EQ(this->Names(), L"abc");
}

// ---- the slides and the editor ----

TYPED_TEST(CommandsTest, an_add_shows_its_slide_and_then_opens_the_editor_on_it) {
  auto* const d = TypeParam::Make(L"d");
  const std::size_t slides = TypeParam::CountSlides(this->board->GetParts());
  std::size_t seen = 0;
  bool there = false;
  this->editor.onCall = [&] {
    seen = TypeParam::CountSlides(this->board->GetParts());
    there = this->Has(d);
  };
  const Lines opened{"editor transfers 0", "editor visible 1"};
  const Lines closed{"editor transfers 1", "editor visible 0"};
  this->Add(d);
  EXPECT_EQ(this->journal.Take(), opened);
  EXPECT_EQ(this->editor.GetShot(), TypeParam::ToEdit(d));
  EXPECT_EQ(seen, slides + 1);
  EXPECT_GT(this->hub.requested, 0);
  there = false;
  this->edits->Undo();
  EXPECT_EQ(this->journal.Take(), closed);
  EXPECT_EQ(this->editor.GetShot(), nullptr);
  EXPECT_TRUE(there);
  EXPECT_EQ(TypeParam::CountSlides(this->board->GetParts()), slides);
  this->edits->Redo();
  EXPECT_EQ(this->journal.Take(), opened);
  EXPECT_EQ(TypeParam::CountSlides(this->board->GetParts()), slides + 1);
}

TYPED_TEST(CommandsTest, an_editor_on_another_shot_stays_open) {
  auto* const d = TypeParam::Make(L"d");
  ShotSpecification* const other = TypeParam::ToEdit(this->a);
  this->Add(d);
  this->board->EditShot(other);
  this->journal.Take();
  this->edits->Undo();
  this->Delete(this->b);
  this->edits->Undo();
  this->Move(this->a, nullptr);
  this->edits->Undo();
  EXPECT_EQ(this->editor.GetShot(), other);
  EXPECT_TRUE(this->journal.lines.empty());
}

TYPED_TEST(CommandsTest, a_delete_closes_the_editor_before_it_takes_out) {
  bool there = false;
  this->board->EditShot(TypeParam::ToEdit(this->b));
  this->journal.Take();
  this->editor.onCall = [&] { there = this->Has(this->b); };
  const std::size_t slides = TypeParam::CountSlides(this->board->GetParts());
  this->Delete(this->b);
  EXPECT_TRUE(there);
  EXPECT_EQ(this->journal.Take(), (Lines{"editor transfers 1", "editor visible 0"}));
  EXPECT_EQ(TypeParam::CountSlides(this->board->GetParts()), slides - 1);
  this->edits->Undo();
  EXPECT_EQ(TypeParam::CountSlides(this->board->GetParts()), slides);
  EXPECT_TRUE(this->journal.lines.empty());
}

using SequenceCommandsTest = CommandsTest<OfSequences>;

TEST_F(SequenceCommandsTest, the_editor_opens_on_the_shot_of_a_sequence_that_has_but_one) {
  for (const int shots : {0, 2, 3}) {
    Add(NewSequence(L"d", shots));
    EXPECT_EQ(editor.GetShot(), nullptr) << shots;
  }
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(SequenceCommandsTest, the_editor_closes_on_whichever_shot_of_the_sequence_it_shows) {
  Sequence* const d = NewSequence(L"d", 3);
  Add(d);
  for (std::uint64_t shot = 0; shot < 3; ++shot) {
    EXPECT_TRUE(board->EditShot(d->GetShot(shot)));
    edits->Undo();
    EXPECT_EQ(editor.GetShot(), nullptr);
    edits->Redo();
    EXPECT_TRUE(board->EditShot(d->GetShot(shot)));
    Delete(d);
    EXPECT_EQ(editor.GetShot(), nullptr);
    edits->Undo();
  }
}

enum class Mischief { EndQueue, ClearQueue, EndBoard, EndList, EndElement };

template <class Kind>
void Do(Mischief mischief, CommandsStage<Kind>& stage, const typename Kind::Element* edited) {
  if (mischief == Mischief::EndQueue) stage.edits.reset();
  if (mischief == Mischief::ClearQueue) stage.edits->Clear();
  if (mischief == Mischief::EndBoard) stage.board.reset();
  if (mischief == Mischief::EndList) Kind::EndList(stage, stage.list);
  if (mischief == Mischief::EndElement) delete Kind::Remove(*stage.list, edited);
}

// In the last of so many steps: the edit, its undo, its redo.
template <class Kind>
void Meddle(Mischief mischief, Edit edit, int lastStep) {
  auto* const edited = Kind::Make(L"e");
  const Lifeline::Watch alive(edited->GetLifeline());
  {
    CommandsStage<Kind> stage;
    if (edit == Edit::Deleted) {
      Kind::Append(*stage.list, edited);
      stage.board->EditShot(Kind::ToEdit(edited));
    }
    bool armed = false;
    stage.editor.onCall = [&] {
      if (std::exchange(armed, false)) Do(mischief, stage, edited);
    };
    armed = lastStep == 0;
    edit == Edit::Deleted ? stage.Delete(edited) : stage.Add(edited);
    stage.Step(lastStep - 1);
    armed = lastStep > 0;
    if (lastStep > 0) lastStep % 2 == 0 ? stage.edits->Redo() : stage.edits->Undo();
    EXPECT_FALSE(armed);
    stage.Step(4);
  }
  EXPECT_FALSE(alive);
}

TYPED_TEST(CommandsTest, a_host_may_end_all_of_it_from_within_the_editor) {
  for (const Mischief mischief : {Mischief::EndQueue, Mischief::ClearQueue, Mischief::EndBoard,
                                  Mischief::EndList, Mischief::EndElement}) {
    for (int step = 0; step < 3; ++step) Meddle<TypeParam>(mischief, Edit::Added, step);
    Meddle<TypeParam>(mischief, Edit::Deleted, 0);
  }
}

// ---- random edits ----

/// The sequences of a story with their shots, by name and by address.
struct StoryPicture {
  explicit StoryPicture(const Story& story) {
    for (std::uint64_t i = 0; i < story.GetSequenceCount(); ++i) Add(*story.GetSequence(i));
  }
  bool operator==(const StoryPicture&) const = default;

  std::vector<std::wstring> names;
  std::vector<Sequence*> sequences;
  std::vector<ShotSpecification*> shots;

 private:
  void Add(Sequence& sequence) {
    names.push_back(sequence.GetName());
    sequences.push_back(&sequence);
    for (std::uint64_t i = 0; i < sequence.GetShotCount(); ++i) {
      names.push_back(L"- " + sequence.GetShot(i)->GetName());
      shots.push_back(sequence.GetShot(i));
    }
  }
};

/// Edits a story by chance, and remembers how it was before each edit that can be undone and after each that
/// can be redone. What lives is what is in one of these pictures, and nothing else.
class EditScript {
 public:
  explicit EditScript(Random& theRandom) : random(theRandom) {
    board->SetKorvane(&hub);
    board->SetShotEditor(&editor);
    board->SetUndoQueue(&queue);
    board->Create();
    pictures.emplace_back(*board->GetStory());
    journal.recording = false;
  }

  void Run(int edits) {
    for (int i = 0; i < edits; ++i) {
      const int turn = random.Integer(0, 9);
      if (turn < 2) {
        GoBack();
      } else if (turn < 4) {
        GoForward();
      } else {
        Edit();
      }
      Check();
    }
  }
  bool GoBack() {
    const bool gone = queue.Undo();
    EXPECT_EQ(gone, place > 0);
    if (gone) --place;
    return gone;
  }
  bool GoForward() {
    const bool gone = queue.Redo();
    EXPECT_EQ(gone, place + 1 < pictures.size());
    if (gone) ++place;
    return gone;
  }
  void Check() { ASSERT_EQ(StoryPicture(*board->GetStory()), pictures[place]); }
  void CheckLiving() {
    std::set<const void*> known;
    for (const StoryPicture& each : pictures) {
      known.insert(each.sequences.begin(), each.sequences.end());
      known.insert(each.shots.begin(), each.shots.end());
    }
    EXPECT_EQ(CountLiving(), known.size());
  }
  /// All of it ends, in one of two orders. How much lives on.
  std::size_t End() {
    if (random.Coin()) queue.Clear();
    board.reset();
    queue.Clear();
    return CountLiving();
  }

 private:
  void Edit() {
    if (!DoOne()) return;
    pictures.erase(pictures.begin() + static_cast<std::ptrdiff_t>(place) + 1, pictures.end());
    pictures.emplace_back(*board->GetStory());
    ++place;
    for (Sequence* const each : pictures.back().sequences) watches[each].Attach(each->GetLifeline());
    for (ShotSpecification* const each : pictures.back().shots) watches[each].Attach(each->GetLifeline());
  }
  bool DoOne() {
    ShotSpecification* const shot = Any(pictures[place].shots);
    Sequence* const of = board->GetSequenceForShot(shot);
    switch (random.Integer(0, 5)) {
      case 0:
        return board->CreateSequence() != nullptr;
      case 1:
      case 2:
        return board->CreateShot(Any(pictures[place].sequences)) != nullptr;
      case 3:
        return board->DeleteShot(shot);
      case 4:
        return board->MoveSequence(Any(pictures[place].sequences), Any(pictures[place].sequences));
      default:
        return board->MoveShot(shot, of == nullptr ? shot : AnyOf(*of));
    }
  }
  std::size_t CountLiving() const {
    const auto isAlive = [](const auto& each) { return static_cast<bool>(each.second); };
    return static_cast<std::size_t>(std::count_if(watches.begin(), watches.end(), isAlive));
  }
  // Null now and then.
  template <class Object>
  Object* Any(const std::vector<Object*>& objects) {
    const auto index = static_cast<std::size_t>(random.Integer(0, static_cast<int>(objects.size())));
    return index < objects.size() ? objects[index] : nullptr;
  }
  ShotSpecification* AnyOf(const Sequence& sequence) {
    return sequence.GetShot(
        static_cast<std::uint64_t>(random.Integer(0, static_cast<int>(sequence.GetShotCount()))));
  }

  Random& random;
  ManualPlatform platform;
  Journal journal;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  UndoQueue queue;
  JournalEditor editor{journal};
  std::unique_ptr<OpenStoryboard> board = std::make_unique<OpenStoryboard>();
  std::vector<StoryPicture> pictures;
  std::size_t place = 0;
  std::map<const void*, Lifeline::Watch> watches;
};

TEST(StoryboardEdits, of_any_kind_are_undone_to_the_first_and_redone_to_the_last) {
  constexpr int SCRIPTS = 10000;
  constexpr int LONGEST = 14;
  Random random(73);
  for (int i = 0; i < SCRIPTS && !::testing::Test::HasFailure(); ++i) {
    EditScript script(random);
    script.Run(random.Integer(1, LONGEST));
    script.CheckLiving();
    while (script.GoForward()) script.Check();
    while (script.GoBack()) script.Check();
    while (script.GoForward()) script.Check();
    script.CheckLiving();
    EXPECT_EQ(script.End(), 0U);
  }
}

}  // namespace
