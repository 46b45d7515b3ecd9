// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>

#include "stockbook/platform/error.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/platform/grid_outline.h"
#include "support/fake_surroundings.h"
#include "support/faulty_grid.h"
#include "support/memory_bag.h"

namespace stockbook::control {
namespace {

using platform::BagValue;
using platform::GridColour;
using platform::PictureRef;
using testing::ControlOverFakes;
using testing::MakePicture;

enum class Kind { kInteger, kLong, kPicture };

struct SavedKey {
  const char* key;
  Kind kind;
  std::function<BagValue(ControlOverFakes&)> target;
};

SavedKey ColourKey(const char* key, GridColour which) {
  return {key, Kind::kLong,
          [which](ControlOverFakes& fakes) -> BagValue { return static_cast<int32_t>(fakes.fg.ColourOf(which)); }};
}

SavedKey Picture(const char* key, PictureRef (Stockbook::*read)() const) {
  return {key, Kind::kPicture, [read](ControlOverFakes& fakes) -> BagValue { return (fakes.control.get()->*read)(); }};
}

template <typename Read>
SavedKey Number(const char* key, Kind kind, Read read) {
  return {key, kind, [read, kind](ControlOverFakes& fakes) -> BagValue {
            const auto number = static_cast<int32_t>(read(fakes));
            return kind == Kind::kInteger ? BagValue(static_cast<int16_t>(number)) : BagValue(number);
          }};
}

// What is saved, in order, with the place where it lives.
const std::vector<SavedKey>& SavedKeys() {
  static const std::vector<SavedKey> kKeys = {
      Number("BorderWidth", Kind::kInteger, [](auto& fakes) { return fakes.control->C1EDesk().border_width; }),
      Number("ChildSpacing", Kind::kInteger, [](auto& fakes) { return fakes.control->C1EDesk().child_spacing; }),
      Number("BorderColor", Kind::kLong, [](auto& fakes) { return fakes.control->C1EBody().back_color; }),
      Picture("NodeClosedPicture", &Stockbook::NodeClosedPicture),
      Picture("NodeOpenPicture", &Stockbook::NodeOpenPicture),
      Picture("BillPicture", &Stockbook::BillPicture),
      Picture("BillAuditedPicture", &Stockbook::BillAuditedPicture),
      Picture("RevPicture", &Stockbook::RevPicture),
      Picture("RevAuditedPicture", &Stockbook::RevAuditedPicture),
      Picture("IssPicture", &Stockbook::IssPicture),
      Picture("IssAuditedPicture", &Stockbook::IssAuditedPicture),
      Picture("ShiftPicture", &Stockbook::ShiftPicture),
      Picture("ShiftAuditedPicture", &Stockbook::ShiftAuditedPicture),
      ColourKey("SheetBorderColor", GridColour::kSheetBorder),
      ColourKey("BackColor", GridColour::kBackColor),
      ColourKey("BackColorBkg", GridColour::kBackColorBkg),
      ColourKey("BackColorFixed", GridColour::kBackColorFixed),
      ColourKey("BackColorFrozen", GridColour::kBackColorFrozen),
      ColourKey("BackColorSel", GridColour::kBackColorSel),
      ColourKey("ForeColor", GridColour::kForeColor),
      ColourKey("ForeColorFixed", GridColour::kForeColorFixed),
      ColourKey("ForeColorFrozen", GridColour::kForeColorFrozen),
      ColourKey("ForeColorSel", GridColour::kForeColorSel),
      ColourKey("GridColor", GridColour::kGridColor),
      ColourKey("GridColorFixed", GridColour::kGridColorFixed),
      Number("GridLines", Kind::kLong, [](auto& fakes) { return fakes.fg.GridLines(); }),
      Number("GridLinesFixed", Kind::kLong, [](auto& fakes) { return fakes.fg.GridLinesFixed(); }),
      Number("OutlineBar", Kind::kLong, [](auto& fakes) { return fakes.fg.OutlineBar(); }),
      Number("ScrollBars", Kind::kLong, [](auto& fakes) { return fakes.fg.ScrollBars(); }),
      Picture("TitleBackPicture", &Stockbook::TitleBackPicture),
      Picture("MarkBackPicture", &Stockbook::MarkBackPicture),
      Number("RowHeightMin", Kind::kLong, [](auto& fakes) { return fakes.fg.RowHeightMin(); }),
      Number("RowHeightMax", Kind::kLong, [](auto& fakes) { return fakes.fg.RowHeightMax(); }),
      Number("BackColorHot", Kind::kLong, [](auto& fakes) { return fakes.control->BackColorHot(); }),
      Number("ForeColorHot", Kind::kLong, [](auto& fakes) { return fakes.control->ForeColorHot(); }),
  };
  return kKeys;
}

std::vector<BagValue> TargetsOf(ControlOverFakes& fakes) {
  std::vector<BagValue> values;
  for (const SavedKey& key : SavedKeys()) values.push_back(key.target(fakes));
  return values;
}

// Another value for the key, different for every one.
BagValue OtherValue(size_t index) {
  const SavedKey& key = SavedKeys()[index];
  if (key.kind == Kind::kPicture) return MakePicture(key.key);
  if (key.kind == Kind::kInteger) return static_cast<int16_t>(index + 2);
  const std::string name = key.key;
  if (name == "ScrollBars") return int32_t{2};
  if (name == "OutlineBar") return int32_t{6};
  if (name == "GridLines") return int32_t{7};
  if (name == "GridLinesFixed") return int32_t{5};
  return static_cast<int32_t>(200 + index);
}

testing::MemoryBag OtherBag() {
  testing::MemoryBag bag;
  for (size_t index = 0; index < SavedKeys().size(); ++index) bag.Write(SavedKeys()[index].key, OtherValue(index));
  return bag;
}

// Records its calls, and fails at a key.
class Watched : public platform::PropertyBag {
 public:
  explicit Watched(testing::MemoryBag bag = {}) : inner(std::move(bag)) {}
  BagValue Read(std::string_view key, const BagValue& fallback) override {
    Note(key, fallback);
    return inner.Read(key, fallback);
  }
  void Write(std::string_view key, const BagValue& value) override {
    Note(key, value);
    inner.Write(key, value);
  }

