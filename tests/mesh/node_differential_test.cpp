// Random sequences over the list of nodes, step by step beside a model that walks.

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <random>

#include "mesh/walk_model.h"
#include "zel/zel.h"

namespace {

using zel::test::ModelNode;
using zel::test::NodeModel;

class NodeSequence {
 public:
  NodeSequence(unsigned seed, int size) : random_(seed), size_(size) {}

  void run(int steps) {
    for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
      SCOPED_TRACE(testing::Message() << "step " << step);
      change(pick(100));
      if (step % 16 == 0) {
        compareAll();
      }
    }
    compareAll();
  }

 private:
  int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
  int slot() { return model_.bound == 0 ? 0 : pick(model_.bound); }

  // Few places, each blurred by up to the merge tolerance, so that chains of near points and
  // exact twins arise.
  std::array<float, 3> place() {
    std::array<float, 3> point;
    for (float& x : point) {
      x = static_cast<float>(pick(4)) * 0.5F + static_cast<float>(pick(3)) * 4e-5F;
    }
    const int odd = pick(200);
    if (odd < 4) {
      const float kOdd[4] = {NAN, INFINITY, 1e18F, -1e18F};
      point[static_cast<std::size_t>(pick(3))] = kOdd[odd];
    }
    return point;
  }
  ModelNode node() {
    const signed char tag = pick(10) == 0 ? zel::kTagDeleted : zel::kTagAvailable;
    return {tag, place(), {1.0F, 0.0F, 0.0F}};
  }
  static NodeCL make(const ModelNode& node) {
    NodeCL result(static_cast<char>(node.tag));
    result.SetNodeM(node.point.data(), node.normal.data());
    return result;
  }

  void change(int kind) {
    if (kind < 40) {
      merge();
    } else if (kind < 50) {
      nearest();
    } else if (kind < 60) {
      const int at = slot();
      list_->DelItemM(at);
      model_.remove(at);
    } else if (kind < 66) {
      const ModelNode value = node();
      const int at = pick(20) == 0 ? model_.bound + pick(3) : slot();
      list_->SetItemM(make(value), at);
      model_.set(value, at);
    } else if (kind < 70) {
      const ModelNode value = node();
      EXPECT_EQ(list_->AddItemM(make(value)), model_.add(value));
    } else if (kind < 73) {
      handOut();
    } else if (kind < 84) {
      writeThroughHandle();
    } else {
      changeMany(pick(160));
    }
    shrink();
  }

