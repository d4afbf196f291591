// The shared store with polymorphic elements, and what no array shows from outside.

#include "zel/containers/slot_store.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

#include "zel/containers/detail/slot_store_impl.h"
#include "zel/core/element_base.h"

namespace {

/// An element that owns heap memory and counts how many of its kind exist.
class Probe : public KwBaseCL {
 public:
  Probe() { ++living; }
  explicit Probe(int value) : KwBaseCL(31), value_(std::make_unique<int>(value)) { ++living; }
  Probe(const Probe& other) : KwBaseCL(other), value_(cloned(other)) { ++living; }
  Probe(Probe&& other) noexcept : KwBaseCL(other), value_(std::move(other.value_)) { ++living; }
  Probe& operator=(const Probe& other) {
    KwBaseCL::operator=(other);
    value_ = cloned(other);
    return *this;
  }
  ~Probe() override { --living; }
  void DelItemM() { KwBaseCL::DelItemM(); }
  [[nodiscard]] int value() const { return value_ ? *value_ : -1; }

  static inline int living = 0;

 private:
  static std::unique_ptr<int> cloned(const Probe& other) {
    return other.value_ ? std::make_unique<int>(*other.value_) : nullptr;
  }
  std::unique_ptr<int> value_;
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
      switch (random() % 8) {
        case 0:
          store.remove(index);
          break;
        case 1:
          step % 5 == 0 ? store.clear() : store.clearKeepingStore();
          break;
        case 2:
          other = store;
          break;
        case 3:
          store = std::move(other);
          break;
        case 4:
          store.insert(Probe(step), index);
          break;
        case 5:
          ProbeStore(store).append(other);
          break;
        default:
          store.set(Probe(step), index);
      }
      ASSERT_TRUE(store.validate());
      ASSERT_TRUE(other.validate());
      const int inHeap =
          (store.length() > 4 ? store.length() : 0) + (other.length() > 4 ? other.length() : 0);
      ASSERT_EQ(Probe::living, 8 + inHeap);
    }
  }
  EXPECT_EQ(Probe::living, 0);
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
