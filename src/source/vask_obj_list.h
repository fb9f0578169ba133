// VaskObjList: an owning, one-based list of source objects with a look-up by label.
//
// Each container of the source model owns its objects and hands out plain pointers;
// cross references between source objects are those pointers. Positions count from 1.
//
// Look-up by label answers exactly what a linear search from position 1 answers: the
// first object whose `Label` equals the text exactly (case-sensitive), or none. It goes
// through a hash index so that reading a model stays linear in its size. The index is
// built lazily, and stays exact under this rule:
//
//   - Objects appended since the last look-up are indexed at the next look-up, under the
//     label they carry then. The readers add an object and set its `Label` afterwards;
//     that is always seen.
//   - An object whose label is still empty when the index meets it is kept aside and
//     examined again at every look-up until it has a label; so a look-up between the add
//     and the setting of the label does no harm.
//   - Removing an object marks the index stale; it is rebuilt at the next look-up.
//   - Changing a label that was already non-empty is not seen by itself: call
//     `LabelsChanged()` afterwards (the index is then rebuilt at the next look-up).
//
// `FindLinear` is the literal search, kept as the reference the index must agree with.
//
// A removed object is not destroyed at once: other objects may still refer to it (a node
// keeps its reference to a diaphragm that a merge removed), so it lives until Clear().
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "source/vask_one_based.h"

namespace vtt {

template <class T>
class VaskObjList {
 public:
  int Num() const { return static_cast<int>(items_.size()); }

  // The object at a position from 1 to Num().
  T* operator()(int position) const { return items_[Slot(position)].get(); }

  // Appends a new object with its initial values and returns it.
  T* Add() {
    items_.push_back(std::make_unique<T>());
    return items_.back().get();
  }

  // Removes, in one pass, every object whose position (before the removal) satisfies
  // `removed`; the others keep their order, as one Remove after another would leave them.
  template <class Removed>
  void RemoveWhere(Removed removed) {
    std::size_t kept = 0;
    for (std::size_t slot = 0; slot < items_.size(); ++slot) {
      if (removed(static_cast<int>(slot) + 1)) {
        removed_.push_back(std::move(items_[slot]));
      } else {
        items_[kept++] = std::move(items_[slot]);
      }
    }
    if (kept != items_.size()) {
      items_.resize(kept);
      stale_ = true;
    }
  }

  // Removes the object at `position`; later objects move one place down.
  void Remove(int position) {
    const auto slot = items_.begin() + static_cast<std::ptrdiff_t>(Slot(position));
    removed_.push_back(std::move(*slot));
    items_.erase(slot);
    stale_ = true;
  }

  // Releases every object, the removed ones too, and sets the count to 0.
  void Clear() {
    items_.clear();
    removed_.clear();
    stale_ = true;
  }

  // Declares that a non-empty label has been changed since the last look-up.
  void LabelsChanged() { stale_ = true; }

  // Position of the first object with exactly this label, or 0.
  int Find(std::string_view label) const {
    CatchUp();
    if (label.empty()) return pending_.empty() ? 0 : pending_.front();
    const auto found = first_.find(label);
    return found == first_.end() ? 0 : found->second;
  }

  // The same answer by the literal search from position 1.
  int FindLinear(std::string_view label) const {
    for (int position = 1; position <= Num(); ++position) {
      if ((*this)(position)->Label == label) return position;
    }
    return 0;
  }

  // The first object with exactly this label, or nullptr.
  T* Get(std::string_view label) const {
    const int position = Find(label);
    return position == 0 ? nullptr : (*this)(position);
  }

 private:
  struct LabelHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };

  std::size_t Slot(int position) const {
    if (position < 1 || position > Num()) one_based_detail::ThrowBadIndex(position, Num());
    return static_cast<std::size_t>(position - 1);
  }

  void Enter(const std::string& label, int position) const {
    const auto [entry, inserted] = first_.try_emplace(label, position);
    if (!inserted && position < entry->second) entry->second = position;
  }

  // Brings the index up to the present list: see the rule at the top of this file.
  void CatchUp() const {
    if (stale_) {
      first_.clear();
      pending_.clear();
      indexed_ = 0;
      stale_ = false;
    }
    if (!pending_.empty()) {
      std::vector<int> stillEmpty;
      for (const int position : pending_) {
        const std::string& label = (*this)(position)->Label;
        if (label.empty()) {
          stillEmpty.push_back(position);
        } else {
          Enter(label, position);
        }
      }
      pending_ = std::move(stillEmpty);
    }
    for (int position = indexed_ + 1; position <= Num(); ++position) {
      const std::string& label = (*this)(position)->Label;
      if (label.empty()) {
        pending_.push_back(position);
      } else {
        Enter(label, position);
      }
    }
    indexed_ = Num();
  }

  std::vector<std::unique_ptr<T>> items_;
  std::vector<std::unique_ptr<T>> removed_;

  // The label index: first position of each non-empty label among positions 1..indexed_,
  // and the positions, ascending, whose label was empty when last examined.
  mutable std::unordered_map<std::string, int, LabelHash, std::equal_to<>> first_;
  mutable std::vector<int> pending_;
  mutable int indexed_ = 0;
  mutable bool stale_ = false;
};

}  // namespace vtt
