// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "stockbook/control/stockbook.h"
#include "stockbook/platform/control_site.h"
#include "stockbook/platform/grid.h"
#include "support/fake_surroundings.h"
#include "support/small_journal.h"

namespace stockbook::control {
namespace {

// Counts what it is told, and may fail.
class CountingSite : public platform::ControlSite {
 public:
  void PropertyChanged(std::string_view /*key*/) override {}
  void FrameChanged() override {}
  void AppearanceChanged() override { ++appearance; }
  void JournalChanged() override {
    ++journal;
    if (fails) throw std::runtime_error("the site fails");
  }

  int appearance = 0;
  int journal = 0;
  bool fails = false;
};

class ToldChanges : public ::testing::Test {
 protected:
  ToldChanges() : control_(Around()) { site_.journal = 0; }

  Surroundings Around() {
    const Surroundings fakes = fakes_.Around();
    return {fakes.fg, fakes.fg1, fakes.text_metrics, fakes.images, fakes.menu, fakes.clipboard, site_};
  }

  testing::ControlOverFakes fakes_;
  CountingSite site_;
  Stockbook control_;
};

TEST_F(ToldChanges, AreThoseOfOneMemberAtOnce) {
  control_.SetJournalType(base::CustomerJournal);
  EXPECT_EQ(site_.journal, 1);
  control_.SetRowHeight(500);
  EXPECT_EQ(site_.journal, 2);
  control_.SetRowHeight(500);
  EXPECT_EQ(site_.journal, 2);
  control_.SetCaption("账");
  control_.SetCaption(" 账 ");
  EXPECT_EQ(site_.journal, 3);
  control_.SetBackColor(1);
  control_.SetBackColor(1);
  EXPECT_EQ(site_.appearance, 1);
}

TEST_F(ToldChanges, OfALoadAreToldAtItsEnd) {
  control_.SetConn(testing::SmallJournal());
  site_.journal = 0;
  class Watching : public interaction::EventListener {
   public:
    explicit Watching(CountingSite& site) : site_(site) {}
    void AfterLoaded() override { told_before_ = site_.journal; }
    int told_before() const { return told_before_; }

   private:
    CountingSite& site_;
    int told_before_ = -1;
  };
  Watching watching(site_);
  control_.AddListener(&watching);
  EXPECT_TRUE(control_.Load(7, 0));
  control_.RemoveListener(&watching);
  EXPECT_EQ(watching.told_before(), 0);
  EXPECT_EQ(site_.journal, 1);
}

TEST_F(ToldChanges, StayWhereTheSiteFails) {
  site_.fails = true;
  control_.SetProjectTitle("工程");
  EXPECT_EQ(control_.ProjectTitle(), "工程");
  EXPECT_EQ(site_.journal, 1);
}

}  // namespace
}  // namespace stockbook::control
