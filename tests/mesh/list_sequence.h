#pragma once

// What the random sequences over the list of nodes and over those of faces share: the run itself,
// copies and moves of the whole list, and slots that change behind its back.

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <utility>
#include <vector>

#include "mesh/walk_model.h"

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
    }
    compareAll();
  }

 protected:
  struct Handle {
    int slot;
    Element* element;
  };

  explicit ListSequence(unsigned seed) : random_(seed) {}
  ~ListSequence() = default;

  virtual void takeStep() = 0;
  /// Whether one slot is as the model has it.
  [[nodiscard]] virtual bool agreesAt(int slot) const = 0;

  int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
  int slot() { return model_.bound == 0 ? 0 : pick(model_.bound); }

  /// Copies, moves or empties the list. @param kind 0 to 7.
  void changeWhole(int kind) {
    if (kind < 3) {
      List copy(*list_);
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
    } else if (model_.bound > 0) {
      handles_.push_back({at, pick(2) == 0 ? list_->GetItemPM(at) : &(*list_)[at]});
    }
  }
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
  void forgetHandles() {
    handles_.clear();
    all_ = nullptr;
  }

  std::mt19937 random_;
  std::optional<List> list_{std::in_place};
  Model model_;

 private:
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
