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

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "source/literal_look_ups.h"
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
      MarkStale();
    }
  }

  // Removes the object at `position`; later objects move one place down.
  void Remove(int position) {
    const auto slot = items_.begin() + static_cast<std::ptrdiff_t>(Slot(position));
    removed_.push_back(std::move(*slot));
    items_.erase(slot);
    MarkStale();
  }

  // Releases every object, the removed ones too, and sets the count to 0.
  void Clear() {
    items_.clear();
    removed_.clear();
    index_.reset();
  }

  // Declares that a non-empty label has been changed since the last look-up.
  void LabelsChanged() { MarkStale(); }

  // Position of the first object with exactly this label, or 0.
  int Find(std::string_view label) const {
    if (LiteralLookUps()) return FindLinear(label);
    if (items_.empty()) return 0;
    if (!index_) index_ = std::make_unique<Index>();
    CatchUp();
    if (label.empty()) return index_->pending.empty() ? 0 : index_->pending.front();
    return Lookup(label, HashOf(label));
  }

  // The same answer as Find, with a guess: when the object at `hint` carries the label and
  // is the first to carry it, that is the answer, found without touching the table. A frame
  // keeps the positions of its end nodes, and asks for them by label again and again.
  int FindNear(std::string_view label, int hint) const {
    return AnswersAt(label, hint) ? hint : Find(label);
  }

  // Whether Find answers `position` for the label, told without touching the table: the
  // object there carries the label and is the first to carry it. False also when that
  // cannot be told so (no index yet, literal look-ups).
  bool AnswersAt(std::string_view label, int position) const {
    if (position < 1 || position > Num() || label.empty() || !index_ || LiteralLookUps()) {
      return false;
    }
    CatchUp();
    return index_->IsFirst(position) &&
           items_[static_cast<std::size_t>(position - 1)]->Label == label;
  }

  // The position Find answers for the label of the object at `position`: that position
  // itself when the object is the first to carry its label, told without comparing labels.
  int FirstOfLabelAt(int position) const {
    const std::string& label = (*this)(position)->Label;
    if (LiteralLookUps() || label.empty()) return Find(label);
    if (!index_) index_ = std::make_unique<Index>();
    CatchUp();
    return index_->IsFirst(position) ? position : Lookup(label, HashOf(label));
  }

  // The same answer by the literal search from position 1.
  int FindLinear(std::string_view label) const {
    for (int position = 1; position <= Num(); ++position) {
      if ((*this)(position)->Label == label) return position;
    }
    return 0;
  }

  // Brings the label index up to the present list, so that look-ups from then on only read
  // it (and several threads may make them at once, while nothing changes the list). False
  // when that cannot be so: an object still without a label is examined again at every
  // look-up.
  bool SettleLookUps() const {
    if (LiteralLookUps() || items_.empty()) return true;
    if (!index_) index_ = std::make_unique<Index>();
    CatchUp();
    return index_->pending.empty();
  }

  // The first object with exactly this label, or nullptr.
  T* Get(std::string_view label) const {
    const int position = Find(label);
    return position == 0 ? nullptr : (*this)(position);
  }

 private:
  // The label index, made at the first look-up: most lists of a frame's loads are never
  // searched, and a frame holds two of them. One flat table of (hash, position) slots with
  // linear probing; the label itself is read from the object, so no label is copied.
  struct IndexSlot {
    std::uint32_t hash = 0;
    std::int32_t position = 0;  // 0: empty
  };
  struct Index {
    std::vector<IndexSlot> slots;  // a power of two in size, at most half full
    std::size_t used = 0;
    int indexed = 0;           // positions 1..indexed have been met
    std::vector<int> pending;  // ascending positions whose label was empty when met
    std::vector<std::uint8_t> first;  // by position: 1 when Find answers it for its label
    bool stale = false;

    bool IsFirst(int position) const {
      const auto at = static_cast<std::size_t>(position);
      return at < first.size() && first[at] != 0;
    }
    void SetFirst(int position, bool value) {
      const auto at = static_cast<std::size_t>(position);
      if (at >= first.size()) first.resize(at + 1, 0);
      first[at] = value ? 1 : 0;
    }
  };

  static std::uint32_t HashOf(std::string_view label) {
    // FNV-1a, folded to 32 bits: labels are short.
    std::uint64_t hash = 14695981039346656037ull;
    for (const char c : label) {
      hash ^= static_cast<unsigned char>(c);
      hash *= 1099511628211ull;
    }
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
  }

  std::size_t Home(std::uint32_t hash) const {
    // Fibonacci spreading of the hash over the table's size.
    const std::size_t mask = index_->slots.size() - 1;
    return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15ull) >> 32) & mask;
  }

  int Lookup(std::string_view label, std::uint32_t hash) const {
    const std::vector<IndexSlot>& slots = index_->slots;
    if (slots.empty()) return 0;
    const std::size_t mask = slots.size() - 1;
    for (std::size_t at = Home(hash);; at = (at + 1) & mask) {
      const IndexSlot& slot = slots[at];
      if (slot.position == 0) return 0;
      if (slot.hash == hash && items_[static_cast<std::size_t>(slot.position - 1)]->Label == label) {
        return slot.position;
      }
    }
  }

  void Grow(std::size_t wanted) const {
    std::size_t size = 16;
    while (size < 2 * wanted) size *= 2;
    if (size <= index_->slots.size()) return;
    std::vector<IndexSlot> old = std::move(index_->slots);
    index_->slots.assign(size, IndexSlot{});
    const std::size_t mask = size - 1;
    for (const IndexSlot& slot : old) {
      if (slot.position == 0) continue;
      std::size_t at = Home(slot.hash);
      while (index_->slots[at].position != 0) at = (at + 1) & mask;
      index_->slots[at] = slot;
    }
  }

  // Enters a non-empty label; of two objects with one label the lower position stays.
  void Enter(const std::string& label, int position) const {
    Index& index = *index_;
    if (2 * (index.used + 1) > index.slots.size()) Grow(index.used + 1);
    EnterHashed(label, HashOf(label), position);
  }

  // Enter, with the label's hash, into a table with room for it.
  void EnterHashed(const std::string& label, std::uint32_t hash, int position) const {
    Index& index = *index_;
    const std::size_t mask = index.slots.size() - 1;
    for (std::size_t at = Home(hash);; at = (at + 1) & mask) {
      IndexSlot& slot = index.slots[at];
      if (slot.position == 0) {
        slot = IndexSlot{hash, position};
        ++index.used;
        index.SetFirst(position, true);
        return;
      }
      if (slot.hash == hash && items_[static_cast<std::size_t>(slot.position - 1)]->Label == label) {
        if (position < slot.position) {
          index.SetFirst(slot.position, false);
          index.SetFirst(position, true);
          slot.position = position;
        }
        return;
      }
    }
  }

  std::size_t Slot(int position) const {
    if (position < 1 || position > Num()) one_based_detail::ThrowBadIndex(position, Num());
    return static_cast<std::size_t>(position - 1);
  }

  // Brings the index up to the present list: see the rule at the top of this file. Every
  // look-up asks; the answer is mostly that nothing changed.
  void CatchUp() const {
    const Index& index = *index_;
    if (!index.stale && index.indexed == Num() && index.pending.empty()) return;
    CatchUpChanges();
  }

  void CatchUpChanges() const {
    Index& index = *index_;
    if (index.stale) {
      index.slots.clear();
      index.used = 0;
      index.pending.clear();
      index.first.clear();
      index.indexed = 0;
      index.stale = false;
    }
    if (index.indexed == Num() && index.pending.empty()) return;
    if (index.slots.empty()) Grow(static_cast<std::size_t>(Num()));
    if (!index.pending.empty()) {
      std::vector<int> stillEmpty;
      for (const int position : index.pending) {
        const std::string& label = (*this)(position)->Label;
        if (label.empty()) {
          stillEmpty.push_back(position);
        } else {
          Enter(label, position);
        }
      }
      index.pending = std::move(stillEmpty);
    }
    EnterFrom(index.indexed + 1);
    index.indexed = Num();
  }

  // Enters the objects from `first` to the end. The table of a large list is far bigger
  // than the processor's caches, so each label is hashed some objects ahead of its entry
  // and its slot fetched meanwhile; the objects are fetched further ahead still.
  void EnterFrom(int first) const {
    const int last = Num();
    if (first > last) return;
    Index& index = *index_;
    Grow(index.used + static_cast<std::size_t>(last - first + 1));
    constexpr int kAhead = 8;
    std::array<std::uint32_t, kAhead> hashes{};
    const auto slotOf = [](int position) { return static_cast<std::size_t>(position % kAhead); };
    const auto hashAhead = [&](int position) {
      const std::uint32_t hash = HashOf((*this)(position)->Label);
      hashes[slotOf(position)] = hash;
      Prefetch(&index.slots[Home(hash)]);
      if (position + kAhead <= last) {
        Prefetch(items_[static_cast<std::size_t>(position + kAhead - 1)].get());
      }
    };
    for (int position = first; position < first + kAhead && position <= last; ++position) {
      hashAhead(position);
    }
    for (int position = first; position <= last; ++position) {
      const std::uint32_t hash = hashes[slotOf(position)];
      if (position + kAhead <= last) hashAhead(position + kAhead);
      const std::string& label = (*this)(position)->Label;
      if (label.empty()) {
        index.pending.push_back(position);
      } else {
        EnterHashed(label, hash, position);
      }
    }
  }

  static void Prefetch(const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    (void)address;
#endif
  }

  void MarkStale() {
    if (index_) index_->stale = true;
  }

  std::vector<std::unique_ptr<T>> items_;
  std::vector<std::unique_ptr<T>> removed_;
  mutable std::unique_ptr<Index> index_;
};

}  // namespace vtt
