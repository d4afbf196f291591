// Random sequences over the list of nodes, step by step beside a model that walks.

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "mesh/list_sequence.h"
#include "zel/zel.h"

namespace {

using namespace zel::test;

class NodeSequence : public ListSequence<NodeArr, NodeCL, NodeModel> {
 public:
  /// @param isLarge whether one list grows through the whole run, with no slot handed out.
  NodeSequence(unsigned seed, bool isLarge) : ListSequence(seed), isLarge_(isLarge) {}

 private:
  // Few places, each blurred by up to the merge tolerance, so that chains of near points and
  // exact twins arise.
  std::array<float, 3> place() {
    std::array<float, 3> point;
    for (float& x : point) {
      x = static_cast<float>(pick(isLarge_ ? 12 : 4)) * 0.5F + static_cast<float>(pick(3)) * 4e-5F;
    }
    const int odd = pick(isLarge_ ? 20000 : 200);  // a NaN is the nearest node to everything
    if (odd < 4) {
      const float kOdd[4] = {NAN, INFINITY, 1e18F, -1e18F};
      point[static_cast<std::size_t>(pick(3))] = kOdd[odd];
    } else if (pick(8) == 0) {  // floats so far out lie farther apart than the tolerance
      const float kFar[6] = {3e38F, -1e38F, 2.8e11F, 1.1e12F, 5000.0F, 1e6F};
      point[static_cast<std::size_t>(pick(3))] =
          kFar[pick(6)] * static_cast<float>(1 + pick(2) * 1e-7);
    }
    return point;
  }
  ModelNode anyRow() override {
    const signed char tag = pick(10) == 0 ? zel::kTagDeleted : zel::kTagAvailable;
    return {tag, place(), {static_cast<float>(pick(100)), 0.0F, 0.0F}};
  }
  [[nodiscard]] NodeCL elementOf(const ModelNode& row) const override {
    NodeCL result(static_cast<char>(row.tag));
    result.SetNodeM(row.point.data(), row.normal.data());
    return result;
  }

  void takeStep() override {
    const int kind = pick(100);
    if (kind < 40) {
      merge();
    } else if (kind < 50) {
      nearest();
    } else if (kind < 60) {
      remove();
    } else if (kind < 66) {
      set();
    } else if (kind < 70) {
      add();
    } else if (isLarge_) {
      nearest();
    } else if (kind < 73) {
      handOut();
    } else if (kind < 84) {
      writeThroughHandle();
    } else {
      changeMany(pick(160));
    }
    if (model_.bound > 700 && !isLarge_) {
      startAnew();
    }
  }

  void merge() {
    const ModelNode value = anyRow();
    int index = -5;
    EXPECT_EQ(list_->MergeNodeLstM(elementOf(value), &index), 1);
    EXPECT_EQ(index, model_.merge(value));
  }
  void nearest() {
    const auto p = place();
    NodeCL out;
    const int winner = list_->GetNearestNodeM(out, p.data());
    ASSERT_EQ(winner, model_.nearest(p.data()));
    const ModelNode& copied = model_.at(winner >= 0 ? winner : 1);
    EXPECT_EQ(std::memcmp(out.point(), copied.point.data(), sizeof copied.point), 0);
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
    const ModelNode value = anyRow();
    const int at = slot();
    source.SetItemM(elementOf(value), at);
    list_->AddNodeByIndex(at, source);
    if (model_.at(at).tag != zel::kTagAvailable && value.tag == zel::kTagAvailable) {
      model_.set(value, at);
    }
  }

  [[nodiscard]] bool agreesAt(int at) const override {
    const NodeCL& node = std::as_const(*list_)[at];
    const ModelNode& row = model_.at(at);
    return std::memcmp(node.point(), row.point.data(), sizeof row.point) == 0 &&
           std::equal(row.normal.begin(), row.normal.end(), node.normal());
  }

  bool isLarge_;
};

class NodeDifferential : public testing::TestWithParam<unsigned> {};

TEST_P(NodeDifferential, everySequenceAnswersAsTheWalk) {
  NodeSequence(GetParam(), false).run(6000);
}

TEST(NodeDifferential, largeListsAnswerAsTheWalk) { NodeSequence(5, true).run(6000); }

INSTANTIATE_TEST_SUITE_P(Seeds, NodeDifferential, testing::Range(1U, 9U));

}  // namespace
