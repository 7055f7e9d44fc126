#include "upgradesrv/Passwords.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using upgradesrv::ArgumentWithoutPassword;
using upgradesrv::HoldsPassword;
using upgradesrv::WithoutPasswords;

TEST(WithoutPasswordsTest, HidesTheValueOfAPassword) {
  EXPECT_EQ(WithoutPasswords("Password = geheim user=u"), "Password = *** user=u");
  EXPECT_EQ(WithoutPasswords("password='ge \\' heim' user=u"), "password=*** user=u");
  EXPECT_EQ(WithoutPasswords("password='ge heim"), "password=***");
  EXPECT_EQ(WithoutPasswords("h?password=geheim&x=1"), "h?password=***&x=1");
  EXPECT_EQ(WithoutPasswords("h?x=1&sslpassword=geheim&password=g"), "h?x=1&sslpassword=***&password=***");
  EXPECT_EQ(WithoutPasswords("sslpassword=a password=b"), "sslpassword=*** password=***");
  EXPECT_EQ(WithoutPasswords("password=***"), "password=***");
  EXPECT_EQ(WithoutPasswords("password="), "password=***");
  EXPECT_EQ(WithoutPasswords("password='a\\"), "password=***");
}

TEST(WithoutPasswordsTest, HidesEveryCharacterOfAValueWithoutQuotes) {
  EXPECT_EQ(WithoutPasswords("password=ge:h,e;i'm&? user=u"), "password=*** user=u");
}

TEST(WithoutPasswordsTest, HidesNoMoreThanThePassword) {
  EXPECT_EQ(WithoutPasswords("postgresql://user=plm password=x: no such thing"),
            "postgresql://user=plm password=***: no such thing");
  EXPECT_EQ(WithoutPasswords("password=x, then; password=y; and \"password=z\": end"),
            "password=***, then; password=***; and \"password=***\": end");
  EXPECT_EQ(WithoutPasswords("password=geheim:"), "password=***:");
}

TEST(WithoutPasswordsTest, TakesTextsOfAnyLength) {
  const std::string name(2000000, 'x');
  EXPECT_EQ(WithoutPasswords("password=" + name + " ://u:" + name + "@h"), "password=*** ://u:***@h");
  // Each of these would take minutes if it were searched from every place to its end.
  for (const std::string part : {":/", " ", "password", ":/a:b", "@", "\"", "password=", "://a:1/"}) {
    std::string text;
    while (text.size() < name.size() / 4) {
      text += part;
    }
    EXPECT_FALSE(WithoutPasswords(text).empty());
    EXPECT_FALSE(ArgumentWithoutPassword(text).empty());
  }
}

TEST(WithoutPasswordsTest, HidesThePasswordOfAnAddress) {
  EXPECT_EQ(WithoutPasswords("postgresql://u:geheim@h/d: no"), "postgresql://u:***@h/d: no");
  EXPECT_EQ(WithoutPasswords("--clint=postgresql://u:geheim@h"), "--clint=postgresql://u:***@h");
  EXPECT_EQ(WithoutPasswords("./postgresql:/u:geheim@h/d"), "./postgresql:/u:***@h/d");
  EXPECT_EQ(WithoutPasswords("x://u:ge@heim@h x://:geheim@"), "x://u:***@h x://:***@");
  EXPECT_EQ(WithoutPasswords("x://u:ge/he?im@h \"y://v:geheim@h\""), "x://u:***@h \"y://v:***@h\"");
}

TEST(WithoutPasswordsTest, HidesWhatIsInPlaceOfAPort) {
  EXPECT_EQ(WithoutPasswords("postgresql://u:geheim: no"), "postgresql://u:***: no");
  EXPECT_EQ(WithoutPasswords("postgresql://u:geheim/d"), "postgresql://u:***/d");
}

TEST(WithoutPasswordsTest, LeavesEverythingElse) {
  for (const std::string text : {"", "a:b@c", "/srv/a@b/plm.json: /classes/0", "postgresql://u@h/d",
                                 "postgresql://h:5432/d", "x://h:1,2: no", "sqlite3:///a b:c@d", "no password",
                                 "http://h:80/ mail a@b", "postgresql://h: no", "postgresql://user=a:b x"}) {
    EXPECT_EQ(WithoutPasswords(text), text);
  }
}

TEST(ArgumentWithoutPasswordTest, HidesAPasswordWhoseQuotesTheShellHasTaken) {
  EXPECT_EQ(ArgumentWithoutPassword("password=ge heim"), "password=***");
  EXPECT_EQ(ArgumentWithoutPassword("postgresql://host=h password=ge heim dbname=d"),
            "postgresql://host=h password=*** dbname=d");
  EXPECT_EQ(ArgumentWithoutPassword("postgresql://password='ge heim' dbname=d"), "postgresql://password=*** dbname=d");
  EXPECT_EQ(ArgumentWithoutPassword("postgresql://h/d?password=geheim&x=1"), "postgresql://h/d?password=***&x=1");
  EXPECT_EQ(ArgumentWithoutPassword("password='ge"), "password=***");
}

TEST(HoldsPasswordTest, IsTrueOfConnectionWordsWithOneOnly) {
  EXPECT_TRUE(HoldsPassword("postgresql://host=h PassWord = x"));
  EXPECT_TRUE(HoldsPassword("sslpassword="));
  EXPECT_FALSE(HoldsPassword("password"));
  EXPECT_FALSE(HoldsPassword("passwords.json"));
}

}  // namespace
