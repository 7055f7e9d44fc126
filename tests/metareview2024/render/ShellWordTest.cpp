#include "metareview2024/render/ShellWord.h"

#include <gtest/gtest.h>

#include "support/Process.h"

namespace metareview {
namespace {

TEST(ShellWordTest, AWordOfPlainCharactersStaysAsItIs) {
  EXPECT_EQ(ShellWord("class/Part/property/Code/length"), "class/Part/property/Code/length");
}

TEST(ShellWordTest, AnEmptyTextIsAWord) {
  EXPECT_EQ(ShellWord(""), "''");
}

TEST(ShellWordTest, WhatAShellWouldTakeApartIsQuoted) {
  EXPECT_EQ(ShellWord("two words"), "'two words'");
  EXPECT_EQ(ShellWord("$(reboot); `x` > *"), "'$(reboot); `x` > *'");
}

TEST(ShellWordTest, LettersOfAnyLanguageAreQuoted) {
  EXPECT_EQ(ShellWord("Prüfung"), "'Prüfung'");
}

TEST(ShellWordTest, AQuoteIsTakenOutOfTheQuotes) {
  EXPECT_EQ(ShellWord("it's"), "'it'\\''s'");
}

TEST(ShellWordTest, ControlCharactersAreWrittenAsNumbers) {
  EXPECT_EQ(ShellWord("a\nb\x1B[2J"), "$'a\\012b\\033[2J'");
  EXPECT_EQ(ShellWord("~\x7F"), "$'~\\177'");
  EXPECT_EQ(ShellWord("\x01' \\"), "$'\\001\\' \\\\'");
}

TEST(ShellWordTest, MarksOfTheWritingDirectionAreWrittenAsNumbers) {
  EXPECT_EQ(ShellWord("a\u202Eb"), "$'a\\342\\200\\256b'");
}

/// What bash makes of the word.
std::string Understood(const std::string& word) {
  return test::Run({"/bin/bash", "-c", "printf %s " + word}).output;
}

TEST(ShellWordTest, AShellReadsTheTextBack) {
  for (const std::string text : {"plain", "two words", "it's", "a\nb\tc", "\x1B[2J' \\ \"", "a\u202Eb é 中", "-n", "~",
                                 "$HOME `a` \"b\" \\ * ? [ ~ # ! & ; | < > ( ) { }"}) {
    EXPECT_EQ(Understood(ShellWord(text)), text);
  }
}

}  // namespace
}  // namespace metareview
