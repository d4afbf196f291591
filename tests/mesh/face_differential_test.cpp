// Random sequences over the lists of triangles and quads, step by step beside a model that walks.

#include <gtest/gtest.h>

#include <utility>

#include "mesh/list_sequence.h"
#include "zel/zel.h"

namespace {

using namespace zel::test;

template <int kCount>
using ListOf = std::conditional_t<kCount == 3, TriangleArr, QuadArr>;
template <int kCount>
using FaceOf = std::conditional_t<kCount == 3, TriangleCL, QuadCL>;

template <int kCount>
class FaceSequence : public ListSequence<ListOf<kCount>, FaceOf<kCount>, FaceModel<kCount>> {
  using Sequence = ListSequence<ListOf<kCount>, FaceOf<kCount>, FaceModel<kCount>>;
  using Face = ModelFace<kCount>;
  using Sequence::forgetHandles;
  using Sequence::list_;
  using Sequence::model_;
  using Sequence::pick;
  using Sequence::random_;
  using Sequence::slot;

 public:
  FaceSequence(unsigned seed, int nodes) : Sequence(seed), nodes_(nodes) {}

 private:
  void takeStep() override {
    const int kind = pick(100);
    kind < 30 ? merge() : kind < 60 ? search() : kind < 97 ? change() : changeMany(pick(60));
  }
  // A few hubs, many ordinary nodes, some that are far out or no nodes at all.
  int node() {
    const int kOdd[5] = {-1, zel::kNoIndex, 1 << 30, 2147483647, 70000};
    const int kind = pick(50);
    return kind == 0 ? kOdd[pick(5)] : kind < 8 ? pick(3) : pick(nodes_);
  }
  [[nodiscard]] FaceOf<kCount> elementOf(const Face& row) const override {
    FaceOf<kCount> result(static_cast<char>(row.tag));
    std::copy(row.corners.begin(), row.corners.end(), result.record().corners);
    return result;
  }
  Face anyRow() override {
    Face result;
    const int tag = pick(30);
    result.tag = static_cast<signed char>(tag < 3 ? 30 + 2 * tag : 31);
    for (int& corner : result.corners) {
      corner = node();
    }
    return result;
  }
  // Half the time a face that exists, turned about, so that searches hit.
  std::array<int, kCount> corners() {
    auto result = anyRow().corners;
    if (pick(2) == 0 && model_.bound > 0) {
      result = model_.at(slot()).corners;
      std::shuffle(result.begin(), result.end(), random_);
    }
    return result;
  }

  void merge() {
    Face value = anyRow();
    if (pick(2) == 0) {
      value.corners = corners();
    }
    if constexpr (kCount == 3) {
      EXPECT_EQ(list_->MergeTriangleLstM(elementOf(value)), model_.merge(value));
    } else {
      EXPECT_EQ(list_->MergeQuadLstM(elementOf(value)), model_.merge(value));
    }
  }

  void search() {
    const auto asked = corners();
    int at = -7;
    int modelAt = -7;
    const int a = asked[0];
    const int b = pick(10) == 0 ? a : asked[1];
    EXPECT_EQ(list_->JudgeBoundM(a, b, &at), model_.judgeBound(a, b, &modelAt));
    EXPECT_EQ(at, modelAt);
    EXPECT_EQ(list_->GetOneNeighbourPntM(a), model_.cornerAfter(a));
    if constexpr (kCount == 3) {
      searchTriangles(asked, a, b);
    }
  }
  void searchTriangles(const std::array<int, 3>& asked, int a, int b) {
    int at = -7;
    EXPECT_EQ(list_->FindTriangleM(asked.data()), model_.findLast(asked));
    const int first = model_.findFirst(asked);
    EXPECT_EQ(list_->FindTriangleM(asked.data(), &at), first < 0 ? 0 : 1);
    EXPECT_EQ(at, first < 0 ? -7 : first);
    EXPECT_EQ(list_->getFirstValidIdxM(), model_.firstOddTag());
    const int skip = slot();
    for (const int directed : {0, 1}) {
      const int edge[2] = {a, b};
      const int next = model_.nextRelated(skip, edge, directed == 1);
      EXPECT_EQ(list_->getNextRelTriangleIdxM(skip, edge, &at, directed),
                next == zel::kNoIndex ? 0 : 1);
      EXPECT_EQ(at, next);
    }
    int edge[2] = {a, -3};
    int modelEdge[2] = {a, -3};
    int modelAt = at;
    EXPECT_EQ(list_->GetOneBoundWithStIdxM(b, edge, &at), model_.oneBound(b, modelEdge, &modelAt));
    EXPECT_EQ(edge[1], modelEdge[1]);
    EXPECT_EQ(at, modelAt);
    Int2DArr pairs;
    list_->FindTriangleM(a, &pairs);
    std::vector<std::array<int, 2>> around(static_cast<std::size_t>(pairs.GetBoundM()));
    for (int k = 0; k < pairs.GetBoundM(); ++k) {
      pairs.GetItemM(around[static_cast<std::size_t>(k)].data(), k);
    }
    EXPECT_EQ(around, model_.around(a));
  }

