#pragma once

// What the random sequences over the list of nodes and over those of faces share: the run itself,
// copies and moves of the whole list, and slots that change behind its back.

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <utility>
#include <vector>

#include "mesh/walk_model.h"
#include "support/index_check.h"

namespace zel::test {

/// A list beside a model of it that walks.
template <class List, class Element, class Model>
class ListSequence {
 public:
  void run(int steps) {
    for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
      SCOPED_TRACE(testing::Message() << "step " << step);
      takeStep();
      if (step % 16 == 0) {
        compareAll();
      }
      if (step % 16 == 0 || model_.bound < kShort) {
        ASSERT_TRUE(IndexCheck::isTrue(*list_));
      }
    }
    compareAll();
  }

 protected:
  explicit ListSequence(unsigned seed) : random_(seed) {}
  ~ListSequence() = default;

  using Row = typename Model::Row;

  virtual void takeStep() = 0;
  virtual Row anyRow() = 0;
  [[nodiscard]] virtual Element elementOf(const Row& row) const = 0;
  /// Whether one slot is as the model has it.
  [[nodiscard]] virtual bool agreesAt(int slot) const = 0;

  int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
  int slot() { return model_.bound == 0 ? 0 : pick(model_.bound); }

  void add() {
    const Row row = anyRow();
    EXPECT_EQ(list_->AddItemM(elementOf(row)), model_.add(row));
  }
  void set() {
    const Row row = anyRow();
    const int at = pick(20) == 0 ? model_.bound + pick(60) : slot();
    list_->SetItemM(elementOf(row), at);
    model_.set(row, at);
  }
  void insert() {
    const Row row = anyRow();
    const int at = pick(model_.bound + 1);
    list_->InsertItemM(elementOf(row), at);
    model_.insert(row, at);
  }
  void remove() {
    const int at = slot();
    list_->DelItemM(at);
    model_.remove(at);
  }
  /// Changes the tag or all else of a slot behind the list's back.
  void writeThroughHandle() {
    const Handle handle = someHandle();
    if (handle.element == nullptr) {
      return;
    }
    Row& row = model_.at(handle.slot);
    Row other = anyRow();
    if (pick(2) == 0) {
      std::swap(row, other);
    }
    row.tag = other.tag;
    *handle.element = elementOf(row);
  }

  /// Copies, moves or empties the list. @param kind 0 to 7.
  void changeWhole(int kind) {
    if (kind < 3) {
      const List copy(*list_);
      *list_ = *&*list_;  // to itself: nothing happens
      kind == 0 ? list_.emplace(copy) : kind == 1 ? list_.emplace() = copy : * list_ = copy;
      forgetHandles();
    } else if (kind < 6) {
      List moved(std::move(*list_));  // handles stay true: the store itself moves over
      EXPECT_EQ(list_->GetBoundM(), 0);
      *list_ = std::move(moved);
      if (list_->GetLengthM() == 4) {
        forgetHandles();
      }
    } else if (kind < 7) {
      startAnew();
    } else {
      list_->DelAllVirtualM();
      for (int at = 0; at < model_.bound; ++at) {
        model_.at(at).tag = kTagDeleted;
      }
      model_.bound = model_.available = 0;
    }
  }
  void startAnew() {
    list_->DelAllM();
    model_ = Model();
    forgetHandles();
  }

  void handOut() {
    forgetStaleHandles();
    const int at = slot();
    if (pick(40) == 0) {
      all_ = list_->getCurrentItemPrtM();
    } else if (pick(4) == 0 && model_.bound < model_.length()) {  // not in use yet
      const int unused = model_.bound + pick(model_.length() - model_.bound);
      handles_.push_back({unused, &(*list_)[unused]});
    } else if (model_.bound > 0) {
      handles_.push_back({at, pick(2) == 0 ? list_->GetItemPM(at) : &(*list_)[at]});
    }
  }
  void forgetHandles() {
    handles_.clear();
    all_ = nullptr;
  }

  std::mt19937 random_;
  std::optional<List> list_{std::in_place};
  Model model_;

 private:
  /// Up to here the index is checked after every step.
  static constexpr int kShort = 1000;

  struct Handle {
    int slot;
    Element* element;
  };

  /// A slot to change behind the list's back, as is allowed until its next growth; null when none
  /// is handed out.
  Handle someHandle() {
    forgetStaleHandles();
    if (all_ != nullptr) {
      const int at = slot();
      return {at, all_ + at};
    }
    return handles_.empty()
               ? Handle{0, nullptr}
               : handles_[static_cast<std::size_t>(pick(static_cast<int>(handles_.size())))];
  }
  void forgetStaleHandles() {
    if (list_->GetLengthM() != handlesLength_) {
      forgetHandles();
    }
    handlesLength_ = list_->GetLengthM();
  }
  void compareAll() const {
    ASSERT_EQ(list_->GetBoundM(), model_.bound);
    ASSERT_EQ(list_->GetAvailableNumM(), model_.available);
    ASSERT_EQ(list_->GetLengthM(), model_.length());
    for (int at = 0; at < model_.bound; ++at) {
      ASSERT_EQ(std::as_const(*list_)[at].IsAvailableM(), model_.at(at).tag) << at;
      ASSERT_TRUE(agreesAt(at)) << at;
    }
  }

  std::vector<Handle> handles_;
  Element* all_ = nullptr;
  int handlesLength_ = 4;
};

}  // namespace zel::test
