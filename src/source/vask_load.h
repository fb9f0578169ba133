// Load patterns and the loads of the source model.
//
// Small objects with the few operations that build them: the readers of the load stages
// fill them, and the load, mass and load-case steps read them. Each object keeps its items
// together in one one-based list beside a separate `ItemNum`, since the list may hold
// entries past the count (a removed frame point load leaves its old last entry behind, and
// a later pass still reads it).
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "source/drop_note.h"
#include "source/vask_one_based.h"

namespace vtt {

class VaskLoadPatternObj {
 public:
  std::string Label;
  // Never written by the reading; stays 0.
  int LoadType = 0;
  double SelfWtMultiplier = 0.0;
  bool LoadNodeNotEmpty = false;
  bool LoadElementNotEmpty = false;
  bool SelfWeightNotEmpty = false;
  std::string TrelkLoadPatternNodeName;
  std::string TrelkLoadPatternElementName;
  std::string TrelkLoadPatternSelfWeightName;
};

// The item of each pattern of a load object that holds one item per pattern. A point or
// area loaded in a few patterns is searched from its first item; one loaded in many (a
// model may give a point thousands of patterns) through a table made at its first search
// past that, which answers the same: no two items share a pattern.
class PatternItems {
 public:
  // The item of `pattern` among items 1 to `count`, or 0; `patternOf(i)` is the pattern of
  // item i. Items are only ever added at the end.
  template <class PatternOf>
  int Find(const std::string& pattern, int count, const PatternOf& patternOf) {
    if (count < kTableFrom) {
      for (int i = 1; i <= count; ++i) {
        if (patternOf(i) == pattern) return i;
      }
      return 0;
    }
    if (table_ == nullptr) table_ = std::make_unique<Table>();
    if (table_->items > count) table_ = std::make_unique<Table>();  // items were dropped
    for (int i = table_->items + 1; i <= count; ++i) table_->item.emplace(patternOf(i), i);
    table_->items = count;
    const auto found = table_->item.find(pattern);
    return found == table_->item.end() ? 0 : found->second;
  }

 private:
  static constexpr int kTableFrom = 16;
  struct Table {
    std::unordered_map<std::string, int> item;  // the first item of each pattern
    int items = 0;                               // items 1 to this are in the table
  };
  std::unique_ptr<Table> table_;
};

// The loads of one node, one item per pattern. F3 is positive upward, along global +Z.
// The items are kept together, each pattern with its six values, exactly ItemNum of them.
class VaskLoadNodeObj {
 public:
  // Adds the six values to the item of `pattern`, leaving Label as it is; without one,
  // appends an item for it and sets Label to `label`.
  void SetLoadNode(const std::string& label, const std::string& pattern, double f1, double f2,
                   double f3, double m1, double m2, double m3);

  int ItemNum = 0;
  std::string Label;

  // Item i, 1 to ItemNum: its pattern and values.
  const std::string& LoadPattern(int i) const { return items_(i).pattern; }
  double& F1(int i) { return items_(i).f1; }
  double F1(int i) const { return items_(i).f1; }
  double& F2(int i) { return items_(i).f2; }
  double F2(int i) const { return items_(i).f2; }
  double& F3(int i) { return items_(i).f3; }
  double F3(int i) const { return items_(i).f3; }
  double& M1(int i) { return items_(i).m1; }
  double M1(int i) const { return items_(i).m1; }
  double& M2(int i) { return items_(i).m2; }
  double M2(int i) const { return items_(i).m2; }
  double& M3(int i) { return items_(i).m3; }
  double M3(int i) const { return items_(i).m3; }
  // How many items are kept: always ItemNum.
  int ItemsKept() const { return items_.Num(); }

 private:
  struct Item {
    std::string pattern;
    double f1 = 0.0;
    double f2 = 0.0;
    double f3 = 0.0;
    double m1 = 0.0;
    double m2 = 0.0;
    double m3 = 0.0;
  };
  OneBasedList<Item> items_;
  PatternItems patternItems_;
};

// The work list of a piecewise linear load along a frame: stations at relative distances,
// ascending, with the value just left and just right of each. The stations are kept
// together, each distance with its two values; they start empty and grow as stations
// arrive, and no step reads them past ItemNum.
class VaskPairObj {
 public:
  // Starts the list with the two ends of the frame, 0 and 1, carrying nothing.
  void AddFirstPair();
  // Superposes one straight piece from d1 to d2 (relative distances, d1 below d2): left1
  // and right1 are added just left and right of d1, left2 and right2 just left and right
  // of d2, and the straight line from (d1, right1) to (d2, left2) to every station between
  // them. A distance within 1e-6 of a station is that station; any other gets a new
  // station carrying the value the list had there.
  void AddPair(double d1, double left1, double right1, double d2, double left2, double right2);