  void change() {
    switch (pick(8)) {
      case 0:
        return this->remove();
      case 1:
        return this->set();
      case 2:
        return this->add();
      case 3:
      case 4:
        return rename(node(), node());
      case 5:
        return pick(4) == 0 ? this->handOut() : this->writeThroughHandle();
      case 6:
        return this->writeThroughHandle();
      default:
        deleteAround(node());
    }
  }
  void rename(int from, int to) {
    list_->ChangeNodeIdxM(from, to);
    model_.rename(from, to);
  }
  void deleteAround(int around) {
    if constexpr (kCount == 3) {
      if (around > 2 || pick(20) == 0) {
        list_->DelTriangleByVertexM(around);
        model_.deleteAround(around);
      }
    }
  }
  void changeMany(int kind) {
    if (kind < 8) {
      this->changeWhole(kind);
    } else if (kind < 22) {
      pick(2) == 0 ? this->insert() : insertByModify();
    } else if (kind < 26) {
      renumber();
    } else if (kind < 28) {
      purge();
    }
  }
  void insertByModify() {
    Face live = anyRow();
    live.tag = zel::kTagAvailable;
    const int at = pick(model_.bound + 1);
    if (model_.bound == model_.length()) {
      model_.grow(model_.increment);
    }
    model_.insert(live, at);
    if constexpr (kCount == 3) {
      const float normal[3] = {0.0F, 0.0F, 1.0F};
      list_->ModifyM(at, live.corners.data(), normal);
    } else {
      list_->ModifyM(at, live.corners.data());
    }
  }
  void renumber() {
    std::vector<int> map(static_cast<std::size_t>(nodes_));
    IntArr mapArr;
    for (int from = 0; from < nodes_; ++from) {
      const int to = pick(20) == 0 ? pick(nodes_) : (from + 1) % nodes_;
      map[static_cast<std::size_t>(from)] = to;
      mapArr.SetItemM(to, from);
    }
    list_->ResetNodeIdxM(mapArr);
    model_.renumber(map);
    if (list_->GetLengthM() == 4) {
      forgetHandles();
    }
  }
  void purge() {
    if constexpr (kCount == 3) {
      if (model_.available != model_.bound) {
        forgetHandles();
      }
      list_->PurgeDeletedTrianglesM();
      model_.purge();
    }
  }

  [[nodiscard]] bool agreesAt(int at) const override {
    const auto& corners = model_.at(at).corners;
    return std::equal(corners.begin(), corners.end(), std::as_const(*list_)[at].record().corners);
  }

  int nodes_;
};

class FaceDifferential : public testing::TestWithParam<unsigned> {};

TEST_P(FaceDifferential, everySequenceOfTrianglesAnswersAsTheWalk) {
  FaceSequence<3>(GetParam(), 12).run(2500);   // mostly duplicates
  FaceSequence<3>(GetParam(), 300).run(4000);  // mostly new faces
}

TEST_P(FaceDifferential, everySequenceOfQuadsAnswersAsTheWalk) {
  FaceSequence<4>(GetParam(), 12).run(1500);
  FaceSequence<4>(GetParam(), 300).run(3000);
}

INSTANTIATE_TEST_SUITE_P(Seeds, FaceDifferential, testing::Range(1U, 9U));

}  // namespace
