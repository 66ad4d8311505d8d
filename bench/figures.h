// SPDX-License-Identifier: MIT
//
// What a benchmark found out, and what it is held against.  Each figure names its limit where it
// is measured; there is no other list of limits.

#ifndef BENCH_FIGURES_H_
#define BENCH_FIGURES_H_

#include <optional>
#include <string>
#include <vector>

namespace bench {

// What the operator waits for after an action in a view of 64 stations: one picture of a screen
// that shows 60 in a second.
inline constexpr double kViewMilliseconds = 16;

// Something else that was measured in the same run, in the same unit.
struct Other {
  std::string name;  // with its article, as in "compared with SQLite"
  double value = 0;
};

struct Figure {
  std::string what;
  double value = 0;
  std::string unit;
  std::optional<double> limit = {};       // the most that `value` may be
  std::optional<Other> other = {};        // what it is compared with
  std::optional<double> ratioLimit = {};  // the most that value / other->value may be
};

// The figures of one program, and its command line:
//   --quick         fewer rounds; the figures are rougher
//   --figures=FILE  append the figures to FILE, one a line, for bench/run_all.sh
//
// A line is the fields below, parted by tabs; fields that do not apply are empty:
//   what, value, unit, other's name, other's value, ratio, limit in words, verdict
// The verdict is "ok", "missed", "no result", or empty for a figure without a limit.
class Figures {
 public:
  // Takes its own options out of the command line.
  Figures(int* argc, char** argv);

  bool Quick() const { return quick_; }

  void Add(Figure figure);

  // A figure that could not be had.  That is a failure of the program.
  void AddMissing(const std::string& what, const std::string& why);

  // Prints a table of all figures and appends them to the file asked for.  The exit status of the
  // program: 0, or 1 when a limit was missed, or 2 when a figure or the file could not be had.
  int Finish() const;

 private:
  struct Line {
    std::string what;
    std::string value;
    std::string unit;
    std::string otherName;
    std::string otherValue;
    std::string ratio;
    std::string limit;
    std::string verdict;
  };

  static Line LineOf(const Figure& figure);
  bool Append() const;

  bool quick_ = false;
  std::string file_;
  std::vector<Line> lines_;
};

}  // namespace bench

#endif  // BENCH_FIGURES_H_
