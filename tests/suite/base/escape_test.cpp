#include <gtest/gtest.h>

#include <string>

#include "suite/base/text.h"

namespace {

using base::escapeControls;

TEST(EscapeControls, KeepsPlainText) {
  EXPECT_EQ(base::escapeControls("Fan 1: \"ok\" \\ 100 %"),
            "Fan 1: \"ok\" \\ 100 %");
}

TEST(EscapeControls, KeepsOtherScripts) {
  const std::string text =
      "L\xC3\xBC"
      "fter \xE2\x82\xAC \xF0\x9F\x8C\x80";
  EXPECT_EQ(base::escapeControls(text), text);
}

TEST(EscapeControls, NamesLineEndsAndTabs) {
  EXPECT_EQ(base::escapeControls("a\nb\rc\td"), "a\\nb\\rc\\td");
}

TEST(EscapeControls, ShowsTerminalControlsAsHex) {
  EXPECT_EQ(base::escapeControls("\x1b[31mred\x7f"), "\\x1b[31mred\\x7f");
}

TEST(EscapeControls, ShowsANulByte) {
  EXPECT_EQ(base::escapeControls(std::string("a\0b", 3)), "a\\x00b");
}

TEST(EscapeControls, ShowsC1Controls) {
  EXPECT_EQ(base::escapeControls("\xC2\x9B"
                                 "2J"),
            "\\u009b2J");
}

TEST(EscapeControls, ShowsDirectionOverrides) {
  EXPECT_EQ(base::escapeControls("\xE2\x80\xAE"
                                 "cba\xE2\x81\xA9"),
            "\\u202ecba\\u2069");
}

TEST(EscapeControls, ShowsLineSeparators) {
  EXPECT_EQ(base::escapeControls("\xE2\x80\xA8"), "\\u2028");
}

TEST(EscapeControls, ShowsBytesThatAreNoUtf8) {
  EXPECT_EQ(base::escapeControls("a\xFFz"), "a\\xffz");
}

TEST(EscapeControls, ShowsATruncatedSequence) {
  EXPECT_EQ(base::escapeControls("\xE2\x82"), "\\xe2\\x82");
}

TEST(EscapeControls, ShowsOverlongForms) {
  EXPECT_EQ(base::escapeControls("\xC0\x8A"), "\\xc0\\x8a");
  EXPECT_EQ(base::escapeControls("\xE0\x80\x8A"), "\\xe0\\x80\\x8a");
}

TEST(EscapeControls, ShowsSurrogatesAndBeyond) {
  EXPECT_EQ(base::escapeControls("\xED\xA0\x80"), "\\xed\\xa0\\x80");
  EXPECT_EQ(base::escapeControls("\xF4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80");
}

}  // namespace
