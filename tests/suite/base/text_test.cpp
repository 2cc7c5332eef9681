#include "suite/base/text.h"

#include <gtest/gtest.h>

namespace base {
namespace {

using namespace std::string_view_literals;

TEST(CleanText, PlainTextStays) {
  EXPECT_EQ(cleanText("Acme  Röhre 5 °C"), "Acme  Röhre 5 °C");
}

TEST(CleanText, SurroundingBlanksGo) { EXPECT_EQ(cleanText("  a b\t"), "a b"); }

TEST(CleanText, RunOfControlCharactersIsOneBlank) {
  EXPECT_EQ(cleanText("a\r\n\tb\x7F\0c"sv), "a b c");
}

TEST(CleanText, BlanksAroundControlCharactersJoinTheirRun) {
  EXPECT_EQ(cleanText("a \n b"), "a b");
}

TEST(CleanText, EscapeSequenceLosesItsEscape) {
  EXPECT_EQ(cleanText("\x1B[31mred\xC2\x9B"
                      "0m"),
            "[31mred 0m");
}

TEST(CleanText, UnicodeLineEndsAreBlanks) {
  EXPECT_EQ(cleanText("a\xE2\x80\xA8"
                      "b\xE2\x80\xA9"
                      "c"),
            "a b c");
}

TEST(CleanText, DirectionOverridesAreDropped) {
  EXPECT_EQ(cleanText("a\xE2\x80\xAE"
                      "b\xE2\x81\xA6"
                      "c"),
            "abc");
}

TEST(CleanText, UnseenCharactersAreDropped) {
  for (const char* unseen :
       {"\u00AD", "\u061C", "\u180E", "\u200B", "\u200D", "\u200F", "\u2060",
        "\u206F", "\uFDD0", "\uFEFF", "\uFFF9", "\uFFFB", "\uFFFE", "\uFFFF",
        "\U0001D173", "\U0001FFFE", "\U000E0001", "\U000E007F", "\U0010FFFF"}) {
    EXPECT_EQ(cleanText(std::string("SN4") + unseen + "17"), "SN417")
        << escapeControls(unseen);
    EXPECT_EQ(escapeControls(unseen).substr(0, 2), "\\u");
  }
}

TEST(CleanText, NeighboursOfUnseenCharactersStay) {
  for (const char* seen : {"\u00AE", "\u2010", "\u2070", "\uFFFC", "\uFFFD",
                           "\U000DFFFD", "\U000F0000"}) {
    EXPECT_EQ(cleanText(seen), seen);
    EXPECT_EQ(escapeControls(seen), seen);
  }
}

TEST(CleanText, WrongBytesAreReplaced) {
  EXPECT_EQ(cleanText("a\xB0"
                      "b"),
            "a\uFFFD"
            "b");
}

TEST(CleanText, OverlongSurrogateAndCutSequencesAreReplaced) {
  EXPECT_EQ(cleanText("\xC0\xAF"), "\uFFFD\uFFFD");
  EXPECT_EQ(cleanText("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(cleanText("\xF4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(cleanText("x\xE2\x82"), "x\uFFFD\uFFFD");
}

TEST(CleanText, FourByteCharactersStay) {
  EXPECT_EQ(cleanText("\U0001F600"), "\U0001F600");
}

TEST(Excerpt, ShortTextStays) { EXPECT_EQ(excerpt("abcdef", 6), "abcdef"); }

TEST(Excerpt, LongTextIsCut) { EXPECT_EQ(excerpt("abcdefg", 6), "abc..."); }

TEST(Excerpt, NeverCutsInsideACharacter) {
  EXPECT_EQ(excerpt("ab\u00E9\u00E9\u00E9", 6), "ab...");
}

}  // namespace
}  // namespace base