  testing::MemoryBag inner;
  std::vector<testing::MemoryBag::Entry> calls;
  std::string failing;
  std::function<void(std::string_view)> on_call;

 private:
  void Note(std::string_view key, const BagValue& value) {
    calls.emplace_back(key, value);
    if (on_call) on_call(key);
    if (key == failing) throw platform::Error("bag", "the bag fails", 91);
  }
};

std::vector<std::string> KeysOf(const std::vector<testing::MemoryBag::Entry>& entries) {
  std::vector<std::string> keys;
  for (const auto& entry : entries) keys.push_back(entry.first);
  return keys;
}

std::vector<std::string> AllKeys() {
  std::vector<std::string> keys;
  for (const SavedKey& key : SavedKeys()) keys.emplace_back(key.key);
  return keys;
}

TEST(SavedProperties, AreThirtyFiveWrittenInOneOrderWithTheirTypes) {
  ControlOverFakes fakes;
  Watched bag;
  fakes.control->WriteProperties(bag);
  EXPECT_EQ(bag.calls.size(), 35U);
  EXPECT_EQ(KeysOf(bag.calls), AllKeys());
  for (size_t index = 0; index < bag.calls.size(); ++index) {
    EXPECT_EQ(bag.calls[index].second.index(), static_cast<size_t>(SavedKeys()[index].kind)) << bag.calls[index].first;
    EXPECT_EQ(bag.calls[index].second, SavedKeys()[index].target(fakes)) << bag.calls[index].first;
  }
}

TEST(SavedProperties, AreReadInTheSameOrderWithTheirValuesAsFallbacks) {
  ControlOverFakes fakes;
  const std::vector<BagValue> before = TargetsOf(fakes);
  Watched bag;
  fakes.control->ReadProperties(bag);
  EXPECT_EQ(KeysOf(bag.calls), AllKeys());
  for (size_t index = 0; index < bag.calls.size(); ++index)
    EXPECT_EQ(bag.calls[index].second, before[index]) << bag.calls[index].first;
}

TEST(SavedProperties, GoWhereTheyLiveAndComeBackFromThere) {
  ControlOverFakes fakes;
  testing::MemoryBag bag = OtherBag();
  fakes.control->ReadProperties(bag);
  for (size_t index = 0; index < SavedKeys().size(); ++index) {
    EXPECT_EQ(SavedKeys()[index].target(fakes), bag.entries()[index].second) << SavedKeys()[index].key;
  }
  testing::MemoryBag again;
  fakes.control->WriteProperties(again);
  EXPECT_EQ(again.entries(), bag.entries());
}

TEST(SavedProperties, AreTheSameWhenSavedTwice) {
  ControlOverFakes fakes;
  testing::MemoryBag first;
  testing::MemoryBag second;
  fakes.control->WriteProperties(first);
  fakes.control->WriteProperties(second);
  EXPECT_EQ(first.entries().size(), 35U);
  EXPECT_EQ(first.entries(), second.entries());
}

TEST(SavedProperties, StayAsTheyAreWithAnEmptyBagButForTheBodysBorder) {
  ControlOverFakes fakes;
  testing::MemoryBag other = OtherBag();
  fakes.control->ReadProperties(other);
  fakes.control->SetBorderWidth(-1);
  ASSERT_EQ(fakes.control->C1EBody().border_width, 0) << "the writer looks at 0 alone";
  const std::vector<BagValue> before = TargetsOf(fakes);
  testing::MemoryBag empty;
  fakes.control->ReadProperties(empty);
  EXPECT_EQ(TargetsOf(fakes), before);
  EXPECT_EQ(fakes.control->C1EBody().border_width, 1) << "reading looks at 0 and below";
}

TEST(SavedProperties, DeriveTheBodysBorderFromTheDesks) {
  for (const auto& [desk, body] : {std::pair<int16_t, int16_t>{0, 1}, {2, 0}, {1, 0}, {-3, 1}}) {
    ControlOverFakes saved;
    saved.control->SetBorderWidth(desk);
    testing::MemoryBag bag;
    saved.control->WriteProperties(bag);
    ControlOverFakes read;
    read.control->SetBorderWidth(body);
    read.control->ReadProperties(bag);
    EXPECT_EQ(read.control->C1EBody().border_width, body) << desk;
  }
}

TEST(SavedProperties, DeriveTheBodysBorderBetweenTheFramesAndThePictures) {
  ControlOverFakes fakes;
  fakes.control->SetBorderWidth(4);
  testing::MemoryBag inner;
  inner.Write("BorderWidth", int16_t{0});
  Watched bag(inner);
  std::string seen;
  bag.on_call = [&](std::string_view key) {
    if (key == "BorderColor" || key == "NodeClosedPicture")
      seen += std::string(key) + " " + std::to_string(fakes.control->C1EBody().border_width) + ";";
  };
  fakes.control->ReadProperties(bag);
  EXPECT_EQ(seen, "BorderColor 0;NodeClosedPicture 1;");
}

TEST(SavedProperties, LeaveTheGridsNodePicturesAlone) {
  ControlOverFakes fakes;
  const PictureRef closed = MakePicture("grid closed");
  const PictureRef open = MakePicture("grid open");
  fakes.fg.SetNodeClosedPicture(closed);
  fakes.fg.SetNodeOpenPicture(open);
  testing::MemoryBag bag = OtherBag();
  fakes.control->ReadProperties(bag);
  EXPECT_EQ(testing::NameOf(fakes.control->NodeClosedPicture()), "NodeClosedPicture");
  EXPECT_EQ(testing::NameOf(fakes.control->NodeOpenPicture()), "NodeOpenPicture");
  EXPECT_EQ(fakes.fg.NodeClosedPicture(), closed);
  EXPECT_EQ(fakes.fg.NodeOpenPicture(), open);
}

TEST(SavedProperties, PutTheBackgroundPicturesIntoTitleAndMarksAtTheEnd) {
  ControlOverFakes fakes;
  fakes.fg.SetRows(3);
  Watched bag(OtherBag());
  bag.on_call = [&](std::string_view) { EXPECT_EQ(fakes.fg.CellPicture(0, 1), nullptr); };
  fakes.control->ReadProperties(bag);
  const auto name = [&](int row, int column) { return testing::NameOf(fakes.fg.CellPicture(row, column)); };
  EXPECT_EQ(name(0, 1), "TitleBackPicture");
  EXPECT_EQ(name(0, 55), "TitleBackPicture");
  EXPECT_EQ(name(1, 0), "MarkBackPicture");
  EXPECT_EQ(name(2, 0), "MarkBackPicture");
  EXPECT_EQ(name(0, 0) + name(1, 1), "");
  EXPECT_EQ(fakes.fg.CellPictureAlignment(0, 7), platform::PictureAlignment::kStretch);
  EXPECT_EQ(fakes.fg.CellPictureAlignment(2, 0), platform::PictureAlignment::kStretch);
}

TEST(SavedProperties, AreNoChangesWhenReadButHaveTheFramesDrawnOnce) {
  ControlOverFakes fakes;
  fakes.site.frames = 0;
  fakes.site.changed.clear();
  testing::MemoryBag bag = OtherBag();
  fakes.control->ReadProperties(bag);
  EXPECT_TRUE(fakes.site.changed.empty());
  EXPECT_EQ(fakes.site.frames, 1);
  fakes.control->WriteProperties(bag);
  EXPECT_TRUE(fakes.site.changed.empty());
  EXPECT_EQ(fakes.site.frames, 1);
}

TEST(SavedProperties, AreReadUpToTheKeyThatFails) {
  for (size_t failing = 0; failing < SavedKeys().size(); ++failing) {
    ControlOverFakes fakes;
    fakes.fg.SetRows(2);
    fakes.site.frames = 0;
    const std::vector<BagValue> before = TargetsOf(fakes);
    Watched bag(OtherBag());
    bag.failing = SavedKeys()[failing].key;
    EXPECT_THROW(fakes.control->ReadProperties(bag), platform::Error) << bag.failing;
    EXPECT_EQ(bag.calls.size(), failing + 1);
    const std::vector<BagValue> after = TargetsOf(fakes);
    for (size_t index = 0; index < SavedKeys().size(); ++index) {
      const BagValue& expected = index < failing ? bag.inner.entries()[index].second : before[index];
      EXPECT_EQ(after[index], expected) << SavedKeys()[index].key << " when failing at " << bag.failing;
    }
    EXPECT_EQ(fakes.fg.CellPicture(0, 1), nullptr) << "the backgrounds come after the last key";
    EXPECT_EQ(fakes.site.frames, 1) << "what was read wants to be seen";
  }
}

TEST(SavedProperties, AreWrittenUpToTheKeyThatFails) {
  ControlOverFakes fakes;
  Watched bag;
  bag.failing = "GridLines";
  EXPECT_THROW(fakes.control->WriteProperties(bag), platform::Error);
  EXPECT_EQ(bag.inner.entries().size(), 25U);
  EXPECT_EQ(bag.calls.size(), 26U);
}

TEST(SavedProperties, PassTheGridsErrorsOnWhereverItRefuses) {
  int refused = 0;
  for (int call = 1; call <= 150; ++call) {
    ControlOverFakes fakes;
    testing::FaultyGrid faulty(fakes.fg);
    Stockbook control({faulty, fakes.fg1, fakes.metrics, fakes.images, fakes.menu, fakes.clipboard, fakes.site});
    fakes.fg.SetRows(4);
    fakes.fg.Select(2, 3);
    testing::MemoryBag bag = OtherBag();
    fakes.site.frames = 0;
    faulty.RefuseCall(call);
    bool failed = false;
    try {
      control.ReadProperties(bag);
    } catch (const platform::Error&) {
      failed = true;
    }
    EXPECT_EQ(fakes.site.frames, 1);
    refused += faulty.HasRefused() ? 1 : 0;
    // After the last key only the current row's colours remain to be shown again.
    if (!failed) {
      EXPECT_EQ(control.ForeColorHot(), 234U) << call;
      EXPECT_EQ(testing::NameOf(fakes.fg.CellPicture(3, 0)), "MarkBackPicture") << call;
    }
    faulty.RefuseCall(0);
    control.ReadProperties(bag);
    // A row that the grid refused to paint hot again stays as it is until the next move.
    if (failed) {
      EXPECT_EQ(fakes.fg.CellBackColor(2, 3), 233U) << "the current row is hot, call " << call;
    }
  }
  EXPECT_GT(refused, 60);
}

TEST(SavedProperties, AreTheHostsToSaveAfterEveryPublicWriter) {
  ControlOverFakes fakes;
  Stockbook& control = *fakes.control;
  fakes.site.changed.clear();
  control.SetBorderWidth(1);
  control.SetChildSpacing(1);
  control.SetBorderColor(1);
  for (const auto write :
       {&Stockbook::SetNodeClosedPicture, &Stockbook::SetNodeOpenPicture, &Stockbook::SetBillPicture,
        &Stockbook::SetBillAuditedPicture, &Stockbook::SetRevPicture, &Stockbook::SetRevAuditedPicture,
        &Stockbook::SetIssPicture, &Stockbook::SetIssAuditedPicture, &Stockbook::SetShiftPicture,
        &Stockbook::SetShiftAuditedPicture})
    (control.*write)(MakePicture("any"));
  for (const auto write : {&Stockbook::SetSheetBorderColor, &Stockbook::SetBackColor, &Stockbook::SetBackColorBkg,
                           &Stockbook::SetBackColorFixed, &Stockbook::SetBackColorFrozen, &Stockbook::SetBackColorSel,
                           &Stockbook::SetForeColor, &Stockbook::SetForeColorFixed, &Stockbook::SetForeColorFrozen,
                           &Stockbook::SetForeColorSel, &Stockbook::SetGridColor, &Stockbook::SetGridColorFixed})
    (control.*write)(1);
  control.SetGridLines(platform::GridLineStyle::kFlat);
  control.SetGridLinesFixed(platform::GridLineStyle::kFlat);
  control.SetOutlinebar(platform::OutlineBarStyle::kSimple);
  control.SetScrollBars(platform::ScrollBarsSetting::kBoth);
  control.SetTitleBackPicture(nullptr);
  control.SetMarkBackPicture(nullptr);
  control.SetRowHeightMin(1);
  control.SetRowHeightMax(1);
  control.SetBackColorHot(1);
  control.SetForeColorHot(1);
  EXPECT_EQ(fakes.site.changed, AllKeys());
}

}  // namespace
}  // namespace stockbook::control
