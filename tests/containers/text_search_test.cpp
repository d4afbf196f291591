// KwStringArr::FindStrM() answers as a walk over the slots would, whatever happened before.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/index_check.h"
#include "zel/containers/kw_string_arr.h"

namespace zel::test {
namespace {

/// A table beside its texts.
class TableBesideTexts {
 public:
  /// @param lengths how many different lengths texts have: few, and equal ones are many.
  TableBesideTexts(unsigned seed, unsigned lengths) : random_(seed), lengths_(lengths) {}

  void takeStep() {
    const std::string bytes = text();
    const auto count = static_cast<int>(bytes.size());
    const std::size_t slot = texts_.empty() ? 0 : random_() % texts_.size();
    const auto kind = random_() % 100;
    if (kind < 40) {
      ASSERT_EQ(table_.AddStringM(count, bytes.data()), static_cast<int>(texts_.size()));
      texts_.push_back(bytes);
    } else if (kind < 60) {
      addByComparison(bytes.substr(0, bytes.find('\0')));
    } else if (kind < 90) {
      table_.SetValueM(static_cast<int>(slot), count, bytes.data());
      if (!texts_.empty()) {
        texts_[slot] = bytes;
      }
    } else if (kind < 97 && !texts_.empty()) {
      remove(kind < 92 ? slot : texts_.size() - 1);
    } else if (kind < 99) {
      KwStringArr copy(table_);
      KwStringArr moved(std::move(copy));
      table_ = moved;
      table_ = std::move(moved);
    } else if (random_() % 10 == 0) {
      table_.DelAllM();
      texts_.clear();
    }
    const std::string wanted = text();
    ASSERT_EQ(table_.FindStrM(wanted.c_str()), walk(wanted.c_str()));
    ASSERT_TRUE(IndexCheck::isTrue(table_));
  }

 private:
  // Closed by a zero, open, padded with zeros to one length, or with bytes behind a zero.
  std::string text() {
    std::string bytes;
    const auto length = random_() % lengths_;
    for (unsigned k = 0; k < length; ++k) {
      bytes += static_cast<char>('a' + random_() % 3);
    }
    switch (random_() % 5) {
      case 0:
        return bytes;
      case 1:
        bytes.resize(24, '\0');
        return bytes;
      case 2:
        return bytes + '\0' + "x" + '\0';
      default:
        return bytes + '\0';
    }
  }
  [[nodiscard]] int walk(const char* wanted) const {
    for (std::size_t slot = 0; slot < texts_.size(); ++slot) {
      const char* next = wanted;
      bool isMatch = true;
      for (const char c : texts_[slot]) {
        isMatch = isMatch && c == *next;
        next += *next != 0 ? 1 : 0;
      }
      if (isMatch) {
        return static_cast<int>(slot);
      }
    }
    return -1;
  }
  void addByComparison(const std::string& wanted) {
    const int found = walk(wanted.c_str());
    const int end = static_cast<int>(texts_.size());
    ASSERT_EQ(table_.AddByCompM(wanted.c_str()), found < 0 ? end : found);
    if (found < 0) {
      texts_.push_back(wanted + '\0');
    }
  }
  void remove(std::size_t slot) {
    table_.DelItemM(static_cast<int>(slot));
    if (slot + 1 == texts_.size()) {
      texts_.pop_back();
    }
  }

  std::mt19937 random_;
  unsigned lengths_;
  KwStringArr table_;
  std::vector<std::string> texts_;
};

TEST(TextSearch, answersAsAWalkUnderAllChanges) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    TableBesideTexts both(seed, seed % 2 == 0 ? 4 : 12);
    for (int step = 0; step < 1500; ++step) {
      ASSERT_NO_FATAL_FAILURE(both.takeStep()) << "seed " << seed << " step " << step;
    }
  }
}

}  // namespace
}  // namespace zel::test
