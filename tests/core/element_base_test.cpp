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
  for (const char tag : {char{0}, char{37}, char{-1}}) {
    element.SetDeleteTagM(tag);
    EXPECT_EQ(Element(element).IsAvailableM(), tag);
  }
  element.DelItemM();
  EXPECT_EQ(element.InitialM(), 1);
  EXPECT_EQ(element.IsAvailableM(), 32);
}

}  // namespace
