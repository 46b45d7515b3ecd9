// SPDX-License-Identifier: MIT
#include "stockbook/command/journal_options.h"

#include <gtest/gtest.h>

namespace stockbook::app {
namespace {

using Words = std::vector<std::string>;

std::optional<JournalOptions> Read(const Words& words) {
  return ReadJournalOptions(CommandLine(words, JournalOptionList()));
}

TEST(JournalOptions, ReadAllTheirParts) {
  const auto options =
      Read({"--journal", "project", "--product", "7", "--second", "-1", "--class", "0101", "--qty2", "--tax"});
  ASSERT_TRUE(options);
  EXPECT_EQ(options->journal_type, 3);
  EXPECT_EQ(options->key_id, 7);
  EXPECT_EQ(options->dp_id, -1);
  EXPECT_EQ(options->dp_code, "0101");
  EXPECT_TRUE(options->allow_qty2);
  EXPECT_TRUE(options->allow_inv);
  EXPECT_FALSE(options->acc_restrict);
  EXPECT_TRUE(Read({"--journal", "project", "--product", "7", "--restrict"})->acc_restrict);
}

TEST(JournalOptions, ShowNoTaxColumnsWhereAmountsAreRestricted) {
  EXPECT_THROW(Read({"--journal", "material", "--product", "1", "--tax", "--restrict"}), UsageError);
}

TEST(JournalOptions, NumberTheTypesFromMaterialToProject) {
  EXPECT_EQ(Read({"--journal=material", "--product=1"})->journal_type, 0);
  EXPECT_EQ(Read({"--journal=supplier", "--product=1"})->journal_type, 1);
  EXPECT_EQ(Read({"--journal=customer", "--product=1"})->journal_type, 2);
}

TEST(JournalOptions, AreNoneWhenNothingIsGiven) {
  EXPECT_FALSE(Read({}).has_value());
  EXPECT_THROW(RequireJournalOptions(CommandLine(Words{}, JournalOptionList())), UsageError);
}

TEST(JournalOptions, NeedAProductExceptInThePartnerJournals) {
  EXPECT_THROW(Read({"--journal", "material"}), UsageError);
  EXPECT_THROW(Read({"--journal", "project", "--second", "3"}), UsageError);
  EXPECT_EQ(Read({"--journal", "customer", "--second", "3"})->key_id, 0);
}

TEST(JournalOptions, RefuseWhatIsNoJournalAndNoKey) {
  EXPECT_THROW(Read({"--product", "1"}), UsageError);
  EXPECT_THROW(Read({"--journal", "stock", "--product", "1"}), UsageError);
  EXPECT_THROW(Read({"--journal", "material", "--product", "2147483648"}), UsageError);
  EXPECT_THROW(Read({"--journal", "material", "--product", "bolt"}), UsageError);
}

}  // namespace
}  // namespace stockbook::app