  void merge() {
    const ModelNode value = node();
    int index = -5;
    EXPECT_EQ(list_->MergeNodeLstM(make(value), &index), 1);
    EXPECT_EQ(index, model_.merge(value));
  }
  void nearest() {
    const auto p = place();
    NodeCL out;
    const int winner = list_->GetNearestNodeM(out, p.data());
    ASSERT_EQ(winner, model_.nearest(p.data()));
    if (winner >= 0) {
      float point[3];
      out.GetPntM(point);
      EXPECT_EQ(std::memcmp(point, model_.at(winner).point.data(), sizeof point), 0);
    }
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
  // Slots change behind the list's back until its next growth.
  void writeThroughHandle() {
    forgetStaleHandles();
    Handle handle{slot(), all_ == nullptr ? nullptr : all_ + slot()};
    if (all_ != nullptr) {
      handle.node = all_ + handle.slot;
    } else if (!handles_.empty()) {
      handle = handles_[static_cast<std::size_t>(pick(static_cast<int>(handles_.size())))];
    }
    if (handle.node == nullptr) {
      return;
    }
    const ModelNode value = node();
    if (pick(2) == 0) {
      handle.node->SetPntM(value.point.data());
      model_.at(handle.slot).point = value.point;
    } else {
      handle.node->SetDeleteTagM(static_cast<char>(value.tag));
      model_.at(handle.slot).tag = value.tag;
    }
  }

  void changeMany(int kind) {
    if (kind < 3) {
      NodeArr copy(*list_);
      kind == 0 ? list_.emplace(copy) : kind == 1 ? list_.emplace() = copy : * list_ = copy;
      forgetHandles();
    } else if (kind < 6) {
      NodeArr moved(std::move(*list_));  // handles stay true: the store itself moves over
      EXPECT_EQ(list_->GetBoundM(), 0);
      *list_ = std::move(moved);
      if (list_->GetLengthM() == 4) {
        forgetHandles();
      }
    } else if (kind < 8) {
      insert();
    } else if (kind < 10) {
      list_->InverseNodeLstM();
      std::reverse(model_.slots.begin(), model_.slots.begin() + model_.bound);
    } else if (kind < 12) {
      move();
    } else if (kind < 13) {
      list_->DelAllM();
      model_ = NodeModel();
      forgetHandles();
    } else if (kind < 14) {
      list_->DelAllVirtualM();
      for (int at = 0; at < model_.bound; ++at) {
        model_.at(at).tag = zel::kTagDeleted;
      }
      model_.bound = model_.available = 0;
    } else if (kind < 20) {
      list_->AddSizeM(3);
      model_.grow(3);
    } else if (kind < 60) {
      addWithRoom();
    } else if (kind < 70) {
      addByIndex();
    }
  }
  void insert() {
    const ModelNode value = node();
    const int at = pick(model_.bound + 1);
    list_->InsertItemM(make(value), at);
    model_.insert(value, at);
  }
  void move() {
    float matrix[16];
    const float shift[3] = {0.5F, 0.0F, 0.0F};
    slGenerateMoveMatrix(shift, pick(2) == 0 ? 1.0F : -1.0F, matrix);
    pick(2) == 0 ? list_->TransByMatrixM(matrix) : list_->ScaleM(matrix);
    for (int at = 0; at < model_.bound; ++at) {
      slMatrix16MultiPoint3(matrix, model_.at(at).point.data());
    }
  }
  // With room left the point goes under whatever tag the slot had, and counts.
  void addWithRoom() {
    const float limit[2] = {100.0F, 100.0F};
    const auto p = place();
    NodeCL scratch(char{31});
    if (model_.bound == model_.length() || !(p[0] >= 0 && p[0] < 100 && p[1] >= 0 && p[1] < 100)) {
      return;
    }
    list_->AddPntAndNormM(scratch, limit, p[0], p[1], p[2], 0, 0, 0);
    model_.at(model_.bound).point = p;
    ++model_.bound;
    ++model_.available;
  }
  void addByIndex() {
    NodeArr source;
    const ModelNode value = node();
    const int at = slot();
    source.SetItemM(make(value), at);
    list_->AddNodeByIndex(at, source);
    if (!model_.isLive(at) && value.tag == zel::kTagAvailable) {
      model_.set(value, at);
    }
  }
  void forgetStaleHandles() {
    if (list_->GetLengthM() != handlesLength_) {
      forgetHandles();
    }
    handlesLength_ = list_->GetLengthM();
  }
  void forgetHandles() {
    handles_.clear();
    all_ = nullptr;
  }
  void shrink() {
    if (model_.bound > size_) {
      list_->DelAllM();
      model_ = NodeModel();
      forgetHandles();
    }
  }

  void compareAll() {
    ASSERT_EQ(list_->GetBoundM(), model_.bound);
    ASSERT_EQ(list_->GetAvailableNumM(), model_.available);
    ASSERT_EQ(list_->GetLengthM(), model_.length());
    const NodeArr& list = *list_;
    for (int at = 0; at < model_.bound; ++at) {
      ASSERT_EQ(list[at].IsAvailableM(), model_.at(at).tag) << at;
      ASSERT_EQ(std::memcmp(list[at].point(), model_.at(at).point.data(), 12), 0) << at;
    }
  }

  struct Handle {
    int slot;
    NodeCL* node;
  };

  std::mt19937 random_;
  int size_;
  std::optional<NodeArr> list_{std::in_place};
  NodeModel model_;
  std::vector<Handle> handles_;
  NodeCL* all_ = nullptr;
  int handlesLength_ = 4;
};

class NodeDifferential : public testing::TestWithParam<unsigned> {};

TEST_P(NodeDifferential, everySequenceAnswersAsTheWalk) { NodeSequence(GetParam(), 700).run(6000); }

INSTANTIATE_TEST_SUITE_P(Seeds, NodeDifferential, testing::Range(1U, 9U));

}  // namespace