  // Station i, 1 up to ItemsKept(): its distance and the values left and right of it.
  double& dist(int i) { return items_(i).dist; }
  double dist(int i) const { return items_(i).dist; }
  double& ValLeft(int i) { return items_(i).left; }
  double ValLeft(int i) const { return items_(i).left; }
  double& ValRight(int i) { return items_(i).right; }
  double ValRight(int i) const { return items_(i).right; }
  // How many stations are kept: at least ItemNum once a station has arrived.
  int ItemsKept() const { return items_.Num(); }
  // Sets how many stations are kept; new ones stand at 0 carrying nothing.
  void KeepItems(int num) { items_.Redim(num); }

  int ItemNum = 0;

 private:
  struct Item {
    double dist = 0.0;
    double left = 0.0;
    double right = 0.0;
  };

  // Puts a station at `place`, moving the stations from there on one place up.
  void InsertStation(int place, double d, double left, double right);

  OneBasedList<Item> items_;
};

// The value at x of the straight line through (x1, y1) and (x2, y2), taken only between the
// two: 0 when x1 equals x2 or x lies outside them. The two points may come in either order.
double Interpolate(double x, double x1, double y1, double x2, double y2);

// The span tolerance of SortLoadFrameDistributed for a length unit (program length code, 0
// inch to 4 metre): a millionth of a millimetre in that unit, from the single-precision
// inches table. It is compared with relative distances all the same, so it is 1e-6 in
// millimetres and smaller in every larger unit.
double LoadFrameDistributedSpanTolerance(int unitLength);

// The distributed loads of one frame in one pattern; values positive downward, distances
// relative to the frame length. The items are kept together, each piece's two distances
// with its two values, in one list for the object: a large building has a million of
// these objects, most with one item. The list starts empty and grows as items arrive; it
// never shrinks, so after a sort has joined pieces it may hold entries past ItemNum, which
// nothing reads. (Room for a hundred items kept in advance would cost some 6 KB for each
// frame and pattern, most of the memory of a large building, and changes no output.)
class VaskLoadFrameDistObj {
 public:
  // Appends the piece from rd1 to rd2. The host's upward directions (6 global Z, 9
  // projected Z) are stored negated, so every value kept is positive downward.
  void AddLoadFrameDistributed(int dir, double rd1, double rd2, double val1, double val2);
  // Rewrites the items as the superposition of all of them: sorted, non-overlapping
  // pieces; spans that carry nothing, or are no longer than the tolerance of the length
  // unit `unitLength` (see LoadFrameDistributedSpanTolerance), are left out, and adjoining
  // pieces on one straight line are joined. A loaded span left out for its length is told
  // to `observer`, when there is one.
  void SortLoadFrameDistributed(int unitLength, const DropObserver* observer = nullptr);
  // True when an item has |Val1| or |Val2| above 1e-6.
  bool HasLoad() const;

  std::string Label;
  int ItemNum = 0;

  // Item i, 1 up to ItemsKept() (only 1 to ItemNum are read): where the piece starts and
  // ends, and its values there.
  double& RD1(int i) { return items_(i).rd1; }
  double RD1(int i) const { return items_(i).rd1; }
  double& RD2(int i) { return items_(i).rd2; }
  double RD2(int i) const { return items_(i).rd2; }
  double& Val1(int i) { return items_(i).val1; }
  double Val1(int i) const { return items_(i).val1; }
  double& Val2(int i) { return items_(i).val2; }
  double Val2(int i) const { return items_(i).val2; }
  // How many items are kept: the most ItemNum has been, which a sort may have lowered since.
  int ItemsKept() const { return items_.Num(); }
  // Sets how many items are kept; new ones hold zeros.
  void KeepItems(int num) { items_.Redim(num); }

  // Nothing writes it, so it reads 0.
  int Dir = 0;
  std::string CSys;
  int LoadType = 0;
  std::string PatternLabel;
  // Kept between sorts: a second sort superposes the items on the stations of the first.
  VaskPairObj PairObj;

 private:
  struct Item {
    double rd1 = 0.0;
    double rd2 = 0.0;
    double val1 = 0.0;
    double val2 = 0.0;
  };

  void AppendItem(double rd1, double rd2, double val1, double val2);
  void RemoveItem(int k);

