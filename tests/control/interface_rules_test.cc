// SPDX-License-Identifier: MIT
// Every stored property has a place of its own; what the control does when it is made and when it lays out.
#include <gtest/gtest.h>

#include "stockbook/interaction/event_listener.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/grid_appearance.h"
#include "support/fake_surroundings.h"
#include "support/journal_rows.h"

namespace stockbook::control {
namespace {

using testing::ControlOverFakes;
using testing::FakeConnection;
using testing::NameOf;

struct TextProperty {
  const char* name;
  void (Stockbook::*write)(std::string_view);
  const std::string& (Stockbook::*read)() const;
};

TEST(Interface, EveryTextPropertyIsStoredAsGivenInAPlaceOfItsOwn) {
  const TextProperty properties[] = {
      {"dpCode", &Stockbook::SetdpCode, &Stockbook::dpCode},
      {"MaterielTitle", &Stockbook::SetMaterielTitle, &Stockbook::MaterielTitle},
      {"SupplierTitle", &Stockbook::SetSupplierTitle, &Stockbook::SupplierTitle},
      {"CustomerTitle", &Stockbook::SetCustomerTitle, &Stockbook::CustomerTitle},
      {"ProjectTitle", &Stockbook::SetProjectTitle, &Stockbook::ProjectTitle},
      {"Field00", &Stockbook::SetField00, &Stockbook::Field00},
      {"Field01", &Stockbook::SetField01, &Stockbook::Field01},
      {"Field02", &Stockbook::SetField02, &Stockbook::Field02},
      {"Field03", &Stockbook::SetField03, &Stockbook::Field03},
      {"Field04", &Stockbook::SetField04, &Stockbook::Field04},
      {"Field05", &Stockbook::SetField05, &Stockbook::Field05},
      {"Field06", &Stockbook::SetField06, &Stockbook::Field06},
      {"Field10", &Stockbook::SetField10, &Stockbook::Field10},
      {"Field11", &Stockbook::SetField11, &Stockbook::Field11},
      {"Field12", &Stockbook::SetField12, &Stockbook::Field12},
      {"Field13", &Stockbook::SetField13, &Stockbook::Field13},
      {"Field14", &Stockbook::SetField14, &Stockbook::Field14},
      {"Field15", &Stockbook::SetField15, &Stockbook::Field15},
      {"Field16", &Stockbook::SetField16, &Stockbook::Field16},
      {"FieldsFilter", &Stockbook::SetFieldsFilter, &Stockbook::FieldsFilter},
      {"PriceFormat", &Stockbook::SetPriceFormat, &Stockbook::PriceFormat},
      {"QuantityFormat", &Stockbook::SetQuantityFormat, &Stockbook::QuantityFormat},
      {"AccountFormat", &Stockbook::SetAccountFormat, &Stockbook::AccountFormat},
  };
  ControlOverFakes fakes;
  for (const TextProperty& property : properties)
    (fakes.control.get()->*property.write)(" " + std::string(property.name));
  for (const TextProperty& property : properties)
    EXPECT_EQ((fakes.control.get()->*property.read)(), " " + std::string(property.name));
  EXPECT_TRUE(fakes.site.changed.empty()) << "none of them is saved";
}

TEST(Interface, BothSetsOfFieldCaptionsAreUsed) {
  ControlOverFakes fakes;
  fakes.control->SetField02("收");
  fakes.control->SetField12("发");
  const auto caption = [&] { return fakes.fg.TextMatrix(0, fakes.fg.ColIndex("Field2")); };
  fakes.control->DefaultFormat();
  EXPECT_EQ(caption(), "收\n发");
  fakes.control->SetJournalType(base::SupplierJournal);
  EXPECT_EQ(caption(), "收");
  fakes.control->SetJournalType(base::CustomerJournal);
  EXPECT_EQ(caption(), "发");
}

TEST(Interface, ANewControlTakesTheForeColourOfItsGridForTheCurrentRow) {
  ControlOverFakes fakes;
  fakes.fg.SetColour(platform::GridColour::kForeColor, 0x123456);
  fakes.control = std::make_unique<Stockbook>(fakes.Around());
  EXPECT_EQ(fakes.control->ForeColorHot(), 0x123456U);
}

TEST(Interface, ANewControlEmptiesItsSecondGrid) {
  ControlOverFakes fakes;
  fakes.fg1.SetRows(9);
  fakes.control = std::make_unique<Stockbook>(fakes.Around());
  EXPECT_EQ(fakes.fg1.Rows(), fakes.fg1.FixedRows());
}

TEST(Interface, ANewControlHasLoadedNothing) {
  ControlOverFakes fakes;
  EXPECT_EQ(fakes.control->Rows(), 1);
  EXPECT_EQ(fakes.control->KeyID(), 0);
  EXPECT_EQ(fakes.control->dpID(), 0);
  EXPECT_EQ(fakes.control->KeyName() + fakes.control->ProductNo() + fakes.control->Model() + fakes.control->Standard() +
                fakes.control->Measure() + fakes.control->dpCode() + fakes.control->FieldsFilter() +
                fakes.control->AccRestrict(),
            "");
  EXPECT_EQ(fakes.control->Conn(), nullptr);
  EXPECT_EQ(&fakes.control->Grid(), &fakes.fg);
}

TEST(Interface, ASubjectIsLookedUpWhenItsKeyIsSetAndNothingIsLoaded) {
  ControlOverFakes fakes;
  auto connection = std::make_shared<FakeConnection>();
  testing::AnswerJournal(*connection, {});
  fakes.control->SetConn(connection);
  fakes.control->SetAllowQty2(true);
  fakes.control->SetKeyID(7);
  EXPECT_EQ(connection->Sent().size(), 1U);
  EXPECT_EQ(fakes.control->KeyName() + " " + fakes.control->ProductNo() + " " + fakes.control->Model() + " " +
                fakes.control->Standard() + " " + fakes.control->Measure(),
            "六角螺栓 1001 M8 GB5783 箱/个");
  EXPECT_EQ(fakes.control->Rows(), 1);
  EXPECT_EQ(fakes.control->DepotName(), "全部仓库");
}

TEST(Interface, ATextThatIsNoTruthValueLeavesTheRestrictionInForce) {
  ControlOverFakes fakes;
  auto connection = std::make_shared<FakeConnection>();
  testing::AnswerJournal(*connection, {{.quantity = 1, .amount = "5"}});
  fakes.control->SetConn(connection);
  const auto amount = [&] {
    EXPECT_TRUE(fakes.control->Load(7, 0));
    return fakes.fg.TextMatrix(3, fakes.fg.ColIndex("Account"));
  };
  EXPECT_EQ(amount(), "5");
  for (const char* text : {"tRuE", "0.5", "-1"}) {
    fakes.control->SetAccRestrict(text);
    EXPECT_THROW(fakes.control->SetAccRestrict("perhaps"), platform::Error);
    EXPECT_EQ(fakes.control->AccRestrict(), text);
    EXPECT_EQ(amount(), "-") << text;
  }
  for (const char* text : {"fAlse", "0"}) {
    fakes.control->SetAccRestrict("1");
    fakes.control->SetAccRestrict(text);
    EXPECT_EQ(amount(), "5") << text;
  }
}

TEST(Interface, AColumnOfTheSecondQuantityThatTheLayoutDoesNotKnowStaysInSight) {
  ControlOverFakes fakes;
  fakes.fg.SetCols(57);
  fakes.fg.SetColKey(56, "Qty2");
  fakes.control->SetAllowQty2(false);
  EXPECT_FALSE(fakes.fg.ColHidden(56)) << "on the list, but not hidden at once";
  EXPECT_NE(fakes.control->ColsFilter().find("|Qty2|"), std::string::npos);
}

TEST(Interface, ALayoutRunsUnderItsMarkerAndIsToldOfWhenItIsOver) {
  struct Metrics : testing::FakeTextMetrics {
    double TextHeightTwips(std::string_view /*text*/, const platform::Font& /*font*/) const override {
      if (grid != nullptr) tag = grid->Tag();
      return 210;
    }
    const platform::Grid* grid = nullptr;
    mutable std::string tag;
  } metrics;
  struct Ear : interaction::EventListener {
    void AfterFormatted() override { heard.push_back(grid->Tag() + "/" + grid->ColKey(55)); }
    platform::Grid* grid = nullptr;
    std::vector<std::string> heard;
  } ear;
  ControlOverFakes fakes;
  Stockbook control({fakes.fg, fakes.fg1, metrics, fakes.images, fakes.menu, fakes.clipboard, fakes.site});
  control.AddListener(&ear);
  metrics.grid = ear.grid = &fakes.fg;
  fakes.fg.SetTag("before");
  control.DefaultFormat();
  EXPECT_EQ(metrics.tag, "Format");
  EXPECT_EQ(ear.heard, (std::vector<std::string>{"before/BillName"}));
  control.SetJournalType(base::SupplierJournal);
  EXPECT_EQ(ear.heard.size(), 2U) << "another type lays out anew";
}

TEST(Interface, AnUnknownTypeShowsTheIconOfTheStock) {
  ControlOverFakes fakes;
  fakes.control->SetJournalType(base::SupplierJournal);
  fakes.control->SetJournalType(static_cast<tqJournalTypeContants>(4));
  EXPECT_EQ(NameOf(fakes.control->C1EHeader().picture), "StkBk");
  EXPECT_EQ(fakes.control->JournalType(), static_cast<tqJournalTypeContants>(4));
}

}  // namespace
}  // namespace stockbook::control
