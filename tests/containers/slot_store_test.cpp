// The shared store with polymorphic elements, and what no array shows from outside.

#include "zel/containers/slot_store.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <vector>

#include "zel/containers/detail/slot_store_impl.h"
#include "zel/core/element_base.h"

namespace {

/// Counts how many of it exist.
struct Census {
  Census() { ++living; }
  Census(const Census& /*other*/) { ++living; }
  Census& operator=(const Census&) = default;
  ~Census() { --living; }
  static inline int living = 0;
};

/// An element that owns heap memory.
class Probe : public KwBaseCL {
 public:
  Probe() = default;
  explicit Probe(int value) : KwBaseCL(31), value_{value} {}
  void DelItemM() { KwBaseCL::DelItemM(); }
  [[nodiscard]] int value() const { return value_.at(0); }

 private:
  std::vector<int> value_;
  Census census_;
};

using ProbeStore = zel::SlotStore<Probe, zel::ElementPolicy>;

TEST(SlotStore, elementsGrowByDoublingOrToTheIndexWithoutTheIncrement) {
  ProbeStore store;
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(store.add(Probe(i)), i);
  }
  EXPECT_EQ(store.length(), 8);
  store.set(Probe(9), 29);
  EXPECT_EQ(store.length(), 30);
  EXPECT_EQ(store.available(), 6);
  EXPECT_EQ(store[3].value(), 3);
  EXPECT_EQ(store[28].IsAvailableM(), 30);
}

TEST(SlotStore, onlyALiveElementOverADeadOneCounts) {
  ProbeStore store;
  store.add(Probe());
  EXPECT_EQ(store.available(), 0);
  store.set(Probe(1), 0);
  store.set(Probe(2), 0);
  EXPECT_EQ(store.available(), 1);
  store.remove(0);
  EXPECT_EQ(store[0].IsAvailableM(), 32);
  EXPECT_EQ(store.bound(), 0);
}

TEST(SlotStore, everyElementIsDestroyedExactlyOnce) {
  {
    std::mt19937 random(3);
    ProbeStore store;
    ProbeStore other;
    for (int step = 0; step < 2000; ++step) {
      const int index = static_cast<int>(random() % 40U);
      const std::function<void()> changes[] = {
          [&] { store.set(Probe(step), index); },
          [&] { store.insert(Probe(step), index); },
          [&] { store.remove(index); },
          [&] { step % 5 == 0 ? store.clear() : store.clearKeepingStore(); },
          [&] { other = store; },
          [&] { store = std::move(other); },
          [&] { ProbeStore(store).append(other); },
      };
      changes[random() % std::size(changes)]();
      ASSERT_TRUE(store.validate());
      ASSERT_TRUE(other.validate());
      const int inHeap =
          (store.length() > 4 ? store.length() : 0) + (other.length() > 4 ? other.length() : 0);
      ASSERT_EQ(Census::living, 8 + inHeap);
    }
  }
  EXPECT_EQ(Census::living, 0);
}

TEST(SlotStore, negativeBoundIsTreatedAsEmptyByTheNextWrite) {
  zel::SlotStore<int, zel::IntPolicy> store;
  store.setBound(-1);
  EXPECT_EQ(store.nextLive(-1), -1);
  EXPECT_EQ(store.previousLive(5), -1);
  store.remove(-1);
  store.purge();
  store.setBound(-1);
  EXPECT_EQ(store.add(7), 0);
  EXPECT_EQ(store.bound(), 1);
  store.setBound(-1);
  store.insert(8, 0);
  EXPECT_EQ(store[0], 8);
  EXPECT_EQ(store.bound(), 1);
}

}  // namespace