  OneBasedList<Item> items_;
};

// The point loads of one frame in one pattern; values positive downward. The items are
// kept together, each distance with its value, in one list sized to ItemNum when an item
// is added; removing one leaves the list as it is, so the entries past ItemNum still hold
// what the last places held before.
class VaskLoadFramePointObj {
 public:
  // Appends a load at rd; the upward directions 6 and 9 are stored negated.
  void AddLoadFramePoint(int dir, double rd, double val);
  // Sorts the items by RD and folds loads within 1e-6 of each other into one. The bounds of
  // both loops are those on entry, so once a fold has shortened the list the loops go on
  // reading the old entries past ItemNum, and a fold with one of those shortens it again.
  // A load that is lost that way is told to `observer`, when there is one.
  void SortLoadFramePoint(const DropObserver* observer = nullptr);
  // Moves the items above k one place down and lowers ItemNum by 1; the list keeps its
  // length.
  void RemoveLoadFramePoint(int k);
  // Sizes the item list to ItemNum.
  void RedimLoadFramePoint();
  // True when an item has |Val| above 1e-6.
  bool HasLoad() const;

  int ItemNum = 0;
  std::string Label;

  // Item i, 1 up to ItemsKept(), past ItemNum too (see SortLoadFramePoint): where the load
  // stands and its value.
  double& RD(int i) { return items_(i).rd; }
  double RD(int i) const { return items_(i).rd; }
  double& Val(int i) { return items_(i).val; }
  double Val(int i) const { return items_(i).val; }
  // How many items are kept: ItemNum, or more after a removal.
  int ItemsKept() const { return items_.Num(); }
  // Sets how many items are kept; new ones hold zeros.
  void KeepItems(int num) { items_.Redim(num); }

  // Never written.
  int Direction = 0;
  std::string CSys;
  int LoadType = 0;
  std::string PatternLabel;

 private:
  struct Item {
    double rd = 0.0;
    double val = 0.0;
  };

  // Tells `observer` of each of the `given` loads (RD, value) that the sorted list does not
  // hold as a right sort would: gone, or kept with another sum.
  void NoteSortLosses(std::vector<std::pair<double, double>> given,
                      const DropObserver& observer) const;

  OneBasedList<Item> items_;
};

// The uniform loads of one area, one item per pattern. A value is kept as its decimal
// text (15 significant digits) and read back by a text-to-number conversion, so a sum is
// rounded to 15 digits after each addition; it is positive along +Z.
class VaskLoadAreaObj {
 public:
  // Adds `value` to the item of `pattern` when dir is 6 or 9 and subtracts it otherwise;
  // the item keeps the direction of its first load. Without an item, appends one with
  // `dir` and the value, negated unless dir is 6 or 9, and sets Label to `label`. The
  // coordinate system is not kept: the readers pass only "GLOBAL" loads.
  void SetLoadArea(const std::string& label, const std::string& pattern, std::string_view csys,
                   int dir, double value);
  // Value(i) as a number.
  double ValueNumber(int i) const;

  int ItemNum = 0;
  std::string Label;

  // Item i, 1 to ItemNum: its pattern, direction and value text.
  std::string& Value(int i) { return items_(i).value; }
  const std::string& Value(int i) const { return items_(i).value; }
  int& Direction(int i) { return items_(i).direction; }
  int Direction(int i) const { return items_(i).direction; }
  const std::string& LoadPattern(int i) const { return items_(i).pattern; }
  // How many items are kept: always ItemNum.
  int ItemsKept() const { return items_.Num(); }

 private:
  PatternItems patternItems_;
  struct Item {
    std::string value;
    int direction = 0;
    std::string pattern;
  };
  OneBasedList<Item> items_;
};

// Tells `observer` of every nodal load that the structure will not keep because a later
// object of the same node holds the same pattern: the nodal pattern takes the last one of
// them. Only an end point load moved onto a node (CheckLoadFramePoint) makes a second
// object of a node, so the one replaced is the node's own or area load, or an earlier end
// load.
void NoteReplacedNodeLoads(const std::vector<const VaskLoadNodeObj*>& loads,
                           const DropObserver& observer);

// The text an area load value is kept as: `%.15g`.
std::string LoadAreaValueText(double value);

// Whether a load's coordinate system is the global one: "GLOBAL" exactly once spaces are
// trimmed from both ends ("Global" is another system). No other system is carried.
bool IsGlobalLoadCSys(std::string_view csys);

// Whether ReadLoadAreas gives up an area for a load with this pattern type, coordinate
// system and direction: any system but "GLOBAL" (spaces trimmed), or a direction other than
// 6, 9, 10 and 11. The type plays no part.
bool IsAreaLoadRejected(int type, std::string_view csys, int dir);

}  // namespace vtt
