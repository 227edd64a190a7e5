#pragma once

#include <string>
#include <vector>

class SimplestMove;

/// Something the library does and the same arithmetic, or a yardstick, without the library.
class BenchmarkCase {
 public:
  virtual ~BenchmarkCase() = default;
  virtual std::string GetName() const = 0;

  /// Back to the start, on both sides.
  virtual void Restart() = 0;
  /// One step; the two sides take the same steps in the same order.
  virtual void StepLibrary() = 0;
  virtual void StepBare() = 0;
  /// Whether both sides, which have taken the same steps, have the right result, the same for both where they
  /// do the same.
  virtual bool Agrees() const = 0;
  /// The least arithmetic of such a move, to be timed as a third; null where there is none.
  virtual SimplestMove* GetSimplest() { return nullptr; }
  /// What a step may take where a multiple of the bare arithmetic says nothing, since there is next to none;
  /// 0 for a multiple.
  virtual double GetAimInNanoseconds() const { return 0.0; }
  /// What a step may take above the other side, where that is the same work without something around it; 0
  /// for a multiple.
  virtual double GetAimAboveBare() const { return 0.0; }
};

/// The cases of each file; each lives as long as the program.
std::vector<BenchmarkCase*> GetFrameCases();
std::vector<BenchmarkCase*> GetPickCases();
/// Beside one spherical interpolation and one look-at; each is checked against where it must lead.
std::vector<BenchmarkCase*> GetShotCases();
std::vector<BenchmarkCase*> GetFitCases();
/// Beside the picks of the cube alone; a draw, beside a copy of what it draws as well.
std::vector<BenchmarkCase*> GetCubeCases();
/// A drag beside the same move of the hub alone, a mouse move beside the same of the cube alone.
std::vector<BenchmarkCase*> GetViewManagerCases();
/// Of twelve items, beside the same search, the same sum, and a copy of what is drawn.
std::vector<BenchmarkCase*> GetToolbarCases();
/// On the way through the view manager, beside the same search in the same picture; a slide along a film
/// strip, beside the sum of two views; a draw, beside the corners of what is drawn.
std::vector<BenchmarkCase*> GetDiscCases();
/// A frame of a story that plays, beside the frame of its move; a mouse move over a hundred slides, beside
/// the same search; a draw, beside the corners of what is drawn.
std::vector<BenchmarkCase*> GetStoryCases();
/// Through the facade, beside the same through the classes that it stands before.
std::vector<BenchmarkCase*> GetFacadeCases();
/// An input of a six-axis device and its frame, beside the same arithmetic.
std::vector<BenchmarkCase*> GetControllerCases();
