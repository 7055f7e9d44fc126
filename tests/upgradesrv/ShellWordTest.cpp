#include "upgradesrv/ShellWord.h"

#include <gtest/gtest.h>

#include "UpgradeDirectory.h"

namespace {

using upgradesrv::ShellWord;

TEST(ShellWordTest, LeavesPlainWordsAlone) {
  EXPECT_EQ(ShellWord("/srv/upgrade-2024_a.b"), "/srv/upgrade-2024_a.b");
  EXPECT_EQ(ShellWord("postgresql://plm@db:5432/plm"), "postgresql://plm@db:5432/plm");
}

TEST(ShellWordTest, QuotesTheOthers) {
  EXPECT_EQ(ShellWord("a b"), "'a b'");
  EXPECT_EQ(ShellWord("it's"), "'it'\\''s'");
  EXPECT_EQ(ShellWord(""), "''");
  EXPECT_EQ(ShellWord("$HOME"), "'$HOME'");
}

TEST(ShellWordTest, IsTheSameWordToAShell) {
  for (const std::string word : {"it's $HOME `a` \"b\" \\ * ? [ ~ # ! & ; | < > ( ) { }", "~", "-n", "\xC3\xA9"}) {
    EXPECT_EQ(test::Run({"/bin/sh", "-c", "printf %s " + ShellWord(word)}).output, word);
  }
}

}  // namespace
