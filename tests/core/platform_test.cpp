#include "zel/core/platform.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/shown_message.h"
#include "support/temp_dir.h"

namespace {

// "file could not be opened" in GBK and in UTF-8.
constexpr char kNoticeGbk[] = "\xCE\xC4\xBC\xFE\xB4\xF2\xBF\xAA\xCA\xA7\xB0\xDC";
constexpr char kNoticeUtf8[] = "\u6587\u4EF6\u6253\u5F00\u5931\u8D25";

TEST(Notice, gbkBecomesUtf8) {
  EXPECT_EQ(zel::noticeInUtf8(kNoticeGbk), kNoticeUtf8);
  EXPECT_EQ(zel::noticeInUtf8("plain: text"), "plain: text");
  EXPECT_EQ(zel::noticeInUtf8(nullptr), "");
}

TEST(Notice, namesMayBeInEitherCodeOrInNone) {
  const std::string gbk = kNoticeGbk;
  const std::string utf8 = kNoticeUtf8;
  EXPECT_EQ(zel::noticeInUtf8((gbk + ": k\xC3\xBC.zel").c_str()), utf8 + ": k\u00FC.zel");
  EXPECT_EQ(zel::noticeInUtf8((gbk + ": " + gbk).c_str()), utf8 + ": " + utf8);
  EXPECT_EQ(zel::noticeInUtf8((gbk + ": a\xFF"
                                     "b\xCE")
                                  .c_str()),
            utf8 + ": a?b?");
  EXPECT_EQ(zel::noticeInUtf8((gbk + std::string(400, 'x')).c_str()), utf8 + std::string(400, 'x'));
}

TEST(Platform, defaultMessageIsShownInUnicode) {
  EXPECT_EQ(zel::test::shownMessage([] { zel::platform().showMessage(kNoticeGbk); }),
            std::string(kNoticeUtf8) + "\n");
}

TEST(Platform, pathsAreFoundThroughBackslashesAndPatterns) {
  const zel::test::TempDir dir;
  zel::test::writeFile(dir.file("wood.bmp"), "x");
  zel::Platform& system = zel::platform();
  const std::string base = dir.path().string();
  EXPECT_EQ(system.findPath((base + "\\wood.bmp").c_str()), zel::PathKind::kFile);
  EXPECT_EQ(system.findPath((base + "\\w*.b?p").c_str()), zel::PathKind::kFile);
  EXPECT_EQ(system.findPath((base + "\\w*.png").c_str()), zel::PathKind::kNothing);
  EXPECT_EQ(system.findPath(base.c_str()), zel::PathKind::kDirectory);
  EXPECT_EQ(system.findPath((base + "\\").c_str()), zel::PathKind::kNothing);
  EXPECT_EQ(system.findPath(nullptr), zel::PathKind::kNothing);
}

TEST(Platform, filesAreCopiedAndProtected) {
  const zel::test::TempDir dir;
  zel::Platform& system = zel::platform();
  zel::test::writeFile(dir.file("a"), "new");
  zel::test::writeFile(dir.file("b"), "old");
  EXPECT_TRUE(system.copyFile(dir.file("a").c_str(), dir.file("b").c_str()));
  EXPECT_EQ(zel::test::readFile(dir.file("b")), "new");
  EXPECT_FALSE(system.copyFile(dir.file("none").c_str(), dir.file("c").c_str()));
  EXPECT_TRUE(system.setFileAccess(dir.file("a").c_str(), zel::FileAccess::kReadOnly));
  EXPECT_EQ(system.fileAccess(dir.file("a").c_str()), zel::FileAccess::kReadOnly);
  EXPECT_TRUE(system.setFileAccess(dir.file("a").c_str(), zel::FileAccess::kWritable));
  EXPECT_EQ(system.fileAccess(dir.file("a").c_str()), zel::FileAccess::kWritable);
  EXPECT_EQ(system.fileAccess(dir.file("none").c_str()), zel::FileAccess::kNoFile);
  EXPECT_TRUE(system.createDirectory(dir.file("d").c_str()));
  EXPECT_FALSE(system.createDirectory(dir.file("d").c_str()));
}

}  // namespace
