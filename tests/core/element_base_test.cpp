#include "zel/core/element_base.h"

#include <gtest/gtest.h>

namespace {

class Element : public KwBaseCL {
 public:
  using KwBaseCL::DelItemM;
  using KwBaseCL::KwBaseCL;
};

TEST(ElementBase, tagIsANumberThatTravelsUnchanged) {
  Element element;
  EXPECT_EQ(element.IsAvailableM(), 30);
  for (const char tag : {char{31}, char{0}, char{37}, char{-1}}) {
    element.SetDeleteTagM(tag);
    EXPECT_EQ(element.IsAvailableM(), tag);
    const Element copy(element);
    Element assigned(char{31});
    assigned = element;
    EXPECT_EQ(copy.IsAvailableM(), tag);
    EXPECT_EQ(assigned.IsAvailableM(), tag);
  }
}

TEST(ElementBase, deletionAlwaysWrites32) {
  Element element(char{31});
  element.DelItemM();
  EXPECT_EQ(element.IsAvailableM(), 32);
  EXPECT_EQ(element.InitialM(), 1);
  EXPECT_EQ(element.IsAvailableM(), 32);
}

}  // namespace
