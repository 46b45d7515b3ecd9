// SPDX-License-Identifier: MIT
// The reference host's window, by real keys and a real mouse.
#include <sstream>

#include "window/desk.h"

namespace stockbook::window {
namespace {

class AClerk : public WindowTest {
 protected:
  static Area AreaOf(const std::string& rect) {
    std::istringstream words(rect);
    Area area;
    words >> area.x >> area.y >> area.width >> area.height;
    return area;
  }
  std::string Column(const std::string& key) { return Ask("column " + key)["index"]; }
  Area Cell(int row, const std::string& key) { return WindowTest::Cell(row, std::stoi(Column(key))); }
  void GoTo(const std::string& row, const std::string& key) { Ask("go " + row + " " + key); }
  // The field of the product has the keys, and all of its text is selected.
  void EnterTheProduct() {
    Click(AreaOf(Ask("product")["rect"]).Middle());
    EXPECT_TRUE(Becomes("focus", "product"));
    Key("ctrl+a");
  }
  void Type(const std::string& text) { Do({"type", text}); }
  static bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
};

TEST_F(AClerk, WhoTypesEscapeAndTabInTheProductFieldKeepsTheProduct) {
  const std::string before = Now("typed");
  EnterTheProduct();
  Type("020");
  EXPECT_TRUE(Becomes("typed", "020"));
  Key("Escape");
  EXPECT_TRUE(Becomes("typed", before));
  Key("Tab");
  EXPECT_TRUE(BecomesSo("focus", [](const std::string& focus) { return focus != "product"; }));
  EXPECT_EQ(Now("typed"), before);
  EXPECT_EQ(Now("chosen"), "1");
  EXPECT_EQ(Now("shown"), "1");
}

TEST_F(AClerk, WhoTypesANumberAndTabLoadsItsJournal) {
  auto other = Ask("product");
  EnterTheProduct();
  Type(other["number"]);
  EXPECT_TRUE(Becomes("typed", other["number"]));
  Key("Tab");
  EXPECT_TRUE(BecomesSo("shown", [](const std::string& shown) { return shown != "1"; }));
  EXPECT_TRUE(Becomes("typed", other["text"]));
  EXPECT_EQ(Now("chosen"), Now("shown"));
}

TEST_F(AClerk, ZoomsByCtrlAndTheWheel) {
  MoveTo(Cell(3, "BillNo").Middle());
  Do({"keydown", "ctrl", "click", "4", "keyup", "ctrl"});
  EXPECT_TRUE(Becomes("zoom", "1.1"));
  Key("ctrl+0");
  EXPECT_TRUE(Becomes("zoom", "1"));
}

TEST_F(AClerk, FreezesByAKeyAndTakesItBack) {
  GoTo("3", "BillKind");
  Key("ctrl+shift+f");
  EXPECT_TRUE(Becomes("frozen", Column("BillKind")));
  Key("ctrl+z");
  EXPECT_TRUE(Becomes("frozen", "0"));
}

TEST_F(AClerk, GetsTheMenuOfTheLayoutBesideTheLastColumn) {
  for (const char* column : {"Explain", "BillKind"}) {
    GoTo("3", column);
    Key("ctrl+shift+h");
    EXPECT_TRUE(BecomesSo("hidden", [&](const std::string& hidden) { return Has(hidden, column); }));
  }
  const Area beyond = AreaOf(Ask("beyond")["rect"]);
  ASSERT_GT(beyond.width, 20);
  Click(beyond.Middle(), "3");
  EXPECT_TRUE(BecomesSo("menu", [](const std::string& menu) { return Has(menu, "列设置(&C)..."); }));
  Key("Escape");
  EXPECT_TRUE(Becomes("menu", ""));
}

TEST_F(AClerk, TicksSeveralFieldsWhileTheirMenuStaysOpen) {
  Click(Cell(0, "BillNo").Middle(), "3");
  EXPECT_TRUE(BecomesSo("menu", [](const std::string& menu) { return Has(menu, "字段显示(&l)"); }));
  // The last item leads to the fields; the first of them is the column of the outline, which stays.
  for (const char* key : {"Up", "Right", "Down"}) Key(key);
  const std::string menu = Now("menu");
  const std::string hidden = Now("hidden");
  Key("space");
  EXPECT_TRUE(BecomesSo("hidden", [&](const std::string& now) { return now != hidden; }));
  const std::string one = Now("hidden");
  for (const char* key : {"Down", "Return"}) Key(key);
  EXPECT_TRUE(BecomesSo("hidden", [&](const std::string& now) { return now != one; }));
  EXPECT_EQ(Now("menu"), menu);
  for (const char* key : {"Up", "space"}) Key(key);
  for (const char* key : {"Down", "Return"}) Key(key);
  EXPECT_TRUE(Becomes("hidden", hidden));
  for (int level = 0; level < 2; ++level) Key("Escape");
  EXPECT_TRUE(Becomes("menu", ""));
}

TEST_F(AClerk, SeesTheKeysInTheMenuOfALine) {
  Click(Cell(4, "BillNo").Middle(), "3");
  EXPECT_TRUE(BecomesSo("menu", [](const std::string& menu) { return Has(menu, "查找(&F)\\tCtrl+F|"); }));
  Key("Escape");
  EXPECT_TRUE(Becomes("menu", ""));
}

TEST_F(AClerk, GoesFromAnIssueToItsReceiptAndBackThroughAPartner) {
  const std::string issue = Ask("issue")["row"];
  GoTo(issue, "BillNo");
  const std::string source = Now("source");
  Key("ctrl+2");
  EXPECT_TRUE(BecomesSo("type", [](const std::string& type) { return type != "0"; }));
  Key("alt+Left");
  EXPECT_TRUE(Becomes("type", "0"));
  EXPECT_TRUE(Becomes("row", issue));
  Key("ctrl+j");
  EXPECT_TRUE(Becomes("record", source));
}

}  // namespace
}  // namespace stockbook::window
