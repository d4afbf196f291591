// Random sequences over the list of nodes, step by step beside a model that walks.

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "mesh/list_sequence.h"
#include "zel/zel.h"

namespace {

using zel::test::ListSequence;
using zel::test::ModelNode;
using zel::test::NodeModel;

class NodeSequence : public ListSequence<NodeArr, NodeCL, NodeModel> {
 public:
  NodeSequence(unsigned seed, int size) : ListSequence(seed), size_(size) {}

 private:
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

  void takeStep() override {
    const int kind = pick(100);
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
    if (model_.bound > size_) {
      startAnew();
    }
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
  void writeThroughHandle() {
    const Handle handle = someHandle();
    if (handle.element == nullptr) {
      return;
    }
    const ModelNode value = node();
    if (pick(2) == 0) {
      handle.element->SetPntM(value.point.data());
      model_.at(handle.slot).point = value.point;
    } else {
      handle.element->SetDeleteTagM(static_cast<char>(value.tag));
      model_.at(handle.slot).tag = value.tag;
    }
  }

  void changeMany(int kind) {
    if (kind < 8) {
      changeWhole(kind);
    } else if (kind < 10) {
      insert();
    } else if (kind < 12) {
      list_->InverseNodeLstM();
      std::reverse(model_.slots.begin(), model_.slots.begin() + model_.bound);
    } else if (kind < 14) {
      move();
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
    if (model_.at(at).tag != zel::kTagAvailable && value.tag == zel::kTagAvailable) {
      model_.set(value, at);
    }
  }

  [[nodiscard]] bool agreesAt(int at) const override {
    return std::memcmp(std::as_const(*list_)[at].point(), model_.at(at).point.data(), 12) == 0;
  }

  int size_;
};

TEST(NodeArr, nearestFollowsThousandsOfChanges) {
  std::mt19937 random(5);
  NodeArr list;
  NodeModel model;
  const auto place = [&] {  // few places: many ties
    std::array<float, 3> p;
    for (float& x : p) {
      x = random() % 100 == 0 ? NAN : static_cast<float>(random() % 12);
    }
    return p;
  };
  for (int step = 0; step < 6000; ++step) {
    const ModelNode value{zel::kTagAvailable, place(), {}};
    NodeCL node(char{31});
    node.SetPntM(value.point.data());
    const int slot = static_cast<int>(random() % static_cast<unsigned>(model.bound + 1));
    if (random() % 4 == 0 && model.bound > 0) {
      list.DelItemM(slot);
      model.remove(slot);
    } else {
      const int target = random() % 3 == 0 ? slot : model.bound;
      list.SetItemM(node, target);
      model.set(value, target);
    }
    if (step % 4 == 0) {
      const auto p = place();
      NodeCL out;
      ASSERT_EQ(list.GetNearestNodeM(out, p.data()), model.nearest(p.data())) << "step " << step;
    }
  }
}

class NodeDifferential : public testing::TestWithParam<unsigned> {};

TEST_P(NodeDifferential, everySequenceAnswersAsTheWalk) { NodeSequence(GetParam(), 700).run(6000); }

INSTANTIATE_TEST_SUITE_P(Seeds, NodeDifferential, testing::Range(1U, 9U));

}  // namespace
