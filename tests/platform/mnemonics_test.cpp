#include "platform/mnemonics.h"

#include <gtest/gtest.h>

namespace zelmar {
namespace {

TEST(Mnemonics, ACaptionIsReadWithoutItsMark) {
  EXPECT_EQ(WithoutMnemonic(QStringLiteral("&File")), QStringLiteral("File"));
  EXPECT_EQ(WithoutMnemonic(QStringLiteral("Hit P&arade")), QStringLiteral("Hit Parade"));
  EXPECT_EQ(WithoutMnemonic(QStringLiteral("Rhythm && Blues")), QStringLiteral("Rhythm & Blues"));
  EXPECT_EQ(WithoutMnemonic(QStringLiteral("&&&A")), QStringLiteral("&A"));
  EXPECT_EQ(WithoutMnemonic(QStringLiteral("Plain")), QStringLiteral("Plain"));
  EXPECT_EQ(WithoutMnemonic(QStringLiteral("End&")), QStringLiteral("End"));
  EXPECT_EQ(WithoutMnemonic(QString()), QString());
}

}  // namespace
}  // namespace zelmar
